// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FailingDevice.h"
#include "support/Fixtures.h"
#include "support/PowerCut.h"

#include <QBuffer>

namespace {

FaultVfs &Vfs() { return FaultVfs::Instance(); }

// Long enough that the rows split pages, so that a lost page shows.
QByteArray Insert(int id)
{
    const QByteArray number = QByteArray::number(id);
    return "INSERT INTO t VALUES(" + number + ",'row " + number + "',printf('%.200c','x'))";
}

constexpr int rows = 50;

void StoreRows(const QString &path, const QByteArray &synchronous)
{
    RawDatabase database(path);
    QVERIFY(database.Run("PRAGMA journal_mode=DELETE; PRAGMA synchronous=" + synchronous));
    QVERIFY(database.Run("CREATE TABLE t(id INTEGER PRIMARY KEY, a TEXT, b TEXT); CREATE INDEX i ON t(a)"));
    for (int id = 1; id <= rows; ++id) {
        QVERIFY(database.Run(Insert(id)));
        Vfs().Mark(id);
    }
}

QString CheckRows(const PowerCut::Cut &cut)
{
    const QString path = cut.folder + u"/a.db"_qs;
    if (cut.marks.empty() && !QFile::exists(path))
        return {};
    RawDatabase database(path);
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

// The layers that everything about failing disks is proved with.
class TestFaultLayer : public FolderTest {
    Q_OBJECT

    QString path_;

private Q_SLOTS:
    void init()
    {
        FolderTest::init();
        path_ = Path(u"a.db"_qs);
        Vfs().Reset();
    }
    void cleanup() { Vfs().Reset(); }

    void PowerCutFindsWhatIsNotDurable()
    {
        // Synced as our store does; without the folder after the journal is gone; not at all.
        for (const QByteArray synchronous : {"EXTRA", "FULL", "OFF"}) {
            init();
            const bool durable = synchronous == "EXTRA";
            std::vector<FaultEvent> recording;
            {
                const FaultVfs::AsDefault layer;
                Vfs().SetRealSyncs(false);
                StoreRows(path_, synchronous);
                recording = Vfs().Recording();
            }
            const auto outcome = PowerCut::TryAllCuts(recording, folder_->path(), CheckRows);
            QVERIFY(outcome.states > 0);
            QCOMPARE(outcome.failures.join(u'\n').isEmpty(), durable);
            if (durable)
                QVERIFY2(outcome.states > 4 * rows, "a commit has at least four points where it can be cut");
        }
    }

    void FailuresReachTheCaller()
    {
        using Trouble = FaultVfs::Trouble;
        using Access = FaultVfs::Access;
        constexpr int forever = FaultVfs::forever;
        const std::pair<std::function<void()>, int> faults[] = {{[] { Vfs().SetRoom(0); }, SQLITE_FULL},
            {[] { Vfs().SetRoom(20000); }, SQLITE_FULL},
            {[] { Vfs().FailWrites(1, 1, Trouble::DiskFull); }, SQLITE_FULL},
            {[] { Vfs().FailWrites(4, 1, Trouble::IoError, 100); }, SQLITE_IOERR_WRITE},
            {[] { Vfs().FailWrites(6, forever, Trouble::IoError); }, SQLITE_IOERR_WRITE},
            {[] { Vfs().FailSyncs(1, 1); }, SQLITE_IOERR_FSYNC}, {[] { Vfs().FailSyncs(3, 1); }, SQLITE_IOERR_FSYNC},
            {[] { Vfs().FailReads(1, 1); }, SQLITE_IOERR_READ}, {[] { Vfs().PretendLocked(forever); }, SQLITE_BUSY},
            {[] { Vfs().PretendLocked(forever, false); }, SQLITE_BUSY},
            {[] { Vfs().SetAccess(Access::ReadOnlyFile); }, SQLITE_READONLY},
            {[] { Vfs().SetAccess(Access::ReadOnlyFolder); }, SQLITE_READONLY_DIRECTORY},
            {[] { Vfs().SetAccess(Access::NoJournal); }, SQLITE_CANTOPEN}};
        for (const auto &[set, code] : faults) {
            init();
            StoreRows(path_, "OFF");
            {
                const FaultVfs::AsDefault layer;
                set();
                RawDatabase database(path_);
                database.Run("PRAGMA synchronous=EXTRA");
                int id = rows;
                while (++id <= 4 * rows
                    && database.Run("BEGIN IMMEDIATE; UPDATE t SET b=b||'more'; " + Insert(id) + "; COMMIT"))
                    continue;
                QCOMPARE(database.Code(), code);
            }
            QCOMPARE(CheckRows({folder_->path(), 0, {rows}}), QString());
        }
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
        QCOMPARE(full.write("e"), -1);
        full.close();
        QCOMPARE(disk, QByteArray("12345678ab"));

        FailingDevice cut(buffer, 3, Trouble::CutShort);
        QVERIFY(cut.open(QIODevice::WriteOnly));
        QCOMPARE(cut.write("123456"), 3);
        QCOMPARE(cut.write("456"), 0);
        cut.close();

        disk = "one\r\ntwo\r\n";
        FailingDevice broken(buffer, 4, Trouble::ReadError);
        QVERIFY(broken.open(QIODevice::ReadOnly));
        QCOMPARE(broken.read(100), QByteArray("one\r"));
        QCOMPARE(broken.read(1), QByteArray());
        QVERIFY(!broken.atEnd());
    }
};

TORDILLO_TEST(TestFaultLayer)
#include "TestFaultLayer.moc"
