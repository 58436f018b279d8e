// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeQsos.h"
#include "core/Schema.h"
#include "support/FaultVfs.h"
#include "support/PowerCut.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

using namespace SomeQsos;
using Trouble = FaultVfs::Trouble;
using Access = FaultVfs::Access;

namespace {

FaultVfs &Vfs() { return FaultVfs::Instance(); }

// Why this file is not, to the last value, the log as it stood at one of the two moments; empty when it is.
QString Complaint(const QString &path, const QList<QsoRow> &shown, const QList<QsoRow> &next)
{
    LogStore store(path, "fault");
    if (const Result<void> checked = store.CheckIntegrity(); !checked)
        return checked.failure().text;
    const Result<bool> current = SchemaIsCurrent(store);
    if (!current || !*current)
        return u"the schema is not whole"_qs;
    const Result<QList<QsoRow>> rows = AllRows(store);
    if (!rows)
        return rows.failure().text;
    if (*rows != shown && *rows != next)
        return u"%1 rows, %2 were shown, or their values differ"_qs.arg(rows->size()).arg(shown.size());
    const qint64 counted = *CountQsos(store, logName);
    return counted == rows->size() ? QString() : u"%1 rows, the counter says %2"_qs.arg(rows->size()).arg(counted);
}

} // namespace

class TestPowerCut : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        path_ = folder_->filePath(u"base0.mdb"_qs);
        Vfs().Reset();
        store_ = std::make_unique<LogStore>(path_, "fault");
        QVERIFY(store_->CreateEmpty());
        store_->Close();
        Vfs().Reset();
        Vfs().SetRealSyncs(false);
    }
    void cleanup()
    {
        store_.reset();
        Vfs().Reset();
    }

    void EveryContactThatWasShownIsThere()
    {
        constexpr int contacts = 50;
        QList<QList<QsoRow>> logs{{}}; // as it stood after so many contacts
        for (int number = 1; number <= contacts; ++number) {
            QVERIFY(AddQso(*store_, logName, Numbered(number)));
            Vfs().Mark(number);
            logs << *AllRows(*store_);
        }
        QCOMPARE(logs.last().size(), contacts);
        QVERIFY(logs[8] != logs[7] + logs[8].mid(7)); // older rows change too
        const std::vector<FaultEvent> recording = Vfs().Recording();
        Vfs().SetRecording(false); // the checks run on the same layer, to be spared the real syncs
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
        const QList<QsoRow> rows = *AllRows(*store_);
        QVERIFY(store_->Write([](Session &session) {
            session.Execute(u"ALTER TABLE Tabla1 DROP COLUMN Perfil"_qs);
            session.Execute(u"DROP TABLE Contadores"_qs);
        }));
        store_->Close();
        Vfs().Reset();
        Vfs().SetRealSyncs(false);
        QVERIFY(ProbeSchema(*store_));
        Vfs().Mark(1);
        const std::vector<FaultEvent> recording = Vfs().Recording();
        Vfs().SetRecording(false);
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

    void TroubleAtTheMomentOfStoring_data()
    {
        using Set = std::function<void()>;
        using Kind = Failure::Kind;
        QTest::addColumn<Set>("set");
        QTest::addColumn<Kind>("kind");
        const auto add = [](const QString &name, Set set, Kind kind) {
            QTest::newRow(qPrintable(name)) << std::move(set) << kind;
        };
        add(
            u"disk full"_qs, [] { Vfs().SetRoom(0); }, Kind::Full);
        add(
            u"disk full in the journal"_qs, [] { Vfs().SetRoom(3000); }, Kind::Full);
        for (int write = 1; write <= 12; ++write) {
            const QString where = u"at write %1"_qs.arg(write);
            add(
                u"disk full "_qs + where, [=] { Vfs().FailWrites(write, 1, Trouble::DiskFull, 100); }, Kind::Full);
            add(
                u"disk error "_qs + where, [=] { Vfs().FailWrites(write, FaultVfs::forever, Trouble::IoError); },
                Kind::Other);
        }
        for (int sync = 1; sync <= 3; ++sync)
            add(
                u"sync %1 fails"_qs.arg(sync), [=] { Vfs().FailSyncs(sync, 1); }, Kind::Other);
        add(
            u"file read-only"_qs, [] { Vfs().SetAccess(Access::ReadOnlyFile); }, Kind::ReadOnly);
        add(
            u"folder read-only"_qs, [] { Vfs().SetAccess(Access::ReadOnlyFolder); }, Kind::ReadOnly);
        add(
            u"no journal"_qs, [] { Vfs().SetAccess(Access::NoJournal); }, Kind::ReadOnly);
        add(
            u"locked"_qs, [] { Vfs().PretendLocked(FaultVfs::forever, false); }, Kind::Locked);
    }
    void TroubleAtTheMomentOfStoring()
    {
        QFETCH(std::function<void()>, set);
        QFETCH(Failure::Kind, kind);
        constexpr int before = 40; // so that the next contact touches several pages
        for (int number = 1; number < before; ++number)
            QVERIFY(AddQso(*store_, logName, Numbered(number)));
        const QList<QsoRow> rows = *AllRows(*store_);
        store_->Close(); // a permission that was taken away is met by the next opening

        set();
        const Result<qint64> failed = AddQso(*store_, logName, Numbered(before));
        QVERIFY(!failed);
        QCOMPARE(failed.failure().kind, kind);
        QVERIFY2(failed.failure().text.contains(path_), qPrintable(failed.failure().text));
        const Result<QList<QsoRow>> meanwhile = AllRows(*store_);
        if (kind == Failure::Kind::ReadOnly || kind == Failure::Kind::Locked)
            QVERIFY(*meanwhile == rows); // what cannot be written can still be read

        Vfs().Reset();
        Vfs().SetRealSyncs(false);
        QCOMPARE(Complaint(path_, rows, rows), QString());
        // The trouble is over, and nobody started the program anew.
        QCOMPARE(*AddQso(*store_, logName, Numbered(before)), before);
        const QList<QsoRow> after = *AllRows(*store_);
        QCOMPARE(after.size(), before);
        QCOMPARE(Complaint(path_, after, after), QString());
        QCOMPARE(QDir(folder_->path()).entryList(QDir::Files), QStringList{u"base0.mdb"_qs});
    }

private:
    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
    std::unique_ptr<LogStore> store_;
};

TORDILLO_TEST(TestPowerCut)
#include "TestPowerCut.moc"
