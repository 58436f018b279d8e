// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/EntryRules.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace EntryRules;

namespace {
EntryFields GoodEntry(const char16_t *mode = u"SSB", const char16_t *sent = u"59", const char16_t *received = u"59")
{
    EntryFields fields;
    fields.corresponsal = u"LU1ABC"_qs;
    fields.modo = QStringView(mode).toString();
    fields.rse = QStringView(sent).toString();
    fields.rsr = QStringView(received).toString();
    fields.station = u"LU9ZZZ"_qs;
    fields.operatorCall = u"LU1AAA"_qs;
    return fields;
}
} // namespace

class TestEntryRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // One report by both rules: when its field is left, and at each Enter.
    void Reports_data()
    {
        QTest::addColumn<QString>("report");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("goodInField");
        QTest::addColumn<bool>("goodAtEnter");
        const std::tuple<const char *, const char *, bool, bool> rows[] = {{"59", "SSB", true, true},
            {"11", "FM", true, true}, {"60", "SSB", false, false}, {"69", "SSB", false, false},
            {"09", "SSB", false, false}, {"50", "SSB", false, false}, {"5", "SSB", false, false},
            {"", "SSB", false, false}, {"599", "SSB", false, false}, {"a9", "SSB", false, false},
            {"5x", "SSB", false, false}, {"59", "DV IP", true, true}, {"599", "CW", true, true},
            {"599", "Sat CW", true, true}, {"59", "CW", false, false}, {"5", "CW", false, false},
            {"", "CW", false, false}, {"999", "CW", true, false}, {"x99", "CW", true, false},
            {"509", "CW", false, true}, {"5x9", "CW", false, true}, {"590", "CW", false, false},
            {"59x", "CW", false, false}, {"5999", "CW", false, false}};
        for (const auto &[report, mode, inField, atEnter] : rows)
            QTest::addRow("%s %s", mode, report)
                << QString::fromLatin1(report) << QString::fromLatin1(mode) << inField << atEnter;
    }
    void Reports()
    {
        QFETCH(QString, report);
        QFETCH(QString, mode);
        QFETCH(bool, goodInField);
        QFETCH(bool, goodAtEnter);
        QCOMPARE(ValidateReport(report, mode), goodInField ? 0 : 1);
        EntryFields fields = GoodEntry();
        fields.modo = mode;
        fields.rse = fields.rsr = ReportForMode(mode);
        fields.rsr = report;
        QCOMPARE(ValidateEntry(fields), goodAtEnter ? QString() : u"Reporte Recibido no válido!"_qs);
        std::swap(fields.rse, fields.rsr);
        QCOMPARE(ValidateEntry(fields), goodAtEnter ? QString() : u"Reporte Enviado no válido!"_qs);
        QCOMPARE(BadReportMessage(u"5"), u"el Reporte 5 no es válido!"_qs);
    }

    void WhatKeepsEnterFromGoingOn_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("sent");
        QTest::addColumn<QString>("received");
        QTest::addColumn<bool>("viaSatellite");
        QTest::addColumn<QString>("message");
        QTest::addColumn<EntryFocus>("focus");
        QTest::addColumn<bool>("critical");
        const QString good = u"59"_qs, bad = u"60"_qs, call = u"LU1ABC"_qs;
        using enum EntryFocus;
        QTest::newRow("nothing") << call << good << good << false << QString() << Corresponsal << false;
        QTest::newRow("no call") << QString() << bad << bad << true << u"Falta el Corresponsal!"_qs << Corresponsal
                                 << false;
        QTest::newRow("RSR first") << call << bad << bad << true << u"Reporte Recibido no válido!"_qs << Rsr << false;
        QTest::newRow("RSE") << call << bad << good << true << u"Reporte Enviado no válido!"_qs << Rse << false;
        QTest::newRow("satellite") << u"LU9ZZZ"_qs << good << good << true << u"Elija un satélite!"_qs << Satellite
                                   << false;
        QTest::newRow("own station") << u"LU9ZZZ"_qs << good << good << false << u"QSO con la propia estación???"_qs
                                     << Corresponsal << true;
        QTest::newRow("operator") << u"LU1AAA"_qs << good << good << false << u"QSO con el Operador???"_qs
                                  << Corresponsal << true;
    }
    void WhatKeepsEnterFromGoingOn()
    {
        QFETCH(QString, call);
        QFETCH(QString, sent);
        QFETCH(QString, received);
        QFETCH(bool, viaSatellite);
        QFETCH(QString, message);
        EntryFields fields = GoodEntry();
        fields.corresponsal = call;
        fields.rse = sent;
        fields.rsr = received;
        fields.viaSatellite = viaSatellite;
        const std::optional<WalkRefusal> refusal = RefuseWalk(fields);
        QCOMPARE(refusal.has_value(), !message.isEmpty());
        if (!refusal)
            return;
        QCOMPARE(refusal->message, message);
        QTEST(refusal->focus, "focus");
        QTEST(refusal->icon == WalkRefusal::Icon::Critical, "critical");
    }

    void TheWalkOfEnter()
    {
        using enum EntryFocus;
        const auto walk = [](bool manual, bool satellite) {
            QList<EntryFocus> fields{Corresponsal};
            while (const auto next = NextEntryField(int(fields.last()) + 1, manual, satellite))
                fields << *next;
            return fields;
        };
        QCOMPARE(walk(false, false), (QList{Corresponsal, Rse, Rsr, Kilohertz, Grid, Obs}));
        QCOMPARE(walk(true, false), (QList{Corresponsal, Fecha, Hora, Rse, Rsr, Kilohertz, Grid, Obs}));
        QCOMPARE(walk(false, true), (QList{Corresponsal, Rse, Rsr, Grid, Obs}));
        QVERIFY(!NextEntryField(0, false, false));
    }

    void DateField_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("good");
        const std::tuple<const char *, const char *, bool> rows[] = {{"24/11/2026", "24/11/2026", true},
            {"24/11/", "24/11/2000", true}, {"24/11/xx", "24/11/2000", true}, {"24/11/0000", "24/11/2000", true},
            {"29/02/2028", "29/02/2028", true}, {"29/02/2026", "29/02/2026", false},
            {"31/04/2026", "31/04/2026", false}, {"32/01/2026", "32/01/2026", false},
            {"02/25/2026", "02/25/2026", false}, {"00/01/2026", "00/01/2026", false}, {"24/11/26", "24/11/26", false},
            {"24/11", "24/112000", false}, {"24", "242000", false}, {"2?/11/2026", "2?/11/2026", false},
            {"24/11/20266", "24/11/20266", false}, {"", "", false}};
        for (const auto &[typed, shown, good] : rows)
            QTest::newRow(typed) << QString::fromLatin1(typed) << QString::fromLatin1(shown) << good;
    }
    void DateField()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(bool, good);
        const FieldCheck check = CheckFecha(typed);
        QCOMPARE(check.text, shown);
        const QString refusal = u"la Fecha " + shown + u" no es válida!\nFormato: dd/mm/aaaa";
        QCOMPARE(check.message, good ? QString() : refusal);
    }

    void DashesOfARefusedDateBecomeSlashes()
    {
        const FieldCheck check = CheckFecha(u"24-11-2026");
        QCOMPARE(check.message, u"la Fecha 24-11-2026 no es válida!\nFormato: dd/mm/aaaa"_qs);
        QCOMPARE(CheckFecha(check.text).message, QString());
    }

    void TimeField()
    {
        const std::pair<const char *, const char *> good[] = {
            {"09:05", "09:05"}, {"9:5", "09:05"}, {"23:59", "23:59"}, {"00:00", "00:00"}, {"21:15:30", "21:15"}};
        for (const auto &[typed, shown] : good) {
            const FieldCheck check = CheckHora(QString::fromLatin1(typed));
            QCOMPARE(check.text, QString::fromLatin1(shown));
            QCOMPARE(check.message, QString());
        }
        for (const char *bad : {"", "24:00", "12:60", "2115", "1?:30", ":", "12:"}) {
            const QString typed = QString::fromLatin1(bad);
            const FieldCheck check = CheckHora(typed);
            QCOMPARE(check.text, typed);
            QCOMPARE(check.message, QString(u"la Hora " + typed + u" no es válida!\nFormato: hh:mm"));
        }
    }

    void GridIsCutWhileItIsTyped()
    {
        const std::pair<const char *, const char *> rows[] = {{"", ""}, {"G", "G"}, {"1", ""}, {"G1", "G"},
            {"GFA", "GF"}, {"GF05", "GF05"}, {"GF0?", "GF0"}, {"GF051", "GF05"}, {"GF05AB", "GF05AB"},
            {"GF05Ab", "GF05A"}, {"GF05AB1", "GF05AB1"}, {"GF05ABC", "GF05AB"}, {"11", "1"}, {"1A", "1A"}};
        for (const auto &[typed, kept] : rows)
            QCOMPARE(CutBadGridCharacter(QString::fromLatin1(typed)), QString::fromLatin1(kept));
        for (int length = 0; length < 9; ++length) {
            QCOMPARE(GridLengthAllowed(length, GridOf::OwnStation), length == 0 || length == 6);
            QCOMPARE(GridLengthAllowed(length, GridOf::Correspondent), length == 0 || length == 4 || length == 6);
        }
    }

    void KeysThatAFieldTakes()
    {
        const QString typed = u"lu1-ñB/c:2?*Ñı +"_qs;
        QCOMPARE(FilterText(typed, KeyFilter::Callsign), u"LU1B/C2?"_qs);
        QCOMPARE(FilterText(typed, KeyFilter::Grid), u"LU1BC2?"_qs);
        QCOMPARE(FilterText(typed, KeyFilter::Date), u"1/2?"_qs);
        QCOMPARE(FilterText(typed, KeyFilter::Time), u"1:2?"_qs);
        QCOMPARE(FilterText(typed, KeyFilter::Digits), u"12?"_qs);
        QCOMPARE(FilterText(typed, KeyFilter::UtcOffset), u"1-2?"_qs);
        QCOMPARE(FilterKey(u'٣', KeyFilter::Digits), std::nullopt);
    }
};

TORDILLO_TEST(TestEntryRules)
#include "TestEntryRules.moc"
