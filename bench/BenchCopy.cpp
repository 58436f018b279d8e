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
    double whole = 0, check = 0;
};

// The checked copy, step by step, to see when its check begins.
Spans CheckedCopy(LogStore &store, const QString &target)
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    auto copied = start;
    StoreCopy copy(store, target);
    while (true) {
        const Result<StoreCopy::Stage> stage = copy.Step();
        if (!stage)
            GiveUp(stage.failure().text);
        if (*stage == StoreCopy::Stage::Done)
            break;
        if (*stage == StoreCopy::Stage::Copying)
            copied = Clock::now();
        else
            QThread::msleep(checkPause);
    }
    const std::chrono::duration<double, std::micro> whole = Clock::now() - start, check = Clock::now() - copied;
    return {whole.count(), check.count()};
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
    std::vector<double> checks;
    const Timed copy = [&](int) {
        const Spans spans = CheckedCopy(store, ours);
        checks.push_back(spans.check);
        return spans.whole;
    };
    const std::vector<double> medians = Alternate(
        {copy, Clocked([&](int) { PlainCopy(store.Path(), plain); }), Clocked([&](int) { BareCheck(plain); })}, rounds,
        1);
    table.AddRatio(u"checked copy / copy of the file with sync"_qs, SizeText(largeLog), medians[0], medians[1], 3);
    table.AddRatio(
        u"of it, the check / the same by the C interface"_qs, SizeText(largeLog), Median(checks), medians[2], 1.3);
}
