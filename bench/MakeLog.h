// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/QsoRow.h"
#include "logging/QsoStore.h"

#include <QString>
#include <random>

// Makes logs as a busy station keeps them, for measuring and for trying the program with. Everything follows from the
// seed: the same on every machine and in every run.

// Contacts in time order, evenly over 25 years however many they are: bursts of one a minute, then nothing for days.
// Two in five are with a station worked before, the old friends most often. Grids, remarks, satellites, summits and
// parks are as rare as they are in life.
class QsoMaker {
public:
    // `total` is how many contacts the 25 years hold; more can be taken, they come later.
    explicit QsoMaker(qint64 total, quint32 seed = 1);

    // The next contact as a row of Tabla1, without `id` and log name, date and time in the stored forms.
    QsoRow Next();

    // A station's call; the lower its number, the more often the maker works it.
    static QString CallOfStation(qint64 number);

private:
    quint64 Below(quint64 limit);
    bool OneIn(quint64 count) { return Below(count) == 0; }
    qint64 NextStation();
    void PassTime();
    void FillFrequency(QsoRow &row);
    void FillRareFields(QsoRow &row, qint64 station);

    std::mt19937_64 random_;
    qint64 stations_ = 0; // worked so far
    qint64 minute_ = 0; // since the beginning of the log
    quint64 meanPause_;
};

// What an operator would have to type for this row.
NewQso EntryOf(const QsoRow &row);

// The name of the log that all contacts of a made database belong to, or the first of its logs.
extern const QString madeLogName;
// The names of all of them, from 0.
QString MadeLogName(int log);

// The path of a database with `qsos` contacts, inserted in time order into a fresh file by the program's own schema and
// write path. It is made when `cacheFolder` does not hold it for the present schema, and must not be changed: take a
// copy for that. With several logs the contacts go to them in turn. Ends the process with a message when it cannot be
// made.
QString MadeLog(const QString &cacheFolder, qint64 qsos, int logs = 1);

// A copy of it, as `target`, for a work that writes.
void CopyMadeLog(const QString &cacheFolder, qint64 qsos, const QString &target);
