// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Run.h"
#include "core/Scheduler.h"
#include "support/ManualScheduler.h"
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

    void QuickStepsDoNotPump()
    {
        Runs runs;
        int pumped = 0;
        Run run(
            runs, [&] { ++pumped; }, {}, 60000);
        for (int i = 0; i < 1000; ++i)
            QVERIFY(run.Step(i));
        QCOMPARE(pumped, 0);
        Run without(runs, {}, {}, 0);
        QVERIFY(without.Step(1));
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
        next.Cancel();
        QVERIFY(!next.Step(2));
    }

    void RunsEndInAnyOrder()
    {
        Runs runs;
        auto first = std::make_unique<Run>(runs, Pump());
        auto second = std::make_unique<Run>(runs, Pump());
        first.reset();
        QVERIFY(runs.Any());
        runs.CancelAll();
        QVERIFY(second->Cancelled());
        second.reset();
        QVERIFY(!runs.Any());
    }

    void TimersOfBothSchedulers_data()
    {
        QTest::addColumn<bool>("real");
        QTest::newRow("event loop") << true;
        QTest::newRow("by hand") << false;
    }
    void TimersOfBothSchedulers()
    {
        QFETCH(bool, real);
        const auto scheduler = MakeScheduler(real);
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
        QVERIFY(!repeating->IsRunning());
        for (const auto &timer : {repeating.get(), oneShot.get(), stopped.get(), destroyed.get()})
            timer->Start();
        QVERIFY(repeating->IsRunning());
        stopped->Stop();
        QVERIFY(!stopped->IsRunning());
        destroyed.reset();
        QCOMPARE(idle, 0); // never from inside the call
        Wait(*scheduler, [&] { return ticks >= 3 && once == 1; });
        QVERIFY(ticks >= 3);
        QCOMPARE(QString(u"%1 %2 %3"_qs.arg(once).arg(idle).arg(never)), u"1 2 0"_qs);
        repeating->Stop();
        const int before = ticks;
        const auto later = scheduler->Make(15, [&] { ++once; });
        later->Start();
        Wait(*scheduler, [&] { return once == 2; });
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

    void TicksByHandComeInTheirOrder()
    {
        ManualScheduler scheduler;
        QStringList seen;
        const auto note = [&](const QString &name) {
            return [&, name] { seen << QString(name + QString::number(scheduler.Now())); };
        };
        const auto slow = scheduler.Make(300, note(u"slow"_qs)), quick = scheduler.Make(100, note(u"quick"_qs));
        slow->Start();
        quick->Start();
        scheduler.WhenIdle(note(u"idle"_qs));
        scheduler.Advance(299);
        QCOMPARE(seen, (QStringList{u"idle0"_qs, u"quick100"_qs, u"quick200"_qs}));
        quick->Start(); // anew: its next tick is at 399
        scheduler.Advance(101);
        QCOMPARE(seen.mid(3), (QStringList{u"slow300"_qs, u"quick399"_qs}));
        QCOMPARE(scheduler.RunningTimers(), 2);
        QCOMPARE(scheduler.Now(), 400);
    }

private:
    static std::unique_ptr<Scheduler> MakeScheduler(bool real)
    {
        if (real)
            return std::make_unique<EventLoopScheduler>();
        return std::make_unique<ManualScheduler>();
    }
    static void Wait(Scheduler &scheduler, const std::function<bool()> &done)
    {
        if (auto *manual = dynamic_cast<ManualScheduler *>(&scheduler))
            manual->Advance(20);
        else
            QVERIFY(QTest::qWaitFor(done, 5000));
    }
};

TORDILLO_TEST(TestRun)
#include "TestRun.moc"
