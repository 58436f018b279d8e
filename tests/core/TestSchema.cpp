// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/QsoTable.h"
#include "core/Schema.h"
#include "support/FaultVfs.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

// The tables as the first versions made them: no late columns, no indexes, nothing that counts.
QByteArray OldTables()
{
    const QByteArray common =
        "(id INTEGER PRIMARY KEY AUTOINCREMENT, Modo TEXT, Banda TEXT, MyCall TEXT, Estacion TEXT, "
        "Fecha TEXT, Hora TEXT, RSE TEXT, RSR TEXT, Obs TEXT, Operador TEXT, \"Nombre Log\" TEXT, "
        "Frecuencia TEXT, ";
    const QByteArray general = "MiGrid TEXT, SuGrid TEXT, LdA TEXT, Nombre_Sat TEXT, Argento TEXT";
    return "CREATE TABLE Tabla1 " + common + general + "); CREATE TABLE Tabla2 " + common
        + "LdA TEXT, Nombre_Sat TEXT, MiGrid TEXT, SuGrid TEXT, Argento TEXT); CREATE TABLE Tabla3 " + common + general
        + ", Dupe TEXT);";
}

// Two logs, a marker of a third, a name in two spellings, and rows that belong to no log.
const QByteArray someRows =
    "INSERT INTO Tabla1 (Modo, Estacion, \"Nombre Log\", SuGrid) VALUES ('SSB','LU1ABC','Log inicial',NULL),"
    "('CW','LU2ABC','Log inicial','GF05'), ('CW','LU3ABC','Otro',''), (NULL,NULL,'Vacío',NULL), "
    "('CW','LU4ABC','LOG INICIAL','x'), ('','LU5ABC','Otro',''), ('FM','LU6ABC',NULL,''), ('FM','LU7ABC','','');";

using Names = QStringList;

} // namespace

class TestSchema : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        path_ = folder_->filePath(u"base0.mdb"_qs);
        FaultVfs::Instance().Reset();
        store_ = std::make_unique<LogStore>(path_, "fault");
    }
    void cleanup() { FaultVfs::Instance().Reset(); }

    void AnOldFileIsBroughtUpToDate_data()
    {
        QTest::addColumn<bool>("old");
        QTest::addColumn<QByteArray>("damage");
        QTest::newRow("the first form") << true << QByteArray();
        QTest::newRow("one late column there already") << true << QByteArray("ALTER TABLE Tabla1 ADD [sota] char(25)");
        QTest::newRow("one column missing") << false << QByteArray("ALTER TABLE Tabla3 DROP COLUMN MYSOTA");
        QTest::newRow("no triggers") << false << QByteArray("DROP TRIGGER Tabla1_alta; DROP TRIGGER Tabla1_baja");
        QTest::newRow("no counters") << false << QByteArray("DROP TABLE Contadores");
        QTest::newRow("no index") << false << QByteArray("DROP INDEX Tabla1_log");
        QTest::newRow("no contest index") << false << QByteArray("DROP INDEX Tabla2_modo");
        QTest::newRow("an index of earlier versions")
            << false << QByteArray("CREATE INDEX Tabla2_log ON Tabla2 (\"Nombre Log\", Estacion, Modo, Banda)");
        QTest::newRow("no contest table") << false << QByteArray("DROP TABLE Tabla2");
    }
    void AnOldFileIsBroughtUpToDate()
    {
        QFETCH(bool, old);
        QFETCH(QByteArray, damage);
        const QByteArray rows = "SELECT group_concat(id||Estacion||coalesce(SuGrid,'null')) FROM Tabla1";
        if (!old)
            QVERIFY(store_->CreateEmpty());
        RawDatabase raw(path_);
        if (old)
            QVERIFY(raw.Run(OldTables()));
        QVERIFY(raw.Run(someRows));
        const QString before = raw.Value(rows);
        QVERIFY(raw.Run(damage));
        QVERIFY(!*SchemaIsCurrent(*store_));

        const Result<void> probed = ProbeSchema(*store_);
        QVERIFY2(probed, qPrintable(probed ? QString() : probed.failure().text));
        QVERIFY(*SchemaIsCurrent(*store_));
        QVERIFY(store_->CheckIntegrity());
        QCOMPARE(raw.Value(rows), before);
        QCOMPARE(raw.Value("PRAGMA application_id"), QString::number(Schema::applicationId));
        CheckCounters();
        const QString version = raw.Value("PRAGMA data_version");
        QVERIFY(ProbeSchema(*store_));
        QVERIFY(UpgradeSchema(*store_));
        QCOMPARE(raw.Value("PRAGMA data_version"), version); // nobody wrote
        QCOMPARE(*store_->Write([](Session &session) {
            QsoRow row;
            row.Modo = u"CW"_qs;
            row.NombreLog = u"Otro"_qs;
            row.MYSOTA = u"LUD/DA-001"_qs;
            return QsoTable::Insert(session, row);
        }),
            9);
        CheckCounters();
    }

    void LateColumnsIgnoreCaseLikeTheOthers()
    {
        QVERIFY(RawDatabase(path_).Run(OldTables()));
        QVERIFY(ProbeSchema(*store_));
        RawDatabase raw(path_);
        for (const QByteArray table : {"Tabla1", "Tabla2", "Tabla3"})
            for (const QByteArray column : {"Perfil", "SOTA", "IOTA", "POTA", "MYSOTA"}) {
                QVERIFY(raw.Run("INSERT INTO " + table + " (" + column + ") VALUES ('ab')"));
                QCOMPARE(raw.Value("SELECT count(*) FROM " + table + " WHERE " + column + "='AB'"), u"1"_qs);
                QCOMPARE(raw.Value("SELECT type FROM pragma_table_info('" + table + "') WHERE name='" + column + "'"),
                    u"char(25)"_qs);
            }
    }

    void AFailedUpgradeLeavesTheFileAsItWas()
    {
        QVERIFY(RawDatabase(path_).Run(OldTables() + someRows));
        QFile file(path_);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray before = file.readAll();
        FaultVfs::Instance().SetRoom(20000);
        QCOMPARE(ProbeSchema(*store_).failure().kind, Failure::Kind::Full);
        file.seek(0);
        QCOMPARE(file.readAll(), before);
        FaultVfs::Instance().Reset();
        QVERIFY(ProbeSchema(*store_));
        CheckCounters();
    }

    void CountersFollowEveryChange()
    {
        QVERIFY(store_->CreateEmpty());
        RawDatabase raw(path_);
        QVERIFY(raw.Run(someRows));
        CheckCounters();
        for (const QByteArray sql : {"DELETE FROM Tabla1 WHERE Estacion='LU1ABC'",
                 "UPDATE Tabla1 SET \"Nombre Log\"='Otro' WHERE \"Nombre Log\"='Log inicial'",
                 "UPDATE Tabla1 SET Modo='' WHERE Estacion='LU2ABC'", "UPDATE Tabla1 SET Modo='FM' WHERE Modo=''",
                 "UPDATE Tabla1 SET Modo='AM'", "UPDATE Tabla1 SET Obs='x', \"Nombre Log\"=NULL",
                 "INSERT INTO Tabla1 (Modo, \"Nombre Log\") SELECT 'CW', 'otro' FROM Tabla1", "DELETE FROM Tabla1"}) {
            QVERIFY2(raw.Run(sql), sql.constData());
            CheckCounters();
        }
        QVERIFY(raw.Run(someRows));
        QVERIFY(store_->Write([](Session &session) { QsoTable::DeleteLog(session, u"log INICIAL"_qs); }));
        QCOMPARE(raw.Value("SELECT count(*) FROM Tabla1"), u"5"_qs);
        QCOMPARE(raw.Value("SELECT count(*) FROM Contadores WHERE \"Nombre Log\"='Log inicial'"), u"0"_qs);
        CheckCounters();
    }

    void WrongCountersArePutRight_data()
    {
        QTest::addColumn<QByteArray>("damage");
        QTest::addColumn<bool>("wrong");
        QTest::newRow("all well") << QByteArray() << false;
        QTest::newRow("too many") << QByteArray("UPDATE Contadores SET QSOs=QSOs+3 WHERE \"Nombre Log\"='Otro'")
                                  << true;
        QTest::newRow("none") << QByteArray("DELETE FROM Contadores") << true;
        QTest::newRow("of no log") << QByteArray("INSERT INTO Contadores VALUES ('Fantasma', 7)") << true;
        QTest::newRow("empty, of no log") << QByteArray("INSERT INTO Contadores VALUES ('Fantasma', 0)") << false;
        QTest::newRow("of the nameless") << QByteArray("UPDATE Contadores SET QSOs=0 WHERE \"Nombre Log\"=''") << true;
    }
    void WrongCountersArePutRight()
    {
        QFETCH(QByteArray, damage);
        QFETCH(bool, wrong);
        QVERIFY(store_->CreateEmpty());
        QVERIFY(RawDatabase(path_).Run(someRows + damage));
        QCOMPARE(*RecountLogs(*store_), wrong);
        CheckCounters();
        QCOMPARE(*RecountLogs(*store_), false);
    }

    void TheWipeStartsNumberingAnew()
    {
        QVERIFY(store_->CreateEmpty());
        RawDatabase raw(path_);
        QVERIFY(raw.Run(someRows + "INSERT INTO Tabla2 (Modo) VALUES ('CW'); INSERT INTO Tabla3 (Dupe) VALUES ('x')"));
        QVERIFY(WipeAllTables(*store_));
        QCOMPARE(raw.Value("SELECT (SELECT count(*) FROM Tabla1)+(SELECT count(*) FROM Tabla2)"
                           "+(SELECT count(*) FROM Tabla3)+(SELECT count(*) FROM Contadores)"),
            u"0"_qs);
        for (const QByteArray table : {"Tabla1", "Tabla2", "Tabla3"}) {
            QVERIFY(raw.Run("INSERT INTO " + table + " (Modo) VALUES ('CW')"));
            QCOMPARE(raw.Value("SELECT id FROM " + table), u"1"_qs);
        }
    }

    void ColumnsStandInTheirTwoOrders()
    {
        QVERIFY(store_->CreateEmpty());
        RawDatabase raw(path_);
        const auto columns = [&](const QByteArray &table) {
            return raw.Value("SELECT group_concat(name) FROM pragma_table_info('" + table + "')");
        };
        const QString common =
            u"id,Modo,Banda,MyCall,Estacion,Fecha,Hora,RSE,RSR,Obs,Operador,Nombre Log,Frecuencia,"_qs;
        const QString general = u"MiGrid,SuGrid,LdA,Nombre_Sat,Argento,"_qs, late = u"Perfil,SOTA,IOTA,POTA,MYSOTA"_qs;
        QCOMPARE(columns("Tabla1"), QString(common + general + late));
        QVERIFY(columns("Tabla2").startsWith(QString(common + u"LdA,Nombre_Sat,")));
        QCOMPARE(columns("Tabla3"), QString(common + general + late + u",Dupe"));
    }

private:
    // Each log's counter, by whatever spelling it is asked for, against its rows.
    void CheckCounters()
    {
        RawDatabase raw(path_);
        for (const QString &name :
            Names{u"Log inicial"_qs, u"log INICIAL"_qs, u"Otro"_qs, u"Vacío"_qs, u"Fantasma"_qs}) {
            const QString counted = raw.Value(
                "SELECT count(*) FROM Tabla1 WHERE Modo<>'' AND \"Nombre Log\"='" + name.toUtf8() + "' COLLATE NOCASE");
            QCOMPARE(QString::number(*CountQsos(*store_, name)), counted);
        }
        QCOMPARE(QString::number(*CountQsos(*store_, QString())),
            raw.Value("SELECT count(*) FROM Tabla1 WHERE Modo<>'' AND coalesce(\"Nombre Log\",'')=''"));
    }

    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
    std::unique_ptr<LogStore> store_;
};

TORDILLO_TEST(TestSchema)
#include "TestSchema.moc"
