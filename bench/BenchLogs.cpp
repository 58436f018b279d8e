// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"

#include "logging/LogNames.h"

namespace {

constexpr int rounds = 400;
constexpr int logCount = 50;

Timed Listing(LogStore &store, qint64 qsos)
{
    return Clocked([&store, qsos](int) {
        const Result<QList<LogEntry>> logs = ListLogs(store);
        if (!logs)
            GiveUp(logs.failure().text);
        qint64 counted = 0;
        for (const LogEntry &log : *logs)
            counted += log.count;
        if (logs->size() != logCount || counted != qsos)
            GiveUp(u"a wrong list of logs"_qs);
    });
}

} // namespace

void BenchLogs(const BenchSetting &setting, ResultTable &table)
{
    LogStore small(MadeLog(setting.cacheFolder, smallLog, logCount));
    LogStore large(MadeLog(setting.cacheFolder, largeLog, logCount));
    const std::vector<double> medians = Alternate({Listing(large, largeLog), Listing(small, smallLog)}, rounds);
    table.AddRatio(u"list of 50 logs with counts, large / small"_qs, SizeText(largeLog), medians[0], medians[1], 1.3);
}
