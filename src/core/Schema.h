// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"

#include <QStringList>

// Tables, indexes, counters and triggers of base0.mdb, built with the engine's own means only, so that any tool that
// reads SQLite can open and change the file.
namespace Schema {

inline constexpr int applicationId = 0x544F5244; // "TORD"

// What makes an empty database.
QStringList CreateStatements();

// The fifteen statements that give an old file the five late columns, in their order.
QStringList LateColumnStatements();

} // namespace Schema

// Whether the file has all columns, indexes, counters and triggers. Asks the schema, never the rows.
Result<bool> SchemaIsCurrent(LogStore &store);

// Adds what an old file lacks, in one transaction; what is there already stays as it is. Can be repeated at will.
Result<void> UpgradeSchema(LogStore &store);

// Upgrades the file if it needs it.
Result<void> ProbeSchema(LogStore &store);

// Deletes every row of the three tables and starts numbering at 1 again.
Result<void> WipeAllTables(LogStore &store);

// Number of QSOs of a log, from its counter.
Result<qint64> CountQsos(LogStore &store, const QString &logName);

// Counts every log anew and corrects the counters where a foreign tool has put them wrong; true if one was.
Result<bool> RecountLogs(LogStore &store);
