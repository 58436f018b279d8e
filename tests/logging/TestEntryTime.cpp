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

    void TheClockShowsUtc()
    {
        const QDateTime evening(QDate(2026, 12, 31), QTime(22, 30, 59));
        // The clocks skip 02:00 to 03:00 on this day.
        const QDateTime spring(QDate(2026, 3, 8), QTime(1, 30), Qt::UTC);
        const std::tuple<QDateTime, QString, QString> rows[] = {{evening, u"-3"_qs, u"01/01/2027 01:30"_qs},
            {evening, u"-3,5"_qs, u"01/01/2027 02:00"_qs}, {evening, u"5.75"_qs, u"31/12/2026 16:45"_qs},
            {evening, u"?"_qs, u"31/12/2026 22:30"_qs}, {spring, u"-1"_qs, u"08/03/2026 02:30"_qs},
            {evening, u"1e300"_qs, u"20/11/2026 06:30"_qs}};
        for (const auto &[local, offset, expected] : rows) {
            const EntryTime::DateAndTime fields = EntryTime::ClockFields(local, offset);
            QCOMPARE(QString(fields.fecha + u' ' + fields.hora), expected);
        }
    }
    void TheRowIsInUtc()
    {
        const auto row = [](const QString &fecha, const QString &hora, bool visible, const QString &caption) {
            const auto corrected = EntryTime::CorrectedAtEntry(fecha, hora, visible, caption, u"-3");
            return corrected ? QString(corrected->fecha + u' ' + corrected->hora) : QString();
        };
        const QString day = u"31/12/2026"_qs, hour = u"23:30"_qs, lu = u"LU"_qs;
        QCOMPARE(row(day, hour, true, lu), u"01/01/2027 02:30:00"_qs);
        QCOMPARE(row(day, hour, true, u"UTC"_qs), u"31/12/2026 23:30:00"_qs); // typed as UTC
        QCOMPARE(row(day, hour, false, lu), u"31/12/2026 23:30:00"_qs); // by the clock
        QCOMPARE(row(day, u"1:2:3"_qs, true, lu), u"31/12/2026 04:02:03"_qs);
        QCOMPARE(row(u"31/1?/2026"_qs, hour, true, lu), QString());
    }

private:
    const QByteArray oldZone_ = qgetenv("TZ");
};

TORDILLO_TEST(TestEntryTime)
#include "TestEntryTime.moc"
