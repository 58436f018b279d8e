// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/EntryTime.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestEntryTime : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // A zone whose clocks jump: the corrections must not notice.
    void initTestCase() { qputenv("TZ", "America/New_York"); }
    void cleanupTestCase() { oldZone_.isNull() ? qunsetenv("TZ") : qputenv("TZ", oldZone_); }

    void TheClockShowsUtc_data()
    {
        QTest::addColumn<QDateTime>("local");
        QTest::addColumn<QString>("offset");
        QTest::addColumn<QString>("fields");
        const QDateTime evening(QDate(2026, 12, 31), QTime(22, 30, 59));
        QTest::newRow("next year") << evening << u"-3"_qs << u"01/01/2027 01:30"_qs;
        QTest::newRow("half hour") << evening << u"-3.5"_qs << u"01/01/2027 02:00"_qs;
        QTest::newRow("comma") << evening << u"-3,5"_qs << u"01/01/2027 02:00"_qs;
        QTest::newRow("east") << evening << u"5.75"_qs << u"31/12/2026 16:45"_qs;
        QTest::newRow("none") << evening << QString() << u"31/12/2026 22:30"_qs;
        QTest::newRow("no number") << evening << u"?"_qs << u"31/12/2026 22:30"_qs;
        // The clocks skip 02:00 to 03:00 on this day.
        QTest::newRow("summer time") << QDateTime(QDate(2026, 3, 8), QTime(1, 30), Qt::UTC) << u"-1"_qs
                                     << u"08/03/2026 02:30"_qs;
        QTest::newRow("absurd") << evening << u"1e300"_qs << u"20/11/2026 06:30"_qs;
    }
    void TheClockShowsUtc()
    {
        QFETCH(QDateTime, local);
        QFETCH(QString, offset);
        const EntryTime::DateAndTime fields = EntryTime::ClockFields(local, offset);
        QTEST(QString(fields.fecha + u' ' + fields.hora), "fields");
        const EntryTime::DateAndTime shown = EntryTime::LocalFields(local);
        QCOMPARE(QString(shown.fecha + u' ' + shown.hora), local.toString(u"dd/MM/yyyy HH:mm"));
    }

    void TheRowIsInUtc_data()
    {
        QTest::addColumn<QString>("fecha");
        QTest::addColumn<QString>("hora");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("row"); // empty: cannot be read
        const QString day = u"31/12/2026"_qs, hour = u"23:30"_qs, lu = u"LU"_qs;
        QTest::newRow("local") << day << hour << true << lu << u"01/01/2027 02:30:00"_qs;
        QTest::newRow("typed as UTC") << day << hour << true << u"UTC"_qs << u"31/12/2026 23:30:00"_qs;
        QTest::newRow("by the clock") << day << hour << false << lu << u"31/12/2026 23:30:00"_qs;
        QTest::newRow("seconds") << day << u"1:2:3"_qs << true << lu << u"31/12/2026 04:02:03"_qs;
        QTest::newRow("no date") << u"31/1?/2026"_qs << hour << true << lu << QString();
        QTest::newRow("no time") << day << QString() << false << lu << QString();
    }
    void TheRowIsInUtc()
    {
        QFETCH(QString, fecha);
        QFETCH(QString, hora);
        QFETCH(bool, visible);
        QFETCH(QString, caption);
        const auto row = EntryTime::CorrectedAtEntry(fecha, hora, visible, caption, u"-3");
        QTEST(row ? QString(row->fecha + u' ' + row->hora) : QString(), "row");
    }

private:
    const QByteArray oldZone_ = qgetenv("TZ");
};

TORDILLO_TEST(TestEntryTime)
#include "TestEntryTime.moc"
