// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Run.h"
#include "core/Scheduler.h"
#include "support/TestRegistry.h"

#include <QStringList>
#include <QTest>

class TestRun : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void AStepReportsBeforeItLetsEventsThrough()
    {
        Runs runs;
        QStringList seen;
        {
            Run run(
                runs, [&] { seen << u"pump"_qs; },
                [&](qint64 done, qint64 total) { seen << u"%1/%2"_qs.arg(done).arg(total); }, 0);
            QVERIFY(runs.Any());
            QVERIFY(run.Step(1, 2));
            QVERIFY(run.Step(2, 2));
        }
        QCOMPARE(seen, (QStringList{u"1/2"_qs, u"pump"_qs, u"2/2"_qs, u"pump"_qs}));
        QVERIFY(!runs.Any());
    }

    void WaitingWorkIsToldAtOnceAndMayEndThen()
    {
        Runs runs;
        int stopped = 0;
        auto first = std::make_unique<Run>(runs, Pump()), second = std::make_unique<Run>(runs, Pump());
        second->WhenCancelled([&] { ++stopped; });
        first->WhenCancelled([&] {
            ++stopped;
            first->Cancel();
            second.reset();
            first.reset();
        });
        runs.CancelAll();
        QCOMPARE(stopped, 1);
        QVERIFY(!runs.Any());
    }

    void EscInThePumpStopsAllThatRuns()
    {
        Runs runs;
        Run outer(runs, {}, {}, 0);
        {
            Run inner(
                runs, [&] { runs.CancelAll(); }, {}, 0);
            QVERIFY(!inner.Step(1));
            QVERIFY(inner.Cancelled());
        }
        QVERIFY(!outer.Step(1));
        Run next(runs, {}, {}, 0);
        QVERIFY(next.Step(1)); // what begins afterwards is not stopped
        int pumped = 0;
        Run quick(
            runs, [&] { ++pumped; }, {}, 60000);
        for (int i = 0; i < 1000; ++i)
            QVERIFY(quick.Step(i));
        QCOMPARE(pumped, 0);
    }

    void TimersOfTheEventLoop()
    {
        EventLoopScheduler loop;
        Scheduler *const scheduler = &loop;
        int ticks = 0, once = 0, idle = 0, never = 0;
        const auto repeating = scheduler->Make(5, [&] { ++ticks; });
        std::unique_ptr<Scheduler::Timer> oneShot;
        oneShot = scheduler->Make(5, [&] {
            ++once;
            oneShot.reset(); // its own end
        });
        const auto stopped = scheduler->Make(5, [&] { ++never; });
        auto destroyed = scheduler->Make(5, [&] { ++never; });
        scheduler->WhenIdle([&] {
            ++idle;
            scheduler->WhenIdle([&] { ++idle; });
        });
        for (const auto &timer : {repeating.get(), oneShot.get(), stopped.get(), destroyed.get()})
            timer->Start();
        stopped->Stop();
        destroyed.reset();
        QCOMPARE(idle, 0); // never from inside the call
        QVERIFY(QTest::qWaitFor([&] { return ticks >= 3 && once == 1; }, 5000));
        QCOMPARE(QString(u"%1 %2 %3"_qs.arg(once).arg(idle).arg(never)), u"1 2 0"_qs);
        repeating->Stop();
        const int before = ticks;
        const auto later = scheduler->Make(15, [&] { ++once; });
        later->Start();
        QVERIFY(QTest::qWaitFor([&] { return once == 2; }, 5000));
        QCOMPARE(ticks, before);
    }

    void WhatWaitsForIdleGoesWithTheScheduler()
    {
        int called = 0;
        {
            EventLoopScheduler scheduler;
            scheduler.WhenIdle([&] { ++called; });
        }
        QTest::qWait(5);
        QCOMPARE(called, 0);
    }
};

TORDILLO_TEST(TestRun)
#include "TestRun.moc"
