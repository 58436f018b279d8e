// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Logbook.h"
#include "keyer/KeyerReport.h"
#include "support/FixedClock.h"
#include "support/ManualPacer.h"
#include "support/ManualScheduler.h"
#include "support/RecordingPorts.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestCwKeyer : public QObject {
    Q_OBJECT

    // What the line did since the last look, "0+ 60- 105+": milliseconds since the text was started.
    QString Edges()
    {
        QStringList edges;
        for (const QString &line : ports_->Taken())
            if (line.contains(u" DTR ") && !line.endsWith(u"low"))
                edges << line.section(u' ', 0, 0) + (line.endsWith(u'1') ? u'+' : u'-');
        return edges.join(u' ');
    }
    void Send(const QString &text)
    {
        start_ = time_->now;
        keyer_->Append(text);
        keyer_->CwSendPending();
    }
    void Advance(double milliseconds)
    {
        time_->Advance(milliseconds);
        QCoreApplication::processEvents();
    }

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        logbook_ = std::make_unique<Logbook>(folder_->path(), files_, clock_);
        ports_ = std::make_unique<RecordingPorts>();
        time_ = std::make_shared<ManualPacer::Time>();
        start_ = time_->now;
        ports_->clock = [this] { return double(time_->now - start_) / 1000; };
        lines_ = std::make_unique<SerialLines>(*logbook_, *ports_);
        keyer_ = std::make_unique<CwKeyer>(*lines_, std::make_unique<ManualPacer>(time_), scheduler_);
        QVERIFY(keyer_->Choose(u"COM1"_qs));
        ports_->Taken();
    }
    void cleanup()
    {
        keyer_.reset();
        lines_.reset();
    }

    // An element is measured from the start of the run, not from the element before.
    void ATextOnTheLine()
    {
        Send(u"E A"_qs);
        Advance(1000);
        QCOMPARE(Edges(), u"0+ 60- 225+ 285- 330+ 510-"_qs);
        const CwKeyer::View view = keyer_->Shown();
        QCOMPARE(view.sent, u"E A"_qs);
        QVERIFY(!view.running && !view.keyed);
        QCOMPARE(keyer_->LastTiming().edges, 6);
    }

    void MarksChangeTheSpeedOnTheWay()
    {
        Send(u">>e<<e"_qs);
        QCOMPARE(keyer_->Shown().speed, 28);
        QVERIFY(keyer_->Shown().speedByMark);
        Advance(1000);
        QCOMPARE(Edges(), u"0+ 44- 121+ 181-"_qs); // 44 + 33 + 44
        QCOMPARE(keyer_->Shown().speed, 20);
        QCOMPARE(keyer_->Shown().sent, u">>E<<E"_qs);
        // The operator's change holds from the next character on.
        Send(u"ee"_qs);
        keyer_->SetSpeed(40);
        Advance(1000);
        QCOMPARE(Edges(), u"0+ 60- 165+ 195-"_qs);
        QVERIFY(!keyer_->Shown().speedByMark);
    }

    void StopEndsWithTheCharacter()
    {
        Send(u"ao"_qs);
        Advance(100);
        keyer_->Stop();
        Advance(2000);
        QCOMPARE(Edges(), u"0+ 60- 105+ 285-"_qs);
        QVERIFY(!keyer_->IsRunning());
        // Nothing of the old text is left, and a stop with nothing under way does not cut the next one.
        keyer_->Stop();
        Send(u"ee"_qs);
        Advance(1000);
        QCOMPARE(Edges(), u"0+ 60- 165+ 225-"_qs);
    }

    void ATextDuringATextGoesOnBehindIt()
    {
        Send(u"ee"_qs);
        Advance(30);
        keyer_->Append(u"t"_qs);
        keyer_->CwSendPending();
        QCOMPARE(keyer_->Shown().sent, QString());
        Advance(1000);
        QCOMPARE(Edges(), u"0+ 60- 165+ 225- 330+ 510-"_qs);
        QCOMPARE(keyer_->Shown().sent, u"ET"_qs);
        // A stop before the nested run is only seen by it, behind its first character; one after it ends both.
        for (const bool stopFirst : {true, false}) {
            Send(u"eeee"_qs);
            Advance(30);
            if (stopFirst)
                keyer_->Stop();
            keyer_->CwSendPending();
            if (!stopFirst)
                keyer_->Stop();
            Advance(1000);
            QCOMPARE(Edges(), stopFirst ? u"0+ 60- 165+ 225-"_qs : u"0+ 60-"_qs);
        }
    }

    void ReplacedText()
    {
        Send(u"eee"_qs);
        Advance(30);
        keyer_->Replace(u"t"_qs);
        keyer_->CwSendPending();
        Advance(1000);
        QCOMPARE(Edges(), u"0+ 60- 165+ 345-"_qs);
        Send({});
        QVERIFY(!keyer_->IsRunning());
        QCOMPARE(keyer_->Shown().sent, QString());
    }

    void LongTextsLoseTheirTail()
    {
        Send(QString(10'000, u'e'));
        for (int i = 0; i < 1000 && keyer_->IsRunning(); ++i)
            Advance(1000);
        QCOMPARE(keyer_->Shown().sent.size(), 501);
    }

    void QuotesAndLineEnds()
    {
        Send(u"e\"e\ne\re"_qs);
        Advance(1000);
        // A quote and a line feed take no time, a carriage return one unit more.
        QCOMPARE(Edges(), u"0+ 60- 165+ 225- 330+ 390- 555+ 615-"_qs);
    }

    void ManualKey()
    {
        start_ = time_->now;
        keyer_->CwKeyDown();
        Advance(200);
        QVERIFY(keyer_->Shown().keyed);
        keyer_->CwKeyUp();
        QCOMPARE(Edges(), u"0+ 200-"_qs);
        // While a text is sent a release does not cut the pattern in hand.
        Send(u"t"_qs);
        Advance(50);
        keyer_->CwKeyUp();
        keyer_->CwKeyDown();
        keyer_->CwKeyUp();
        Advance(1000);
        QCOMPARE(Edges(), u"0+ 50+ 180-"_qs);
    }

    void AKeyThatNobodyOpens()
    {
        QSignalSpy held(keyer_.get(), &CwKeyer::HeldTooLong);
        start_ = time_->now;
        keyer_->CwKeyDown();
        Advance(60'000);
        QCOMPARE(Edges(), u"0+ 10000-"_qs);
        QCOMPARE(held.size(), 1);
        // A pacer that stands still in a dash: the window's watchdog forces the line.
        Send(u"t"_qs);
        time_->service = {};
        time_->now += 10'500'000;
        scheduler_.Advance(1000);
        QCOMPARE(held.size(), 1);
        time_->now += 1'000'000;
        scheduler_.Advance(3000);
        QCOMPARE(held.size(), 2);
        QVERIFY(!keyer_->Shown().keyed);
        QVERIFY(ports_->Taken().join(u',').endsWith(u"ttyS0 DTR low"));
    }

    // It raised the line and cannot lower it any more: then the port goes, and the system lowers it.
    void AnOrderThatFailsLeavesThePort()
    {
        QSignalSpy lost(keyer_.get(), &CwKeyer::LineLost);
        ports_->deafToOff = true;
        Send(u"ee"_qs);
        Advance(1000);
        QCOMPARE(lost.size(), 1);
        QCOMPARE(keyer_->Shown().sent, u"EE"_qs);
        QVERIFY2(ports_->Taken().join(u',').endsWith(u"RTS low,60 /dev/ttyS0 DTR low,60 close /dev/ttyS0"), "");
    }

    // A line chosen while the key is closed: it opens where it was closed.
    void ALineChosenWhileKeyed()
    {
        keyer_->CwKeyDown();
        keyer_->SetLine(ModemLine::RTS);
        keyer_->CwKeyUp();
        keyer_->CwKeyDown();
        keyer_->CwKeyUp();
        QCOMPARE(ports_->Taken().join(u',').remove(u"0 /dev/ttyS0 "_qs), u"DTR 1,DTR 0,RTS 1,RTS 0"_qs);
    }

    void Silence()
    {
        Send(u"t"_qs);
        Advance(10);
        lines_->Silence();
        QVERIFY(keyer_->Choose(u"COM1"_qs));
        Advance(2000);
        Send(u"e"_qs);
        Advance(2000);
        const QString record = ports_->Taken().join(u',');
        QVERIFY2(record.contains(u"10 /dev/ttyS0 DTR 0,10 close") && record.count(u"DTR 1") == 1, qPrintable(record));
    }

    // After a standstill the elements keep their lengths instead of being hurried through.
    void AStandstillIsNotMadeUpFor()
    {
        Send(u"h"_qs);
        Advance(70);
        time_->now += 500'000;
        time_->Serve(time_->now);
        Advance(1000);
        QCOMPARE(Edges(), u"0+ 60- 570+ 630- 675+ 735- 780+ 840-"_qs);
    }

    void WithoutALine()
    {
        QSignalSpy lost(keyer_.get(), &CwKeyer::LineLost);
        ports_->gone << u"/dev/ttyS0"_qs;
        Send(u"ee"_qs);
        Advance(1000);
        QVERIFY(!keyer_->IsRunning());
        QCOMPARE(keyer_->Shown().sent, u"EE"_qs);
        QCOMPARE(lost.size(), 1); // told once
        ports_->gone.clear();
        QVERIFY(keyer_->Choose(u"COM1"_qs));
        Send(u"e"_qs);
        Advance(1000);
        QCOMPARE(Edges(), u"0+ 60-"_qs);

        ports_->refused[u"/dev/ttyS1"_qs] = {u"No hay permiso"_qs};
        QVERIFY(!keyer_->Choose(u"COM2"_qs));
        QVERIFY(keyer_->Choose(u"Ninguno"_qs));
        Send(u"e"_qs);
        QVERIFY(keyer_->Shown().keyed); // practice shows what would be keyed
        Advance(1000);
        QCOMPARE(Edges(), QString());
        QCOMPARE(lost.size(), 1);
    }

    void WhatATrialSays()
    {
        const auto said = [](double mean, double largest, bool realTime, const QString &hint) {
            return ReportTiming({12, mean, largest}, realTime, hint);
        };
        const KeyerReport good = said(60, 1240, false, u"lento"_qs);
        QCOMPARE(good.figures, u"Flancos: 12     Error medio: 0,06 ms     Error mayor: 1,24 ms"_qs);
        QCOMPARE(good.advice, u"La manipulación es buena."_qs);
        const QString slow = said(60, 2100, false, u"lento"_qs).advice;
        QVERIFY(slow.contains(u"\nlento\n") && slow.contains(u"rtprio"));
        QVERIFY(said(600, 900, true, {}).advice.contains(u"otro adaptador"));
    }

    // The end of the program in the middle of a dash.
    void GoingAwayOpensTheKey()
    {
        keyer_->SetLine(ModemLine::RTS);
        Send(u"t"_qs);
        Advance(10);
        keyer_.reset();
        const QStringList record = ports_->Taken();
        QVERIFY2(record.join(u',').contains(u"RTS 1,10 /dev/ttyS0 RTS 0,10 close /dev/ttyS0"),
            qPrintable(record.join(u',')));
    }

private:
    std::unique_ptr<QTemporaryDir> folder_;
    FileSystem files_;
    FixedClock clock_;
    std::unique_ptr<Logbook> logbook_;
    std::unique_ptr<RecordingPorts> ports_;
    std::shared_ptr<ManualPacer::Time> time_;
    std::unique_ptr<SerialLines> lines_;
    ManualScheduler scheduler_;
    std::unique_ptr<CwKeyer> keyer_;
    qint64 start_ = 0;
};

TORDILLO_TEST(TestCwKeyer)
#include "TestCwKeyer.moc"
