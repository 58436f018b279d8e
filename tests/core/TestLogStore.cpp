// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Fixtures.h"

namespace {

using Kind = Failure::Kind;
const QsoRow qso = RowOf(u"Modo=SSB;Estacion=LU1ABC;NombreLog=Log inicial;Fecha=24/11/2026;Hora=21:15:00"_qs);

Result<qint64> CountOf(LogStore &store) { return CountQsos(store, u"Log inicial"_qs); }
Result<qint64> Add(LogStore &store)
{
    return store.Write([](Session &session) { return QsoTable::Insert(session, qso); });
}

} // namespace

class TestLogStore : public StoreTest {
    Q_OBJECT

    // That it could not be done, for this reason, and that the file is named.
    void Fails(const Failure &failure, Kind kind, const QString &word = {}) const
    {
        QCOMPARE(failure.kind, kind);
        QVERIFY2(failure.text.contains(path_) && failure.text.contains(word), qPrintable(failure.text));
    }

private Q_SLOTS:
    void AnEmptyDatabaseAppearsWhole()
    {
        NoStore();
        Fails(Add(*store_).failure(), Kind::Missing);
        QCOMPARE(Files(), QString());
        Put(u"base0.mdb.nueva"_qs, "left by a crash");
        QVERIFY(store_->CreateEmpty());
        QCOMPARE(Files(), u"base0.mdb"_qs);
        QCOMPARE(Value("PRAGMA application_id"), QString::number(Schema::applicationId));
        QVERIFY(*SchemaIsCurrent(*store_));
        QVERIFY(store_->CheckIntegrity());
        QCOMPARE(*CountOf(*store_), 0);
        QCOMPARE(*Add(*store_), 1);
        QCOMPARE(LogStore(Path(u"none/base0.mdb"_qs)).CreateEmpty().failure().kind, Kind::ReadOnly);
    }

    void WhatIsNoLogIsToldAndLeftUntouched()
    {
        const QByteArray tail(8192, '\x17'), head("SQLite format 3\0", 16);
        const std::tuple<QByteArray, Kind, QString> files[] = {
            {QByteArray("\0\1\0\0Standard Jet DB\0", 20) + tail, Kind::Foreign, u"ADIF"_qs},
            {QByteArray("\0\1\0\0Standard ACE DB\0", 20) + tail, Kind::Foreign, u"ADIF"_qs},
            {"Dear diary", Kind::Foreign, u"no es una base"_qs}, {"", Kind::Damaged, u"vacío"_qs},
            {head, Kind::Damaged, u"dañada"_qs}, {head + tail, Kind::Damaged, u"dañada"_qs}};
        for (const auto &[content, kind, word] : files) {
            NoStore();
            Put(u"base0.mdb"_qs, content);
            Fails(CountOf(*store_).failure(), kind, word);
            Fails(Add(*store_).failure(), kind, word);
            Fails(ProbeSchema(*store_).failure(), kind, word);
            Fails(store_->CreateEmpty().failure(), Kind::Other);
            QCOMPARE(Content(u"base0.mdb"_qs), content);
            QCOMPARE(Files(), u"base0.mdb"_qs);
        }
        NoStore();
        Sql("CREATE TABLE contacts(a)"); // of another program
        Fails(ProbeSchema(*store_).failure(), Kind::Foreign);
        QCOMPARE(Value("SELECT count(*) FROM sqlite_master"), u"1"_qs);
    }

    void DamageInTheMiddleIsFound()
    {
        for (int i = 0; i < 300; ++i)
            Sql("PRAGMA synchronous=OFF; INSERT INTO Tabla1 (Modo, Obs) VALUES ('CW', printf('%.300c','x'))");
        QVERIFY(store_->CheckIntegrity());
        store_->Close();
        Spoil(u"base0.mdb"_qs, 4 * 4096);
        const QByteArray content = Content(u"base0.mdb"_qs);
        Fails(store_->CheckIntegrity().failure(), Kind::Damaged);
        QCOMPARE(Content(u"base0.mdb"_qs), content);
    }

    void AnotherProgramHoldsTheFile()
    {
        RawDatabase other(path_);
        QVERIFY(other.Run("BEGIN EXCLUSIVE"));
        Fails(ProbeSchema(*store_).failure(), Kind::Locked);
        QVERIFY(other.Run("COMMIT; BEGIN IMMEDIATE"));
        QCOMPARE(*CountOf(*store_), 0);
        Fails(Add(*store_).failure(), Kind::Locked);
        QVERIFY(other.Run("COMMIT"));
        QVERIFY(Add(*store_));
        QCOMPARE(*CountOf(*store_), 1);
    }

    void NobodyHoldsTheFileBetweenOperations()
    {
        const QByteArray take = "BEGIN EXCLUSIVE; COMMIT";
        QVERIFY(Add(*store_));
        Sql(take);
        QVERIFY(Add(*store_));
        QVERIFY(*store_->Read([](Session &session) {
            return session.Prepare(u"SELECT id FROM Tabla1"_qs).Next(); // left before its last row
        }));
        Sql(take);
        QVERIFY(!store_->Write([](Session &session) { session.Execute(u"DELETE FROM Nada"_qs); }));
        Sql(take);
        QVERIFY(store_->CheckIntegrity());
        Sql(take);
        QCOMPARE(Files(), u"base0.mdb"_qs);
    }

    void AFilePutInItsPlaceIsSeen()
    {
        LogStore other(Path(u"other.mdb"_qs));
        QVERIFY(other.CreateEmpty());
        QVERIFY(Add(*store_));
        QVERIFY(Add(other));
        QVERIFY(Add(other));
        QCOMPARE(*CountOf(*store_), 1);
        other.Close();
        QVERIFY(QFile::remove(path_));
        Fails(CountOf(*store_).failure(), Kind::Missing);
        QVERIFY(QFile::rename(other.Path(), path_));
        QCOMPARE(*CountOf(*store_), 2);
        QCOMPARE(*Add(*store_), 3);
        QVERIFY(QFile::rename(path_, other.Path()));
        Put(u"base0.mdb"_qs, "something else");
        Fails(Add(*store_).failure(), Kind::Foreign);
    }

    void AWriteIsWholeOrNothing()
    {
        const Result<void> givenUp = store_->Write([](Session &session) {
            QsoTable::Insert(session, qso);
            throw StoreError{{u"Basta."_qs, Kind::Cancelled}};
        });
        QCOMPARE(givenUp.failure().text, u"Basta."_qs);
        QCOMPARE(givenUp.failure().kind, Kind::Cancelled);
        const Result<qint64> broken = store_->Write([](Session &session) {
            const qint64 id = QsoTable::Insert(session, qso);
            session.Prepare(u"UPDATE Tabla1 SET Altura='1'"_qs).Execute();
            return id;
        });
        QCOMPARE(broken.failure().kind, Kind::OldSchema);
        QCOMPARE(*CountOf(*store_), 0);
        QVERIFY(Add(*store_));
        QCOMPARE(Value("SELECT count(*) FROM Tabla1"), u"1"_qs);
    }

    void AFolderThatBecomesReadOnlyInAWriteIsTold()
    {
        const Result<qint64> added = store_->Write([](Session &session) {
            const qint64 id = QsoTable::Insert(session, qso);
            Disk().SetAccess(FaultVfs::Access::ReadOnlyFolder); // the journal is there and has to stay
            return id;
        });
        Fails(added.failure(), Kind::ReadOnly);
        HealDisk();
        QCOMPARE(*CountOf(*store_), 0);
        QCOMPARE(*Add(*store_), 1);
    }

    void AnOldJournalDoesNotSpoilANewDatabase()
    {
        Insert(QList<QsoRow>(300, qso));
        QVERIFY(!store_->Write([](Session &session) {
            session.Execute(u"DELETE FROM Tabla1"_qs);
            Disk().SetAccess(FaultVfs::Access::ReadOnlyFolder);
        }));
        const QByteArray journal = Content(u"base0.mdb-journal"_qs);
        QVERIFY(journal.size() > 512 && journal[0] != '\0');
        NoStore(); // somebody begins anew and leaves it there
        Put(u"base0.mdb-journal"_qs, journal);
        QVERIFY(store_->CreateEmpty());
        QCOMPARE(*CountOf(*store_), 0);
        QVERIFY(store_->CheckIntegrity());
        QCOMPARE(*Add(*store_), 1);
        QVERIFY(Content(u"base0.mdb-journal.apartado"_qs) == journal);
    }

    void AWriteAheadLogIsTakenBack()
    {
        Sql("PRAGMA journal_mode=WAL; INSERT INTO Tabla1 (Modo) VALUES ('CW')");
        QVERIFY(Add(*store_));
        QCOMPARE(Files(), u"base0.mdb"_qs);
        QCOMPARE(Value("PRAGMA journal_mode"), u"delete"_qs);
    }

    void OneStatementCanRunTwiceAtOnce()
    {
        Insert({qso, RowOf(u"Estacion=LU2ABC"_qs, qso)});
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
        QCOMPARE(pairs->join(u' '), u"LU1ABCLU2ABC LU2ABCLU1ABC"_qs);
    }

    void PatternsIgnoreCaseAndNulls()
    {
        const std::tuple<QString, QString, bool> patterns[] = {{u"LU1*"_qs, u"lu1abc"_qs, true},
            {u"LU1*"_qs, u"LU1"_qs, true}, {u"LU1*"_qs, u"XLU1"_qs, false}, {u"*ñandú*"_qs, u"el ÑANDÚ corre"_qs, true},
            {u"L?1ABC"_qs, u"LU1ABC"_qs, true}, {u"L?1ABC"_qs, u"L1ABC"_qs, false}, {u"*A*B*C"_qs, u"xAyBzBC"_qs, true},
            {u"*A*B*C"_qs, u"xAyBzBCx"_qs, false}, {u""_qs, u""_qs, true}, {u"*"_qs, {}, true},
            {u"%"_qs, u"abc"_qs, false}, {u"_"_qs, u"a"_qs, false}, {u"a'b"_qs, u"A'B"_qs, true}};
        for (const auto &[pattern, text, matches] : patterns) {
            const Result<QStringList> found = store_->Read([&, &like = pattern, &in = text](Session &session) {
                Query query = session.Prepare(u"SELECT wildcard(?, nullif(?, '')), fold(NULL), fold('ÑANDÚ')"_qs);
                query.Bind(1, like).Bind(2, in).Next();
                return QStringList{query.Text(0), query.Text(1), query.Text(2)};
            });
            QCOMPARE(found->join(u'|'), matches ? u"1||ñandú"_qs : u"0||ñandú"_qs);
        }
    }
};

TORDILLO_TEST(TestLogStore)
#include "TestLogStore.moc"
