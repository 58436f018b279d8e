// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>

struct Program;
struct Failure;
class CallerPanel;
class EntryPanel;
class LogCommands;
class LogListPanel;
class LookupCommands;
class MainMenu;
class SatellitePanel;
class StartUp;
class QPushButton;

// The main window: entry, satellite, caller and log list under one menu bar. It joins the panels, sees every key
// first, and stores the contact.
//
// Keys, from any field: Ctrl+X, Ctrl+Q, Ctrl+L look the call up in the log, in QRZ, in LdA (from 4 characters on);
// Ctrl+W wipes the call; Page Up, Page Down, Home and End page the log; Enter walks the fields and at the end of the
// walk stores the contact; F1 and Esc are the caller's, F5 edits the last contact.
class Form1 : public Window {
    Q_OBJECT

public:
    explicit Form1(Program &program);
    ~Form1() override;

    // Fills lists and fields from the small files and brings an old database up to date; then the window can be shown.
    // False when the database cannot be used at all, which has been told then.
    bool Load();

    // The page of the open log from this row on.
    void LoadLogPage(qint64 firstRow);
    void ReloadPage();
    qint64 QsoCountShown() const;
    // A deleted contact is no longer the last one entered.
    void ForgetQso(qint64 id);
    void RememberQso(qint64 id);
    // What is going on, beside the lookup buttons; empty hides it.
    void ShowActivity(const QString &text);
    // Takes an activity away, if it is what is shown.
    void EndActivity(const QString &text);
    // While a command works that must not be started twice, or run beside another.
    void SetBusy(bool busy);
    void SetArchivoMenu(bool enabled);
    // From now on closing the window asks nothing.
    void AllowClosing() { closingAllowed_ = true; }
    // Shows the configuration's fields and captions.
    void ShowConfiguration();
    void ShowCaptions();
    // The one-shot timer behind the settings.
    void StartTimer7();
    void StopTimer7();

protected:
    bool PreviewKey(QKeyEvent *event) override;
    bool ClaimsShortcut(const QKeyEvent *event) const override;
    void FieldEntered(QWidget *field) override;
    void FieldLeft(QWidget *field) override;
    QWidget *FocusFallback() const override;
    bool MayClose() override;
    void showEvent(QShowEvent *event) override;

private:
    void BuildLayout();
    void BuildHiddenButtons();
    void BuildMaster();
    void ConnectPanels();
    void ConnectMenu();
    bool PreviewControlKey(QKeyEvent *event);
    void Walk();
    void StoreQso();
    bool EnsureOpenLog();
    void TellStoreFailure(const Failure &failure);
    void ShowCallQsos();
    void OpenSummits();
    void SetViaSatellite(bool on);
    void OpenSettings();
    void OpenEditLast();
    void OpenContest();
    void OpenSatellites();
    bool ConfirmLeaving();
    void Leave();

    Program &program_;
    MainMenu *menu_;
    EntryPanel *entry_;
    SatellitePanel *satellite_;
    CallerPanel *caller_;
    LogListPanel *list_;
    LookupCommands *lookups_;
    std::unique_ptr<StartUp> startUp_;
    bool leaving_ = false;
    bool closingAllowed_ = false;
};
