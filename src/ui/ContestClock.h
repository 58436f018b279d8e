// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Scheduler.h"

#include <QObject>
#include <memory>

struct Program;
class QCheckBox;
class QLineEdit;

// Date and time of the contest, in UTC: by the clock, or typed while "QTR Manual" is ticked.
class ContestClock : public QObject {
    Q_OBJECT

public:
    // The controls belong to the window, which outlives the clock.
    struct Controls {
        QCheckBox *Check2;
        QLineEdit *Fecha, *Hora;
    };
    ContestClock(Program &program, Controls controls, QObject *parent);

    // From the opening of a contest to its end; it always begins by the clock.
    void Start();
    void Stop() { Timer1_->Stop(); }

private:
    void ManualTicked(bool manual);
    void Tick();

    Program &program_;
    Controls controls_;
    std::unique_ptr<Scheduler::Timer> Timer1_;
    std::unique_ptr<Scheduler::Timer> Timer3_; // runs while the time is typed; nothing depends on it
};
