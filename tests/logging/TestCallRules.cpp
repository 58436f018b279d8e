// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/CallInfo.h"
#include "logging/Provinces.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestCallRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ShapeOfACall_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("loose");
        QTest::addColumn<bool>("strict");
        QTest::newRow("call") << u"LU1ABC"_qs << true << true;
        QTest::newRow("doubtful") << u"LU1?BC/P"_qs << true << true;
        QTest::newRow("slash and digit") << u"/1"_qs << true << false;
        QTest::newRow("small letters") << u"lu1abc"_qs << true << false;
        QTest::newRow("foreign letter") << u"Ñ1"_qs << true << false;
        QTest::newRow("letters") << u"LUA"_qs << false << false;
        QTest::newRow("digits") << u"123"_qs << false << false;
        QTest::newRow("foreign digit") << u"LU١"_qs << false << false;
        QTest::newRow("empty") << QString() << false << false;
    }
    void ShapeOfACall()
    {
        QFETCH(QString, text);
        QTEST(IsCallsignShape(text), "loose");
        QTEST(LooksLikeCallsign(text), "strict");
    }

    void MessagesBeginWithTheFieldsText()
    {
        QCOMPARE(DoubtfulCallMessage(u"LU"), u"LU NO Parece ser una Señal distintiva Válida!"_qs);
        QCOMPARE(NotACallsignMessage(u"LU"), u"LU no es una señal distintiva!"_qs);
    }

    void SuffixOfAnArgentineCall_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("suffix"); // "-": the call is foreign
        const std::pair<const char *, const char *> rows[] = {{"LU1ABC", "AB"}, {"lu1abc", "AB"}, {"LU10ABC", "AB"},
            {"LW5D", "D"}, {"LU1", ""}, {"LU", ""}, {"LU123", "23"}, {"LU1234", "234"}, {"L21D", "D"}, {"L1A", ""},
            {"LO7E/D", "E/"}, {"LU1234567890123AB", "2345678901"}, {"AZ1ABC", "ABC"}, {"ay1abcdefghijkl", "ABCDEFGHIJ"},
            {"AY", ""}, {"L", "-"}, {"", "-"}, {"L0A", "-"}, {"LN1A", "-"}, {"LX1ABC", "-"}, {"LA1ABC", "-"},
            {"AX1ABC", "-"}, {"W1ABC", "-"}};
        for (const auto &[call, suffix] : rows)
            QTest::newRow(call) << QString::fromLatin1(call) << QString::fromLatin1(suffix);
    }
    void SuffixOfAnArgentineCall()
    {
        QFETCH(QString, call);
        QTEST(ArgentineSuffix(call).value_or(u"-"_qs), "suffix");
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
        QCOMPARE(ProvinceNames().size(), 25);
        QCOMPARE(ProvinceNames()[4], u"Formosa"_qs);
        QCOMPARE(ProvinceNames()[22], u"Santa Cruz"_qs);
    }

    void GAndXAreDividedBehindM()
    {
        QCOMPARE(ProvinceOfSuffix(u"GM"), u"Chaco"_qs);
        QCOMPARE(ProvinceOfSuffix(u"GN"), u"Formosa"_qs);
        QCOMPARE(ProvinceOfSuffix(u"Gm"), u"Formosa"_qs);
        QCOMPARE(ProvinceOfSuffix(u"G1"), u"Chaco"_qs);
        QCOMPARE(ProvinceOfSuffix(u"XA"), u"Tierra del Fuego"_qs);
        QCOMPARE(ProvinceOfSuffix(u"XZ"), u"Santa Cruz"_qs);
    }

    void ProvinceOfTheRow_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("province");
        QTest::newRow("plain") << u"LU1ABC"_qs << u"Capital"_qs;
        QTest::newRow("divided letter") << u"LU1GN"_qs << u"Formosa"_qs;
        QTest::newRow("lone letter") << u"LU1G"_qs << u"Chaco"_qs;
        QTest::newRow("small") << u"lu1xz"_qs << u"Santa Cruz"_qs;
        QTest::newRow("AZ") << u"AZ1ABC"_qs << u"Capital"_qs;
        QTest::newRow("foreign") << u"LA1ABC"_qs << QString();
        QTest::newRow("no suffix") << u"LU1"_qs << QString();
        QTest::newRow("digits only") << u"LU123"_qs << QString();
        QTest::newRow("from another district") << u"LU1ABC/W"_qs << u"Chubut"_qs;
        QTest::newRow("any sign is a district") << u"LU1ABC/QRP"_qs << u"San Luis"_qs;
        QTest::newRow("divided district") << u"LU1ABC/xo"_qs << u"Santa Cruz"_qs;
        QTest::newRow("at sea") << u"LU1ABC/MM"_qs << QString();
        QTest::newRow("in the air") << u"lu1abc/ma"_qs << QString();
        QTest::newRow("mobile") << u"LU1ABC/M"_qs << u"Mendoza"_qs;
        QTest::newRow("open slash") << u"LU1ABC/"_qs << QString();
        QTest::newRow("foreign before the slash") << u"W1ABC/D"_qs << QString();
        QTest::newRow("guest") << u"LU/W1ABC"_qs << u"Chubut"_qs;
        QTest::newRow("two slashes") << u"CE/LU1ABC/P"_qs << u"0"_qs;
        QTest::newRow("two slashes, Argentine") << u"LU1ABC/D/P"_qs << u"0"_qs;
        QTest::newRow("three slashes") << u"LU1ABC/A/B/C"_qs << u"Capital"_qs;
        QTest::newRow("slashes only") << QString(5000, u'/') << QString();
        QTest::newRow("many slashes") << QString(u"LU1ABC"_qs + QString(50, u'/')) << u"Capital"_qs;
        QTest::newRow("empty") << QString() << QString();
    }
    void ProvinceOfTheRow()
    {
        QFETCH(QString, call);
        QTEST(ArgentineProvince(call), "province");
    }
};

TORDILLO_TEST(TestCallRules)
#include "TestCallRules.moc"
