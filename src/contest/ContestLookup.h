// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"
#include "core/Run.h"

#include <QList>
#include <QString>
#include <optional>

// What the contest window asks the database while it is being typed in. All of it but the list is answered from an
// index, whatever the size of the contest. Texts compare without regard to case.

// Mode or band of the last contact by date and time (of equal times the one entered last); empty in an empty contest.
enum class ContestValue { Mode, Band };
Result<QString> LastContestValue(LogStore &store, const QString &contest, ContestValue kind);

// `RSE` of the contact of this mode that was entered last, for NextContestSerial; empty when there is none. "PH" stands
// for "SSB".
Result<QString> LastContestSerial(LogStore &store, const QString &contest, const QString &mode);

// The contacts of the contest with this call, mode and band, newest first by date and time. One that is found makes the
// entry a duplicate. "PH" stands for "SSB".
Result<QList<QsoRow>> FindContestDuplicates(
    LogStore &store, const QString &contest, const QString &call, const QString &mode, const QString &band);

// Whether the contact stands in the contest already: same date, serials, mode, band and calls. The time does not count.
Result<bool> QsoAlreadyStored(LogStore &store, const QsoRow &row);

// Stores a contact unless it stands there already, both in one step, and gives its id, or nothing for a repeat.
Result<std::optional<qint64>> StoreContestQso(LogStore &store, const QsoRow &row);

// All contacts of a contest, newest entered first. Filled are id, Banda, Modo, Fecha, Hora, MyCall, RSE, Estacion, RSR,
// LdA and Nombre_Sat.
Result<QList<QsoRow>> ContestListLoad(LogStore &store, const QString &contest);

// All rows of a contest in the order of their ids, the header row among them, with all their columns. With a run it is
// read in slices that let events through; stopped there, it fails as Cancelled.
Result<QList<QsoRow>> ContestRows(LogStore &store, const QString &contest, Run *run = nullptr);

// The contact that was entered last; nothing in an empty contest.
Result<std::optional<QsoRow>> LastContestQso(LogStore &store, const QString &contest);

// The contact with this id; nothing when it has gone meanwhile.
Result<std::optional<QsoRow>> FindContestQso(LogStore &store, qint64 id);
