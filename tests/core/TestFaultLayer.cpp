// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FaultVfs.h"
#include "support/PowerCut.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

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

private:
    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
};

TORDILLO_TEST(TestFaultLayer)
#include "TestFaultLayer.moc"
