// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/CallLookup.h"

#include <QObject>
#include <functional>
#include <memory>

struct Program;
class Run;
class WhenFree;
class Window;

// The search of a call in QRZ and LdA, as a window offers it. What is going on is told in the main window, the answer
// comes in a window of its own; one that comes while another window is in front waits until that is closed. Esc in the
// main window, or closing the edit window, ends the search.
class LookupCommands : public QObject {
    Q_OBJECT

public:
    enum class From { Entry, EditWindow };
    LookupCommands(Program &program, Window &window, From from);
    ~LookupCommands() override;

    void SearchQrz(const QString &call);
    void SearchLda(const QString &call);

Q_SIGNALS:
    // What the operator wants taken over from an answer.
    void RemarksChosen(const QString &text);
    void GridChosen(const QString &grid);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void BuildHidden();
    void ConnectSearch();
    void Probe();
    void Begin();
    void End();
    void ShowActivity(const QString &text);
    void ShowResult(const LookupResult &result);

    Program &program_;
    Window &window_;
    From from_;
    CallSearch search_;
    std::unique_ptr<Run> run_; // while a search is under way
    WhenFree *free_;
    QString activity_; // what this search says in the main window
};
