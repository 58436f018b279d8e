// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeContest.h"
#include "contest/Transfer.h"

using namespace SomeContest;

class TestTransfer : public ContestTest {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        StoreTest::init();
        QVERIFY(CreateContest(*store_, name, SerieType::Incremental));
    }

    void AContactBecomesOneOfTheGeneralLog()
    {
        const std::tuple<QString, QString, QString, QString> table[] = {{u"SSB"_qs, u"160m"_qs, u"1.820"_qs, u"59"_qs},
            {u"FM"_qs, u"6m"_qs, u"52.000"_qs, u"59"_qs}, {u"CW"_qs, u"40m"_qs, u"7.000"_qs, u"599"_qs},
            {u"DG"_qs, u"2m"_qs, u"144.000"_qs, u"599"_qs}, {u"SSB"_qs, u"30m"_qs, u"21.000"_qs, u"59"_qs}};
        for (const auto &[mode, band, expected, report] : table) {
            QsoRow contest = Row({.call = u"LU1ABC/W"});
            contest.Modo = mode;
            contest.Banda = band;
            contest.Operador = u"LU1AAA"_qs;
            QString frequency = u"21.000"_qs; // of the contact before
            const QsoRow row = GeneralRow(contest, name, frequency);
            QCOMPARE(frequency, expected);
            const QStringList rest{row.Modo, row.Banda, row.RSE, row.RSR, row.MyCall, row.Estacion, row.Fecha, row.Hora,
                row.Obs, row.Operador, row.LdA, row.Argento, row.SuGrid + row.MiGrid + row.SOTA};
            QCOMPARE(rest.join(u'|'),
                mode + u'|' + band + u'|' + report + u'|' + report
                    + u"|LU9ZZZ|LU1ABC/W|24/11/2026|21:15:00|Concurso CQWW|LU1AAA|1|Chubut|"_qs);
        }
    }

    void TwiceAddsNothing()
    {
        // The third repeats the second within ten minutes, the fourth does not; the last has an unknown band.
        QVERIFY(Store(*store_,
            {Row({}), Row({.call = u"LU2ABC", .time = u"2100"}), Row({.call = u"LU2ABC", .time = u"2109"}),
                Row({.call = u"LU2ABC", .time = u"2119"}), Row({.contest = u"Otro"}),
                Row({.call = u"LU3ABC", .band = u"30m"})}));
        Sql("INSERT INTO Tabla1 (Modo,Banda,MyCall,Estacion,Fecha,Hora,\"Nombre Log\") VALUES "
            "('SSB','40m','LU9ZZZ','LU1ABC','2026-11-24','21:20:00','Ajeno')");
        const auto first = Transfer();
        QCOMPARE(TransferMessage(*first), u"Transferencia:\nCopiados: 4\nDuplicados: 1"_qs);
        QCOMPARE(
            Value(
                "SELECT group_concat(Estacion||' '||Fecha||' '||Hora||' '||Frecuencia,',') FROM (SELECT * FROM Tabla1 "
                "WHERE \"Nombre Log\"='Base' ORDER BY id)"),
            u"LU1ABC 2026-11-24 21:15:00 7.000,LU2ABC 2026-11-24 21:00:00 7.000,LU2ABC 2026-11-24 21:19:00 7.000,"
            "LU3ABC 2026-11-24 21:15:00 7.000"_qs);
        QCOMPARE(QString::number(first->lastId.value_or(0)), Value("SELECT max(id) FROM Tabla1"));
        const auto second = Transfer();
        QVERIFY(!second->lastId);
        QCOMPARE(TransferMessage(*second), u"Transferencia:\nCopiados: 0\nDuplicados: 5"_qs);
        QCOMPARE(Value("SELECT count(*) FROM Tabla2"), u"7"_qs);
    }

    void AFailureCopiesNothing()
    {
        QVERIFY(Store(Many(2000)));
        store_->Close();
        Disk().FailWrites(40, FaultVfs::forever, FaultVfs::Trouble::DiskFull);
        const auto failed = Transfer();
        QVERIFY(!failed);
        QCOMPARE(failed.failure().kind, Failure::Kind::Full);
        HealDisk();
        store_->Close();
        QCOMPARE(Transfer()->copied, 2000);
    }

    void StoppedOnTheWayItKeepsWhatItLookedAt()
    {
        QVERIFY(Store(Many(2500)));
        int steps = 0;
        Runs runs;
        Run run(
            runs,
            [&] {
                if (++steps == 5) // three are for reading
                    runs.CancelAll();
            },
            {}, 0);
        const auto stopped = TransferContest(*store_, run, name, u"Base"_qs);
        QVERIFY(stopped->cancelled);
        QCOMPARE(stopped->copied, 200);
        QCOMPARE(Value("SELECT count(*) FROM Tabla1"), u"200"_qs);
        QCOMPARE(Transfer()->copied, 2300);
    }

    void Texts()
    {
        QCOMPARE(NothingToTransferMessage(name, u"Log: Base, con 3 QSOs"_qs),
            u"el log de concurso CQWW no tiene QSOs para pasar al log Base Log: Base, con 3 QSOs"_qs);
        QCOMPARE(TransferQuestion(name, 12, u"Log: Base, con 3 QSOs"_qs),
            u"Pasa el log de concurso CQWW con 12 QSOs\nal log base Log: Base, con 3 QSOs?"_qs);
    }

private:
    Result<Transferred> Transfer()
    {
        Runs runs;
        Run run(runs, {});
        return TransferContest(*store_, run, name, u"Base"_qs);
    }
};

TORDILLO_TEST(TestTransfer)
#include "TestTransfer.moc"
