// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Scheduler.h"

#include <QObject>
#include <memory>

struct Program;
class QCheckBox;
class QLineEdit;
class QPushButton;

// Date and time of the entry. While "QTR manual" is not ticked they follow the clock, in UTC; when it is, the operator
// types them, and Label11 tells whether as local time or as UTC.
class EntryClock : public QObject {
    Q_OBJECT

public:
    // The controls belong to the panel, which outlives the clock.
    struct Controls {
        QCheckBox *Check1;
        QPushButton *Label11;
        QLineEdit *Fecha, *Hora;
    };
    EntryClock(Program &program, Controls controls, QObject *parent);

    // Until the first tick nothing in the entry moves the focus or writes a file.
    bool Running() const { return running_; }
    void Tick();

    bool IsManual() const;
    // As the operator left it at the last run.
    void SetManual(bool manual);

Q_SIGNALS:
    // The operator ticked or cleared "QTR manual" once the clock was running.
    void ManualClicked();

private:
    void ManualChanged();
    void Fill();

    Program &program_;
    Controls controls_;
    std::unique_ptr<Scheduler::Timer> Timer3_; // runs while the time is typed; nothing depends on it
    bool running_ = false;
};
