// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Logbook.h"
#include "core/QsoTable.h"
#include "core/SafetyCopies.h"
#include "support/FaultVfs.h"
#include "support/FixedClock.h"
#include "support/ManualScheduler.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestSafetyCopies : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder_;
    FileSystem files_;
    FixedClock clock_;
    std::unique_ptr<Logbook> logbook_;
    QStringList told_;

    void Store(const QString &call)
    {
        QsoRow row;
        row.Modo = u"SSB"_qs;
        row.Estacion = call;
        row.NombreLog = u"Log"_qs;
        QVERIFY(logbook_->Store().Write([&](Session &session) { QsoTable::Insert(session, row); }));
        // Files of this test are younger than the time stamps of a slow file system can tell apart.
        SetTime(u"base0.mdb"_qs, ++stamp_);
    }
    void SetTime(const QString &name, int minute) const
    {
        QFile file(folder_->filePath(name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QDateTime time = QDateTime(QDate(2026, 11, 24), QTime(0, 0)).addSecs(60 * minute);
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    }
    // One run of the program; gives whether a copy was begun.
    bool Start()
    {
        clock_.now = clock_.now.addSecs(3600);
        ManualScheduler scheduler;
        SafetyCopies copies(*logbook_, scheduler, [this](const Failure &failure) { told_ << failure.text; });
        copies.Begin();
        const bool begun = copies.UnderWay();
        copies.Begin(); // a second time begins nothing
        for (int i = 0; i < 5000 && copies.UnderWay(); ++i) {
            scheduler.Advance(15);
            QTest::qSleep(1);
        }
        return begun && !copies.UnderWay() && scheduler.RunningTimers() == 0;
    }
    QStringList Copies() const
    {
        return QDir(folder_->filePath(u"copias"_qs)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    void Spoil(const QString &name) const
    {
        QFile file(folder_->filePath(name));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(4096));
        file.write(QByteArray(8192, '\xee'));
    }
    int stamp_ = 0;

private Q_SLOTS:
    void init()
    {
        FaultVfs::Instance().Reset();
        folder_ = std::make_unique<QTemporaryDir>();
        clock_ = FixedClock();
        logbook_ = std::make_unique<Logbook>(folder_->path(), files_, clock_);
        told_.clear();
    }
    void cleanup() { QCOMPARE(told_, QStringList()); }

    void ACopyAtEachStartAfterAChange()
    {
        QVERIFY(!Start()); // there is no log yet
        QVERIFY(!QDir(folder_->filePath(u"copias"_qs)).exists());
        QVERIFY(logbook_->Store().CreateEmpty());
        Store(u"LU1A"_qs);
        QVERIFY(Start());
        QVERIFY(!Start());
        Store(u"LU2A"_qs);
        QVERIFY(Start());
        QVERIFY(!Start());
        QCOMPARE(Copies(), QStringList({u"base0_2026-11-24_231500.mdb"_qs, u"base0_2026-11-25_011500.mdb"_qs}));
        SetTime(u"base0.mdb"_qs, 1); // an older file put in its place is a change as well
        QVERIFY(Start());
        QCOMPARE(RawDatabase(SafetyCopies::NewestGood(*logbook_)).Value("SELECT count(*) FROM Tabla1"), u"2"_qs);
    }

    void TheLastTenStay()
    {
        QVERIFY(logbook_->Store().CreateEmpty());
        QVERIFY(QDir(folder_->path()).mkpath(u"copias"_qs));
        QFile mine(folder_->filePath(u"copias/mía.mdb"_qs));
        QVERIFY(mine.open(QIODevice::WriteOnly));
        for (int i = 0; i < SafetyCopies::kept + 2; ++i) {
            Store(u"LU%1A"_qs.arg(i));
            QVERIFY(Start());
        }
        const QStringList copies = Copies();
        QCOMPARE(copies.size(), SafetyCopies::kept + 1); // what is none of ours stays
        QVERIFY(copies.first() > u"base0_2026-11-25_00"_qs);
        QCOMPARE(RawDatabase(folder_->filePath(QString(u"copias/" + copies[0]))).Value("SELECT count(*) FROM Tabla1"),
            u"3"_qs);
    }

    void ACopyThatFailsIsToldOnceAndHarmsNothing()
    {
        const FaultVfs::AsDefault layer;
        QVERIFY(logbook_->Store().CreateEmpty());
        Store(u"LU1A"_qs);
        QVERIFY(Start());
        Store(u"LU2A"_qs);
        const QStringList before = Copies();
        FaultVfs::Instance().SetRoom(0);
        QVERIFY(Start());
        FaultVfs::Instance().Reset();
        QCOMPARE(told_.size(), 1);
        QVERIFY2(told_.takeFirst().contains(u"No queda lugar"_qs), "full");
        QCOMPARE(Copies(), before);
        QVERIFY(Start()); // still due
        QCOMPARE(Copies().size(), 2);
    }

    void AProgramThatEndsMeanwhileLeavesNoHalfCopy()
    {
        QVERIFY(logbook_->Store().CreateEmpty());
        Store(u"LU1A"_qs);
        {
            ManualScheduler scheduler;
            SafetyCopies copies(*logbook_, scheduler, {});
            copies.Begin();
            scheduler.Advance(15);
            QVERIFY(copies.UnderWay());
        }
        QCOMPARE(Copies(), QStringList());
    }

    void TheNewestGoodCopyIsPutBack()
    {
        QVERIFY(logbook_->Store().CreateEmpty());
        for (const QString &call : {u"LU1A"_qs, u"LU2A"_qs, u"LU3A"_qs}) {
            Store(call);
            QVERIFY(Start());
        }
        Spoil(QString(u"copias/" + Copies().last()));
        const QString good = SafetyCopies::NewestGood(*logbook_);
        QCOMPARE(good, folder_->filePath(QString(u"copias/" + Copies()[1])));
        Spoil(u"base0.mdb"_qs);
        QFile journal(folder_->filePath(u"base0.mdb-journal"_qs));
        QVERIFY(journal.open(QIODevice::WriteOnly));
        journal.write("of the damaged file");
        journal.close();
        QFile damaged(folder_->filePath(u"base0.mdb"_qs));
        QVERIFY(damaged.open(QIODevice::ReadOnly));
        const QByteArray before = damaged.readAll();
        const Result<QString> aside = SafetyCopies::PutBack(*logbook_, good);
        QVERIFY(aside);
        QCOMPARE(*aside, folder_->filePath(u"base0_apartada_2026-11-25_001500.mdb"_qs));
        QFile kept(*aside);
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QVERIFY(kept.readAll() == before);
        QVERIFY(QFile::exists(QString(*aside + u"-journal")));
        QVERIFY(!QFile::exists(folder_->filePath(u"base0.mdb-journal"_qs)));
        QVERIFY(logbook_->Store().CheckIntegrity());
        QCOMPARE(
            RawDatabase(logbook_->Store().Path()).Value("SELECT group_concat(Estacion) FROM Tabla1"), u"LU1A,LU2A"_qs);
        QCOMPARE(Copies().size(), 3);
        Store(u"LU4A"_qs);
        // Without a copy to put back nothing is touched.
        QVERIFY(!SafetyCopies::PutBack(*logbook_, folder_->filePath(u"no"_qs)));
        QCOMPARE(RawDatabase(logbook_->Store().Path()).Value("SELECT count(*) FROM Tabla1"), u"3"_qs);
    }
};

TORDILLO_TEST(TestSafetyCopies)
#include "TestSafetyCopies.moc"
