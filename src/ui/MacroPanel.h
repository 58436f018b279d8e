// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/Macros.h"
#include "core/Scheduler.h"

#include <QObject>
#include <functional>

struct Program;
class KeyerPanel;
class QPushButton;
class QRadioButton;
namespace Ui {
class Form4;
}

// The seven messages of the contest window and who sends them: their keys, Enter where it carries the whole contact,
// and the repeated CQ. Its controls stand in the window's layout.
//
// | control              | meaning                                                     |
// |----------------------|-------------------------------------------------------------|
// | macros_0 to macros_6 | the messages; the one that comes next is coloured with ESM  |
// | ESM                  | Enter sends the message that the fields ask for             |
// | RUN, SYP             | calling, searching; only with ESM                           |
// | Check9, TimerACQ     | a CQ every four seconds                                     |
// | Check5               | cut numbers: 0 as T, 9 as N                                 |
class MacroPanel : public QObject {
    Q_OBJECT

public:
    // `store` does what Enter does without ESM; false when the contact is not stored.
    MacroPanel(Program &program, Ui::Form4 &ui, KeyerPanel &keyer, std::function<bool()> store, QObject *parent);

    // Reads the macros; gives what went wrong.
    QString Load();
    MacroTexts &Texts() { return macros_; }

    // False when the contact that the message thanks for was not stored; then it is not sent.
    bool SendMacro(int index);
    void SendExchangeAgain(const QString &call, const QString &serial);
    // What Enter does with ESM, before the store. True when it has seen to the store itself.
    bool Enter();
    void HighlightMacro(int index);
    void CallChanged();
    void StopAutoCq();
    // Another mode than CW, or the end of the contest.
    void SwitchOff();

Q_SIGNALS:
    // The focus belongs to the call.
    void Used();

private:
    void Connect();
    void EsmChanged(bool on);
    void RunChosen();
    void SearchChosen();
    void AutoCqChanged(bool on);
    void ExchangeChanged();
    void ShowCaptions();
    void ForgetExchange();
    MacroFields Fields() const;

    Program &program_;
    Ui::Form4 &ui_;
    KeyerPanel &keyer_;
    std::function<bool()> store_;
    std::array<QPushButton *, macroCount> buttons_;
    MacroTexts macros_;
    std::unique_ptr<Scheduler::Timer> TimerACQ_;
    QString SavedCall_, SavedSerie_;
};
