// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/QsoTable.h"
#include "logging/Provinces.h"
#include "stats/LdaMember.h"
#include "stats/ProvinceStatistics.h"
#include "stats/SearchList.h"
#include "support/TestRegistry.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

const QString logName = u"Log O Higgins"_qs;

// Every cell that is not empty as "Province band state", in the order of the table.
QStringList Cells(const ProvinceTable &table)
{
    QStringList cells;
    for (int province = 0; province < ProvinceTable::provinces; ++province)
        for (int band = 0; band < ProvinceTable::bands; ++band)
            if (const ProvinceState state = table.Cell(province, band); state != ProvinceState::None)
                cells
                    << u"%1 %2 %3"_qs.arg(ProvinceNames()[province], ProvinceTable::BandNames()[band]).arg(int(state));
    return cells;
}

QStringList CellsOf(const QList<ProvinceQso> &qsos)
{
    ProvinceTally tally;
    for (const ProvinceQso &qso : qsos)
        tally.Add(qso);
    return Cells(tally.Table());
}

} // namespace

class TestProvinceStatistics : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<LogStore> store_;
    Runs runs_;

    void Execute(const QString &sql)
    {
        const Result<void> done = store_->Write([&](Session &session) { session.Execute(sql); });
        QVERIFY2(done, qPrintable(done ? QString() : done.failure().text));
    }
    // Contacts of Chaco, every tenth a foreign one, every tenth with a blank province; `date` and `time` are SQL over
    // the number n.
    void StoreMany(int count, const QString &date, const QString &time)
    {
        Execute(u"WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c WHERE n<%1) INSERT INTO Tabla1 "
                "(Modo, \"Nombre Log\", Estacion, Argento, Banda, SuGrid, Fecha, Hora) SELECT 'CW', '%2', "
                "'LU1GA', iif(n%10=0, '', iif(n%10=1, ' ', 'Chaco')), '20m', 'GF'||(n+10)||'AB', %3, %4 FROM c"_qs
                    .arg(count)
                    .arg(logName, date, time));
    }
    std::vector<qint64> InOneGo()
    {
        std::vector<qint64> ids;
        const Result<void> read = store_->Read([&](Session &session) {
            Query query = session.Prepare(u"SELECT id FROM Tabla1 WHERE \"Nombre Log\"=? AND Estacion<>'' "
                                          "AND Argento<>'' ORDER BY Fecha, Hora, id"_qs);
            query.Bind(1, logName);
            while (query.Next())
                ids.push_back(query.Number(0));
        });
        return read ? ids : std::vector<qint64>{-1};
    }
    std::vector<qint64> InSlices(const std::function<void()> &between = [] {})
    {
        Run run(runs_, between, {}, 0);
        const Result<ProvinceStatistics> read = StatisticsOfLog(*store_, logName, 1, run);
        return read ? read->ids : std::vector<qint64>{-1};
    }

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        store_ = std::make_unique<LogStore>(folder_->filePath(u"base0.mdb"_qs));
        QVERIFY(store_->CreateEmpty());
    }

    void ACellIsTheHighestOfItsContacts()
    {
        struct Case {
            QList<ProvinceQso> qsos; // province, band, satellite, LdA, grid
            QStringList cells;
        };
        const QString chaco = u"Chaco"_qs, sat = u"SO-50"_qs;
        const QList<Case> cases{
            {{{chaco, u"20m"_qs, {}, {}, {}}, {chaco, u"20m"_qs, {}, u"2"_qs, {}}}, {u"Chaco 20m 2"_qs}},
            {{{chaco, u"20m"_qs, {}, u"2"_qs, {}}, {chaco, u"20m"_qs, {}, u"1"_qs, {}}}, {u"Chaco 20m 2"_qs}},
            {{{chaco, u"6m"_qs, {}, u" 1 subido"_qs, {}}, {chaco, u"160m"_qs, {}, u"0"_qs, {}}},
                {u"Chaco 160m 0"_qs, u"Chaco 6m 1"_qs}},
            {{{chaco, u"40m"_qs, {}, u"3"_qs, {}}, {chaco, u"30m"_qs, {}, u"-1"_qs, {}},
                 {chaco, u"17m"_qs, {}, u"1.9"_qs, {}}},
                {u"Chaco 40m 0"_qs, u"Chaco 30m 0"_qs, u"Chaco 17m 0"_qs}},
            {{{chaco, u"70cm"_qs, {}, u"2"_qs, {}}, {chaco, u"2m"_qs, {}, u"2"_qs, {}}, {chaco, {}, {}, u"2"_qs, {}}},
                {}},
            {{{chaco, u"70cm"_qs, sat, {}, {}}, {u"Antártida"_qs, u"20m"_qs, sat, u"1"_qs, {}}},
                {u"Chaco Sat 0"_qs, u"Antártida Sat 1"_qs}},
            {{{u"Córdoba"_qs, u" 80M "_qs, u" "_qs, {}, {}}}, {u"Córdoba 80m 0"_qs}},
            {{{u"0"_qs, u"20m"_qs, {}, u"2"_qs, {}}, {u"Cordoba"_qs, u"20m"_qs, {}, u"2"_qs, {}}}, {}}};
        for (const Case &that : cases)
            QCOMPARE(CellsOf(that.qsos), that.cells);
    }

    void TotalsCountProvinces()
    {
        ProvinceTally tally;
        const QString band = u"20m"_qs;
        for (const auto &[province, lda] : {std::pair{u"Chaco"_qs, u"2"_qs}, {u"Salta"_qs, u"2"_qs},
                 {u"Salta"_qs, u"1"_qs}, {u"Jujuy"_qs, u"1"_qs}, {u"Chubut"_qs, QString()}})
            tally.Add({province, band, {}, lda, {}});
        tally.Add({u"Capital"_qs, u"160m"_qs, {}, {}, {}});
        const ProvinceTable &table = tally.Table();
        QStringList totals;
        for (int at = 0; at < ProvinceTable::bands; ++at)
            totals << table.Total(at);
        QCOMPARE(totals.join(u' '), u"0/1 0/0 0/0 0/0 0/0 2/4 0/0 0/0 0/0 0/0 0/0 0/0"_qs);
        QCOMPARE(table.ConfirmedAnywhere(), 2);
        QCOMPARE(table.WorkedAnywhere(), 5);
        QCOMPARE(ProvinceTable().Overall(0), ProvinceState::None);
    }

    void GridsStandWhereTheirContactsStand()
    {
        ProvinceTally tally;
        const QString chaco = u"Chaco"_qs, none;
        tally.Add({chaco, u"70cm"_qs, none, u"2"_qs, u"GF05AB"_qs});
        tally.Add({chaco, u"20m"_qs, none, u"2"_qs, u"gf05cd"_qs});
        tally.Add({chaco, u"20m"_qs, none, u"1"_qs, u"GF05"_qs});
        tally.Add({chaco, u"20m"_qs, none, none, u"FF78SK"_qs});
        tally.Add({u"0"_qs, u"20m"_qs, none, none, u"FE12"_qs});
        tally.Add({chaco, u"20m"_qs, none, none, u"  "_qs});
        QCOMPARE(tally.ConfirmedGrids(), QStringList{u"GF05"_qs});
        QCOMPARE(tally.WorkedGrids(), (QStringList{u"GF05"_qs, u"FF78"_qs, u"FE12"_qs}));
    }

    void SlicesMissNothingAndRepeatNothing()
    {
        // Whole slices of one moment, empty and null dates and times among them.
        StoreMany(25000, u"'2026-01-01'"_qs, u"iif(n%3=0, NULL, iif(n%3=1, '', '10:00:00'))"_qs);
        StoreMany(12000, u"iif(n%2=0, NULL, '')"_qs, u"iif(n%3=0, NULL, '10:00:00')"_qs);
        StoreMany(10000, u"date('2025-01-01', n||' days')"_qs, u"'10:00:00'"_qs);
        Execute(
            u"INSERT INTO Tabla1 (Modo, \"Nombre Log\", Estacion, Argento) VALUES ('CW', 'Otro', 'LU1A', 'Chaco')"_qs);
        Execute(u"INSERT INTO Tabla1 (Modo, \"Nombre Log\", Argento) VALUES ('', '%1', 'Chaco')"_qs.arg(logName));
        const std::vector<qint64> expected = InOneGo();
        QCOMPARE(expected.size(), size_t(42300));
        QCOMPARE(InSlices(), expected);
    }

    void AStopGivesNothing()
    {
        StoreMany(25000, u"'2026-01-01'"_qs, u"time(n, 'unixepoch')"_qs);
        int looks = 0;
        QCOMPARE(InSlices([&] {
            if (++looks == 2)
                runs_.CancelAll();
        }),
            std::vector<qint64>{-1});
        QCOMPARE(looks, 2);
    }

    void ASearchCountsInItsOrderWithoutWhatHasGone()
    {
        StoreMany(25, u"'2026-01-01'"_qs, u"time(n, 'unixepoch')"_qs);
        SearchList list(*store_);
        list.Append({9, 3, 10, 7, 4});
        Execute(u"DELETE FROM Tabla1 WHERE id=7"_qs);
        Run run(runs_, [] {});
        const Result<ProvinceStatistics> read = StatisticsOfList(*store_, list, run);
        QVERIFY(read);
        QCOMPARE(read->ids, (std::vector<qint64>{9, 3, 4}));
        QCOMPARE(Cells(read->tally.Table()), QStringList{u"Chaco 20m 0"_qs});
        QCOMPARE(read->tally.WorkedGrids(), (QStringList{u"GF19"_qs, u"GF13"_qs, u"GF14"_qs}));
    }

    void OneMemberIsReadOutOfAReply()
    {
        const auto line = [](const QString &reply) {
            const auto member = ReadLdaMember(reply);
            return member ? member->Line() : u"-"_qs;
        };
        QCOMPARE(line(u"LU1ABC nomo:Juan Perez ultimar:24/11/2026"_qs), u"LU1ABC Juan Perez>24/11/2026"_qs);
        QCOMPARE(line(u"\r\nLU1ABC nomo:ultimar:"_qs), u"LU1ABC >"_qs);
        for (const QString &other : {QString(), u"LU1ABC"_qs, u"<html>404</html>"_qs, u"A ultimar:1 nomo:B"_qs,
                 QString(u"A nomo:" + QString(2000, u'x') + u" ultimar:1")})
            QCOMPARE(line(other), u"-"_qs);
    }
};

TORDILLO_TEST(TestProvinceStatistics)
#include "TestProvinceStatistics.moc"
