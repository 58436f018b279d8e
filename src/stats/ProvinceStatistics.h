// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/Run.h"
#include "stats/ProvinceTable.h"

#include <QString>
#include <vector>

class SearchList;

// The provinces and grid squares of some contacts, and which contacts counted: those with a call and a
// province; blanks are a province too, one that no row of the table has.
struct ProvinceStatistics {
    std::vector<qint64> ids;
    ProvinceTally tally;
};

// Both read in slices of some 20 ms, each followed by a step of `run`; stopped by it they fail as Cancelled. Nothing
// is open between two slices.

// The contacts of a whole log, oldest first. `total` is how many it holds, for the progress.
Result<ProvinceStatistics> StatisticsOfLog(LogStore &store, const QString &logName, qint64 total, Run &run);

// The contacts of a search, in the order of its list. Those that have gone meanwhile are passed over.
Result<ProvinceStatistics> StatisticsOfList(LogStore &store, const SearchList &list, Run &run);
