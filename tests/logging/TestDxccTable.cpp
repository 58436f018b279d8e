// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CountryByScan.h"
#include "logging/DxccTable.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QRandomGenerator>
#include <QSet>
#include <QTest>

namespace {

DxccTable TableOf(const QStringList &rows)
{
    DxccTable table;
    for (const QString &row : rows)
        table.AddLine(row);
    return table;
}

QStringList SuppliedRows()
{
    QFile file(QFINDTESTDATA("../../data/dxcc.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList rows = QString::fromLatin1(file.readAll()).split(u"\r\n"_qs);
    rows.removeLast(); // behind the last line end
    return rows;
}

using Use = DxccTable::LineUse;

} // namespace

class TestDxccTable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void LongestPrefixWins()
    {
        const QString huge(5'000'000, u'A');
        const DxccTable table = TableOf({u"LU;13;14;SA;Argentina"_qs, u"  K;;;Estados Unidos  "_qs, u"KH6;Hawái"_qs,
            u"KH6;Otro"_qs, u"LU1ZA;Orcadas del Sur"_qs, u"5A;"_qs + QString(300, u'x'), u"3Y;a;b c;;Bouvet"_qs,
            u"AY; Argentina"_qs, u";nadie"_qs, huge + u';' + huge, u"   "_qs, u"W;Estados Unidos"_qs});
        // The call, its country, and what the search leaves in its argument.
        const std::tuple<QString, QString, QString> rows[] = {{u"LU1ZA"_qs, u"Orcadas del Sur"_qs, u"LU1ZA"_qs},
            {u"LU1ABC"_qs, u"Capital"_qs, u"LU"_qs}, {u"LU10ABC"_qs, {}, u"LU"_qs}, {u"LU"_qs, {}, u"LU"_qs},
            {u"LU1ABC/MM"_qs, u"Mendoza"_qs, u"LU"_qs}, {u"LU1ABC/X/Z"_qs, u"Tierra del Fuego"_qs, u"LU"_qs},
            {u"K1AB"_qs, u"Estados Unidos"_qs, u"K"_qs}, {u"KH6A"_qs, u"Hawái"_qs, u"KH6"_qs},
            {u"lu1abc"_qs, {}, u"l"_qs}, {u"5A1"_qs, QString(100, u'x'), u"5A"_qs}, {u"3Y1"_qs, u"Bouvet"_qs, u"3Y"_qs},
            {u"AY1ABC"_qs, u" Argentina"_qs, u"AY"_qs}, {huge, QString(100, u'A'), huge},
            {huge.chopped(1), {}, u"A"_qs}, {u"W1AB"_qs, {}, u"W"_qs}, {u"Q1ABC"_qs, {}, u"Q"_qs}, {{}, {}, {}}};
        for (const auto &[call, country, left] : rows) {
            QString argument = call;
            QCOMPARE(table.CountryOf(call), country);
            QCOMPARE(table.CountryOfCall(argument), country);
            QVERIFY(argument == left);
        }
    }

    void TheLastHundredRowsAreNotSearched()
    {
        DxccTable table;
        for (int i = 0; i < 22900; ++i)
            QCOMPARE(table.AddLine(QString(u"A" + QString::number(i) + u";" + QString::number(i))), Use::Searched);
        QCOMPARE(table.AddLine(u"B;22900"), Use::Searched);
        QCOMPARE(table.AddLine(u"C;22901"), Use::NeverSearched);
        while (table.Size() < 23001)
            table.AddLine(u"D;x");
        QCOMPARE(table.AddLine(u"E;x"), Use::NoRoom);
        QCOMPARE(table.Size(), 23001);
        QCOMPARE(table.CountryOf(u"B1"), u"22900"_qs);
        QCOMPARE(table.CountryOf(u"C1"), QString());
        QCOMPARE(table.CountryOf(u"A22899X"), u"22899"_qs);
        DxccTable ended; // by its first empty line
        QCOMPARE(ended.AddLine(u"no separator"), Use::NoSeparator);
        QCOMPARE(ended.Size(), 0);
        QCOMPARE(ended.AddLine(u""), Use::Searched);
        QCOMPARE(ended.AddLine(u"LU;Argentina"), Use::NeverSearched);
        QCOMPARE(ended.Size(), 2);
    }

    void SuppliedTableIsSoundAndFoundAsAScanFindsIt()
    {
        const QStringList rows = SuppliedRows();
        QVERIFY(rows.size() > 7000);
        DxccTable table;
        QSet<QString> prefixes;
        for (const QString &row : rows) {
            QCOMPARE(table.AddLine(row), Use::Searched);
            QVERIFY2(row.count(u';') == 4 && !row.endsWith(u';'), qPrintable(row));
            prefixes << row.section(u';', 0, 0);
        }
        QCOMPARE(prefixes.size(), rows.size());

        QStringList calls(prefixes.begin(), prefixes.end());
        QRandomGenerator random(20261124);
        const QString signs = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/?"_qs;
        for (int i = 0; i < 1500; ++i) {
            QString call = i % 3 ? calls[random.bounded(int(prefixes.size()))] : QString();
            for (int length = 1 + random.bounded(6); length > 0; --length)
                call += signs[random.bounded(int(signs.size()))];
            calls << call;
        }
        for (const QString &call : calls) {
            QString found = call, scanned = call;
            const QString country = table.CountryOfCall(found);
            QCOMPARE(country, CountryByScan(rows, scanned));
            QCOMPARE(found, scanned);
        }
    }

    void SuppliedTableKnowsTheWorld()
    {
        const DxccTable table = TableOf(SuppliedRows());
        const std::pair<QString, QString> rows[] = {{u"AY4EJ/D"_qs, u"Buenos Aires"_qs},
            {u"LU1ZA"_qs, u"Islas Orcadas del Sur"_qs}, {u"VP8LP"_qs, u"Islas Malvinas"_qs},
            {u"EA4URE"_qs, u"España"_qs}, {u"KH6LC"_qs, u"Hawái"_qs}, {u"3D2C"_qs, u"Arrecife Conway"_qs},
            {u"3D2CA"_qs, u"Fiyi"_qs}, {u"IT9AAA"_qs, u"Italia"_qs}, {u"LU1ZAB"_qs, u"Antártida"_qs}};
        for (const auto &[call, country] : rows)
            QCOMPARE(table.CountryOf(call), country);
        QCOMPARE(DxccTable().CountryLabel(u"JA1ABC"), u"Argentina"_qs);
        QCOMPARE(table.CountryLabel(u"LU1"), u"Argentina"_qs);
    }
};

TORDILLO_TEST(TestDxccTable)
#include "TestDxccTable.moc"
