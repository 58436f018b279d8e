// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/Macros.h"
#include "core/Scheduler.h"

#include <QObject>
#include <array>
#include <memory>

struct Program;
class QPushButton;
namespace Ui {
class Form4;
}

// The transmitter's part of the contest window: macro buttons, speed, keyer port and line, and which of the two panels
// is shown, the Morse one or that of the recorded CQ. Its controls stand in the window's layout.
class Transmission : public QObject {
    Q_OBJECT

public:
    Transmission(Program &program, Ui::Form4 &ui, QObject *parent);

    // Port, line, macros and speed as they stand at the opening of a contest. What could not be read or written is the
    // text that comes back, else it is empty.
    QString Open();
    // Keeps port and line; gives what went wrong.
    QString Close();

    // The panels follow the mode from time to time, whoever changed it.
    void Follow() { Timer2_->Start(); }
    void Rest() { Timer2_->Stop(); }
    void ShowPanels();
    void ShowMacroCaptions();
    void ChangeSpeed(int by);

Q_SIGNALS:
    // A control was used; the focus belongs to the call.
    void Used();

private:
    Program &program_;
    Ui::Form4 &ui_;
    std::array<QPushButton *, macroCount> buttons_;
    MacroTexts macros_;
    std::unique_ptr<Scheduler::Timer> Timer2_;
};
