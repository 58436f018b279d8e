// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Schema.h"

#include "core/QsoRow.h"

#include <QHash>
#include <QMap>
#include <QSet>

const QsoColumns::Column QsoColumns::all[QsoColumns::count] = {{"Modo", &QsoRow::Modo}, {"Banda", &QsoRow::Banda},
    {"MyCall", &QsoRow::MyCall}, {"Estacion", &QsoRow::Estacion}, {"Fecha", &QsoRow::Fecha}, {"Hora", &QsoRow::Hora},
    {"RSE", &QsoRow::RSE}, {"RSR", &QsoRow::RSR}, {"Obs", &QsoRow::Obs}, {"Operador", &QsoRow::Operador},
    {"\"Nombre Log\"", &QsoRow::NombreLog}, {"Frecuencia", &QsoRow::Frecuencia}, {"MiGrid", &QsoRow::MiGrid},
    {"SuGrid", &QsoRow::SuGrid}, {"LdA", &QsoRow::LdA}, {"Nombre_Sat", &QsoRow::Nombre_Sat},
    {"Argento", &QsoRow::Argento}, {"SOTA", &QsoRow::SOTA}, {"IOTA", &QsoRow::IOTA}, {"POTA", &QsoRow::POTA},
    {"MYSOTA", &QsoRow::MYSOTA}, {"Perfil", &QsoRow::Perfil}};

const QString &QsoColumns::SelectList()
{
    static const QString list = [] {
        QString made = u"id"_qs;
        for (const Column &column : all)
            made += u',' + QString::fromLatin1(column.sql);
        return made;
    }();
    return list;
}

namespace {

// Positions 1 to 12 are the same in the three tables; Tabla2 then goes on with the two columns that hold the
// contest's name and kind.
const QStringList &CommonColumns()
{
    static const QStringList columns{u"Modo"_qs, u"Banda"_qs, u"MyCall"_qs, u"Estacion"_qs, u"Fecha"_qs, u"Hora"_qs,
        u"RSE"_qs, u"RSR"_qs, u"Obs"_qs, u"Operador"_qs, u"Nombre Log"_qs, u"Frecuencia"_qs};
    return columns;
}

QStringList TableColumns(const QString &table)
{
    if (table == u"Tabla2")
        return CommonColumns() + QStringList{u"LdA"_qs, u"Nombre_Sat"_qs, u"MiGrid"_qs, u"SuGrid"_qs, u"Argento"_qs};
    return CommonColumns() + QStringList{u"MiGrid"_qs, u"SuGrid"_qs, u"LdA"_qs, u"Nombre_Sat"_qs, u"Argento"_qs};
}

const QStringList &Tables()
{
    static const QStringList tables{u"Tabla1"_qs, u"Tabla2"_qs, u"Tabla3"_qs};
    return tables;
}

const QStringList &LateColumns()
{
    static const QStringList columns{u"Perfil"_qs, u"SOTA"_qs, u"IOTA"_qs, u"POTA"_qs, u"MYSOTA"_qs};
    return columns;
}

QString CreateTable(const QString &table)
{
    QString sql = u"CREATE TABLE IF NOT EXISTS \"%1\" (id INTEGER PRIMARY KEY AUTOINCREMENT"_qs.arg(table);
    for (const QString &column : TableColumns(table))
        sql += u", \"%1\" TEXT COLLATE NOCASE"_qs.arg(column);
    for (const QString &column : LateColumns())
        sql += u", \"%1\" char(25) COLLATE NOCASE"_qs.arg(column);
    if (table == u"Tabla3")
        sql += u", Dupe TEXT"_qs;
    return sql + u')';
}

// The first index carries what a page in the middle needs (which rows are QSOs, and the order of equal times), so
// that it is found without touching the table. Those of the contests answer: is this call, mode and band there; what
// was the last serial of a mode; what was the last contact, and how many of which series type are there.
const QMap<QString, QString> &Indexes()
{
    static const QMap<QString, QString> indexes{
        {u"Tabla1_log"_qs,
            u"CREATE INDEX IF NOT EXISTS Tabla1_log ON Tabla1 (\"Nombre Log\", Fecha, Hora, id, Modo)"_qs},
        {u"Tabla1_estacion"_qs,
            u"CREATE INDEX IF NOT EXISTS Tabla1_estacion ON Tabla1 "
            "(Estacion, \"Nombre Log\", Modo, Banda, MyCall, Fecha, Hora)"_qs},
        {u"Tabla2_estacion"_qs,
            u"CREATE INDEX IF NOT EXISTS Tabla2_estacion ON Tabla2 "
            "(\"Nombre Log\", Estacion, Modo, Banda, Fecha, Hora)"_qs},
        {u"Tabla2_modo"_qs, u"CREATE INDEX IF NOT EXISTS Tabla2_modo ON Tabla2 (\"Nombre Log\", Modo, id)"_qs},
        {u"Tabla2_fecha"_qs,
            u"CREATE INDEX IF NOT EXISTS Tabla2_fecha ON Tabla2 "
            "(\"Nombre Log\", Fecha, Hora, id, Modo, Nombre_Sat)"_qs}};
    return indexes;
}

// Those of earlier versions that others have taken the place of: each costs time at every contact stored.
const QStringList &RetiredIndexes()
{
    static const QStringList indexes{u"Tabla2_log"_qs};
    return indexes;
}

const QString counterTable = u"CREATE TABLE IF NOT EXISTS Contadores "
                             "(\"Nombre Log\" TEXT COLLATE NOCASE PRIMARY KEY, QSOs INTEGER NOT NULL) WITHOUT ROWID"_qs;

QString Count(const QString &row, const QString &step)
{
    return u"INSERT INTO Contadores VALUES (coalesce(%1.\"Nombre Log\",''), %2) "
           "ON CONFLICT (\"Nombre Log\") DO UPDATE SET QSOs=QSOs+%2; "_qs.arg(row, step);
}

const QMap<QString, QString> &Triggers()
{
    static const QMap<QString, QString> triggers{
        {u"Tabla1_alta"_qs,
            u"CREATE TRIGGER IF NOT EXISTS Tabla1_alta AFTER INSERT ON Tabla1 WHEN NEW.Modo<>'' BEGIN "_qs
                + Count(u"NEW"_qs, u"1"_qs) + u"END"_qs},
        {u"Tabla1_baja"_qs,
            u"CREATE TRIGGER IF NOT EXISTS Tabla1_baja AFTER DELETE ON Tabla1 WHEN OLD.Modo<>'' BEGIN "_qs
                + Count(u"OLD"_qs, u"-1"_qs) + u"END"_qs},
        {u"Tabla1_cambio_menos"_qs,
            u"CREATE TRIGGER IF NOT EXISTS Tabla1_cambio_menos AFTER UPDATE OF \"Nombre Log\", Modo ON Tabla1 "
            "WHEN OLD.Modo<>'' BEGIN "_qs
                + Count(u"OLD"_qs, u"-1"_qs) + u"END"_qs},
        {u"Tabla1_cambio_mas"_qs,
            u"CREATE TRIGGER IF NOT EXISTS Tabla1_cambio_mas AFTER UPDATE OF \"Nombre Log\", Modo ON Tabla1 "
            "WHEN NEW.Modo<>'' BEGIN "_qs
                + Count(u"NEW"_qs, u"1"_qs) + u"END"_qs}};
    return triggers;
}

// Grouped by the bare column, so that the index gives the groups; rows without a name and, in an old file, two
// spellings of one name are then added up.
const QString recount = u"INSERT INTO Contadores SELECT coalesce(\"Nombre Log\",''), count(*) FROM Tabla1 "
                        "WHERE Modo<>'' GROUP BY \"Nombre Log\" "
                        "ON CONFLICT (\"Nombre Log\") DO UPDATE SET QSOs=QSOs+excluded.QSOs"_qs;

QStringList Columns(Session &session, const QString &table)
{
    QStringList names;
    Query query = session.Prepare(u"SELECT name FROM pragma_table_info(?)"_qs);
    query.Bind(1, table);
    while (query.Next())
        names << query.Text(0).toLower();
    return names;
}

bool IsCurrent(Session &session)
{
    QSet<QString> objects;
    Query query = session.Prepare(u"SELECT name FROM sqlite_master"_qs);
    while (query.Next())
        objects.insert(query.Text(0));
    for (const auto &wanted :
        {Tables(), QStringList(Indexes().keys()), QStringList(Triggers().keys()), QStringList{u"Contadores"_qs}})
        for (const QString &name : wanted)
            if (!objects.contains(name))
                return false;
    for (const QString &name : RetiredIndexes())
        if (objects.contains(name))
            return false;
    for (const QString &table : Tables()) {
        const QStringList present = Columns(session, table);
        for (const QString &column : LateColumns())
            if (!present.contains(column.toLower()))
                return false;
    }
    return true;
}

void AddMissingColumns(Session &session)
{
    QHash<QString, QStringList> present;
    for (const QString &table : Tables())
        present.insert(table, Columns(session, table));
    for (const QString &statement : Schema::LateColumnStatements()) {
        const QString table = statement.section(u' ', 2, 2);
        const QString column = statement.section(u'[', 1).section(u']', 0, 0);
        if (!present[table].contains(column.toLower()))
            session.Execute(statement + u" COLLATE NOCASE"); // as all other columns
    }
}

} // namespace

namespace Schema {

QStringList CreateStatements()
{
    QStringList statements{u"PRAGMA application_id=%1"_qs.arg(applicationId)};
    for (const QString &table : Tables())
        statements << CreateTable(table);
    statements << counterTable;
    statements += Indexes().values();
    statements += Triggers().values();
    return statements;
}

QStringList LateColumnStatements()
{
    return {u"ALTER TABLE Tabla1 ADD [Perfil] char(25)"_qs, u"ALTER TABLE Tabla2 ADD [Perfil] char(25)"_qs,
        u"ALTER TABLE Tabla3 ADD [Perfil] char(25)"_qs, u"ALTER TABLE Tabla1 ADD [SOTA] char(25)"_qs,
        u"ALTER TABLE Tabla1 ADD [IOTA] char(25)"_qs, u"ALTER TABLE Tabla1 ADD [POTA] char(25)"_qs,
        u"ALTER TABLE Tabla1 ADD [MYSOTA] char(25)"_qs, u"ALTER TABLE Tabla2 ADD [SOTA] char(25)"_qs,
        u"ALTER TABLE Tabla2 ADD [IOTA] char(25)"_qs, u"ALTER TABLE Tabla2 ADD [POTA] char(25)"_qs,
        u"ALTER TABLE Tabla2 ADD [MYSOTA] char(25)"_qs, u"ALTER TABLE Tabla3 ADD [SOTA] char(25)"_qs,
        u"ALTER TABLE Tabla3 ADD [IOTA] char(25)"_qs, u"ALTER TABLE Tabla3 ADD [POTA] char(25)"_qs,
        u"ALTER TABLE Tabla3 ADD [MYSOTA] char(25)"_qs};
}

} // namespace Schema

Result<bool> SchemaIsCurrent(LogStore &store)
{
    return store.Read([](Session &session) { return IsCurrent(session); });
}

Result<void> UpgradeSchema(LogStore &store)
{
    return store.Write([](Session &session) {
        if (IsCurrent(session))
            return;
        for (const QString &table : Tables())
            session.Execute(CreateTable(table));
        AddMissingColumns(session);
        session.Execute(u"DROP TABLE IF EXISTS Contadores"_qs);
        session.Execute(counterTable);
        for (const QString &name : RetiredIndexes())
            session.Execute(u"DROP INDEX IF EXISTS "_qs + name);
        for (const QString &statement : Indexes())
            session.Execute(statement);
        for (const QString &statement : Triggers())
            session.Execute(statement);
        session.Execute(recount);
        session.Execute(u"PRAGMA application_id=%1"_qs.arg(Schema::applicationId));
    });
}

Result<void> ProbeSchema(LogStore &store)
{
    const Result<bool> current = SchemaIsCurrent(store);
    if (!current)
        return current.failure();
    return *current ? Result<void>() : UpgradeSchema(store);
}

Result<void> WipeAllTables(LogStore &store)
{
    return store.Write([](Session &session) {
        for (const QString &table : Tables())
            session.Execute(u"DELETE FROM %1"_qs.arg(table));
        session.Execute(u"DELETE FROM Contadores"_qs);
        session.Execute(u"DELETE FROM sqlite_sequence"_qs);
    });
}

Result<qint64> CountQsos(LogStore &store, const QString &logName)
{
    return store.Read([&](Session &session) {
        Query query = session.Prepare(u"SELECT QSOs FROM Contadores WHERE \"Nombre Log\"=?"_qs);
        query.Bind(1, logName);
        return query.Next() ? query.Number(0) : qint64(0);
    });
}

Result<bool> RecountLogs(LogStore &store)
{
    const Result<bool> wrong = store.Read([](Session &session) {
        Query query = session.Prepare(
            u"WITH grouped(log, n) AS (SELECT \"Nombre Log\", count(*) FROM Tabla1 WHERE Modo<>'' GROUP BY \"Nombre "
            u"Log\"), "
            "counted(log, n) AS (SELECT coalesce(log,'') COLLATE NOCASE, sum(n) FROM grouped GROUP BY 1) "
            "SELECT 1 FROM counted LEFT JOIN Contadores ON \"Nombre Log\"=log WHERE QSOs IS NOT n UNION ALL "
            "SELECT 1 FROM Contadores WHERE QSOs<>0 AND NOT EXISTS (SELECT 1 FROM counted WHERE \"Nombre Log\"=log) LIMIT 1"_qs);
        return query.Next();
    });
    if (!wrong || !*wrong)
        return wrong;
    return store.Write([](Session &session) {
        session.Execute(u"DELETE FROM Contadores"_qs);
        session.Execute(recount);
        return true;
    });
}
