// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/WebClient.h"
#include "ui/Dialogs.h"

#include <QObject>
#include <memory>

struct Program;
class Form1;
class MainMenu;
class WhenFree;
class Run;

// What the main window asks of the program's own site: whether there is a newer version (menu "ac"), and the newest
// list of contest calls (menu "amc"). The rest stands still in this release, for nothing starts its timers: the check
// that runs by itself, the word that a station is on, and the closing that says that it is off.
class SiteCommands : public QObject {
    Q_OBJECT

public:
    SiteCommands(Program &program, Form1 &window, MainMenu &menu);
    ~SiteCommands() override;

private:
    // The check that runs by itself speaks only of a newer version.
    enum class Check { Automatic, Manual };
    void CheckVersion(Check check);
    void Tell(const QString &text, Dialogs::Icon icon = Dialogs::Icon::Exclamation);
    void PresenceOn();
    // Takes a word to the site, for whose answer nobody waits.
    void Send(const QString &address);
    void StartClosing();
    void ClosingStep();

    void MasterCheckUpdate();
    void OfferMasterList();
    void FetchMasterList(std::function<void(const QString &text)> use);
    void TakeMasterList(const QString &text);

    Program &program_;
    Form1 &window_;
    MainMenu &menu_;
    WebClient versions_, presence_, lists_;
    std::unique_ptr<WebRequest> version_, word_, list_;
    std::unique_ptr<Run> listRun_; // while a list is being fetched
    std::unique_ptr<Scheduler::Timer> Timer4_; // the check by itself, once
    std::unique_ptr<Scheduler::Timer> Timer5_; // presence on, once
    std::unique_ptr<Scheduler::Timer> Timer6_; // the steps of closing
    std::unique_ptr<Scheduler::Timer> masterTimer4_; // the contest window's offer of a newer list, once
    WhenFree *free_;
    int closingSteps_ = 0;
};
