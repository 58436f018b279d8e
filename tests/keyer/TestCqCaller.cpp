// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Logbook.h"
#include "keyer/CqCaller.h"
#include "keyer/SerialLines.h"
#include "support/FixedClock.h"
#include "support/ManualScheduler.h"
#include "support/RecordingPlayer.h"
#include "support/RecordingPorts.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using From = CqCaller::From;
Q_DECLARE_METATYPE(CqCaller::From)

// When the line of the transmitter closes and opens around a recorded CQ.
class TestCqCaller : public QObject {
    Q_OBJECT

    // Ports on COM1, the line is DTR.
    struct Station {
        Station()
        {
            logbook.configuration.ArcAudio = u"/cq.wav"_qs;
            logbook.configuration.Puerto = u"COM1"_qs;
            static_cast<void>(caller->OpenPort());
            static_cast<void>(ports.Taken());
            device = u"/dev/ttyS0"_qs;
        }
        // Each change of a line as "RTS 1".
        QStringList Lines()
        {
            QStringList lines = ports.Taken();
            for (QString &line : lines)
                line.remove(device + u' ');
            return lines;
        }
        void Play(From from)
        {
            caller->Start(from);
            player.Opens();
            static_cast<void>(ports.Taken());
            static_cast<void>(player.Taken());
        }

        QTemporaryDir folder;
        FileSystem files;
        FixedClock clock;
        Logbook logbook{folder.path(), files, clock};
        RecordingPorts ports;
        SerialLines serial{logbook, ports};
        RecordingPlayer player;
        ManualScheduler scheduler;
        std::unique_ptr<CqCaller> caller = std::make_unique<CqCaller>(logbook, serial, player, scheduler);
        QString device;
    };

private Q_SLOTS:
    void TheLineClosesAfterPlayAndOpensAsTheWindowHasIt_data()
    {
        QTest::addColumn<CqCaller::From>("from");
        QTest::addColumn<QStringList>("started"); // with the number of orders that the player had got
        QTest::addColumn<QStringList>("ended");
        const QStringList closed{u"4 /dev/ttyS0 DTR 1"_qs};
        QTest::newRow("main window") << From::Main << closed << QStringList();
        QTest::newRow("contest") << From::Contest << closed << QStringList{u"DTR 0"_qs};
        QTest::newRow("test") << From::Test << QStringList() << QStringList();
    }
    void TheLineClosesAfterPlayAndOpensAsTheWindowHasIt()
    {
        QFETCH(CqCaller::From, from);
        QFETCH(QStringList, started);
        QFETCH(QStringList, ended);
        Station station;
        QSignalSpy done(station.caller.get(), &CqCaller::Done), line(station.caller.get(), &CqCaller::LineChanged);
        station.ports.clock = [&] { return station.player.Orders(); };
        station.logbook.configuration.TAntes = station.logbook.configuration.TDespues = u"500"_qs;
        station.caller->Start(from);
        QCOMPARE(station.player.Taken(), QStringList({u"close"_qs, u"rewind"_qs, u"open"_qs}));
        QCOMPARE(station.player.File(), u"/cq.wav"_qs);
        QCOMPARE(station.ports.Taken(), QStringList()); // while the disk takes its time
        station.player.Opens();
        QCOMPARE(station.player.Taken(), QStringList{u"play"_qs});
        QCOMPARE(station.ports.Taken(), started);
        QCOMPARE(station.caller->MainHoldsPort(), from == From::Main);

        station.ports.clock = {};
        station.scheduler.Advance(60000);
        station.player.Ends();
        QCOMPARE(station.Lines(), ended);
        QCOMPARE(done.count(), 1);
        QCOMPARE(station.caller->MainHoldsPort(), from == From::Main);
        QCOMPARE(line.count(), started.size() + ended.size());

        station.caller->Escape();
        QCOMPARE(station.Lines(), QStringList{u"DTR 0"_qs});
        QCOMPARE(station.player.Taken(), QStringList({u"stop"_qs, u"close"_qs}));
        QVERIFY(!station.caller->MainHoldsPort());
    }

    void ASecondStartPlaysFromTheBeginningWithTheLineHeld()
    {
        Station station;
        station.Play(From::Contest);
        station.caller->Start(From::Contest);
        station.player.Opens();
        QCOMPARE(station.player.Taken(), QStringList({u"close"_qs, u"rewind"_qs, u"open"_qs, u"play"_qs}));
        QCOMPARE(station.Lines(), QStringList{u"DTR 1"_qs});
        // Gone meanwhile: the first is silent, nobody is to be keyed.
        station.caller->Start(From::Contest);
        station.player.Opens(u"no está"_qs);
        QCOMPARE(station.Lines(), QStringList{u"DTR 0"_qs});
    }

    void WhatCannotBePlayedLeavesTheLineOpen_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("not playable") << u"error"_qs;
        QTest::newRow("disk asleep") << u"late"_qs;
        QTest::newRow("Esc while it opens") << u"escape"_qs;
        QTest::newRow("settings opened while it opens") << u"port"_qs;
    }
    void WhatCannotBePlayedLeavesTheLineOpen()
    {
        QFETCH(QString, how);
        Station station;
        QSignalSpy refused(station.caller.get(), &CqCaller::Refused),
            progress(station.caller.get(), &CqCaller::Progress);
        station.caller->Start(From::Main);
        if (how == u"error")
            station.player.Opens(u"no es audio"_qs);
        else if (how == u"late")
            station.scheduler.Advance(10000);
        else if (how == u"escape")
            station.caller->Escape();
        else
            QVERIFY(station.caller->OpenPort());
        QCOMPARE(refused.count(), how == u"error" || how == u"late" ? 1 : 0);
        QVERIFY(station.player.CurrentMode() == AudioPlayer::Mode::Closed);
        station.player.Opens(); // at last, when nobody waits any more
        station.scheduler.Advance(60000);
        QVERIFY(!station.player.Taken().contains(u"play"_qs));
        QVERIFY(!station.Lines().contains(u"DTR 1"_qs));
        QCOMPARE(progress.count(), 0);
        QVERIFY(refused.count() <= 1);
    }

    void ProgressIsToldOnlyWhilePlayingAndOfAKnownLength()
    {
        Station station;
        QSignalSpy progress(station.caller.get(), &CqCaller::Progress);
        station.player.Plays(1, 10); // closed
        station.Play(From::Test);
        station.player.Plays(1, 0);
        station.player.Plays(300, 1000);
        QVERIFY(station.caller->StopTest());
        station.player.Plays(400, 1000);
        QCOMPARE(progress.count(), 1);
        QCOMPARE(progress.at(0), QVariantList({300, 1000}));
        QVERIFY(!station.caller->StopTest());
    }

    // The line of the settings may be another one when it is to be opened than it was when it closed.
    void NoLineOfAFormerChoiceStaysClosed()
    {
        Station station;
        station.Play(From::Main);
        station.logbook.configuration.PinPTT = true;
        station.caller->PttOn(station.caller->Line());
        QCOMPARE(station.Lines(), QStringList({u"DTR 0"_qs, u"RTS 1"_qs}));
        station.logbook.configuration.PinPTT = false;
        station.caller->Escape();
        QCOMPARE(station.Lines(), QStringList({u"DTR 0"_qs, u"RTS 0"_qs}));
    }

    void ChoosingThePortOpensTheLine()
    {
        Station station;
        QSignalSpy line(station.caller.get(), &CqCaller::LineChanged);
        station.Play(From::Main);
        station.logbook.configuration.Puerto = u"COM2"_qs;
        QVERIFY(station.caller->OpenPort());
        QCOMPARE(station.Lines(), QStringList({u"DTR 0"_qs, u"close /dev/ttyS0"_qs, u"open /dev/ttyS1"_qs}));
        QCOMPARE(line.takeLast(), QVariantList{false});
        QVERIFY(!station.caller->MainHoldsPort());
        station.ports.refused[u"/dev/ttyS0"_qs] = {u"no está"_qs, Failure::Kind::Missing};
        station.logbook.configuration.Puerto = u"COM1"_qs;
        QVERIFY(!station.caller->OpenPort());
        QCOMPARE(station.Lines(), QStringList{u"close /dev/ttyS1"_qs});
    }

    void WithoutALineTheAudioPlays_data()
    {
        QTest::addColumn<bool>("pulledOut");
        QTest::newRow("no port") << false;
        QTest::newRow("adapter pulled out") << true;
    }
    void WithoutALineTheAudioPlays()
    {
        QFETCH(bool, pulledOut);
        Station station;
        if (pulledOut)
            station.ports.gone = QStringList{station.device};
        if (!pulledOut) {
            station.logbook.configuration.Puerto = u"NINGUNO"_qs;
            QVERIFY(station.caller->OpenPort());
        }
        station.Lines();
        station.caller->Start(From::Contest);
        station.player.Opens();
        QVERIFY(station.player.CurrentMode() == AudioPlayer::Mode::Playing);
        station.player.Ends();
        // Of an adapter that is gone at least the attempt is seen.
        QCOMPARE(station.Lines().contains(u"DTR low"_qs), pulledOut);
    }

    void WhoeverGoesTakesTheLineAlong()
    {
        Station station;
        station.Play(From::Main);
        station.caller->Leave(From::Contest); // not what it started
        QCOMPARE(station.Lines(), QStringList());
        station.caller->Leave(From::Main);
        QCOMPARE(station.Lines(), QStringList{u"DTR 0"_qs});
        station.Play(From::Main);
        station.caller.reset();
        QCOMPARE(station.Lines(), QStringList{u"DTR 0"_qs});
        QVERIFY(station.player.CurrentMode() == AudioPlayer::Mode::Closed);
    }
};

TORDILLO_TEST(TestCqCaller)
#include "TestCqCaller.moc"
