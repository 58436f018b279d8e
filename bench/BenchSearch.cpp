// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"
#include "RawSqlite.h"

#include "core/Wildcard.h"
#include "stats/Search.h"
#include "stats/SearchList.h"

#include <QDir>
#include <QHash>
#include <QProcess>
#include <chrono>
#include <memory>
#include <sqlite3.h>

namespace {

constexpr int rounds = 5;
constexpr int windowRounds = 3;
constexpr int longestWindow = 120000; // milliseconds
constexpr double longestPause = 100000; // microseconds

const QString absentWord = u"ornitorrinco"_qs, commonWord = u"rosario"_qs;

// What the program's own wildcard function does, told to the bare engine.
void BareWildcard(sqlite3_context *context, int, sqlite3_value **values)
{
    const auto folded = [](sqlite3_value *value) {
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
        return Wildcard::Fold(QString::fromUtf8(text, sqlite3_value_bytes(value)));
    };
    auto *pattern = static_cast<QString *>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<QString> made;
    if (!pattern) {
        made = std::make_unique<QString>(folded(values[0]));
        pattern = made.get();
    }
    sqlite3_result_int(context, Wildcard::Matches(*pattern, folded(values[1])) ? 1 : 0);
    if (made)
        sqlite3_set_auxdata(context, 0, made.release(), [](void *kept) { delete static_cast<QString *>(kept); });
}

std::vector<qint64> Found(LogStore &store, const SearchFilters &filters, SearchSlices &slices, bool firstOnly = false)
{
    SearchCursor cursor(store, madeLogName, filters, &slices);
    std::vector<qint64> ids;
    while (!cursor.AtEnd() && !(firstOnly && !ids.empty()))
        if (const Result<void> read = cursor.Next(ids); !read)
            GiveUp(read.failure().text);
    return ids;
}

void Remarks(LogStore &store, RawDatabase &raw, ResultTable &table)
{
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
    sqlite3_create_function(raw.Handle(), "wildcard", 2, flags, nullptr, BareWildcard, nullptr, nullptr);
    RawStatement scan(raw, u"SELECT id FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>'' AND wildcard(?, Obs)"_qs);
    const QByteArray logName = madeLogName.toUtf8(), pattern = QString(u'*' + absentWord + u'*').toUtf8();
    // The window has the whole list before anyone can search in it.
    SearchSlices slices;
    Found(store, {}, slices);
    SearchFilters absent, common;
    absent.remarks = absentWord;
    common.remarks = commonWord;
    const Timed ours = Clocked([&](int) {
        if (!Found(store, absent, slices).empty())
            GiveUp(u"a remark was found that nobody wrote"_qs);
    });
    const Timed bare = Clocked([&](int) {
        scan.Bind(1, logName);
        scan.Bind(2, pattern);
        scan.TakeAll();
    });
    const Timed first = Clocked([&](int) {
        if (Found(store, common, slices, true).empty())
            GiveUp(u"a common remark was not found"_qs);
    });
    const std::vector<double> medians = Alternate({ours, bare, first}, rounds, 1);
    table.AddRatio(u"remark search without a hit / bare scan"_qs, SizeText(largeLog), medians[0], medians[1], 1.3);
    table.AddLimit(
        u"first rows of a common remark"_qs, SizeText(largeLog), medians[2], longestPause, Unit::Microseconds);
}

// A sort, and the longest time in it without a look at the events.
struct Sorting {
    double whole = 0, pause = 0;
};

Sorting Sort(SearchList &list, int subItem, bool ascending)
{
    using Clock = std::chrono::steady_clock;
    const auto microseconds = [](Clock::duration span) {
        return std::chrono::duration<double, std::micro>(span).count();
    };
    Sorting times;
    const auto start = Clock::now();
    auto last = start;
    const auto look = [&] {
        times.pause = std::max(times.pause, microseconds(Clock::now() - last));
        last = Clock::now();
    };
    Runs runs;
    Run run(runs, look, {});
    if (const Result<void> sorted = list.Sort(subItem, ascending, run); !sorted)
        GiveUp(sorted.failure().text);
    look();
    times.whole = microseconds(last - start);
    return times;
}

void SortByColumn(LogStore &store, RawDatabase &raw, int subItem, const QString &column, ResultTable &table)
{
    SearchList list(store);
    SearchSlices slices;
    list.Append(Found(store, {}, slices));
    RawStatement order(
        raw, u"SELECT id FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>'' ORDER BY "_qs + column + u" COLLATE NOCASE");
    const QByteArray logName = madeLogName.toUtf8();
    std::vector<double> pauses;
    const Timed ours = [&](int round) {
        const Sorting times = Sort(list, subItem, round % 2 == 0);
        pauses.push_back(times.pause);
        return times.whole;
    };
    const Timed bare = Clocked([&](int) {
        order.Bind(1, logName);
        order.TakeAll();
    });
    const std::vector<double> medians = Alternate({ours, bare}, rounds, 1);
    table.AddRatio(u"sort by "_qs + column + u" / bare ORDER BY", SizeText(largeLog), medians[0], medians[1], 2);
    table.AddLimit(u"longest pause of the sort by "_qs + column, SizeText(largeLog), Median(pauses), longestPause,
        Unit::Microseconds);
}

// What the window tells of one run, by name.
QHash<QString, double> WindowRun(const BenchSetting &setting, const QString &folder)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_qs, u"offscreen"_qs);
    process.setProcessEnvironment(environment);
    process.start(setting.searchWindow, {folder, madeLogName});
    if (!process.waitForFinished(longestWindow))
        GiveUp(setting.searchWindow + u" does not end: " + process.errorString());
    QHash<QString, double> told;
    while (process.canReadLine()) {
        const QStringList words = QString::fromUtf8(process.readLine()).simplified().split(u' ');
        told.insert(words.value(0), words.value(1).toDouble());
    }
    for (const QString &name : {u"filling"_qs, u"filling-pause"_qs, u"row"_qs, u"sorting"_qs, u"sorting-pause"_qs})
        if (!told.contains(name))
            GiveUp(setting.searchWindow + u" does not tell \"" + name + u'"');
    return told;
}

void Window(const BenchSetting &setting, ResultTable &table)
{
    const QString folder = setting.workFolder + u"/window";
    QDir().mkpath(folder);
    CopyMadeLog(setting.cacheFolder, largeLog, folder + u"/base0.mdb");
    QHash<QString, std::vector<double>> told;
    for (int round = 0; round < windowRounds; ++round) {
        const QHash<QString, double> run = WindowRun(setting, folder);
        for (auto it = run.begin(); it != run.end(); ++it)
            told[it.key()].push_back(it.value());
    }
    const auto add = [&](const QString &what, const QString &name, double goal, Unit unit = Unit::Microseconds) {
        table.AddLimit(what, SizeText(largeLog), Median(told[name]), goal, unit);
    };
    add(u"search window, longest pause while it fills"_qs, u"filling-pause"_qs, longestPause);
    add(u"search window, until the whole list is there"_qs, u"filling"_qs, 5000000);
    add(u"search window, memory for each row"_qs, u"row"_qs, 200, Unit::Bytes);
    add(u"search window, longest pause of a sort"_qs, u"sorting-pause"_qs, longestPause);
}

} // namespace

void BenchSearch(const BenchSetting &setting, ResultTable &table)
{
    Window(setting, table);
    LogStore store(MadeLog(setting.cacheFolder, largeLog));
    RawDatabase raw(store.Path());
    Remarks(store, raw, table);
    SortByColumn(store, raw, 2, u"Estacion"_qs, table);
    SortByColumn(store, raw, 12, u"Obs"_qs, table);
}
