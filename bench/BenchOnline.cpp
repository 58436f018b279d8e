// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"

#include "core/QsoTable.h"
#include "online/SyncLda.h"
#include "support/LocalServer.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>

namespace {

constexpr int qsos = 1000;
constexpr double mostForQso = 3000; // microseconds
constexpr double mostForLookup = 50000;
constexpr double longestPause = 100000;
constexpr double mostForChoosing = 10000000;
constexpr int lookups = 9;

// The pace between two requests is told, and not the program's cost: here it takes no time.
class Unpaced final : public Scheduler {
public:
    std::unique_ptr<Timer> Make(int milliseconds, std::function<void()> callback) override
    {
        return real_.Make(milliseconds == 2 ? 0 : milliseconds, std::move(callback));
    }
    void WhenIdle(std::function<void()> callback) override { real_.WhenIdle(std::move(callback)); }

private:
    EventLoopScheduler real_;
};

void MakeArgentineLog(LogStore &store)
{
    const Result<void> made = store.CreateEmpty();
    const Result<void> stored = store.Write([](Session &session) {
        QsoRow row;
        row.Modo = u"SSB"_qs;
        row.Banda = u"40m"_qs;
        row.MyCall = u"LU9ZZZ"_qs;
        row.Fecha = u"2024-03-05"_qs;
        row.NombreLog = u"Uno"_qs;
        row.LdA = u"1"_qs;
        row.Argento = u"Capital"_qs;
        for (int i = 0; i < qsos; ++i) {
            row.Estacion = u"LU%1A"_qs.arg(i);
            row.Hora = QTime(0, 0).addSecs(i).toString(u"hh:mm:ss");
            QsoTable::Insert(session, row);
        }
    });
    if (!made || !stored)
        GiveUp(u"the log for the upload could not be made"_qs);
}

// The whole run in this process, the server's work included.
double RunMicroseconds(LogStore &store, LocalServer &server)
{
    Runs runs;
    Run reading(runs, {});
    const Result<SyncSelection> selection = SelectForSync(store, u"Uno"_qs, reading);
    if (!selection || selection->qsos.size() != qsos)
        GiveUp(u"the log for the upload was not read"_qs);
    Unpaced scheduler;
    QEventLoop loop;
    SyncLda::Counts counts;
    SyncLda::Listener listener;
    listener.listed = [](SyncRules::Judgement::Kind, const QString &, const SyncLda::Counts &) {};
    listener.storeFailed = [](const Failure &failure) { GiveUp(failure.text); };
    listener.ended = [&](SyncLda::End, const SyncLda::Counts &all, const QString &) {
        counts = all;
        loop.quit();
    };
    SyncLda sync(scheduler, store, {server.Base(), u"yo"_qs, u"clave"_qs}, selection->qsos, listener);
    QElapsedTimer timer;
    timer.start();
    sync.Start();
    loop.exec();
    if (counts.checked != qsos)
        GiveUp(u"the upload did not come through"_qs);
    return static_cast<double>(timer.nsecsElapsed()) / 1000;
}

void Confirmations(const BenchSetting &setting, ResultTable &table)
{
    LogStore store(setting.workFolder + u"/confirmaciones.mdb");
    MakeArgentineLog(store);
    LocalServer server;
    server.Always("LU9ZZZ LU1A 40m SSB 05/03/2024 0000 duplicado!N");
    std::vector<double> runs;
    for (int round = 0; round < 3; ++round)
        runs.push_back(RunMicroseconds(store, server) / qsos);
    table.AddLimit(u"confirmation run, a QSO, without the pace but with the server"_qs, SizeText(qsos), Median(runs),
        mostForQso, Unit::Microseconds);
}

// The walk over a large log before the question: the window must live meanwhile.
void Choosing(const BenchSetting &setting, ResultTable &table)
{
    LogStore store(MadeLog(setting.cacheFolder, largeLog));
    Runs runs;
    QElapsedTimer sinceStep, whole;
    qint64 longest = 0;
    const auto pump = [&] {
        longest = std::max(longest, sinceStep.nsecsElapsed());
        sinceStep.start();
    };
    Run run(runs, pump, {}, 0);
    sinceStep.start();
    whole.start();
    const Result<SyncSelection> selection = SelectForSync(store, madeLogName, run);
    if (!selection || selection->total != largeLog)
        GiveUp(u"the large log was not read"_qs);
    table.AddLimit(u"choosing what is sent to LdA, longest pause"_qs, SizeText(largeLog),
        static_cast<double>(longest) / 1000, longestPause, Unit::Microseconds);
    table.AddLimit(u"choosing what is sent to LdA, the whole log"_qs, SizeText(largeLog),
        static_cast<double>(whole.nsecsElapsed()) / 1000, mostForChoosing, Unit::Microseconds);
}

// A whole program on the offscreen platform, whose lookup window prints when it could be seen.
void Lookup(const BenchSetting &setting, ResultTable &table)
{
    std::vector<double> times;
    for (int round = 0; round < lookups; ++round) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_qs, u"offscreen"_qs);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(setting.lookupWindow, {setting.workFolder});
        if (!process.waitForFinished(60000) || process.exitCode() != 0)
            return table.AddFailure(u"lookup, from answer to window"_qs, u"the window did not come"_qs);
        times.push_back(process.readAllStandardOutput().trimmed().toDouble());
    }
    table.AddLimit(u"lookup, from answer to window beyond the second of settling"_qs, u"1"_qs, Median(times),
        mostForLookup, Unit::Microseconds);
}

} // namespace

void BenchOnline(const BenchSetting &setting, ResultTable &table)
{
    Confirmations(setting, table);
    Choosing(setting, table);
    Lookup(setting, table);
}
