// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"

#include <QList>
#include <optional>

// The two steps of an import in the database: contacts are laid out in Tabla3 first, and from there go into the log.
namespace AdifStaging {

// One row of Tabla3: the contact, and "VA" or the id of the contact of the log that it repeats.
struct Staged {
    QsoRow row;
    QString dupe;
    bool IsNew() const { return dupe == u"VA"; }
};

// The contact of the log that agrees in mode, band, station and call and lies less than ten minutes away; nothing when
// there is none. The log is taken by its name up to the first comma, so a log with a comma in its name has no repeats.
std::optional<qint64> FindDuplicateInLog(Session &session, const QString &logName, const QsoRow &row);

// The contact as it is staged for the open log: with log name, province, and what it repeats.
Result<Staged> Prepare(LogStore &store, const QString &logName, const QsoRow &row);

Result<void> ClearStaging(LogStore &store);
// Adds rows to Tabla3, all or none.
Result<void> StageRows(LogStore &store, const QList<Staged> &rows);
// Tabla3, newest first.
Result<QList<Staged>> StagedRows(LogStore &store);

struct Loaded {
    int inserted = 0, replaced = 0, skipped = 0;
    std::optional<qint64> lastId; // of the last new contact
};
// Moves the first `count` of these rows into the log, in one transaction. A repeat overwrites all columns of the
// contact it repeats when `replace` is set, and is skipped otherwise; where that contact has gone meanwhile it comes in
// as a new one. A failure leaves the log as it was.
Result<Loaded> LoadRows(
    LogStore &store, const QString &logName, const QList<Staged> &rows, qsizetype count, bool replace);

} // namespace AdifStaging
