// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Conversions.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace Conversions;

class TestConversions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void NumberAtTheHead()
    {
        const std::pair<const char *, double> rows[] = {{"", 0}, {"70cm 435.100", 70}, {" 1 5 ", 15}, {"-3.5x", -3.5},
            {"3,5", 3}, {"1.2.3", 1.2}, {"12e+", 12}, {"1D2", 100}, {"--3", 0}};
        for (const auto &[text, number] : rows)
            QCOMPARE(LeadingNumber(QString::fromLatin1(text)), number);
    }
    void RoundsHalfToEvenAndStaysInRange()
    {
        QCOMPARE(RoundHalfEven(0.5), 0);
        QCOMPARE(RoundHalfEven(1.5), 2);
        QCOMPARE(RoundHalfEven(-2.5), -2);
        QCOMPARE(LeadingInteger(u"99999999999"), std::numeric_limits<int>::max());
        QCOMPARE(LeadingInteger(u"-99999999999"), std::numeric_limits<int>::min());
    }

    void WhatCountsAsADate()
    {
        const std::pair<QString, QDate> rows[] = {{u"31/12/2026"_qs, {2026, 12, 31}},
            {u"2026-12-31"_qs, {2026, 12, 31}}, {u"1/2/26"_qs, {2026, 2, 1}}, {u"1/2/30"_qs, {1930, 2, 1}},
            {u"02/25/2026"_qs, {2026, 2, 25}}, // month first where nothing else fits
            {u"29/02/2026"_qs, {}}, {u"12/2026"_qs, {}}, {u"+1/02/2026"_qs, {}}, {{}, {}}};
        for (const auto &[text, date] : rows)
            QCOMPARE(ParseDate(text).value_or(QDate()), date);
    }
    void WhatCountsAsATime()
    {
        QCOMPARE(ParseTime(u"9:5"), QTime(9, 5));
        QCOMPARE(ParseTime(u" 23:59:58 "), QTime(23, 59, 58));
        for (const char16_t *bad : {u"24:00", u"12:60", u"1200", u"12:", u"", u"001:00", u"1:2:3:4"})
            QVERIFY2(!ParseTime(QStringView(bad)), qPrintable(QStringView(bad).toString()));
    }

    void StoredFormsGoThereAndBack()
    {
        QCOMPARE(StoredDate(u"01/02/2026"), u"2026-02-01"_qs);
        QCOMPARE(ShownDate(u"2026-02-01"), u"01/02/2026"_qs);
        QCOMPARE(StoredTime(u"9:05"), u"09:05:00"_qs);
        QCOMPARE(ShownTime(u"09:05:59"), u"09:05"_qs);
        QCOMPARE(ShownDate(u"20-13 x"), u"20/13/x"_qs);
    }

    void MinutesAreCountedByTheirBoundaries()
    {
        const QDate day(2026, 11, 24);
        QCOMPARE(MinutesBetween({day, QTime(10, 0, 59)}, {day, QTime(10, 1, 0)}), 1);
        QCOMPARE(MinutesBetween({day, QTime(10, 1, 0)}, {day, QTime(10, 1, 59)}), 0);
        QCOMPARE(MinutesBetween({day, QTime(10, 1, 0)}, {day, QTime(10, 0, 59)}), -1);
    }

    void PaddingIsOneLongerThanTheWidth()
    {
        QCOMPARE(PadRight(u"ab", 5), u"ab    "_qs);
        QCOMPARE(PadRight(u"abcdef", 5), u"abcdef "_qs);
        QCOMPARE(PadZeros(u"7", 3), u"007"_qs);
        QCOMPARE(PadZeros(u"1234", 3), u"1234"_qs);
    }
};

TORDILLO_TEST(TestConversions)
#include "TestConversions.moc"
