// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Scheduler.h"
#include "core/StoreCopy.h"

#include <QStringList>
#include <memory>

class Logbook;

// Copies of the database that nobody has to ask for: one after each start of the program at which the log has changed
// since the last, in the folder "copias", the last ten of them. Each is checked before it counts.
class SafetyCopies {
public:
    static constexpr int kept = 10;

    // `told` gets a failure once; a copy that cannot be made never holds anything up.
    SafetyCopies(Logbook &logbook, Scheduler &scheduler, std::function<void(const Failure &)> told);
    ~SafetyCopies();

    // Begins the copy if one is due; it goes on in small steps between the operator's keys.
    void Begin();
    bool UnderWay() const { return copy_ != nullptr; }

    // Deletes what copies that were cut off with an earlier run of the program have left half written. For the start:
    // a copy that is under way would lose its file.
    static void RemoveUnfinished(const Logbook &logbook);

    // The newest copy that passes its check, as a path; empty when there is none.
    static QString NewestGood(const Logbook &logbook);

    // Puts a copy in the place of the database. The present file is kept under another name, which is given back.
    static Result<QString> PutBack(Logbook &logbook, const QString &copy);

private:
    static QStringList Existing(const Logbook &logbook); // newest first
    bool IsDue() const;
    void Step();
    void Rotate();

    Logbook &logbook_;
    std::function<void(const Failure &)> told_;
    std::unique_ptr<StoreCopy> copy_;
    QString target_;
    QDateTime stampOfSource_;
    std::unique_ptr<Scheduler::Timer> timer_;
};
