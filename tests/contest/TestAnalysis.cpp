// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeContest.h"
#include "contest/Analysis.h"
#include "contest/ContestLookup.h"

#include <QRandomGenerator>

using namespace SomeContest;

namespace {

DxccTable SomeCountries()
{
    DxccTable table;
    for (const QStringView line : {u"LU;Argentina", u"CE;Chile", u"PY;Brasil", u"K;Estados Unidos"})
        table.AddLine(line);
    return table;
}

// The analysis as it is told: a statement a row, a list of keys searched from its start.
class StatementARow {
public:
    StatementARow(Session &session, const DxccTable &countries)
        : session_(session)
        , countries_(countries)
    {
    }

    void Analyse(const QString &contest)
    {
        Run(u"UPDATE Tabla2 SET Perfil='', SOTA='' WHERE \"Nombre Log\"=?"_qs, {contest});
        for (const QsoRow &row : Rows(u""_qs, {contest}, u"Fecha, Hora"_qs))
            Run(u"UPDATE Tabla2 SET Argento=?, Perfil=? WHERE id=?"_qs,
                {row.Nombre_Sat == u"Incremental" ? countries_.CountryOf(row.Estacion) : row.RSR, row.RSR,
                    QString::number(row.id)});
        const QString ofGroup = u"AND Modo=? AND Banda=? AND Argento<>''"_qs;
        for (const QString &band : Distinct(u"Banda"_qs, contest))
            for (const QString &mode : Distinct(u"Modo"_qs, contest))
                for (const QsoRow &row : Rows(ofGroup, {contest, mode, band}, u"id DESC"_qs))
                    if (AddKey(QString(row.Argento + u' ' + mode + u' ' + band)))
                        Run(u"UPDATE Tabla2 SET SOTA=? WHERE id=?"_qs, {row.Argento, QString::number(row.id)});
        list7_.clear();
        for (const QString &band : Distinct(u"Banda"_qs, contest))
            for (const QString &mode : Distinct(u"Modo"_qs, contest))
                for (const QsoRow &row : Rows(ofGroup, {contest, mode, band}, u"Fecha, Hora, id"_qs))
                    if (!AddKey(QString(row.Estacion + u' ' + mode + u' ' + band)))
                        Run(u"UPDATE Tabla2 SET SOTA='Duplicado' WHERE id=?"_qs, {QString::number(row.id)});
    }

private:
    Query Prepared(const QString &sql, const QStringList &values)
    {
        Query query = session_.Prepare(sql);
        for (qsizetype i = 0; i < values.size(); ++i)
            query.Bind(static_cast<int>(i) + 1, values[i]);
        return query;
    }
    void Run(const QString &sql, const QStringList &values) { Prepared(sql, values).Execute(); }
    QList<QsoRow> Rows(const QString &condition, const QStringList &values, const QString &order)
    {
        QList<QsoRow> rows;
        Query query = Prepared(u"SELECT "_qs + QsoColumns::SelectList()
                + u" FROM Tabla2 WHERE \"Nombre Log\"=? AND Modo<>'' "_qs + condition + u" ORDER BY "_qs + order,
            values);
        while (query.Next())
            rows << query.Row();
        return rows;
    }
    QStringList Distinct(const QString &column, const QString &contest)
    {
        QStringList values;
        Query query = Prepared(
            u"SELECT DISTINCT "_qs + column + u" FROM Tabla2 WHERE \"Nombre Log\"=? AND Modo<>''"_qs, {contest});
        while (query.Next())
            values << query.Text(0);
        return values;
    }
    bool AddKey(const QString &key)
    {
        if (list7_.contains(key))
            return false;
        list7_ << key;
        return true;
    }

    Session &session_;
    const DxccTable &countries_;
    QStringList list7_;
};

// Few calls, bands and times, so that all kinds of meetings occur.
QList<QsoRow> TangledContest(quint32 seed)
{
    QRandomGenerator random(seed);
    const auto pick = [&](std::initializer_list<const char16_t *> texts) {
        return texts.begin()[random.bounded(static_cast<int>(texts.size()))];
    };
    QList<QsoRow> rows{Row({.mode = u""})};
    for (int i = 0; i < 300; ++i)
        rows << Row({pick({u"LU1ABC", u"lu1abc", u"LU1ABC/W", u"CE2O'H", u"PY1A", u"K1A", u"XX1A", u""}),
            pick({u"SSB", u"ssb", u"CW", u"DG"}), pick({u"40m", u"40M", u"20m", u""}),
            pick({u"20261124", u"20261125", u""}), pick({u"0000", u"1200", u"2359"}), u"1",
            pick({u"12", u"12 SSB", u"'", u"", u"ÑU", u"ñu"}), u"CQWW", pick({u"Incremental", u"Fija"})});
    rows << Row({.contest = u"Otro"});
    return rows;
}

} // namespace

class TestAnalysis : public ContestTest {
    Q_OBJECT

private Q_SLOTS:
    void MarksEqualThoseOfAStatementARow()
    {
        for (const quint32 seed : {1u, 2u, 3u}) {
            init();
            const DxccTable countries = SomeCountries();
            const QString path = Path(u"otra.mdb"_qs);
            LogStore told(path, "fault");
            QVERIFY(told.CreateEmpty());
            for (LogStore *store : {store_.get(), &told}) {
                QVERIFY(Store(*store, TangledContest(seed)));
                QVERIFY(store->Write([](Session &session) { // an older analysis left its marks
                    session.Execute(u"UPDATE Tabla2 SET Argento='x', Perfil='y', SOTA='Duplicado' WHERE id%3=0"_qs);
                }));
            }
            QVERIFY(told.Write([&](Session &session) { StatementARow(session, countries).Analyse(name); }));
            QVERIFY(Analyse());
            for (const QString &contest : {name, u"Otro"_qs}) {
                const QList<QsoRow> expected = *ContestRows(told, contest), found = *ContestRows(*store_, contest);
                QCOMPARE(found.size(), expected.size());
                for (qsizetype i = 0; i < found.size(); ++i)
                    QVERIFY2(found[i] == expected[i], qPrintable(QString(found[i].SOTA + u'/' + expected[i].SOTA)));
            }
            QVERIFY(Analyse()); // again upon its own marks
            QVERIFY(*ContestRows(*store_, name) == *ContestRows(told, name));
        }
    }

    void TheReport()
    {
        for (const QString &type : {SerieType::Incremental, SerieType::Fija}) {
            init();
            QVERIFY(CreateContest(*store_, u"A/B: ¿qué?"_qs, type));
            const char16_t *typeText = reinterpret_cast<const char16_t *>(type.utf16());
            const char16_t *contest = u"A/B: ¿qué?";
            // The newest contact holds the multiplier of its call and loses it as a duplicate.
            QVERIFY(Store(*store_,
                {Row({u"PY1O'H", u"SSB", u"160m", u"20261124", u"2310", u"2", u"8", contest, typeText}),
                    Row({u"CE1A", u"CW", u"40m", u"20261124", u"2300", u"1", u"7", contest, typeText}),
                    Row({u"CE1A", u"CW", u"40m", u"20261125", u"0030", u"3", u"7", contest, typeText})}));
            Runs runs;
            Run run(runs, {});
            const auto path = AnalyseContest(*store_, files_, folder_->path(), SomeCountries(), u"A/B: ¿qué?"_qs, run);
            QVERIFY(path);
            QCOMPARE(*path, Path(u"Analisis_A_B_ ¿qué_ ("_qs + type + u").txt"_qs));
            const bool counting = type == SerieType::Incremental;
            const QString rule(54, u'-');
            QStringList lines{u"Concurso: A/B: ¿qué? ("_qs + type + u')', rule, u"       Estación: LU9ZZZ"_qs,
                u"           QSOs: 3"_qs, u"     Duplicados: 1"_qs, u"Multiplicadores: 1"_qs,
                u"   Tiempo Total: 1 hs. 30 min."_qs, u"           Rate: 2,00 QSOs/h."_qs};
            if (counting)
                lines << u"           CAHF: 30 puntos."_qs;
            lines << rule << QString() << u"CW  40m  20261124 2300 LU9ZZZ       1      CE1A         7      >"_qs
                  << u"SSB 160m 20261124 2310 LU9ZZZ       2      PY1O'H       8      >"_qs
                    + (counting ? u"Brasil"_qs : u"8"_qs)
                  << u"CW  40m  20261125 0030 LU9ZZZ       3      CE1A         7      >Duplicado"_qs << QString();
            QCOMPARE(QString::fromLatin1(*files_.ReadWhole(*path)), lines.join(u"\r\n"_qs));
        }
    }

    void RatesAndTimes()
    {
        const std::tuple<int, int, const char *, const char *> rates[] = {{1, 0, "?", "0 min."},
            {2, 60, "2,00", "60 min."}, {5, 24, "12,5", "24 min."}, {1, 61, "0,98", "1 hs. 1 min."},
            {1, 2880, "0,02", "48 hs. 0 min."}, {20000, 7, "171428,57", "7 min."}};
        for (const auto &[qsos, minutes, rate, time] : rates) {
            QCOMPARE(ContestRateText(qsos, minutes), QString::fromLatin1(rate));
            QCOMPARE(ContestTimeText(minutes), QString::fromLatin1(time));
        }
    }

    void WhatCannotBeDoneIsToldAndChangesNothing()
    {
        QVERIFY(CreateContest(*store_, name, SerieType::Fija));
        QCOMPARE(Analyse().failure().text, u"Ningún Concurso con QSOs para analizar!"_qs);
        QVERIFY(Store({Row({})}));
        const QList<QsoRow> before = *ContestRows(*store_, name);
        Runs runs;
        Run stopped(
            runs, [&] { runs.CancelAll(); }, {}, 0);
        const auto cancelled = AnalyseContest(*store_, files_, folder_->path(), SomeCountries(), name, stopped);
        QCOMPARE(cancelled.failure().kind, Failure::Kind::Cancelled);
        QVERIFY(*ContestRows(*store_, name) == before);
        Run run(runs, {});
        QVERIFY(!AnalyseContest(*store_, files_, Path(u"no"_qs), SomeCountries(), name, run));
        QCOMPARE(ContestRows(*store_, name)->last().Perfil, u"12"_qs);
    }

private:
    Result<QString> Analyse()
    {
        Runs runs;
        Run run(runs, {});
        return AnalyseContest(*store_, files_, folder_->path(), SomeCountries(), name, run);
    }
};

TORDILLO_TEST(TestAnalysis)
#include "TestAnalysis.moc"
