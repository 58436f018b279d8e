// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"

#include <QList>
#include <QStringList>
#include <utility>

// The one road by which rows of Tabla1 are written: store, edit, import, transfer and states all come through here.
// The functions are used inside LogStore::Write, so that several of them can be one step.
namespace QsoTable {

// Adds a row to Tabla1 and gives its `id` (row.id is not looked at). `Fecha` and `Hora` are brought to the stored
// forms; what is no date or time is stored as an empty text. An empty `Perfil` is stored as null.
qint64 Insert(Session &session, const QsoRow &row);

// Writes some columns of one row; false when there is no row with this `id`.
using Changes = QList<std::pair<QString QsoRow::*, QString>>;
bool Update(Session &session, qint64 id, const Changes &changes);

// False when there was no such row.
bool Delete(Session &session, qint64 id);

// The names of all logs, in the order of the index. They come by leaps, one look-up each, however many contacts a log
// has.
QStringList LogNames(Session &session);

// Deletes a whole log, its marker row included.
void DeleteLog(Session &session, const QString &logName);

// Adds the row that keeps a log without QSOs in existence, unless the log has rows already.
void InsertLogMarker(Session &session, const QString &logName);

} // namespace QsoTable
