// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"

#include <QList>
#include <QString>

// The contests of the database: listing, creating, deleting. A contest exists as long as one row of Tabla2 carries its
// name; rows without a name belong to none.

// The two series types, as they are stored and shown.
namespace SerieType {
extern const QString Incremental; // the serial counts on by itself, for each mode
extern const QString Fija; // what is sent stays the same from contact to contact
} // namespace SerieType

struct ContestLog {
    QString name; // as stored; the list shows it trimmed
    QString type; // series type, trimmed
    qint64 count = 0; // rows minus one, for the header row

    bool operator==(const ContestLog &) const = default;
};

// All contests in the order of their names. The types come from a list of their own: a contest that holds two types
// takes two places in it, and from there on the types stand beside the wrong names. Reads an index, never the rows.
Result<QList<ContestLog>> ListContests(LogStore &store);

// Those that hold contacts.
QList<ContestLog> ContestsWithQsos(const QList<ContestLog> &contests);

// Whether a contest has this name, apart from case, "Ñ" and accents included. One without contacts exists too.
Result<bool> ContestExists(LogStore &store, const QString &name);

// A typed name as it will be used: without apostrophes. It may become empty, which is a name like any other here.
QString CleanContestName(const QString &typed);
QString ContestExistsMessage(const QString &name);

// Brings a contest into existence by its header row, and gives that row's id. Does not ask whether it exists already.
Result<qint64> CreateContest(LogStore &store, const QString &name, const QString &type);

// What `RSE` and `Label4` hold in a new contest.
struct StartValues {
    QString rse, label4;
};
StartValues StartOfContest(const QString &type);

// "Borrar <name>", and the question that follows it.
QString DeleteContestCaption(const QString &name);
QString DeleteContestQuestion(const QString &name);

// Deletes a contest with all its rows.
Result<void> DeleteContest(LogStore &store, const QString &name);
