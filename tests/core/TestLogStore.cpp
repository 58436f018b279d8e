// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/LogStore.h"
#include "core/QsoTable.h"
#include "core/Schema.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray ContentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

void Put(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QsoRow Qso(const QString &call)
{
    QsoRow row;
    row.Modo = u"SSB"_qs;
    row.Estacion = call;
    row.NombreLog = u"Log inicial"_qs;
    row.Fecha = u"24/11/2026"_qs;
    row.Hora = u"21:15:00"_qs;
    return row;
}

qint64 Count(LogStore &store) { return *CountQsos(store, u"Log inicial"_qs); }

Result<qint64> Add(LogStore &store, const QsoRow &row)
{
    return store.Write([&](Session &session) { return QsoTable::Insert(session, row); });
}

} // namespace

class TestLogStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        path_ = folder_->filePath(u"base0.mdb"_qs);
        store_ = std::make_unique<LogStore>(path_);
    }

    void AnEmptyDatabaseAppearsWhole()
    {
        Put(QString(path_ + u".nueva"), "left by a crash");
        QVERIFY(store_->CreateEmpty());
        QCOMPARE(Files(), QStringList{u"base0.mdb"_qs});
        QCOMPARE(RawDatabase(path_).Value("PRAGMA application_id"), QString::number(Schema::applicationId));
        QVERIFY(*SchemaIsCurrent(*store_));
        QVERIFY(store_->CheckIntegrity());
        QCOMPARE(Count(*store_), 0);
        QCOMPARE(*Add(*store_, Qso(u"LU1ABC"_qs)), 1);
    }

    void AnExistingFileIsNeverReplaced_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("of another kind") << QByteArray("mine");
    }
    void AnExistingFileIsNeverReplaced()
    {
        QFETCH(QByteArray, content);
        Put(path_, content);
        const Result<void> made = store_->CreateEmpty();
        QVERIFY(!made);
        QCOMPARE(made.failure().kind, Failure::Kind::Other);
        QVERIFY(made.failure().text.contains(path_));
        QCOMPARE(ContentOf(path_), content);
        QCOMPARE(Files(), QStringList{u"base0.mdb"_qs});
    }

    void NoDatabaseIsMadeWhereTheFolderIsMissing()
    {
        LogStore store(folder_->filePath(u"none/base0.mdb"_qs));
        QCOMPARE(store.CreateEmpty().failure().kind, Failure::Kind::ReadOnly);
    }

    void WhatIsNoLogIsToldAndLeftUntouched_data()
    {
        using Kind = Failure::Kind;
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("word");
        const QByteArray access("\0\1\0\0Standard Jet DB\0", 20), newAccess("\0\1\0\0Standard ACE DB\0", 20);
        const QByteArray tail(8192, '\x17');
        QTest::newRow("old Access file") << QByteArray(access + tail) << Kind::Foreign << u"ADIF"_qs;
        QTest::newRow("newer Access file") << QByteArray(newAccess + tail) << Kind::Foreign << u"ADIF"_qs;
        QTest::newRow("text") << QByteArray("Dear diary") << Kind::Foreign << u"no es una base"_qs;
        QTest::newRow("empty") << QByteArray("") << Kind::Damaged << u"vacío"_qs;
        QTest::newRow("only the head") << QByteArray("SQLite format 3\0", 16) << Kind::Damaged << u"dañada"_qs;
        QTest::newRow("rubbish behind the head")
            << QByteArray(QByteArray("SQLite format 3\0", 16) + tail) << Kind::Damaged << u"dañada"_qs;
    }
    void WhatIsNoLogIsToldAndLeftUntouched()
    {
        QFETCH(QByteArray, content);
        QFETCH(Failure::Kind, kind);
        QFETCH(QString, word);
        Put(path_, content);
        const Result<qint64> read = CountQsos(*store_, u"Log inicial"_qs), written = Add(*store_, Qso(u"LU1ABC"_qs));
        for (const Failure &failure : {read.failure(), written.failure(), ProbeSchema(*store_).failure()}) {
            QCOMPARE(failure.kind, kind);
            QVERIFY2(failure.text.contains(word) && failure.text.contains(path_), qPrintable(failure.text));
        }
        QCOMPARE(ContentOf(path_), content);
        QCOMPARE(Files(), QStringList{u"base0.mdb"_qs});
    }

    void ADatabaseOfAnotherProgramIsForeign()
    {
        QVERIFY(RawDatabase(path_).Run("CREATE TABLE contacts(a)"));
        QCOMPARE(ProbeSchema(*store_).failure().kind, Failure::Kind::Foreign);
        QCOMPARE(RawDatabase(path_).Value("SELECT count(*) FROM sqlite_master"), u"1"_qs);
    }

    void AMissingFileIsToldAndNotMade()
    {
        const Failure failure = Add(*store_, Qso(u"LU1ABC"_qs)).failure();
        QCOMPARE(failure.kind, Failure::Kind::Missing);
        QVERIFY(failure.text.contains(path_));
        QCOMPARE(Files(), QStringList());
    }

    void DamageInTheMiddleIsFound()
    {
        QVERIFY(store_->CreateEmpty());
        for (int i = 0; i < 300; ++i)
            QVERIFY(RawDatabase(path_).Run("PRAGMA synchronous=OFF; INSERT INTO Tabla1 (Modo, Obs) VALUES "
                                           "('CW', printf('%.300c','x'))"));
        QVERIFY(store_->CheckIntegrity());
        store_->Close();
        QByteArray content = ContentOf(path_);
        const qsizetype half = content.size() / 2;
        content.replace(half, 4 * 4096, QByteArray(4 * 4096, '\xA5'));
        Put(path_, content);
        const Result<void> checked = store_->CheckIntegrity();
        QVERIFY(!checked);
        QCOMPARE(checked.failure().kind, Failure::Kind::Damaged);
        QVERIFY(checked.failure().text.contains(path_));
        QCOMPARE(ContentOf(path_), content);
    }

    void AnotherProgramHoldsTheFile()
    {
        QVERIFY(store_->CreateEmpty());
        RawDatabase other(path_);
        QVERIFY(other.Run("BEGIN EXCLUSIVE"));
        const Result<void> probed = ProbeSchema(*store_);
        QCOMPARE(probed.failure().kind, Failure::Kind::Locked);
        QVERIFY(probed.failure().text.contains(path_));
        QVERIFY(other.Run("COMMIT; BEGIN IMMEDIATE"));
        QCOMPARE(Count(*store_), 0);
        QCOMPARE(Add(*store_, Qso(u"LU1ABC"_qs)).failure().kind, Failure::Kind::Locked);
        QVERIFY(other.Run("COMMIT"));
        QVERIFY(Add(*store_, Qso(u"LU1ABC"_qs)));
        QCOMPARE(Count(*store_), 1);
    }

    void NobodyHoldsTheFileBetweenOperations()
    {
        QVERIFY(store_->CreateEmpty());
        RawDatabase other(path_);
        const auto isFree = [&] { return other.Run("BEGIN EXCLUSIVE; COMMIT"); };
        QVERIFY(Add(*store_, Qso(u"LU1ABC"_qs)));
        QVERIFY(isFree());
        QVERIFY(Add(*store_, Qso(u"LU1ABD"_qs)));
        const Result<bool> begun = store_->Read([](Session &session) {
            return session.Prepare(u"SELECT id FROM Tabla1"_qs).Next(); // left before its last row
        });
        QVERIFY(*begun);
        QVERIFY(isFree());
        QVERIFY(!store_->Write([](Session &session) { session.Execute(u"DELETE FROM Nada"_qs); }));
        QVERIFY(isFree());
        QVERIFY(store_->CheckIntegrity());
        QVERIFY(isFree());
        QCOMPARE(Files(), QStringList{u"base0.mdb"_qs});
    }

    void AFilePutInItsPlaceIsSeen()
    {
        LogStore other(folder_->filePath(u"other.mdb"_qs));
        QVERIFY(store_->CreateEmpty());
        QVERIFY(other.CreateEmpty());
        QVERIFY(Add(*store_, Qso(u"LU1ABC"_qs)));
        QVERIFY(Add(other, Qso(u"LU2ABC"_qs)));
        QVERIFY(Add(other, Qso(u"LU3ABC"_qs)));
        QCOMPARE(Count(*store_), 1);
        other.Close();
        QVERIFY(QFile::remove(path_));
        QCOMPARE(CountQsos(*store_, u"Log inicial"_qs).failure().kind, Failure::Kind::Missing);
        QVERIFY(QFile::rename(other.Path(), path_));
        QCOMPARE(Count(*store_), 2);
        QCOMPARE(*Add(*store_, Qso(u"LU4ABC"_qs)), 3);
        QVERIFY(QFile::rename(path_, other.Path()));
        Put(path_, "something else");
        QCOMPARE(Add(*store_, Qso(u"LU5ABC"_qs)).failure().kind, Failure::Kind::Foreign);
    }

    void AWriteIsWholeOrNothing()
    {
        QVERIFY(store_->CreateEmpty());
        const Result<void> givenUp = store_->Write([](Session &session) {
            QsoTable::Insert(session, Qso(u"LU1ABC"_qs));
            throw StoreError{{u"Basta."_qs, Failure::Kind::Cancelled}};
        });
        QCOMPARE(givenUp.failure().text, u"Basta."_qs);
        QCOMPARE(givenUp.failure().kind, Failure::Kind::Cancelled);
        const Result<qint64> broken = store_->Write([](Session &session) {
            const qint64 id = QsoTable::Insert(session, Qso(u"LU1ABC"_qs));
            session.Prepare(u"UPDATE Tabla1 SET Altura='1'"_qs).Execute();
            return id;
        });
        QCOMPARE(broken.failure().kind, Failure::Kind::OldSchema);
        QCOMPARE(Count(*store_), 0);
        QVERIFY(Add(*store_, Qso(u"LU1ABC"_qs)));
        QCOMPARE(RawDatabase(path_).Value("SELECT count(*) FROM Tabla1"), u"1"_qs);
    }

    void AWriteAheadLogIsTakenBack()
    {
        QVERIFY(store_->CreateEmpty());
        QVERIFY(RawDatabase(path_).Run("PRAGMA journal_mode=WAL; INSERT INTO Tabla1 (Modo) VALUES ('CW')"));
        QVERIFY(Add(*store_, Qso(u"LU1ABC"_qs)));
        QCOMPARE(Files(), QStringList{u"base0.mdb"_qs});
        QCOMPARE(RawDatabase(path_).Value("PRAGMA journal_mode"), u"delete"_qs);
    }

    void OneStatementCanRunTwiceAtOnce()
    {
        QVERIFY(store_->CreateEmpty());
        QVERIFY(Add(*store_, Qso(u"LU1ABC"_qs)));
        QVERIFY(Add(*store_, Qso(u"LU2ABC"_qs)));
        const Result<QStringList> pairs = store_->Read([](Session &session) {
            const QString sql = u"SELECT Estacion FROM Tabla1 WHERE Estacion<>? ORDER BY id"_qs;
            QStringList found;
            Query outer = session.Prepare(sql);
            outer.Bind(1, u"");
            while (outer.Next()) {
                Query inner = session.Prepare(sql);
                inner.Bind(1, outer.Text(0));
                while (inner.Next())
                    found << outer.Text(0) + inner.Text(0);
            }
            return found;
        });
        QCOMPARE(*pairs, (QStringList{u"LU1ABCLU2ABC"_qs, u"LU2ABCLU1ABC"_qs}));
    }

    void PatternsIgnoreCaseAndNulls_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("matches");
        const auto add = [](QStringView pattern, QStringView text, bool matches) {
            QTest::addRow("%s in %s", qPrintable(pattern.toString()), qPrintable(text.toString()))
                << pattern.toString() << text.toString() << matches;
        };
        add(u"LU1*", u"lu1abc", true);
        add(u"LU1*", u"LU1", true);
        add(u"LU1*", u"XLU1", false);
        add(u"*ñandú*", u"el ÑANDÚ corre", true);
        add(u"L?1ABC", u"LU1ABC", true);
        add(u"L?1ABC", u"L1ABC", false);
        add(u"*A*B*C", u"xAyBzBC", true);
        add(u"*A*B*C", u"xAyBzBCx", false);
        add(u"", u"", true);
        add(u"*", nullptr, true);
        add(u"%", u"abc", false);
        add(u"_", u"a", false);
        add(u"a'b", u"A'B", true);
    }
    void PatternsIgnoreCaseAndNulls()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QFETCH(bool, matches);
        QVERIFY(store_->CreateEmpty());
        const Result<QStringList> found = store_->Read([&](Session &session) {
            Query query = session.Prepare(u"SELECT wildcard(?, nullif(?, '')), fold(NULL), fold('ÑANDÚ')"_qs);
            query.Bind(1, pattern).Bind(2, text).Next();
            return QStringList{query.Text(0), query.Text(1), query.Text(2)};
        });
        QCOMPARE(*found, (QStringList{matches ? u"1"_qs : u"0"_qs, QString(), u"ñandú"_qs}));
    }

private:
    QStringList Files() const { return QDir(folder_->path()).entryList(QDir::Files | QDir::Hidden); }

    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
    std::unique_ptr<LogStore> store_;
};

TORDILLO_TEST(TestLogStore)
#include "TestLogStore.moc"
