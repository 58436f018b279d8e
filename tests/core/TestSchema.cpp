// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Fixtures.h"

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

} // namespace

class TestSchema : public StoreTest {
    Q_OBJECT

    // Each log's counter, by whatever spelling it is asked for, against its rows.
    void CheckCounters()
    {
        for (const char16_t *name : {u"Log inicial", u"log INICIAL", u"Otro", u"Vacío", u"Fantasma", u""}) {
            const QString log = QString::fromUtf16(name);
            const QString counted = Value("SELECT count(*) FROM Tabla1 WHERE Modo<>'' AND "
                                          "coalesce(\"Nombre Log\",'')='"
                + log.toUtf8() + "' COLLATE NOCASE");
            QCOMPARE(QString::number(*CountQsos(*store_, log)), counted);
        }
    }

private Q_SLOTS:
    void AnOldFileIsBroughtUpToDate()
    {
        const QByteArray rows = "SELECT group_concat(id||Estacion||coalesce(SuGrid,'null')) FROM Tabla1";
        // What is done to the first form, marked by a plus, or to the present one.
        for (const QByteArray damage : {"+", "+ALTER TABLE Tabla1 ADD [sota] char(25)",
                 "ALTER TABLE Tabla3 DROP COLUMN MYSOTA", "DROP TRIGGER Tabla1_alta; DROP TRIGGER Tabla1_baja",
                 "DROP TABLE Contadores", "DROP INDEX Tabla1_log", "DROP INDEX Tabla2_modo", "DROP TABLE Tabla2",
                 "CREATE INDEX Tabla2_log ON Tabla2 (\"Nombre Log\", Estacion, Modo, Banda)"}) {
            const bool old = damage.startsWith('+');
            NoStore();
            if (old)
                Sql(OldTables());
            else
                QVERIFY(store_->CreateEmpty());
            Sql(someRows);
            const QString before = Value(rows);
            Sql(damage.mid(old));
            QVERIFY(!*SchemaIsCurrent(*store_));

            const Result<void> probed = ProbeSchema(*store_);
            QVERIFY2(probed, damage.constData());
            QVERIFY(*SchemaIsCurrent(*store_));
            QVERIFY(store_->CheckIntegrity());
            QCOMPARE(Value(rows), before);
            QCOMPARE(Value("PRAGMA application_id"), QString::number(Schema::applicationId));
            CheckCounters();
            RawDatabase raw(path_);
            const QString version = raw.Value("PRAGMA data_version");
            QVERIFY(ProbeSchema(*store_));
            QVERIFY(UpgradeSchema(*store_));
            QCOMPARE(raw.Value("PRAGMA data_version"), version); // nobody wrote
            Insert({RowOf(u"Modo=CW;NombreLog=Otro;MYSOTA=LUD/DA-001"_qs)});
            QCOMPARE(Rows().last().id, 9);
            CheckCounters();
        }
    }

    void LateColumnsIgnoreCaseLikeTheOthers()
    {
        NoStore();
        Sql(OldTables());
        QVERIFY(ProbeSchema(*store_));
        for (const QByteArray table : {"Tabla1", "Tabla2", "Tabla3"})
            for (const QByteArray column : {"Perfil", "SOTA", "IOTA", "POTA", "MYSOTA"}) {
                Sql("INSERT INTO " + table + " (" + column + ") VALUES ('ab')");
                QCOMPARE(Value("SELECT count(*) FROM " + table + " WHERE " + column + "='AB'"), u"1"_qs);
                QCOMPARE(Value("SELECT type FROM pragma_table_info('" + table + "') WHERE name='" + column + "'"),
                    u"char(25)"_qs);
            }
    }

    void AFailedUpgradeLeavesTheFileAsItWas()
    {
        NoStore();
        Sql(OldTables() + someRows);
        const QByteArray before = Content(u"base0.mdb"_qs);
        Disk().SetRoom(20000);
        QCOMPARE(ProbeSchema(*store_).failure().kind, Failure::Kind::Full);
        QCOMPARE(Content(u"base0.mdb"_qs), before);
        HealDisk();
        QVERIFY(ProbeSchema(*store_));
        CheckCounters();
    }

    void CountersFollowEveryChange()
    {
        Sql(someRows);
        CheckCounters();
        for (const QByteArray sql : {"DELETE FROM Tabla1 WHERE Estacion='LU1ABC'",
                 "UPDATE Tabla1 SET \"Nombre Log\"='Otro' WHERE \"Nombre Log\"='Log inicial'",
                 "UPDATE Tabla1 SET Modo='' WHERE Estacion='LU2ABC'", "UPDATE Tabla1 SET Modo='FM' WHERE Modo=''",
                 "UPDATE Tabla1 SET Modo='AM'", "UPDATE Tabla1 SET Obs='x', \"Nombre Log\"=NULL",
                 "INSERT INTO Tabla1 (Modo, \"Nombre Log\") SELECT 'CW', 'otro' FROM Tabla1", "DELETE FROM Tabla1"}) {
            Sql(sql);
            CheckCounters();
        }
        Sql(someRows);
        QVERIFY(store_->Write([](Session &session) { QsoTable::DeleteLog(session, u"log INICIAL"_qs); }));
        QCOMPARE(Value("SELECT count(*) FROM Tabla1"), u"5"_qs);
        QCOMPARE(Value("SELECT count(*) FROM Contadores WHERE \"Nombre Log\"='Log inicial'"), u"0"_qs);
        CheckCounters();
    }

    void WrongCountersArePutRight()
    {
        const std::pair<QByteArray, bool> damages[] = {{"", false}, {"DELETE FROM Contadores", true},
            {"UPDATE Contadores SET QSOs=QSOs+3 WHERE \"Nombre Log\"='Otro'", true},
            {"INSERT INTO Contadores VALUES ('Fantasma', 7)", true},
            {"INSERT INTO Contadores VALUES ('Fantasma', 0)", false},
            {"UPDATE Contadores SET QSOs=0 WHERE \"Nombre Log\"=''", true}};
        for (const auto &[damage, wrong] : damages) {
            init();
            Sql(someRows + damage);
            QCOMPARE(*RecountLogs(*store_), wrong);
            CheckCounters();
            QCOMPARE(*RecountLogs(*store_), false);
        }
    }

    void TheWipeStartsNumberingAnew()
    {
        Sql(someRows + "INSERT INTO Tabla2 (Modo) VALUES ('CW'); INSERT INTO Tabla3 (Dupe) VALUES ('x')");
        QVERIFY(WipeAllTables(*store_));
        QCOMPARE(Value("SELECT (SELECT count(*) FROM Tabla1)+(SELECT count(*) FROM Tabla2)"
                       "+(SELECT count(*) FROM Tabla3)+(SELECT count(*) FROM Contadores)"),
            u"0"_qs);
        for (const QByteArray table : {"Tabla1", "Tabla2", "Tabla3"}) {
            Sql("INSERT INTO " + table + " (Modo) VALUES ('CW')");
            QCOMPARE(Value("SELECT id FROM " + table), u"1"_qs);
        }
    }

    void ColumnsStandInTheirTwoOrders()
    {
        const auto columns = [&](const QByteArray &table) {
            return Value("SELECT group_concat(name) FROM pragma_table_info('" + table + "')");
        };
        const QString common =
            u"id,Modo,Banda,MyCall,Estacion,Fecha,Hora,RSE,RSR,Obs,Operador,Nombre Log,Frecuencia,"_qs;
        const QString general = u"MiGrid,SuGrid,LdA,Nombre_Sat,Argento,"_qs, late = u"Perfil,SOTA,IOTA,POTA,MYSOTA"_qs;
        QCOMPARE(columns("Tabla1"), QString(common + general + late));
        QVERIFY(columns("Tabla2").startsWith(QString(common + u"LdA,Nombre_Sat,")));
        QCOMPARE(columns("Tabla3"), QString(common + general + late + u",Dupe"));
    }
};

TORDILLO_TEST(TestSchema)
#include "TestSchema.moc"
