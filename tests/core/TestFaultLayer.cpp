// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FailingDevice.h"
#include "support/FaultVfs.h"
#include "support/PowerCut.h"
#include "support/TestRegistry.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <sqlite3.h>

namespace {

FaultVfs &Vfs() { return FaultVfs::Instance(); }

// A plain connection, so that the layer is proved without our own store.
class Database {
public:
    explicit Database(const QString &path, const char *vfs = "fault")
    {
        const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXRESCODE;
        opened = sqlite3_open_v2(path.toUtf8().constData(), &handle_, flags, vfs);
    }
    ~Database() { sqlite3_close(handle_); }
    Q_DISABLE_COPY_MOVE(Database)

    int Run(const QByteArray &sql) { return sqlite3_exec(handle_, sql.constData(), nullptr, nullptr, nullptr); }
    // The first value of a query, or the engine's message.
    QString Value(const QByteArray &sql)
    {
        sqlite3_stmt *statement = nullptr;
        QString value;
        if (sqlite3_prepare_v2(handle_, sql.constData(), -1, &statement, nullptr) == SQLITE_OK
            && sqlite3_step(statement) == SQLITE_ROW)
            value = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
        else
            value = QString::fromUtf8(sqlite3_errmsg(handle_));
        sqlite3_finalize(statement);
        return value;
    }

    int opened = SQLITE_OK;

private:
    sqlite3 *handle_ = nullptr;
};

// Long enough that the rows split pages, so that a lost page shows.
QByteArray Insert(int id)
{
    const QByteArray number = QByteArray::number(id);
    return "INSERT INTO t VALUES(" + number + ",'row " + number + "',printf('%.200c','x'))";
}

constexpr int rows = 50;

void StoreRows(const QString &path, const QByteArray &synchronous)
{
    Database database(path);
    QCOMPARE(database.Run("PRAGMA journal_mode=DELETE; PRAGMA synchronous=" + synchronous), SQLITE_OK);
    QCOMPARE(database.Run("CREATE TABLE t(id INTEGER PRIMARY KEY, a TEXT, b TEXT); CREATE INDEX i ON t(a)"), SQLITE_OK);
    for (int id = 1; id <= rows; ++id) {
        QCOMPARE(database.Run(Insert(id)), SQLITE_OK);
        Vfs().Mark(id);
    }
}

QString CheckRows(const PowerCut::Cut &cut)
{
    const QString path = cut.folder + u"/a.db"_qs;
    if (cut.marks.empty() && !QFile::exists(path))
        return {};
    Database database(path, nullptr);
    const QString integrity = database.Value("PRAGMA integrity_check");
    if (integrity != u"ok")
        return u"integrity: "_qs + integrity;
    if (cut.marks.empty())
        return {};
    const QString whole = database.Value(
        "SELECT count(*) FROM t WHERE a='row '||id AND length(b)=200 AND id<=" + QByteArray::number(cut.marks.back()));
    return whole == QString::number(cut.marks.back()) ? QString() : u"rows: "_qs + whole;
}

} // namespace

class TestFaultLayer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        path_ = folder_->filePath(u"a.db"_qs);
        Vfs().Reset();
    }
    void cleanup() { Vfs().Reset(); }

    void PowerCutFindsWhatIsNotDurable_data()
    {
        QTest::addColumn<QByteArray>("synchronous");
        QTest::addColumn<bool>("durable");
        QTest::newRow("all synced") << QByteArray("EXTRA") << true;
        QTest::newRow("the folder not synced after the journal is gone") << QByteArray("FULL") << false;
        QTest::newRow("nothing synced") << QByteArray("OFF") << false;
    }
    void PowerCutFindsWhatIsNotDurable()
    {
        QFETCH(QByteArray, synchronous);
        QFETCH(bool, durable);
        Vfs().SetRealSyncs(false);
        StoreRows(path_, synchronous);
        const auto outcome = PowerCut::TryAllCuts(Vfs().Recording(), folder_->path(), CheckRows);
        QVERIFY(outcome.states > 0);
        QCOMPARE(outcome.failures.join(u'\n').isEmpty(), durable);
        if (durable)
            QVERIFY2(outcome.states > 4 * rows, "a commit has at least four points where it can be cut");
    }

    void PowerCutOverFilesThatWereThereBefore()
    {
        StoreRows(path_, "OFF");
        Vfs().Reset();
        {
            Database database(path_);
            QCOMPARE(
                database.Run("PRAGMA synchronous=EXTRA; UPDATE t SET b=printf('%.200c','y') WHERE id>40"), SQLITE_OK);
            Vfs().Reset(); // with the connection open
            QCOMPARE(database.Run("UPDATE t SET b=printf('%.200c','z') WHERE id>30"), SQLITE_OK);
            Vfs().Mark(rows);
        }
        const auto check = [](const PowerCut::Cut &cut) {
            const QString fault = CheckRows({cut.folder, cut.event, {rows}});
            Database database(cut.folder + u"/a.db"_qs, nullptr);
            const QString changed = database.Value("SELECT count(*) FROM t WHERE b LIKE 'z%'");
            const bool expected = changed == u"20" || (cut.marks.empty() && changed == u"0");
            return expected ? fault : u"changed: "_qs + changed;
        };
        const auto outcome = PowerCut::TryAllCuts(Vfs().Recording(), folder_->path(), check, {50, 7, 1});
        QCOMPARE(outcome.failures, QStringList());
        QVERIFY(outcome.states > 50);
    }

    void FailuresReachTheCaller_data()
    {
        using Set = std::function<void()>;
        QTest::addColumn<Set>("set");
        QTest::addColumn<int>("code");
        const auto add = [](const char *name, Set set, int code) { QTest::newRow(name) << set << code; };
        add(
            "disk full at once", [] { Vfs().SetRoom(0); }, SQLITE_FULL);
        add(
            "disk full in the middle", [] { Vfs().SetRoom(20000); }, SQLITE_FULL);
        add(
            "first write of the journal", [] { Vfs().FailWrites(1, 1, FaultVfs::Trouble::DiskFull); }, SQLITE_FULL);
        add(
            "a write cut short", [] { Vfs().FailWrites(4, 1, FaultVfs::Trouble::IoError, 100); }, SQLITE_IOERR_WRITE);
        add(
            "all later writes", [] { Vfs().FailWrites(6, FaultVfs::forever, FaultVfs::Trouble::IoError); },
            SQLITE_IOERR_WRITE);
        add(
            "sync of the journal", [] { Vfs().FailSyncs(1, 1); }, SQLITE_IOERR_FSYNC);
        add(
            "sync of the database", [] { Vfs().FailSyncs(3, 1); }, SQLITE_IOERR_FSYNC);
        add(
            "read", [] { Vfs().FailReads(1, 1); }, SQLITE_IOERR_READ);
        add(
            "locked", [] { Vfs().PretendLocked(FaultVfs::forever); }, SQLITE_BUSY);
        add(
            "locked for writers", [] { Vfs().PretendLocked(FaultVfs::forever, false); }, SQLITE_BUSY);
        add(
            "file read-only", [] { Vfs().SetAccess(FaultVfs::Access::ReadOnlyFile); }, SQLITE_READONLY);
        add(
            "folder read-only", [] { Vfs().SetAccess(FaultVfs::Access::ReadOnlyFolder); }, SQLITE_READONLY_DIRECTORY);
        add(
            "no journal", [] { Vfs().SetAccess(FaultVfs::Access::NoJournal); }, SQLITE_CANTOPEN);
    }
    void FailuresReachTheCaller()
    {
        QFETCH(std::function<void()>, set);
        QFETCH(int, code);
        StoreRows(path_, "OFF");
        set();
        {
            Database database(path_);
            database.Run("PRAGMA synchronous=EXTRA");
            int result = database.opened;
            for (int id = rows + 1; result == SQLITE_OK && id <= 4 * rows; ++id)
                result = database.Run("BEGIN IMMEDIATE; UPDATE t SET b=b||'more'; " + Insert(id) + "; COMMIT");
            QCOMPARE(result, code);
        }
        Vfs().Reset();
        QCOMPARE(CheckRows({folder_->path(), 0, {rows}}), QString());
    }

    void ALockEndsAfterItsAttempts()
    {
        StoreRows(path_, "OFF");
        Database database(path_);
        Vfs().PretendLocked(2);
        QCOMPARE(database.Run(Insert(rows + 1)), SQLITE_BUSY);
        QCOMPARE(database.Run(Insert(rows + 1)), SQLITE_BUSY);
        QCOMPARE(database.Run(Insert(rows + 1)), SQLITE_OK);
    }

    void CountsAreThoseOfTheRun()
    {
        std::vector<FaultVfs::Counts> counts;
        for (const QByteArray synchronous : {"EXTRA", "EXTRA", "FULL", "OFF"}) {
            Vfs().Reset();
            Vfs().SetRealSyncs(false);
            StoreRows(folder_->filePath(QString::number(counts.size())), synchronous);
            counts.push_back(Vfs().TakenCounts());
        }
        QCOMPARE(counts[1].syncs, counts[0].syncs);
        QCOMPARE(counts[1].writes, counts[0].writes);
        QCOMPARE(counts[0].syncs, 3 * (rows + 2)); // journal, its head, database
        QCOMPARE(counts[0].folderSyncs, 2 * (rows + 2)); // the journal is there, the journal is gone
        QCOMPARE(counts[2].folderSyncs, rows + 2);
        QCOMPARE(counts[3].syncs + counts[3].folderSyncs, 0);
    }

    void AsDefaultReachesConnectionsWithoutAName()
    {
        {
            const FaultVfs::AsDefault fault;
            Database(path_, nullptr).Run("CREATE TABLE t(a)");
            QVERIFY(Vfs().TakenCounts().writes > 0);
        }
        Database(path_, nullptr).Run("INSERT INTO t VALUES(1)");
        QCOMPARE(Vfs().TakenCounts().writes, 0);
    }

    void DevicesFailAtTheirLimit()
    {
        using Trouble = FailingDevice::Trouble;
        QByteArray disk;
        QBuffer buffer(&disk);
        FailingDevice full(buffer, 10, Trouble::DiskFull);
        QVERIFY(full.open(QIODevice::WriteOnly));
        QCOMPARE(full.write("12345678"), 8);
        QCOMPARE(full.write("abcd"), -1);
        QVERIFY(!full.errorString().isEmpty());
        QCOMPARE(full.write("e"), -1);
        full.close();
        QCOMPARE(disk, QByteArray("12345678ab"));
        QCOMPARE(full.passed(), 10);

        FailingDevice cut(buffer, 3, Trouble::CutShort);
        QVERIFY(cut.open(QIODevice::WriteOnly));
        QCOMPARE(cut.write("123456"), 3);
        QCOMPARE(cut.write("456"), 0);
        cut.close();

        disk = "one\r\ntwo\r\n";
        FailingDevice early(buffer, 7, Trouble::EndsEarly);
        QVERIFY(early.open(QIODevice::ReadOnly));
        QCOMPARE(early.readAll(), QByteArray("one\r\ntw"));
        QVERIFY(early.atEnd());
        early.close();

        FailingDevice broken(buffer, 4, Trouble::ReadError);
        QVERIFY(broken.open(QIODevice::ReadOnly));
        QCOMPARE(broken.read(100), QByteArray("one\r"));
        char next = 0;
        QCOMPARE(broken.read(&next, 1), -1);
        QVERIFY(!broken.atEnd());
    }

private:
    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
};

TORDILLO_TEST(TestFaultLayer)
#include "TestFaultLayer.moc"
