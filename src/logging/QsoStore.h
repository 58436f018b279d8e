// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"

#include <QList>
#include <QString>

// A contact as the entry fields give it, before it becomes a row. Date and time are UTC, "dd/mm/yyyy" and "hh:mm:ss".
struct NewQso {
    QString call, band, mode, reportSent, reportReceived, date, time;
    QString station, operatorCall, remarks, frequency, ownGrid, grid, satellite;
    QString SOTA, MY_POTA, POTA, MYSOTA;
};

// Stores a contact in the log `logName` and gives the new row's id. When it returns without a failure the row is on
// the disk; on a failure nothing of it is. The province is worked out from the call, the state towards LdA starts at
// "1". A grid of a call without "/" also goes to the earlier contacts with that call that have none, in the same step.
Result<qint64> AddQso(LogStore &store, const QString &logName, const NewQso &qso);

// Gives the grid to the contacts of the log with this call that have none.
void SpreadGrid(Session &session, const QString &logName, const QString &call, const QString &grid);

// The grid of the earliest entered contact with this call that has one, or an empty text.
Result<QString> FindGridOfCall(LogStore &store, const QString &logName, const QString &call);

// Single columns of one row; a row that has gone meanwhile is no failure. A failure leaves the row as it was.
Result<void> SetSuGrid(LogStore &store, qint64 id, const QString &grid);
Result<void> SetLdaState(LogStore &store, qint64 id, const QString &value);

// The contacts whose call begins with `call`, oldest first; `call` may hold "*" and "?". Only MyCall, Estacion, Banda,
// Modo, Fecha and Hora of the rows are filled.
Result<QList<QsoRow>> QsosWithCall(LogStore &store, const QString &logName, const QString &call);
