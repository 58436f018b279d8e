// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/AdifStaging.h"
#include "support/Fixtures.h"

using AdifStaging::Staged;

namespace {

const QString logName = u"Log inicial"_qs;

// A contact as it comes from a file.
QsoRow FromFile(const QString &call = u"LU1ABC"_qs, const QString &time = u"21:15"_qs)
{
    return RowOf(
        u"Modo=SSB;Banda=20m;MyCall=LU9ZZZ;Fecha=24/11/2026;RSE=59;RSR=57;Frecuencia=14.250;Estacion=%1;Hora=%2"_qs.arg(
            call, time));
}

} // namespace

class TestAdifStaging : public StoreTest {
    Q_OBJECT

    // The row as the log stores it, and what an import makes of it besides.
    static QsoRow Logged(QsoRow row)
    {
        row.Hora += u":00"_qs;
        return RowOf(u"Fecha=2026-11-24;NombreLog="_qs + logName, row);
    }
    static QsoRow Imported(const QsoRow &row)
    {
        QsoRow logged = RowOf(u"LdA=0;Argento=Capital"_qs, Logged(row));
        logged.id = 1;
        return logged;
    }
    QString Dupe(const QsoRow &row, const QString &log = logName)
    {
        return AdifStaging::Prepare(*store_, log, row)->dupe;
    }
    void StageAll(const QList<QsoRow> &rows)
    {
        QList<Staged> staged;
        for (const QsoRow &row : rows)
            staged << *AdifStaging::Prepare(*store_, logName, row);
        QVERIFY(AdifStaging::StageRows(*store_, staged));
    }
    QList<Staged> StagedRows()
    {
        const Result<QList<Staged>> rows = AdifStaging::StagedRows(*store_);
        return rows ? *rows : QList<Staged>();
    }

private Q_SLOTS:
    void WhatCountsAsARepeat()
    {
        // What the contact in the log has otherwise; minutes are counted by their boundaries.
        const std::pair<QString, bool> changes[] = {{u"Obs=otra;RSE=55;Frecuencia=14.100"_qs, true},
            {u"Hora=21:06:00"_qs, true}, {u"Hora=21:05:59"_qs, false}, {u"Hora=21:24:59"_qs, true},
            {u"Hora=21:25:00"_qs, false}, {u"Fecha="_qs, false}, {u"Fecha=2026-11-23"_qs, false},
            {u"Modo=ssb"_qs, true}, {u"Modo=CW"_qs, false}, {u"Banda=20M"_qs, true}, {u"Banda=40m"_qs, false},
            {u"MyCall=lu9zzz"_qs, true}, {u"MyCall=LU8YYY"_qs, false}, {u"Estacion=lu1abc"_qs, true},
            {u"Estacion=LU1ABCD"_qs, false}, {u"NombreLog=LOG INICIAL"_qs, true}, {u"NombreLog=Otro"_qs, false}};
        for (const auto &[change, repeat] : changes) {
            init();
            Insert({Logged(FromFile(u"CX1AA"_qs)), RowOf(change, Logged(FromFile()))});
            QVERIFY2(Dupe(FromFile()) == (repeat ? u"2"_qs : u"VA"_qs), qPrintable(change));
        }
    }

    void RepeatsAcrossMidnightAndInOrder()
    {
        Insert({RowOf(u"Fecha=2026-11-25;Hora=00:01:00"_qs, Logged(FromFile())),
            RowOf(u"Hora=23:55:00"_qs, Logged(FromFile()))});
        const std::tuple<QString, QString> rows[] = {{u"Fecha=25/11/2026;Hora=00:04"_qs, u"1"_qs},
            {u"Hora=23:59"_qs, u"1"_qs}, // both are near: the first of the log
            {u"Hora=23:46"_qs, u"2"_qs}, {u"Fecha=25/11/2026;Hora=00:11"_qs, u"VA"_qs},
            {u"Fecha=;Hora=00:01"_qs, u"VA"_qs}};
        for (const auto &[change, dupe] : rows)
            QCOMPARE(Dupe(RowOf(change, FromFile())), dupe);
    }

    void ALogWithACommaHasNoRepeats()
    {
        const QString log = u"Campo, 2026"_qs;
        Insert({RowOf(u"NombreLog="_qs + log, Logged(FromFile()))});
        QCOMPARE(Dupe(FromFile(), log), u"VA"_qs);
        // Unless what stands before the comma is a log of its own.
        Insert({RowOf(u"NombreLog=Campo"_qs, Logged(FromFile()))});
        QCOMPARE(Dupe(FromFile(), log), u"2"_qs);
    }

    void TheStagingTable()
    {
        const auto prepared = [this](const QString &call, const QString &time) {
            return *AdifStaging::Prepare(*store_, logName, RowOf(u"MiGrid= FF57 ;SuGrid=  "_qs, FromFile(call, time)));
        };
        Insert({Logged(FromFile())});
        QVERIFY(AdifStaging::StageRows(*store_, {prepared(u"CX1AA"_qs, u"10:00"_qs)}));
        QVERIFY(
            AdifStaging::StageRows(*store_, {prepared(u"LU1ABC"_qs, u"21:15"_qs), prepared(u"CX3AA"_qs, u"10:00"_qs)}));
        QStringList found;
        for (const Staged &staged : StagedRows())
            found << QStringList{staged.row.Estacion, staged.row.MiGrid + staged.row.SuGrid, staged.row.Hora,
                staged.dupe}
                         .join(u'|');
        QCOMPARE(found,
            (QStringList{u"LU1ABC|FF57|21:15:00|1"_qs, u"CX3AA|FF57|10:00:00|VA"_qs, u"CX1AA|FF57|10:00:00|VA"_qs}));
        QCOMPARE(Rows().size(), 1);
        QVERIFY(AdifStaging::ClearStaging(*store_));
        QVERIFY(StagedRows().isEmpty());
    }

    void ANewContactInTheLog()
    {
        const QsoRow row =
            RowOf(u"Modo=C4FM;Nombre_Sat= AO-7 ;SOTA= a ;IOTA= b ;POTA= c ;MYSOTA= d ;Obs= tal cual "_qs, FromFile());
        StageAll({row});
        const auto loaded = AdifStaging::LoadRows(*store_, logName, StagedRows(), 1, false);
        QCOMPARE(loaded->inserted, 1);
        QCOMPARE(*loaded->lastId, 1);
        QVERIFY(Rows()
            == QList<QsoRow>{RowOf(u"Modo=DVoice;Nombre_Sat=AO-7;SOTA=a;IOTA=b;POTA=c;MYSOTA=d"_qs, Imported(row))});
    }

    void ReplacingKeepsIdAndLogAndOverwritesEverythingElse()
    {
        QsoRow logged =
            RowOf(u"Obs=v;Operador=v;MiGrid=v;SuGrid=v;Nombre_Sat=v;SOTA=v;IOTA=v;POTA=v;MYSOTA=v;RSE=v;LdA=2;"
                  "Argento=Chubut;Perfil=p;NombreLog=LOG INICIAL"_qs,
                Logged(FromFile()));
        Insert({logged});
        const QsoRow fromFile = FromFile(u"lu1abc"_qs, u"21:20"_qs);
        StageAll({fromFile});
        const QList<Staged> staged = StagedRows();
        auto loaded = AdifStaging::LoadRows(*store_, logName, staged, 1, false);
        QCOMPARE(loaded->skipped, 1);
        QVERIFY(!loaded->lastId);
        logged.id = 1;
        QVERIFY(Rows() == QList<QsoRow>{logged});

        loaded = AdifStaging::LoadRows(*store_, logName, staged, 1, true);
        QCOMPARE(loaded->replaced, 1);
        QVERIFY(!loaded->lastId);
        QVERIFY(Rows() == QList<QsoRow>{RowOf(u"Perfil=p;NombreLog=LOG INICIAL"_qs, Imported(fromFile))});

        // Deleted by the operator between the two steps: what the file brings is not lost.
        Sql("DELETE FROM Tabla1");
        loaded = AdifStaging::LoadRows(*store_, logName, staged, 1, true);
        QCOMPARE(loaded->inserted, 1);
        QCOMPARE(Column(Rows(), &QsoRow::NombreLog), logName);
    }

    void OnlyTheFirstOnesAreLoaded()
    {
        Insert({Logged(FromFile(u"CX3AA"_qs, u"13:00"_qs))});
        StageAll({FromFile(u"CX1AA"_qs, u"11:00"_qs), FromFile(u"CX2AA"_qs, u"12:00"_qs),
            FromFile(u"CX3AA"_qs, u"13:00"_qs), FromFile(u"CX4AA"_qs, u"14:00"_qs)});
        const auto loaded = AdifStaging::LoadRows(*store_, logName, StagedRows(), 3, false);
        QCOMPARE((QList{loaded->inserted, loaded->replaced, loaded->skipped}), (QList{2, 0, 1}));
        QCOMPARE(*loaded->lastId, 3);
        QCOMPARE(Column(Rows(), &QsoRow::Estacion), u"CX3AA CX4AA CX2AA"_qs); // newest first, as they are staged
        QCOMPARE(Value("SELECT QSOs FROM Contadores"), u"3"_qs);
    }

    void AFailingDiskLeavesTheLogAsItWas()
    {
        using Trouble = FaultVfs::Trouble;
        const std::pair<std::function<void(int)>, int> troubles[] = {
            {[](int first) { Disk().FailWrites(first, FaultVfs::forever, Trouble::DiskFull); }, 10},
            {[](int first) { Disk().FailWrites(first, FaultVfs::forever, Trouble::IoError); }, 10},
            {[](int first) { Disk().FailSyncs(first, FaultVfs::forever); }, 1}};
        QList<QsoRow> logged, fromFile;
        for (int i = 0; i < 60; ++i) {
            fromFile << RowOf(u"Obs="_qs + QString(100, u'x'), FromFile(u"CX%1AA"_qs.arg(i)));
            if (i % 2)
                logged << Logged(FromFile(u"CX%1AA"_qs.arg(i)));
        }
        for (const auto &[fail, least] : troubles) {
            init();
            Insert(logged);
            StageAll(fromFile);
            const QList<Staged> staged = StagedRows();
            const QList<QsoRow> rows = Rows();
            int failed = 0;
            while (true) {
                fail(failed + 1);
                const auto loaded = AdifStaging::LoadRows(*store_, logName, staged, staged.size(), true);
                HealDisk();
                if (loaded)
                    break;
                ++failed;
                store_->Close();
                QVERIFY(Rows() == rows);
                QCOMPARE(Value("PRAGMA integrity_check"), u"ok"_qs);
                QCOMPARE(StagedRows().size(), staged.size());
            }
            QVERIFY2(failed > least, qPrintable(QString::number(failed)));
            QCOMPARE(Rows().size(), 60);
            QCOMPARE(Value("SELECT QSOs FROM Contadores"), u"60"_qs);
        }
    }

    void ADatabaseThatIsInUse()
    {
        StageAll({FromFile()});
        const QList<Staged> staged = StagedRows();
        RawDatabase other(store_->Path());
        QVERIFY(other.Run("BEGIN IMMEDIATE"));
        const auto loaded = AdifStaging::LoadRows(*store_, logName, staged, 1, false);
        QCOMPARE(loaded.failure().kind, Failure::Kind::Locked);
        QVERIFY(other.Run("COMMIT"));
        QVERIFY(Rows().isEmpty());
        QVERIFY(AdifStaging::LoadRows(*store_, logName, staged, 1, false));
        QCOMPARE(Rows().size(), 1);
    }
};

TORDILLO_TEST(TestAdifStaging)
#include "TestAdifStaging.moc"
