// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/StoreCopy.h"
#include "support/Fixtures.h"

#include <QThread>

using Stage = StoreCopy::Stage;

class TestStoreCopy : public StoreTest {
    Q_OBJECT

    QString target_;
    Runs runs_;
    const QString name_ = u"base0_24_11_26.mdb"_qs, both_ = u"base0.mdb base0_24_11_26.mdb"_qs;

    static Result<qint64> Add(LogStore &store, const QString &call)
    {
        return store.Write([&](Session &session) {
            return QsoTable::Insert(session, RowOf(u"Modo=SSB;NombreLog=Log;Estacion="_qs + call));
        });
    }
    // Some 6 MB, which is several steps.
    void StoreMuch()
    {
        QVERIFY(store_->Write([](Session &session) {
            session.Execute(u"WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c WHERE n<3000) INSERT INTO "
                            "Tabla1 (Modo, \"Nombre Log\", Obs) SELECT 'CW', 'Log', printf('%.2000c', 'x') FROM c"_qs);
        }));
    }
    // Steps until the copy is at `stage` or has failed.
    static Result<Stage> StepTo(StoreCopy &copy, Stage stage)
    {
        for (int i = 0; i < 20000; ++i) {
            const Result<Stage> now = copy.Step();
            if (!now || *now == stage)
                return now;
            if (*now == Stage::Checking)
                QThread::msleep(1);
        }
        return Failure{u"It never ended."_qs};
    }
    Result<void> CopyAll()
    {
        Run run(runs_, {});
        return CopyChecked(*store_, target_, run);
    }

private Q_SLOTS:
    void init()
    {
        StoreTest::init();
        target_ = Path(name_);
        QVERIFY(Add(*store_, u"LU1A"_qs));
    }

    void ACopyHoldsWhatTheSourceHolds()
    {
        Put(name_, "an older one");
        Put(name_ + u".nueva"_qs, "left by a crash");
        Put(name_ + u".nueva-journal"_qs, "left by a crash");
        StoreMuch();
        QVERIFY(CopyAll());
        QCOMPARE(Files(), both_);
        RawDatabase raw(store_->Path());
        QVERIFY(raw.Run("ATTACH '" + target_.toUtf8() + "' AS c"));
        QCOMPARE(raw.Value("SELECT count(*) FROM c.Tabla1"), u"3001"_qs);
        QCOMPARE(raw.Value("SELECT count(*) FROM (SELECT * FROM Tabla1 EXCEPT SELECT * FROM c.Tabla1)"), u"0"_qs);
    }

    void WhatIsStoredMeanwhileComesIn()
    {
        StoreMuch();
        StoreCopy copy(*store_, target_);
        QVERIFY(*copy.Step() == Stage::Copying);
        QVERIFY(Add(*store_, u"MINE"_qs));
        LogStore other(store_->Path()); // another program makes the copy begin anew
        QVERIFY(Add(other, u"OTHER"_qs));
        QVERIFY(*StepTo(copy, Stage::Checking) == Stage::Checking);
        QVERIFY(Add(*store_, u"LATE"_qs)); // and what comes after the last page does not spoil the check
        QVERIFY(*StepTo(copy, Stage::Done) == Stage::Done);
        QCOMPARE(RawDatabase(target_).Value("SELECT count(*)||group_concat(Estacion) FROM Tabla1 WHERE Estacion<>''"),
            u"3LU1A,MINE,OTHER"_qs);
        QCOMPARE(Value("SELECT count(*) FROM Tabla1"), u"3004"_qs);
    }

    void AnotherProgramThatKeepsTheLogIsNotWaitedForWithoutEnd()
    {
        StoreMuch();
        StoreCopy copy(*store_, target_);
        QVERIFY(*copy.Step() == Stage::Copying);
        RawDatabase other(store_->Path());
        QVERIFY(other.Run("BEGIN EXCLUSIVE"));
        const Result<Stage> stage = copy.Step();
        QCOMPARE(stage.failure().kind, Failure::Kind::Locked);
        QVERIFY(stage.failure().text.contains(store_->Path()));
    }

    void AFailedCopyLeavesTheOlderOne()
    {
        for (const bool full : {true, false}) {
            init();
            const FaultVfs::AsDefault layer;
            HealDisk();
            StoreMuch();
            Put(name_, "the older one");
            if (full)
                Disk().SetRoom(3 << 20);
            else
                Disk().FailWrites(700, FaultVfs::forever, FaultVfs::Trouble::IoError);
            const QString told = CopyAll().failure().text;
            HealDisk();
            QVERIFY2(
                told.contains(full ? u"No queda lugar en el disco"_qs : u"El disco falló"_qs) && told.contains(target_),
                qPrintable(told));
            QCOMPARE(Content(name_), QByteArray("the older one"));
            QCOMPARE(Files(), both_);
            QVERIFY(Add(*store_, u"LU2A"_qs)); // the log works on
            QVERIFY(CopyAll());
        }
    }

    void ACopyOfWhatIsDamagedIsNone()
    {
        StoreMuch();
        store_->Close();
        Spoil(u"base0.mdb"_qs, 40960);
        Put(name_, "the older one");
        QCOMPARE(CopyAll().failure().kind, Failure::Kind::Damaged);
        QCOMPARE(Content(name_), QByteArray("the older one"));
        QCOMPARE(Files(), both_);
        init();
        Put(name_, "the older one");
        Sql("UPDATE Contadores SET QSOs=QSOs+1"); // one contact fewer than there should be
        QVERIFY(CopyAll().failure().text.contains(u"no tiene todos los QSOs"));
        QCOMPARE(Content(name_), QByteArray("the older one"));
    }

    void EscStopsTheCheckOfTheCopy()
    {
        Put(name_, "the older one");
        qint64 copied = 0;
        Run run(
            runs_,
            [&] {
                if (copied == 1)
                    runs_.CancelAll();
            },
            [&](qint64 done, qint64 total) { copied = total > 0 && done == total; }, 0);
        QCOMPARE(CopyChecked(*store_, target_, run).failure().kind, Failure::Kind::Cancelled);
        QCOMPARE(Content(name_), QByteArray("the older one"));
        QCOMPARE(Files(), both_);
        QVERIFY(Add(*store_, u"LU2A"_qs));
    }

    void PlacesThatCannotTakeACopy()
    {
        target_ = Path(u"no/such/folder/x.mdb"_qs);
        QVERIFY(CopyAll().failure().text.contains(target_));
        target_ = Path(u"taken"_qs); // by a folder with something in it
        QVERIFY(QDir().mkpath(QString(target_ + u"/x")));
        QVERIFY(CopyAll().failure().text.contains(target_));
        QVERIFY(QFile::rename(store_->Path(), Path(u"x"_qs)));
        QCOMPARE(CopyAll().failure().kind, Failure::Kind::Missing);
        QCOMPARE(Files(), u"x"_qs);
    }
};

TORDILLO_TEST(TestStoreCopy)
#include "TestStoreCopy.moc"
