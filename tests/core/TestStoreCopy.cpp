// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/QsoTable.h"
#include "core/StoreCopy.h"
#include "support/FaultVfs.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

namespace {

using Stage = StoreCopy::Stage;

QByteArray ContentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Put(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

} // namespace

class TestStoreCopy : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<LogStore> store_;
    QString target_;
    Runs runs_;

    static Result<qint64> Add(LogStore &store, const QString &call)
    {
        QsoRow row;
        row.Modo = u"SSB"_qs;
        row.Estacion = call;
        row.NombreLog = u"Log"_qs;
        return store.Write([&](Session &session) { return QsoTable::Insert(session, row); });
    }
    // Some 6 MB, which is several steps.
    void StoreMuch()
    {
        QVERIFY(store_->Write([](Session &session) {
            session.Execute(u"WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c WHERE n<3000) INSERT INTO "
                            "Tabla1 (Modo, \"Nombre Log\", Obs) SELECT 'CW', 'Log', printf('%.2000c', 'x') FROM c"_qs);
        }));
    }
    QStringList Files() const { return QDir(folder_->path()).entryList(QDir::Files, QDir::Name); }
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
        FaultVfs::Instance().Reset();
        folder_ = std::make_unique<QTemporaryDir>();
        store_ = std::make_unique<LogStore>(folder_->filePath(u"base0.mdb"_qs));
        target_ = folder_->filePath(u"base0_24_11_26.mdb"_qs);
        QVERIFY(store_->CreateEmpty());
        QVERIFY(Add(*store_, u"LU1A"_qs));
    }

    void ACopyHoldsWhatTheSourceHolds()
    {
        Put(target_, "an older one");
        Put(QString(target_ + u".nueva"), "left by a crash");
        Put(QString(target_ + u".nueva-journal"), "left by a crash");
        StoreMuch();
        QVERIFY(CopyAll());
        QCOMPARE(Files(), QStringList({u"base0.mdb"_qs, u"base0_24_11_26.mdb"_qs}));
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
        QCOMPARE(RawDatabase(store_->Path()).Value("SELECT count(*) FROM Tabla1"), u"3004"_qs);
    }

    void AFailedCopyLeavesTheOlderOne_data()
    {
        QTest::addColumn<std::function<void()>>("trouble");
        QTest::addColumn<QString>("told");
        QTest::newRow("full disk") << std::function<void()>([] { FaultVfs::Instance().SetRoom(3 << 20); })
                                   << u"No queda lugar en el disco"_qs;
        QTest::newRow("bad disk") << std::function<void()>([] {
            FaultVfs::Instance().FailWrites(700, FaultVfs::forever, FaultVfs::Trouble::IoError);
        }) << u"El disco falló"_qs;
    }
    void AFailedCopyLeavesTheOlderOne()
    {
        const FaultVfs::AsDefault layer;
        QFETCH(std::function<void()>, trouble);
        QFETCH(QString, told);
        StoreMuch();
        Put(target_, "the older one");
        trouble();
        const Result<void> copied = CopyAll();
        FaultVfs::Instance().Reset();
        QVERIFY(!copied);
        QVERIFY2(copied.failure().text.contains(told) && copied.failure().text.contains(target_),
            qPrintable(copied.failure().text));
        QCOMPARE(ContentOf(target_), QByteArray("the older one"));
        QCOMPARE(Files(), QStringList({u"base0.mdb"_qs, u"base0_24_11_26.mdb"_qs}));
        QVERIFY(Add(*store_, u"LU2A"_qs)); // the log works on
        QVERIFY(CopyAll());
    }

    void ACopyOfWhatIsDamagedIsNone()
    {
        StoreMuch();
        store_->Close();
        QFile file(store_->Path());
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(file.size() / 2));
        file.write(QByteArray(40960, '\xee'));
        file.close();
        Put(target_, "the older one");
        const Result<void> copied = CopyAll();
        QVERIFY(!copied);
        QCOMPARE(copied.failure().kind, Failure::Kind::Damaged);
        QCOMPARE(ContentOf(target_), QByteArray("the older one"));
        QCOMPARE(Files().size(), 2);
    }

    void EscStopsTheCheckOfTheCopy()
    {
        Put(target_, "the older one");
        qint64 copied = 0;
        Run run(
            runs_,
            [&] {
                if (copied == 1)
                    runs_.CancelAll();
            },
            [&](qint64 done, qint64 total) { copied = total > 0 && done == total; }, 0);
        const Result<void> outcome = CopyChecked(*store_, target_, run);
        QVERIFY(!outcome);
        QCOMPARE(outcome.failure().kind, Failure::Kind::Cancelled);
        QCOMPARE(ContentOf(target_), QByteArray("the older one"));
        QCOMPARE(Files().size(), 2);
        QVERIFY(Add(*store_, u"LU2A"_qs));
    }

    void PlacesThatCannotTakeACopy()
    {
        target_ = folder_->filePath(u"no/such/folder/x.mdb"_qs);
        Result<void> copied = CopyAll();
        QVERIFY(!copied && copied.failure().text.contains(target_));
        target_ = folder_->filePath(u"taken"_qs); // by a folder with something in it
        QVERIFY(QDir().mkpath(QString(target_ + u"/x")));
        copied = CopyAll();
        QVERIFY(!copied && copied.failure().text.contains(target_));
        QVERIFY(QFile::rename(store_->Path(), folder_->filePath(u"x"_qs)));
        copied = CopyAll();
        QVERIFY(!copied && copied.failure().kind == Failure::Kind::Missing);
        QCOMPARE(Files(), QStringList({u"x"_qs}));
    }
};

TORDILLO_TEST(TestStoreCopy)
#include "TestStoreCopy.moc"
