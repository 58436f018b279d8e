// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/QsoTable.h"

#include "core/Conversions.h"

namespace QsoTable {

namespace {

QString ColumnName(QString QsoRow::*field)
{
    for (const QsoColumns::Column &column : QsoColumns::all)
        if (column.field == field)
            return QString::fromLatin1(column.sql);
    Q_UNREACHABLE();
}

QString StoredValue(QString QsoRow::*field, const QString &value)
{
    if (field == &QsoRow::Fecha)
        return Conversions::StoredDate(value);
    if (field == &QsoRow::Hora)
        return Conversions::StoredTime(value);
    return value;
}

const QString &InsertStatement()
{
    static const QString sql = [] {
        QString columns, values;
        for (const QsoColumns::Column &column : QsoColumns::all) {
            if (column.field == &QsoRow::Perfil)
                continue;
            columns += QString::fromLatin1(column.sql) + u',';
            values += u"?,"_qs;
        }
        return QString(u"INSERT INTO Tabla1 (" + columns + u"Perfil) VALUES (" + values + u"nullif(?,''))");
    }();
    return sql;
}

} // namespace

qint64 Insert(Session &session, const QsoRow &row)
{
    Query query = session.Prepare(InsertStatement());
    int parameter = 0;
    for (const QsoColumns::Column &column : QsoColumns::all)
        query.Bind(++parameter, StoredValue(column.field, row.*column.field));
    query.Execute();
    return session.LastId();
}

bool Update(Session &session, qint64 id, const Changes &changes)
{
    QString assignments;
    for (const auto &[field, value] : changes) {
        if (!assignments.isEmpty())
            assignments += u", "_qs;
        assignments += ColumnName(field) + u"=?";
    }
    Query query = session.Prepare(u"UPDATE Tabla1 SET " + assignments + u" WHERE id=?");
    int parameter = 0;
    for (const auto &[field, value] : changes)
        query.Bind(++parameter, StoredValue(field, value));
    query.Bind(++parameter, id);
    query.Execute();
    return session.Changes() > 0;
}

bool Delete(Session &session, qint64 id)
{
    Query query = session.Prepare(u"DELETE FROM Tabla1 WHERE id=?"_qs);
    query.Bind(1, id).Execute();
    return session.Changes() > 0;
}

QStringList LogNames(Session &session)
{
    QStringList names;
    Query query =
        session.Prepare(u"WITH RECURSIVE log(name) AS (SELECT min(\"Nombre Log\") FROM Tabla1 UNION ALL "
                        "SELECT (SELECT min(\"Nombre Log\") FROM Tabla1 WHERE \"Nombre Log\">log.name) FROM log "
                        "WHERE log.name IS NOT NULL) SELECT name FROM log WHERE name IS NOT NULL"_qs);
    while (query.Next())
        names << query.Text(0);
    return names;
}

void DeleteLog(Session &session, const QString &logName)
{
    Query query = session.Prepare(u"DELETE FROM Tabla1 WHERE \"Nombre Log\"=?"_qs);
    query.Bind(1, logName).Execute();
    Query counter = session.Prepare(u"DELETE FROM Contadores WHERE \"Nombre Log\"=?"_qs);
    counter.Bind(1, logName).Execute();
}

void InsertLogMarker(Session &session, const QString &logName)
{
    Query query = session.Prepare(u"INSERT INTO Tabla1 (\"Nombre Log\") SELECT ?1 WHERE NOT EXISTS "
                                  "(SELECT 1 FROM Tabla1 WHERE \"Nombre Log\"=?1)"_qs);
    query.Bind(1, logName).Execute();
}

} // namespace QsoTable
