// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"
#include "core/QsoTable.h"

// The one road by which rows of Tabla2 are written: new contacts, edits, deletions, the marks of the analysis. The
// functions of the namespace are used inside LogStore::Write, so that several of them can be one step.
//
// A contest is all rows with one `Nombre Log`, compared as the engine compares: case does not matter. Its header row
// has no mode; every row carries the name in `LdA` and the series type in `Nombre_Sat`.
namespace ContestTable {

// Adds a row and gives its id (row.id is not looked at). The columns that a contest does not fill, `Operador` and those
// of the general log, stay null; nothing is brought to another form.
qint64 Insert(Session &session, const QsoRow &row);

// Writes some columns of one row; false when there is no row with this id.
bool Update(Session &session, qint64 id, const QsoTable::Changes &changes);

// False when there was no such row.
bool Delete(Session &session, qint64 id);

// All rows of a contest, its header row included.
void DeleteContest(Session &session, const QString &name);

// What the analysis says of one contact.
struct Marks {
    QString multiplier; // Argento: the value that may count
    QString received; // Perfil: the exchange received
    QString verdict; // SOTA: empty, the multiplier value that counts here, or "Duplicado"

    bool operator==(const Marks &) const = default;
};
// Empties `Perfil` and `SOTA` in all rows of a contest.
void ClearContestMarks(Session &session, const QString &name);
// Writes the three columns of one row; a row that has gone meanwhile is passed over.
void WriteMarks(Session &session, qint64 id, const Marks &marks);

} // namespace ContestTable

// Stores one row of a contest, header or contact, and gives its id. When it returns without a failure the row is on the
// disk; on a failure nothing of it is.
Result<qint64> StoreContestRow(LogStore &store, const QsoRow &row);
