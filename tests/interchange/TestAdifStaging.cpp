// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/QsoTable.h"
#include "interchange/AdifStaging.h"
#include "support/FaultVfs.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QTemporaryDir>
#include <QTest>

using AdifStaging::Staged;

namespace {

const QString logName = u"Log inicial"_qs;

// A contact as it comes from a file.
QsoRow FromFile(const QString &call = u"LU1ABC"_qs, const QString &time = u"21:15"_qs)
{
    QsoRow row;
    row.Modo = u"SSB"_qs;
    row.Banda = u"20m"_qs;
    row.MyCall = u"LU9ZZZ"_qs;
    row.Estacion = call;
    row.Fecha = u"24/11/2026"_qs;
    row.Hora = time;
    row.RSE = u"59"_qs;
    row.RSR = u"57"_qs;
    row.Frecuencia = u"14.250"_qs;
    return row;
}

} // namespace

class TestAdifStaging : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        layer_ = std::make_unique<FaultVfs::AsDefault>();
        Heal();
        folder_ = std::make_unique<QTemporaryDir>();
        store_ = std::make_unique<LogStore>(folder_->filePath(u"base0.mdb"_qs));
        QVERIFY(store_->CreateEmpty());
    }
    void cleanup()
    {
        store_.reset();
        layer_.reset();
    }

    void WhatCountsAsARepeat()
    {
        using C = QString QsoRow::*;
        const std::tuple<C, const char16_t *, bool> changes[] = {{&QsoRow::Obs, u"otra", true},
            {&QsoRow::Hora, u"21:06:00", true}, {&QsoRow::Hora, u"21:05:59", false}, // minutes by their boundaries
            {&QsoRow::Hora, u"21:24:59", true}, {&QsoRow::Hora, u"21:25:00", false}, {&QsoRow::Fecha, u"", false},
            {&QsoRow::Modo, u"ssb", true}, {&QsoRow::Modo, u"CW", false}, {&QsoRow::Banda, u"20M", true},
            {&QsoRow::Banda, u"40m", false}, {&QsoRow::MyCall, u"lu9zzz", true}, {&QsoRow::MyCall, u"LU8YYY", false},
            {&QsoRow::Estacion, u"lu1abc", true}, {&QsoRow::Estacion, u"LU1ABCD", false},
            {&QsoRow::NombreLog, u"LOG INICIAL", true}, {&QsoRow::NombreLog, u"Otro", false}};
        for (const auto &[column, text, repeat] : changes) {
            cleanup();
            init();
            QsoRow logged = Logged(FromFile());
            logged.*column = QString::fromUtf16(text);
            Store({Logged(FromFile(u"CX1AA"_qs)), logged});
            QCOMPARE(AdifStaging::Prepare(*store_, logName, FromFile())->dupe, repeat ? u"2"_qs : u"VA"_qs);
        }
    }

    void RepeatsAcrossMidnightAndInOrder()
    {
        QsoRow late = Logged(FromFile()), later = late;
        late.Hora = u"23:55:00"_qs;
        later.Fecha = u"2026-11-25"_qs;
        later.Hora = u"00:01:00"_qs;
        Store({later, late});
        const auto dupe = [this](const QString &date, const QString &time) {
            QsoRow row = FromFile();
            row.Fecha = date;
            row.Hora = time;
            return AdifStaging::Prepare(*store_, logName, row)->dupe;
        };
        QCOMPARE(dupe(u"25/11/2026"_qs, u"00:04"_qs), u"1"_qs);
        QCOMPARE(dupe(u"24/11/2026"_qs, u"23:59"_qs), u"1"_qs); // both are near: the first of the log
        QCOMPARE(dupe(u"24/11/2026"_qs, u"23:46"_qs), u"2"_qs);
        QCOMPARE(dupe(u"25/11/2026"_qs, u"00:11"_qs), u"VA"_qs);
    }

    void ALogWithACommaHasNoRepeats()
    {
        QsoRow logged = Logged(FromFile());
        logged.NombreLog = u"Campo, 2026"_qs;
        Store({logged});
        QCOMPARE(AdifStaging::Prepare(*store_, u"Campo, 2026"_qs, FromFile())->dupe, u"VA"_qs);
        // Unless what stands before the comma is a log of its own.
        logged.NombreLog = u"Campo"_qs;
        Store({logged});
        QCOMPARE(AdifStaging::Prepare(*store_, u"Campo, 2026"_qs, FromFile())->dupe, u"2"_qs);
    }

    void TheStagingTable()
    {
        const auto prepared = [this](const QString &call, const QString &time) {
            QsoRow row = FromFile(call, time);
            row.MiGrid = u" FF57 "_qs;
            return *AdifStaging::Prepare(*store_, logName, row);
        };
        Store({Logged(FromFile())});
        QVERIFY(AdifStaging::StageRows(*store_, {prepared(u"CX1AA"_qs, u"10:00"_qs)}));
        QVERIFY(
            AdifStaging::StageRows(*store_, {prepared(u"LU1ABC"_qs, u"21:15"_qs), prepared(u"CX3AA"_qs, u"10:00"_qs)}));
        QStringList found;
        for (const Staged &staged : StagedRows())
            found << QStringList{staged.row.Estacion, staged.row.MiGrid, staged.row.Hora, staged.dupe}.join(u'|');
        QCOMPARE(found,
            (QStringList{u"LU1ABC|FF57|21:15:00|1"_qs, u"CX3AA|FF57|10:00:00|VA"_qs, u"CX1AA|FF57|10:00:00|VA"_qs}));
        QCOMPARE(Rows().size(), 1);
        QVERIFY(AdifStaging::ClearStaging(*store_));
        QVERIFY(StagedRows().isEmpty());
    }

    void ANewContactInTheLog()
    {
        QsoRow row = FromFile();
        row.Modo = u"C4FM"_qs;
        row.LdA = QString();
        row.Nombre_Sat = u" AO-7 "_qs;
        row.SOTA = u" a "_qs;
        row.Obs = u" tal cual "_qs;
        StageAll({row});
        const auto loaded = AdifStaging::LoadRows(*store_, logName, StagedRows(), 1, false);
        QCOMPARE(loaded->inserted, 1);
        QCOMPARE(*loaded->lastId, 1);
        QsoRow expected = Logged(row);
        expected.id = 1;
        expected.Modo = u"DVoice"_qs;
        expected.LdA = u"0"_qs;
        expected.Argento = u"Capital"_qs;
        expected.Nombre_Sat = u"AO-7"_qs;
        expected.SOTA = u"a"_qs;
        QVERIFY(Rows() == QList<QsoRow>{expected});
    }

    void ReplacingKeepsIdAndLogAndOverwritesEverythingElse()
    {
        QsoRow logged = Logged(FromFile());
        for (QString QsoRow::*column : {&QsoRow::Obs, &QsoRow::Operador, &QsoRow::MiGrid, &QsoRow::SuGrid,
                 &QsoRow::Nombre_Sat, &QsoRow::SOTA, &QsoRow::IOTA, &QsoRow::POTA, &QsoRow::MYSOTA, &QsoRow::RSE})
            logged.*column = u"viejo"_qs;
        logged.LdA = u"2"_qs;
        logged.Argento = u"Chubut"_qs;
        logged.Perfil = u"p"_qs;
        logged.NombreLog = u"LOG INICIAL"_qs;
        Store({logged});
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
        QsoRow expected = Logged(fromFile);
        expected.id = 1;
        expected.NombreLog = logged.NombreLog;
        expected.LdA = u"0"_qs;
        expected.Argento = u"Capital"_qs;
        expected.Perfil = logged.Perfil;
        QVERIFY(Rows() == QList<QsoRow>{expected});

        // Deleted by the operator between the two steps: what the file brings is not lost.
        QVERIFY(store_->Write([](Session &session) { QsoTable::Delete(session, 1); }));
        loaded = AdifStaging::LoadRows(*store_, logName, staged, 1, true);
        QCOMPARE(loaded->inserted, 1);
        QCOMPARE(Rows().size(), 1);
        QCOMPARE(Rows().first().NombreLog, logName);
    }

    void OnlyTheFirstOnesAreLoaded()
    {
        Store({Logged(FromFile(u"CX3AA"_qs, u"13:00"_qs))});
        StageAll({FromFile(u"CX1AA"_qs, u"11:00"_qs), FromFile(u"CX2AA"_qs, u"12:00"_qs),
            FromFile(u"CX3AA"_qs, u"13:00"_qs), FromFile(u"CX4AA"_qs, u"14:00"_qs)});
        const auto loaded = AdifStaging::LoadRows(*store_, logName, StagedRows(), 3, false);
        QCOMPARE((QList{loaded->inserted, loaded->replaced, loaded->skipped}), (QList{2, 0, 1}));
        QCOMPARE(*loaded->lastId, 3);
        QStringList calls;
        for (const QsoRow &row : Rows())
            calls << row.Estacion;
        QCOMPARE(calls.join(u' '), u"CX3AA CX4AA CX2AA"_qs); // newest first, as they are staged
        QCOMPARE(RawDatabase(store_->Path()).Value("SELECT QSOs FROM Contadores"), u"3"_qs);
    }

    // --- One step, whatever happens below

    void AFailingDiskLeavesTheLogAsItWas_data()
    {
        QTest::addColumn<FaultVfs::Trouble>("trouble");
        QTest::addColumn<bool>("syncs");
        QTest::newRow("disk full") << FaultVfs::Trouble::DiskFull << false;
        QTest::newRow("failing disk") << FaultVfs::Trouble::IoError << false;
        QTest::newRow("failing sync") << FaultVfs::Trouble::IoError << true;
    }
    void AFailingDiskLeavesTheLogAsItWas()
    {
        QFETCH(FaultVfs::Trouble, trouble);
        QFETCH(bool, syncs);
        FaultVfs &disk = FaultVfs::Instance();
        QList<QsoRow> logged, fromFile;
        for (int i = 0; i < 60; ++i) {
            fromFile << FromFile(u"CX%1AA"_qs.arg(i));
            fromFile.last().Obs = QString(100, u'x');
            if (i % 2)
                logged << Logged(FromFile(u"CX%1AA"_qs.arg(i)));
        }
        Store(logged);
        StageAll(fromFile);
        const QList<Staged> staged = StagedRows();
        const QList<QsoRow> rows = Rows();
        int fault = 0, failed = 0;
        while (true) {
            ++fault;
            Heal();
            if (syncs)
                disk.FailSyncs(fault, FaultVfs::forever);
            else
                disk.FailWrites(fault, FaultVfs::forever, trouble);
            const auto loaded = AdifStaging::LoadRows(*store_, logName, staged, staged.size(), true);
            Heal();
            if (loaded)
                break;
            ++failed;
            store_->Close();
            QVERIFY(Rows() == rows);
            QCOMPARE(RawDatabase(store_->Path()).Value("PRAGMA integrity_check"), u"ok"_qs);
            QCOMPARE(StagedRows().size(), staged.size());
        }
        QVERIFY2(failed > (syncs ? 1 : 10), qPrintable(QString::number(failed)));
        QCOMPARE(Rows().size(), 60);
        QCOMPARE(RawDatabase(store_->Path()).Value("SELECT QSOs FROM Contadores"), u"60"_qs);
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

private:
    static void Heal()
    {
        FaultVfs::Instance().Reset();
        FaultVfs::Instance().SetRecording(false);
        FaultVfs::Instance().SetRealSyncs(false);
    }
    // The row as the log stores it.
    static QsoRow Logged(QsoRow row)
    {
        row.Fecha = u"2026-11-24"_qs;
        row.Hora += u":00"_qs;
        row.NombreLog = logName;
        return row;
    }
    void Store(const QList<QsoRow> &rows)
    {
        QVERIFY(store_->Write([&rows](Session &session) {
            for (const QsoRow &row : rows)
                QsoTable::Insert(session, row);
        }));
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
    QList<QsoRow> Rows()
    {
        return *store_->Read([](Session &session) {
            QList<QsoRow> rows;
            Query query = session.Prepare(u"SELECT " + QsoColumns::SelectList() + u" FROM Tabla1 ORDER BY id");
            while (query.Next())
                rows << query.Row();
            return rows;
        });
    }

    std::unique_ptr<FaultVfs::AsDefault> layer_;
    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<LogStore> store_;
};

TORDILLO_TEST(TestAdifStaging)
#include "TestAdifStaging.moc"
