// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/CallInfo.h"
#include "logging/Provinces.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestCallRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ShapeOfACall()
    {
        const std::tuple<QString, bool, bool> rows[] = {{u"LU1?BC/P"_qs, true, true}, {u"/1"_qs, true, false},
            {u"lu1abc"_qs, true, false}, {u"Ñ1"_qs, true, false}, {u"LUA"_qs, false, false}, {u"123"_qs, false, false},
            {u"LU١"_qs, false, false}, {{}, false, false}};
        for (const auto &[text, loose, strict] : rows) {
            QCOMPARE(IsCallsignShape(text), loose);
            QCOMPARE(LooksLikeCallsign(text), strict);
        }
    }
    void SuffixOfAnArgentineCall()
    {
        // "-": the call is foreign.
        const std::pair<const char *, const char *> rows[] = {{"LU1ABC", "AB"}, {"lu1abc", "AB"}, {"LU10ABC", "AB"},
            {"LU", ""}, {"LU1234", "234"}, {"L21D", "D"}, {"LO7E/D", "E/"}, {"LU1234567890123AB", "2345678901"},
            {"ay1abcdefghijkl", "ABCDEFGHIJ"}, {"L", "-"}, {"", "-"}, {"L0A", "-"}, {"LX1ABC", "-"}, {"AX1ABC", "-"}};
        for (const auto &[call, suffix] : rows)
            QCOMPARE(ArgentineSuffix(QString::fromLatin1(call)).value_or(u"-"_qs), QString::fromLatin1(suffix));
    }
    void EveryLetterHasItsProvince()
    {
        const QStringList expected{u"Capital"_qs, u"Capital"_qs, u"Capital"_qs, u"Buenos Aires"_qs, u"Buenos Aires"_qs,
            u"Santa Fe"_qs, u"Chaco"_qs, u"Córdoba"_qs, u"Misiones"_qs, u"Entre Ríos"_qs, u"Tucumán"_qs,
            u"Corrientes"_qs, u"Mendoza"_qs, u"Santiago del Estero"_qs, u"Salta"_qs, u"San Juan"_qs, u"San Luis"_qs,
            u"Catamarca"_qs, u"La Rioja"_qs, u"Jujuy"_qs, u"La Pampa"_qs, u"Río Negro"_qs, u"Chubut"_qs,
            u"Tierra del Fuego"_qs, u"Neuquén"_qs, u"Antártida"_qs};
        for (int i = 0; i < 26; ++i)
            QCOMPARE(ProvinceOfSuffix(QString(QChar(u'A' + i))), expected[i]);
        for (const char16_t *none : {u"", u"a", u"1A", u"/A", u"Ñ", u"?"})
            QCOMPARE(ProvinceOfSuffix(QStringView(none)), QString());
    }

    void GAndXAreDividedBehindM()
    {
        QCOMPARE(ProvinceOfSuffix(u"GM"), u"Chaco"_qs);
        QCOMPARE(ProvinceOfSuffix(u"GN"), u"Formosa"_qs);
        QCOMPARE(ProvinceOfSuffix(u"XZ"), u"Santa Cruz"_qs);
    }

    void ProvinceOfTheRow()
    {
        const std::pair<QString, QString> rows[] = {{u"LU1ABC"_qs, u"Capital"_qs}, {u"LU1G"_qs, u"Chaco"_qs},
            {u"lu1xz"_qs, u"Santa Cruz"_qs}, {u"AZ1ABC"_qs, u"Capital"_qs}, {u"LA1ABC"_qs, {}}, {u"LU123"_qs, {}},
            {u"LU1ABC/W"_qs, u"Chubut"_qs}, {u"LU1ABC/QRP"_qs, u"San Luis"_qs}, {u"LU1ABC/xo"_qs, u"Santa Cruz"_qs},
            {u"LU1ABC/MM"_qs, {}}, {u"lu1abc/ma"_qs, {}}, {u"LU1ABC/M"_qs, u"Mendoza"_qs}, {u"LU1ABC/"_qs, {}},
            {u"W1ABC/D"_qs, {}}, {u"LU/W1ABC"_qs, u"Chubut"_qs}, {u"CE/LU1ABC/P"_qs, u"0"_qs},
            {u"LU1ABC/A/B/C"_qs, u"Capital"_qs}, {QString(5000, u'/'), {}}};
        for (const auto &[call, province] : rows)
            QCOMPARE(ArgentineProvince(call), province);
    }
};

TORDILLO_TEST(TestCallRules)
#include "TestCallRules.moc"
