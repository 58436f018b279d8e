// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/Search.h"
#include "support/Fixtures.h"

namespace {

const QString logName = u"Log O Higgins"_qs;

QsoRow Qso(const QString &call, const QString &date, const QString &change = {})
{
    const QString row = u"Modo=SSB;Banda=40m;MyCall=LU9ZZZ;Operador=LU1AAA;Hora=21:15:00;LdA=1;NombreLog="_qs + logName;
    return RowOf(change, RowOf(u"Estacion=%1;Fecha=%2"_qs.arg(call, date), RowOf(row)));
}

struct FilterCase {
    std::function<void(SearchFilters &)> set;
    QString clause; // what the statement gets
    QString found; // the calls, newest first
};

} // namespace

class TestSearch : public StoreTest {
    Q_OBJECT

    // So many contacts, one a minute in the order of their ids; `date` and `time` are SQL over the number n.
    void StoreMany(int count, const QString &date, const QString &time)
    {
        Sql(u"WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c WHERE n<%1) INSERT INTO Tabla1 "
            "(Modo, \"Nombre Log\", Estacion, Obs, Fecha, Hora) "
            "SELECT 'CW', '%2', 'LU1A', iif(n%7=0, 'Ñandú', ''), %3, %4 FROM c"_qs.arg(count)
                .arg(logName, date, time)
                .toUtf8());
    }
    std::vector<qint64> InOneGo(const QString &condition = u"1"_qs)
    {
        std::vector<qint64> ids;
        const Result<void> read = store_->Read([&](Session &session) {
            Query query = session.Prepare(u"SELECT id FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>'' AND "_qs
                + condition + u" ORDER BY Fecha DESC, Hora DESC, id DESC"_qs);
            query.Bind(1, logName);
            while (query.Next())
                ids.push_back(query.Number(0));
        });
        return read ? ids : std::vector<qint64>{-1};
    }
    std::vector<qint64> InSlices(
        const SearchFilters &filters = {}, const std::function<void(int)> &between = {}, SearchSlices *slices = nullptr)
    {
        std::vector<qint64> ids;
        SearchCursor cursor(*store_, logName, filters, slices);
        for (int slice = 1; !cursor.AtEnd() && slice < 50; ++slice) {
            if (!cursor.Next(ids))
                return {-1};
            if (between)
                between(slice);
        }
        return ids;
    }
    QString Calls(const SearchFilters &filters)
    {
        QStringList calls;
        const std::vector<qint64> ids = InSlices(filters);
        const Result<void> read = store_->Read([&](Session &session) {
            Query query = session.Prepare(u"SELECT Estacion FROM Tabla1 WHERE id=?"_qs);
            for (const qint64 id : ids) {
                query.Reset();
                query.Bind(1, id);
                calls << (query.Next() ? query.Text(0) : u"(gone)"_qs);
            }
        });
        return read ? calls.join(u' ') : read.failure().text;
    }

private Q_SLOTS:
    void EveryFilterAloneAndTogether()
    {
        Insert({Qso(u"LU1ABC"_qs, u"2026-01-01"_qs, u"LdA=0;POTA=AR-1"_qs),
            Qso(u"LU2ABC"_qs, u"2026-01-02"_qs, u"LdA=2;Obs=Peñón 100% d'or"_qs),
            Qso(u"LU3ABC"_qs, u"2026-01-03"_qs, u"IOTA=AR-2;POTA=AR-3"_qs),
            Qso(u"CX1AA"_qs, u"2026-01-04"_qs, u"Nombre_Sat=AO-7;Modo=CW"_qs),
            Qso(u"CX11A"_qs, u"2026-01-05"_qs, u"MYSOTA=S2;SOTA=S1"_qs),
            Qso(u"CX2AA"_qs, u"2026-01-06"_qs, u"MyCall=LU9ZZZ/A;Banda=20m"_qs),
            Qso(u"PY1AA"_qs, u"2026-01-07"_qs, u"Operador=LU2BBB;SOTA=S3"_qs),
            Qso(u"LU4ABC/W"_qs, u"2026-01-08"_qs, u"LdA=;IOTA=AR-4"_qs),
            Qso(u"OTHER"_qs, u"2026-01-09"_qs, u"NombreLog=otro"_qs),
            RowOf(u"NombreLog="_qs + logName)}); // what keeps an empty log in existence
        const QString all = u"LU4ABC/W PY1AA CX2AA CX11A CX1AA LU3ABC LU2ABC LU1ABC"_qs;
        using F = SearchFilters;
        const auto argentines = [](F::Lda lda) { return [lda](F &f) { f.argentinesOnly = true, f.lda = lda; }; };
        const FilterCase cases[] = {{[](F &) {}, u""_qs, all},
            {[](F &f) { f.myCall = u"LU9ZZZ"_qs; }, u"AND [MyCall] LIKE 'LU9ZZZ' "_qs,
                u"LU4ABC/W PY1AA CX11A CX1AA LU3ABC LU2ABC LU1ABC"_qs},
            {[](F &f) { f.call = u"CX1"_qs; }, u"AND [Estacion] LIKE 'CX1' "_qs, u""_qs}, // the whole column
            {[](F &f) { f.call = u"cx1*"_qs; }, u"AND [Estacion] LIKE 'CX1*' "_qs, u"CX11A CX1AA"_qs},
            {[](F &f) { f.call = u"*1A*"_qs; }, u"AND [Estacion] LIKE '*1A*' "_qs, u"PY1AA CX11A CX1AA LU1ABC"_qs},
            {[](F &f) { f.remarks = u"PEÑÓN 100%"_qs; }, u"AND [Obs] LIKE '*PEÑÓN 100%*' "_qs, u"LU2ABC"_qs},
            {[](F &f) { f.remarks = u"d'or"_qs; }, u"AND [Obs] LIKE '*D'OR*' "_qs, u"LU2ABC"_qs},
            {[](F &f) { f.POTA = true; }, u"AND [POTA] <>''"_qs, u"LU3ABC LU1ABC"_qs},
            {[](F &f) { f.S2S = true; }, u"AND [MYSOTA] <>'' AND [SOTA] <>''"_qs, u"CX11A"_qs},
            {[](F &f) { f.P2P = true; }, u"AND [IOTA] <>'' AND [POTA] <>''"_qs, u"LU3ABC"_qs},
            {[](F &f) { f.satellite = true; }, u"AND [Nombre_Sat] <>'' "_qs, u"CX1AA"_qs},
            {argentines(F::Lda::All), u""_qs, u"LU4ABC/W LU3ABC LU2ABC LU1ABC"_qs},
            {argentines(F::Lda::NotUploaded), u""_qs, u"LU4ABC/W LU1ABC"_qs},
            {argentines(F::Lda::Uploaded), u""_qs, u"LU3ABC"_qs}, {argentines(F::Lda::Confirmed), u""_qs, u"LU3ABC"_qs},
            {[](F &f) { f.lda = F::Lda::NotUploaded; }, u""_qs, all}, // without the tick it acts on nothing
            {[](F &f) { f.from = u"02/01/2026"_qs, f.to = u"3/1/26"_qs; }, u""_qs, u"LU3ABC LU2ABC"_qs},
            {[](F &f) { f.call = u"*a*"_qs, f.SOTA = f.S2S = true, f.to = u"05/01/2026"_qs, f.remarks = u"*"_qs; },
                u"AND [Estacion] LIKE '*A*' AND [Obs] LIKE '***' AND [SOTA] <>''AND [MYSOTA] <>'' AND [SOTA] <>''"_qs,
                u"CX11A"_qs}};
        const QString head = u"SELECT * FROM Tabla1 WHERE [Nombre Log]='Log O Higgins' and [Modo]<>''"_qs;
        for (const FilterCase &one : cases) {
            SearchFilters filters;
            one.set(filters);
            const QString statement = SearchStatement(logName, filters);
            QCOMPARE(statement, QString(head + one.clause + u" ORDER BY [Fecha] desc, [Hora] desc"));
            QVERIFY2(Calls(filters) == one.found, qPrintable(QString(statement + u": " + Calls(filters))));
        }
        QCOMPARE(ListStatement(logName),
            u"SELECT * FROM Tabla1 WHERE [Modo]<>'' and [Nombre Log]='Log O Higgins' "
            "ORDER BY [Fecha] DESC, [Hora] DESC"_qs);
    }

    void ADateThatIsNoneStopsTheSearchAtTheFirstContact()
    {
        using Bad = SearchCursor::BadDate;
        // A blank is no date; the last one is not looked at when there is nothing left to compare.
        const std::tuple<QString, QString, Bad> rows[] = {{u"31/02/2026"_qs, u"x"_qs, Bad::From},
            {u" "_qs, {}, Bad::From}, {u"01/01/2026"_qs, u"31/02/2026"_qs, Bad::To},
            {u"02/01/2026"_qs, u"31/02/2026"_qs, Bad::None}};
        Insert({Qso(u"LU1ABC"_qs, u"2026-01-01"_qs)});
        for (const auto &[from, to, bad] : rows)
            for (const QString &log : {logName, u"empty"_qs}) {
                SearchFilters filters;
                filters.from = from;
                filters.to = to;
                SearchCursor cursor(*store_, log, filters);
                std::vector<qint64> ids;
                QVERIFY(cursor.Next(ids));
                QVERIFY(cursor.AtEnd() && ids.empty());
                QCOMPARE(cursor.badDate(), log == logName ? bad : Bad::None);
            }
    }

    void FieldsAreCheckedAndTidied()
    {
        const QString bad = u"Error en el formato de fecha!"_qs;
        const QList<std::pair<QString, QString>> dates{
            {u"  "_qs, {}}, {u"1/2/26"_qs, {}}, {u"29/02/2025"_qs, bad}, {u"12/2026"_qs, bad}};
        for (const auto &[text, message] : dates)
            QCOMPARE(CheckSearchDate(text), message);
        const QList<std::pair<QString, QString>> bands{
            {u"40"_qs, u"40M"_qs}, {u" 2m "_qs, u"2M"_qs}, {u"  "_qs, {}}, {u"*"_qs, u"*M"_qs}};
        for (const auto &[text, band] : bands)
            QCOMPARE(TidyBandFilter(text), band);
    }

    void SlicesGiveWhatOneStatementWould()
    {
        const QString day = u"'2026-11-24'"_qs;
        // A slice and one; one moment; and what other tools may write.
        const std::tuple<int, QString, QString> logs[] = {
            {20001, u"date('2020-01-01', (n/300)||' days')"_qs, u"time(n*60, 'unixepoch')"_qs},
            {45000, day, u"'21:15:00'"_qs}, {45000, day, u"iif(n<40000, NULL, '10:00:00')"_qs},
            {45000, u"iif(n>9, NULL, '2026-11-24')"_qs, u"iif(n%2, NULL, '')"_qs}};
        for (const auto &[count, date, time] : logs) {
            init();
            StoreMany(count, date, time);
            const std::vector<qint64> expected = InOneGo();
            QCOMPARE(int(expected.size()), count);
            QVERIFY(InSlices() == expected);
            SearchFilters filters;
            filters.remarks = u"ñANDÚ"_qs;
            QVERIFY(InSlices(filters) == InOneGo(u"id%7=0"_qs));
        }
    }

    void TheLogMayChangeBetweenSlices()
    {
        StoreMany(45000, u"'2026-11-24'"_qs, u"time(n, 'unixepoch')"_qs);
        std::vector<qint64> expected = InOneGo(u"id NOT BETWEEN 20000 AND 25001"_qs);
        expected.push_back(45002); // 45001 is newer than what has been read, 45002 older than all
        const auto change = [&](int slice) {
            if (slice != 1)
                return;
            Sql("DELETE FROM Tabla1 WHERE id BETWEEN 20000 AND 25001"); // the place reached among them
            Insert({Qso(u"LU1A"_qs, u"2026-11-25"_qs), Qso(u"LU1A"_qs, u"2026-11-23"_qs)});
        };
        expected.insert(expected.begin() + 20000 - 1, 25001); // was read before
        QVERIFY(InSlices({}, change) == expected);
    }

    void SlicesOfAnEarlierSearchServeTheNextOne()
    {
        StoreMany(70000, u"date('2020-01-01', (n/3000)||' days')"_qs, u"time(n, 'unixepoch')"_qs);
        SearchFilters bounded;
        bounded.to = u"20/01/2020"_qs; // several slices below it
        QVERIFY(InSlices(bounded) == InOneGo(u"Fecha<='2020-01-20'"_qs));
        SearchSlices slices;
        QVERIFY(InSlices({}, {}, &slices) == InOneGo());
        Sql("DELETE FROM Tabla1 WHERE id BETWEEN 20000 AND 55000 OR id%20000<3");
        StoreMany(30000, u"iif(n%4, date('2019-12-31', (n/2000)||' days'), NULL)"_qs, u"iif(n%3, '10:00:00', NULL)"_qs);
        SearchFilters filters;
        QVERIFY(InSlices(filters, {}, &slices) == InOneGo());
        filters.from = u"03/01/2020"_qs;
        QVERIFY(InSlices(filters, {}, &slices) == InOneGo(u"Fecha>='2020-01-03'"_qs));
        filters.to = u"05/01/2020"_qs;
        QVERIFY(InSlices(filters, {}, &slices) == InOneGo(u"Fecha BETWEEN '2020-01-03' AND '2020-01-05'"_qs));
        filters.from = u"06/01/2020"_qs;
        QVERIFY(InSlices(filters, {}, &slices).empty());
        Sql("DELETE FROM Tabla1 WHERE Estacion='LU1A'");
        QVERIFY(InSlices({}, {}, &slices).empty());
    }

    void ASliceThatFailsCanBeReadAgain()
    {
        StoreMany(20100, u"'2026-11-24'"_qs, u"time(n, 'unixepoch')"_qs);
        const std::vector<qint64> expected = InOneGo();
        SearchCursor cursor(*store_, logName, {});
        std::vector<qint64> ids;
        QVERIFY(cursor.Next(ids));
        QCOMPARE(int(ids.size()), SearchCursor::sliceRows);
        QVERIFY(QFile::rename(store_->Path(), Path(u"x"_qs)));
        QVERIFY(!cursor.Next(ids));
        QVERIFY(!cursor.AtEnd());
        QVERIFY(QFile::rename(Path(u"x"_qs), store_->Path()));
        QVERIFY(cursor.Next(ids));
        QVERIFY(cursor.AtEnd() && ids == expected);
    }
};

TORDILLO_TEST(TestSearch)
#include "TestSearch.moc"
