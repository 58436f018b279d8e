// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeContest.h"

using namespace SomeContest;

class TestContestLogs : public ContestTest {
    Q_OBJECT

private Q_SLOTS:

    void AContestLivesByItsHeaderRow()
    {
        QVERIFY(ListContests(*store_)->isEmpty());
        QVERIFY(!*ContestExists(*store_, name));
        QVERIFY(CreateContest(*store_, name, SerieType::Incremental));
        QVERIFY(CreateContest(*store_, u"Ñandú"_qs, SerieType::Fija));
        QVERIFY(Store({Row({}), Row({u"LU2ABC"})}));
        const QList<ContestLog> expected{{name, SerieType::Incremental, 2}, {u"Ñandú"_qs, SerieType::Fija, 0}};
        QCOMPARE(*ListContests(*store_), expected);
        QCOMPARE(ContestsWithQsos(expected), expected.first(1));
        QCOMPARE(Value("SELECT Modo||Banda||MyCall||Estacion||Fecha||Hora||RSE||RSR||Obs||Frecuencia||'|'||LdA||'|'||"
                       "Nombre_Sat FROM Tabla2 WHERE id=1"),
            u"|CQWW|Incremental"_qs);
        QCOMPARE(Value("SELECT Operador IS NULL AND MiGrid IS NULL AND Argento IS NULL AND SOTA IS NULL "
                       "FROM Tabla2 WHERE id=1"),
            u"1"_qs);

        QVERIFY(DeleteContest(*store_, u"cqww"_qs));
        QCOMPARE(*ListContests(*store_), expected.last(1));
        QCOMPARE(Value("SELECT count(*) FROM Tabla2"), u"1"_qs);
    }

    void NamesDifferByMoreThanCase()
    {
        QCOMPARE(CleanContestName(u"'L'A''"_qs), u"LA"_qs);
        QVERIFY(!*ContestExists(*store_, QString()));
        for (const QString &created : {u"CQWW"_qs, u"AÑO"_qs, u"a\" OR 1=1 --"_qs, QString()})
            QVERIFY(CreateContest(*store_, created, SerieType::Fija));
        for (const QString &asked : {u"cqWw"_qs, u"año"_qs, u"A\" or 1=1 --"_qs, QString()})
            QVERIFY(*ContestExists(*store_, asked));
        QVERIFY(!*ContestExists(*store_, u"CQW"_qs) && !*ContestExists(*store_, u"CQ*"_qs));
        QCOMPARE(ListContests(*store_)->size(), 3);
    }

    void TwoTypesUnderOneNameShiftTheTypes()
    {
        QVERIFY(Store(*store_,
            {Row({.mode = u"", .contest = u"A", .type = u"Fija"}), Row({.contest = u"A", .type = u"Incremental"}),
                Row({.mode = u"", .contest = u"B", .type = u" Incremental "}),
                Row({.contest = u"b", .type = u"incremental"}), Row({.mode = u"", .contest = u"C", .type = u"Fija"})}));
        Sql("UPDATE Tabla2 SET Nombre_Sat=NULL WHERE LdA='C'");
        const QList<ContestLog> expected{
            {u"A"_qs, u"Fija"_qs, 1}, {u"B"_qs, u"Incremental"_qs, 1}, {u"C"_qs, u"Incremental"_qs, 0}};
        QCOMPARE(*ListContests(*store_), expected);
    }
};

TORDILLO_TEST(TestContestLogs)
#include "TestContestLogs.moc"
