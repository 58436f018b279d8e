// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/SafetyCopies.h"
#include "support/Fixtures.h"
#include "support/ManualScheduler.h"

class TestSafetyCopies : public LogbookTest {
    Q_OBJECT

    QStringList told_;
    int stamp_ = 0;

    void Store(const QString &call)
    {
        QVERIFY(logbook_->Store().Write([&](Session &session) {
            QsoTable::Insert(session, RowOf(u"Modo=SSB;NombreLog=Log;Estacion="_qs + call));
        }));
        // Files of this test are younger than the time stamps of a slow file system can tell apart.
        SetTime(++stamp_);
    }
    void SetTime(int minute) const
    {
        QFile file(Path(u"base0.mdb"_qs));
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
    QStringList Copies() const { return QDir(Path(u"copias"_qs)).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
    QString InCopy(int number) const { return Path(u"copias/"_qs + Copies().value(number)); }
    // A value of the database, or of another file.
    QString Value(const QByteArray &sql, const QString &path = {}) const
    {
        return RawDatabase(path.isEmpty() ? logbook_->Store().Path() : path).Value(sql);
    }
    const QByteArray count_ = "SELECT count(*) FROM Tabla1";

private Q_SLOTS:
    void init()
    {
        LogbookTest::init();
        FaultVfs::Instance().Reset();
        told_.clear();
    }
    void cleanup() { QCOMPARE(told_, QStringList()); }

    void ACopyAtEachStartAfterAChange()
    {
        QVERIFY(!Start()); // there is no log yet
        QVERIFY(!QFile::exists(Path(u"copias"_qs)));
        QVERIFY(logbook_->Store().CreateEmpty());
        Store(u"LU1A"_qs);
        QVERIFY(Start());
        QVERIFY(!Start());
        Store(u"LU2A"_qs);
        QVERIFY(Start());
        QVERIFY(!Start());
        QCOMPARE(Copies(), QStringList({u"base0_2026-11-24_231500.mdb"_qs, u"base0_2026-11-25_011500.mdb"_qs}));
        SetTime(1); // an older file put in its place is a change as well
        QVERIFY(Start());
        QCOMPARE(Value(count_, SafetyCopies::NewestGood(*logbook_)), u"2"_qs);
    }

    void TheLastTenStay()
    {
        QVERIFY(logbook_->Store().CreateEmpty());
        QVERIFY(QDir(folder_->path()).mkpath(u"copias"_qs));
        Put(u"copias/mía.mdb"_qs, {});
        for (int i = 0; i < SafetyCopies::kept + 2; ++i) {
            Store(u"LU%1A"_qs.arg(i));
            QVERIFY(Start());
        }
        QCOMPARE(Copies().size(), SafetyCopies::kept + 1); // what is none of ours stays
        QVERIFY(Copies().first() > u"base0_2026-11-25_00"_qs);
        QCOMPARE(Value(count_, InCopy(0)), u"3"_qs);
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

    void WhatACutOffRunLeftIsTakenAway()
    {
        const QStringList left{u"copias/base0_2026-11-23_101500.mdb.nueva"_qs,
            u"copias/base0_2026-11-23_101500.mdb.nueva-journal"_qs, u"base0_23_11_26.mdb.nueva"_qs,
            u"base0.mdb.nueva"_qs, u"base0.mdb.nueva-journal"_qs};
        const QStringList others{u"copias/base0_2026-11-22_101500.mdb"_qs, u"copias/mía.nueva"_qs,
            u"base0_22_11_26.mdb"_qs, u"base0.mdb"_qs, u"base0.mdb-journal"_qs, u"base0_mía.mdb.nueva"_qs};
        SafetyCopies::RemoveUnfinished(*logbook_); // there is no folder of copies yet
        QVERIFY(QDir(folder_->path()).mkpath(u"copias"_qs));
        for (const QString &name : left + others)
            Put(name, "x");
        SafetyCopies::RemoveUnfinished(*logbook_);
        for (const QString &name : left + others)
            QVERIFY2(QFile::exists(Path(name)) == others.contains(name), qPrintable(name));
    }

    void TheNewestGoodCopyIsPutBack()
    {
        QVERIFY(logbook_->Store().CreateEmpty());
        for (const QString &call : {u"LU1A"_qs, u"LU2A"_qs, u"LU3A"_qs}) {
            Store(call);
            QVERIFY(Start());
        }
        Spoil(u"copias/"_qs + Copies().last(), 8192, 4096);
        const QString good = SafetyCopies::NewestGood(*logbook_);
        QCOMPARE(good, InCopy(1));
        Spoil(u"base0.mdb"_qs, 8192, 4096);
        Put(u"base0.mdb-journal"_qs, "of the damaged file");
        const QByteArray before = Content(u"base0.mdb"_qs);
        const Result<QString> aside = SafetyCopies::PutBack(*logbook_, good);
        const QString kept = u"base0_apartada_2026-11-25_001500.mdb"_qs;
        QVERIFY(aside);
        QCOMPARE(*aside, Path(kept));
        QVERIFY(Content(kept) == before);
        QCOMPARE(Files(), QString(u"base0.mdb " + kept + u' ' + kept + u"-journal"));
        QVERIFY(logbook_->Store().CheckIntegrity());
        QCOMPARE(Value("SELECT group_concat(Estacion) FROM Tabla1"), u"LU1A,LU2A"_qs);
        QCOMPARE(Copies().size(), 3);
        Store(u"LU4A"_qs);
        QVERIFY(!SafetyCopies::PutBack(*logbook_, Path(u"no"_qs))); // nothing is touched
        QCOMPARE(Value(count_), u"3"_qs);
    }
};

TORDILLO_TEST(TestSafetyCopies)
#include "TestSafetyCopies.moc"
