// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/EntryRules.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace EntryRules;

namespace {
EntryFields GoodEntry()
{
    EntryFields fields;
    fields.corresponsal = u"LU1ABC"_qs;
    fields.modo = u"SSB"_qs;
    fields.rse = fields.rsr = u"59"_qs;
    fields.station = u"LU9ZZZ"_qs;
    fields.operatorCall = u"LU1AAA"_qs;
    return fields;
}
} // namespace

class TestEntryRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // One report by both rules: when its field is left, and at each Enter.
    void Reports()
    {
        const std::tuple<const char *, const char *, bool, bool> rows[] = {{"59", "SSB", true, true},
            {"11", "FM", true, true}, {"60", "SSB", false, false}, {"09", "SSB", false, false},
            {"50", "SSB", false, false}, {"", "SSB", false, false}, {"599", "SSB", false, false},
            {"59", "DV IP", true, true}, {"599", "Sat CW", true, true}, {"59", "CW", false, false},
            {"999", "CW", true, false}, {"x99", "CW", true, false}, {"509", "CW", false, true},
            {"5x9", "CW", false, true}, {"590", "CW", false, false}, {"5999", "CW", false, false}};
        for (const auto &[text, modeText, goodInField, goodAtEnter] : rows) {
            const QString report = QString::fromLatin1(text), mode = QString::fromLatin1(modeText);
            QCOMPARE(ValidateReport(report, mode), goodInField ? 0 : 1);
            EntryFields fields = GoodEntry();
            fields.modo = mode;
            fields.rse = ReportForMode(mode);
            fields.rsr = report;
            QCOMPARE(ValidateEntry(fields), goodAtEnter ? QString() : u"Reporte Recibido no válido!"_qs);
            std::swap(fields.rse, fields.rsr);
            QCOMPARE(ValidateEntry(fields), goodAtEnter ? QString() : u"Reporte Enviado no válido!"_qs);
        }
    }

    void WhatKeepsEnterFromGoingOn()
    {
        using enum EntryFocus;
        // From the last reason to the first: each is found before those that are already there.
        EntryFields fields = GoodEntry();
        QVERIFY(!RefuseWalk(fields));
        const auto expect = [&](const QString &message, EntryFocus focus, bool critical) {
            const std::optional<WalkRefusal> refusal = RefuseWalk(fields);
            QVERIFY2(refusal && refusal->message == message, qPrintable(message));
            QVERIFY(refusal->focus == focus && (refusal->icon == WalkRefusal::Icon::Critical) == critical);
        };
        fields.corresponsal = fields.operatorCall;
        expect(u"QSO con el Operador???"_qs, Corresponsal, true);
        fields.corresponsal = fields.station;
        expect(u"QSO con la propia estación???"_qs, Corresponsal, true);
        fields.viaSatellite = true;
        expect(u"Elija un satélite!"_qs, Satellite, false);
        fields.rse = u"60"_qs;
        expect(u"Reporte Enviado no válido!"_qs, Rse, false);
        fields.rsr = u"60"_qs;
        expect(u"Reporte Recibido no válido!"_qs, Rsr, false);
        fields.corresponsal.clear();
        expect(u"Falta el Corresponsal!"_qs, Corresponsal, false);
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

    void DateField()
    {
        const std::tuple<const char *, const char *, bool> rows[] = {{"24/11/2026", "24/11/2026", true},
            {"24/11/", "24/11/2000", true}, {"24/11/xx", "24/11/2000", true}, {"29/02/2026", "29/02/2026", false},
            {"02/25/2026", "02/25/2026", false}, {"24/11/26", "24/11/26", false}, {"24/11", "24/112000", false},
            {"2?/11/2026", "2?/11/2026", false}, {"24/11/20266", "24/11/20266", false}, {"", "", false}};
        for (const auto &[typed, text, good] : rows) {
            const QString shown = QString::fromLatin1(text);
            const FieldCheck check = CheckFecha(QString::fromLatin1(typed));
            QCOMPARE(check.text, shown);
            const QString refusal = u"la Fecha " + shown + u" no es válida!\nFormato: dd/mm/aaaa";
            QCOMPARE(check.message, good ? QString() : refusal);
        }
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
            {"9:5", "09:05"}, {"23:59", "23:59"}, {"21:15:30", "21:15"}};
        for (const auto &[typed, shown] : good) {
            const FieldCheck check = CheckHora(QString::fromLatin1(typed));
            QCOMPARE(check.text, QString::fromLatin1(shown));
            QCOMPARE(check.message, QString());
        }
        for (const char *bad : {"", "24:00", "2115", "1?:30", "12:"}) {
            const QString typed = QString::fromLatin1(bad);
            const FieldCheck check = CheckHora(typed);
            QCOMPARE(check.text, typed);
            QCOMPARE(check.message, QString(u"la Hora " + typed + u" no es válida!\nFormato: hh:mm"));
        }
    }

    void GridIsCutWhileItIsTyped()
    {
        const std::pair<const char *, const char *> rows[] = {{"1", ""}, {"G1", "G"}, {"GFA", "GF"}, {"GF0?", "GF0"},
            {"GF051", "GF05"}, {"GF05Ab", "GF05A"}, {"GF05AB1", "GF05AB1"}, {"GF05ABC", "GF05AB"}, {"11", "1"},
            {"1A", "1A"}};
        for (const auto &[typed, kept] : rows)
            QCOMPARE(CutBadGridCharacter(QString::fromLatin1(typed)), QString::fromLatin1(kept));
        QCOMPARE(TidyGrid(u"1G", u""), u"G"_qs); // pasted: each character in its turn
        QCOMPARE(TidyGrid(u"99999A", u"GF05AB"), u"A"_qs); // over all that was there
        QCOMPARE(TidyGrid(u"11", u"1"), u"1"_qs); // typed: only the last one is looked at
        QCOMPARE(TidyGrid(u"gf05a", u"gf05ab"), u"gf05"_qs); // and taken away
        for (int length = 0; length < 9; ++length) {
            QCOMPARE(GridLengthAllowed(length, GridOf::OwnStation), length == 0 || length == 6);
            QCOMPARE(GridLengthAllowed(length, GridOf::Correspondent), length == 0 || length == 4 || length == 6);
        }
    }

    void KeysThatAFieldTakes()
    {
        const QString typed = u"lu1-ñB/c:2?*Ñı +"_qs;
        const std::pair<KeyFilter, QString> filters[] = {
            {KeyFilter::Callsign, u"LU1B/C2?"_qs}, {KeyFilter::Date, u"1/2?"_qs}, {KeyFilter::UtcOffset, u"1-2?"_qs}};
        for (const auto &[filter, kept] : filters) {
            QString passed;
            for (const QChar key : typed)
                if (const auto c = FilterKey(key, filter))
                    passed += *c;
            QCOMPARE(passed, kept);
        }
        QCOMPARE(FilterKey(u'٣', KeyFilter::Digits), std::nullopt);
    }
};

TORDILLO_TEST(TestEntryRules)
#include "TestEntryRules.moc"
