// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"
#include "RawSqlite.h"

#include "core/PlatformFile.h"
#include "core/StoreCopy.h"

#include <QFile>
#include <QThread>
#include <chrono>

namespace {

constexpr int rounds = 7;
constexpr int checkPause = 1; // milliseconds

struct Spans {
    double copy = 0, longestStep = 0, check = 0;
};

// The checked copy, step by step, to see when its check begins.
Spans CheckedCopy(LogStore &store, const QString &target)
{
    using Clock = std::chrono::steady_clock;
    Spans spans;
    StoreCopy copy(store, target);
    for (auto stage = StoreCopy::Stage::Copying; stage != StoreCopy::Stage::Done;) {
        const auto start = Clock::now();
        double &span = stage == StoreCopy::Stage::Copying ? spans.copy : spans.check;
        const Result<StoreCopy::Stage> next = copy.Step();
        if (!next)
            GiveUp(next.failure().text);
        const std::chrono::duration<double, std::micro> step = Clock::now() - start;
        spans.longestStep = std::max(spans.longestStep, step.count());
        stage = *next;
        if (stage == StoreCopy::Stage::Checking)
            QThread::msleep(checkPause);
        span += std::chrono::duration<double, std::micro>(Clock::now() - start).count();
    }
    return spans;
}

void PlainCopy(const QString &source, const QString &target)
{
    QFile::remove(target);
    if (!QFile::copy(source, target))
        GiveUp(u"cannot copy to "_qs + target);
    QFile file(target);
    if (!file.open(QIODevice::ReadWrite) || !PlatformFile::Sync(file.handle()))
        GiveUp(u"cannot sync "_qs + target);
}

void BareCheck(const QString &path)
{
    RawDatabase database(path);
    RawStatement check(database, u"PRAGMA integrity_check(1)"_qs);
    check.TakeAll();
    RawStatement count(database, u"SELECT count(*) FROM Tabla1 WHERE Modo<>''"_qs);
    count.TakeAll();
}

} // namespace

void BenchCopy(const BenchSetting &setting, ResultTable &table)
{
    LogStore store(MadeLog(setting.cacheFolder, largeLog));
    const QString ours = setting.workFolder + u"/ours", plain = setting.workFolder + u"/plain";
    std::vector<double> checks, steps;
    const Timed copy = [&](int) {
        const Spans spans = CheckedCopy(store, ours);
        checks.push_back(spans.check);
        steps.push_back(spans.longestStep);
        return spans.copy;
    };
    const std::vector<double> medians = Alternate(
        {copy, Clocked([&](int) { PlainCopy(store.Path(), plain); }), Clocked([&](int) { BareCheck(store.Path()); })},
        rounds, 1);
    const QString size = SizeText(largeLog);
    table.AddRatio(u"checked copy, until its check / copy of the file with sync"_qs, size, medians[0], medians[1], 3);
    table.AddRatio(u"its check / the same by the C interface"_qs, size, Median(checks), medians[2], 1.5);
    table.AddLimit(u"longest step of a checked copy"_qs, size, Median(steps), 100000, Unit::Microseconds);
}
