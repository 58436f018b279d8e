// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeQsos.h"
#include "support/Fixtures.h"
#include "support/PowerCut.h"

using namespace SomeQsos;
using Trouble = FaultVfs::Trouble;
using Access = FaultVfs::Access;

class TestPowerCut : public StoreTest {
    Q_OBJECT

    // Why this file is not, to the last value, the log as it stood at one of the two moments; empty when it is.
    static QString Complaint(const QString &path, const QList<QsoRow> &shown, const QList<QsoRow> &next)
    {
        LogStore store(path, "fault");
        if (const Result<void> checked = store.CheckIntegrity(); !checked)
            return checked.failure().text;
        const Result<bool> current = SchemaIsCurrent(store);
        if (!current || !*current)
            return u"the schema is not whole"_qs;
        const QList<QsoRow> rows = RowsOf(store);
        if (rows != shown && rows != next)
            return u"%1 rows, %2 were shown, or their values differ"_qs.arg(rows.size()).arg(shown.size());
        const qint64 counted = *CountQsos(store, logName);
        return counted == rows.size() ? QString() : u"%1 rows, the counter says %2"_qs.arg(rows.size()).arg(counted);
    }

    static void Record()
    {
        Disk().Reset();
        Disk().SetRealSyncs(false);
    }

private Q_SLOTS:
    void init()
    {
        StoreTest::init();
        store_->Close();
        Record();
    }

    void EveryContactThatWasShownIsThere()
    {
        constexpr int contacts = 50;
        QList<QList<QsoRow>> logs{{}}; // as it stood after so many contacts
        for (int number = 1; number <= contacts; ++number) {
            QVERIFY(AddQso(*store_, logName, Numbered(number)));
            Disk().Mark(number);
            logs << Rows();
        }
        QCOMPARE(logs.last().size(), contacts);
        QVERIFY(logs[8] != logs[7] + logs[8].mid(7)); // older rows change too
        const std::vector<FaultEvent> recording = Disk().Recording();
        Disk().SetRecording(false); // the checks run on the same layer, to be spared the real syncs
        const auto check = [&](const PowerCut::Cut &cut) {
            const qsizetype shown = cut.marks.empty() ? 0 : cut.marks.back();
            const QString path = cut.folder + u"/base0.mdb"_qs;
            return Complaint(path, logs[shown], logs[std::min<qsizetype>(shown + 1, contacts)]);
        };
        const auto outcome = PowerCut::TryAllCuts(recording, folder_->path(), check);
        QCOMPARE(outcome.failures.join(u'\n'), QString());
        QVERIFY2(outcome.states > 4 * contacts, qPrintable(QString::number(outcome.states)));
    }

    void AnUpgradeIsWholeOrNothing()
    {
        for (int number = 1; number <= 30; ++number)
            QVERIFY(AddQso(*store_, logName, Numbered(number)));
        const QList<QsoRow> rows = Rows();
        QVERIFY(store_->Write([](Session &session) {
            session.Execute(u"ALTER TABLE Tabla1 DROP COLUMN Perfil"_qs);
            session.Execute(u"DROP TABLE Contadores"_qs);
        }));
        store_->Close();
        Record();
        QVERIFY(ProbeSchema(*store_));
        Disk().Mark(1);
        const std::vector<FaultEvent> recording = Disk().Recording();
        Disk().SetRecording(false);
        const auto check = [&](const PowerCut::Cut &cut) {
            const QString path = cut.folder + u"/base0.mdb"_qs;
            LogStore store(path, "fault");
            const Result<bool> current = SchemaIsCurrent(store);
            if (!current || (!*current && !cut.marks.empty()))
                return u"the upgrade was lost"_qs;
            if (const Result<void> again = ProbeSchema(store); !again)
                return again.failure().text;
            store.Close();
            return Complaint(path, rows, rows);
        };
        const auto outcome = PowerCut::TryAllCuts(recording, folder_->path(), check, {20, 3, 1});
        QCOMPARE(outcome.failures.join(u'\n'), QString());
        QVERIFY(outcome.states > 20);
    }

    void TroubleAtTheMomentOfStoring()
    {
        using Kind = Failure::Kind;
        constexpr int forever = FaultVfs::forever;
        std::vector<std::pair<std::function<void()>, Kind>> troubles{{[] { Disk().SetRoom(0); }, Kind::Full},
            {[] { Disk().SetRoom(3000); }, Kind::Full},
            {[] { Disk().SetAccess(Access::ReadOnlyFile); }, Kind::ReadOnly},
            {[] { Disk().SetAccess(Access::ReadOnlyFolder); }, Kind::ReadOnly},
            {[] { Disk().SetAccess(Access::NoJournal); }, Kind::ReadOnly},
            {[] { Disk().PretendLocked(forever, false); }, Kind::Locked}};
        for (int sync = 1; sync <= 3; ++sync)
            troubles.push_back({[=] { Disk().FailSyncs(sync, 1); }, Kind::Other});
        for (int write = 1; write <= 12; ++write) {
            troubles.push_back({[=] { Disk().FailWrites(write, 1, Trouble::DiskFull, 100); }, Kind::Full});
            troubles.push_back({[=] { Disk().FailWrites(write, forever, Trouble::IoError); }, Kind::Other});
        }
        constexpr int before = 40; // so that the next contact touches several pages
        for (const auto &[set, kind] : troubles) {
            init();
            for (int number = 1; number < before; ++number)
                QVERIFY(AddQso(*store_, logName, Numbered(number)));
            const QList<QsoRow> rows = Rows();
            store_->Close(); // a permission that was taken away is met by the next opening

            set();
            const Result<qint64> failed = AddQso(*store_, logName, Numbered(before));
            QVERIFY(!failed);
            QCOMPARE(failed.failure().kind, kind);
            QVERIFY2(failed.failure().text.contains(path_), qPrintable(failed.failure().text));
            const QList<QsoRow> meanwhile = Rows();
            if (kind == Failure::Kind::ReadOnly || kind == Failure::Kind::Locked)
                QVERIFY(meanwhile == rows); // what cannot be written can still be read

            Record();
            QCOMPARE(Complaint(path_, rows, rows), QString());
            // The trouble is over, and nobody started the program anew.
            QCOMPARE(*AddQso(*store_, logName, Numbered(before)), before);
            const QList<QsoRow> after = Rows();
            QCOMPARE(after.size(), before);
            QCOMPARE(Complaint(path_, after, after), QString());
            QCOMPARE(Files(), u"base0.mdb"_qs);
        }
    }
};

TORDILLO_TEST(TestPowerCut)
#include "TestPowerCut.moc"
