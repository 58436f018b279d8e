// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Logbook.h"
#include "keyer/CwKeyer.h"
#include "support/FixedClock.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

// The real port class, the real thread and the real clock, on a pseudo terminal whose lines are recorded.
class TestRealLine : public QObject {
    Q_OBJECT

    struct Change {
        double at; // milliseconds
        QString line;
        bool on;
    };
    struct Station {
        explicit Station(const QString &folder)
            : logbook(folder, files, clock)
        {
        }
        FileSystem files;
        FixedClock clock;
        Logbook logbook;
        SystemModemPorts ports;
        SerialLines lines{logbook, ports};
        EventLoopScheduler scheduler;
    };
    QList<Change> Recorded() const
    {
        QFile file(folder_.filePath(u"record"_qs));
        QList<Change> changes;
        if (file.open(QIODevice::ReadOnly))
            while (!file.atEnd()) {
                const QStringList words = QString::fromLatin1(file.readLine()).trimmed().split(u' ');
                changes << Change{words.value(0).toDouble() / 1e6, words.value(2), words.value(3) == u"1"};
            }
        return changes;
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("TORDILLO_MODEM_LINES", QFile::encodeName(folder_.filePath(u"record"_qs)));
        master_ = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(master_ >= 0 && grantpt(master_) == 0 && unlockpt(master_) == 0);
        device_ = QString::fromLocal8Bit(ptsname(master_));
        QFile ports(folder_.filePath(u"puertos.ini"_qs));
        QVERIFY(ports.open(QIODevice::WriteOnly));
        ports.write("[puertos]\r\nCOM1=" + device_.toLatin1() + "\r\nCOM2=/dev/no-such-port\r\n");
    }
    void cleanupTestCase() { ::close(master_); }

    void KeyedInTime()
    {
        Station station(folder_.path());
        CwKeyer keyer(station.lines, MakeThreadPacer(), station.scheduler);
        QSignalSpy lost(&keyer, &CwKeyer::LineLost);
        QVERIFY(!keyer.Choose(u"COM2"_qs));
        QVERIFY(keyer.Choose(u"COM1"_qs));

        // Both lines are low right after opening, and the system would lower them after a kill as well.
        QCOMPARE(Recorded().size(), 2);
        QVERIFY(!Recorded()[0].on && !Recorded()[1].on);
        termios settings{};
        QCOMPARE(tcgetattr(master_, &settings), 0); // both ends of a pseudo terminal share them
        QVERIFY(settings.c_cflag & HUPCL);

        keyer.SetSpeed(40);
        keyer.Append(u"ees"_qs);
        keyer.CwSendPending();
        QTRY_VERIFY(!keyer.IsRunning());
        const QList<double> computed{0, 30, 82, 112, 164, 194, 216, 246, 268, 298};
        QList<Change> edges = Recorded().mid(2);
        QCOMPARE(edges.size(), computed.size());
        for (qsizetype i = 0; i < computed.size(); ++i) {
            QCOMPARE(edges[i].line, u"DTR"_qs);
            QCOMPARE(edges[i].on, i % 2 == 0);
            // Coarse on purpose: the machine may be busy with other tests. script/bench measures.
            QVERIFY(qAbs(edges[i].at - edges[0].at - computed[i]) < 30);
        }
        QCOMPARE(keyer.LastTiming().edges, 10);

        // The adapter is pulled out.
        QFile gone(folder_.filePath(u"record.gone"_qs));
        QVERIFY(gone.open(QIODevice::WriteOnly));
        keyer.Append(u"ee"_qs);
        keyer.CwSendPending();
        QTRY_COMPARE(lost.size(), 1);
        QTRY_VERIFY(!keyer.IsRunning());
        QVERIFY(gone.remove());

        QVERIFY(keyer.Choose(u"COM1"_qs));
        keyer.CwKeyDown();
        QTRY_VERIFY(Recorded().constLast().on);
    }

    // Going away in the middle of elements, again and again: nothing is driven afterwards.
    void GoingAwayWhileKeying()
    {
        Station station(folder_.path());
        for (int i = 0; i < 50; ++i) {
            CwKeyer keyer(station.lines, MakeThreadPacer(), station.scheduler);
            QVERIFY(keyer.Choose(u"COM1"_qs));
            keyer.Append(u"e"_qs);
            keyer.CwSendPending();
            QTest::qSleep(i % 3);
        }
    }

    // The keyer went away with its key closed.
    void LowAtTheEnd()
    {
        const QList<Change> changes = Recorded();
        QVERIFY(!changes.isEmpty() && !changes.last().on);
    }

private:
    QTemporaryDir folder_;
    int master_ = -1;
    QString device_;
};

TORDILLO_TEST(TestRealLine)
#include "TestRealLine.moc"
