// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"
#include "core/Run.h"

#include <QString>
#include <optional>

// The contacts of a contest copied into the general log. The contest stays as it is.

// A contest contact as one of the general log, before it gets a log's name: reports by mode, remarks that name the
// contest, state towards LdA "1", province of the call; the serials stay behind. `frequency` is in and out: the usual
// one of the band, or, where the band has none, that of the contact before.
QsoRow GeneralRow(const QsoRow &contestRow, const QString &contest, QString &frequency);

struct Transferred {
    int copied = 0;
    int duplicates = 0; // contacts that the log holds already, less than ten minutes apart
    std::optional<qint64> lastId; // of the last copy
    bool cancelled = false; // stopped on the way: what was looked at until then is copied
};
// Reads and compares while events come through, then writes in one transaction, which is all or nothing. Contacts are
// compared with the log and with those copied before them.
Result<Transferred> TransferContest(LogStore &store, Run &run, const QString &contest, const QString &logName);

// What the operator reads; `baseLog` is the caption that names the open log, `count` the number of contacts shown.
QString NothingToTransferMessage(const QString &contest, const QString &baseLog);
QString TransferQuestion(const QString &contest, qint64 count, const QString &baseLog);
QString TransferMessage(const Transferred &transferred);
