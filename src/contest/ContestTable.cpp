// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/ContestTable.h"

namespace ContestTable {

namespace {

// What a contest fills, in the order of the table.
constexpr QString QsoRow::*filledColumns[] = {&QsoRow::Modo, &QsoRow::Banda, &QsoRow::MyCall, &QsoRow::Estacion,
    &QsoRow::Fecha, &QsoRow::Hora, &QsoRow::RSE, &QsoRow::RSR, &QsoRow::Obs, &QsoRow::NombreLog, &QsoRow::Frecuencia,
    &QsoRow::LdA, &QsoRow::Nombre_Sat};

QString ColumnName(QString QsoRow::*field)
{
    for (const QsoColumns::Column &column : QsoColumns::all)
        if (column.field == field)
            return QString::fromLatin1(column.sql);
    Q_UNREACHABLE();
}

const QString &InsertStatement()
{
    static const QString sql = [] {
        QStringList columns, values;
        for (QString QsoRow::*column : filledColumns) {
            columns << ColumnName(column);
            values << u"?"_qs;
        }
        return QString(u"INSERT INTO Tabla2 (" + columns.join(u',') + u") VALUES (" + values.join(u',') + u')');
    }();
    return sql;
}

} // namespace

qint64 Insert(Session &session, const QsoRow &row)
{
    Query query = session.Prepare(InsertStatement());
    int parameter = 0;
    for (QString QsoRow::*column : filledColumns)
        query.Bind(++parameter, row.*column);
    query.Execute();
    return session.LastId();
}

bool Update(Session &session, qint64 id, const QsoTable::Changes &changes)
{
    QStringList assignments;
    for (const auto &[field, value] : changes)
        assignments << QString(ColumnName(field) + u"=?");
    Query query = session.Prepare(u"UPDATE Tabla2 SET " + assignments.join(u", ") + u" WHERE id=?");
    int parameter = 0;
    for (const auto &[field, value] : changes)
        query.Bind(++parameter, value);
    query.Bind(++parameter, id).Execute();
    return session.Changes() > 0;
}

bool Delete(Session &session, qint64 id)
{
    Query query = session.Prepare(u"DELETE FROM Tabla2 WHERE id=?"_qs);
    query.Bind(1, id).Execute();
    return session.Changes() > 0;
}

void DeleteContest(Session &session, const QString &name)
{
    Query query = session.Prepare(u"DELETE FROM Tabla2 WHERE \"Nombre Log\"=?"_qs);
    query.Bind(1, name).Execute();
}

void ClearContestMarks(Session &session, const QString &name)
{
    Query query = session.Prepare(u"UPDATE Tabla2 SET Perfil='', SOTA='' WHERE \"Nombre Log\"=?"_qs);
    query.Bind(1, name).Execute();
}

void WriteMarks(Session &session, qint64 id, const Marks &marks)
{
    static const QString sql = u"UPDATE Tabla2 SET Argento=?, Perfil=?, SOTA=? WHERE id=?"_qs;
    Query query = session.Prepare(sql);
    query.Bind(1, marks.multiplier).Bind(2, marks.received).Bind(3, marks.verdict).Bind(4, id).Execute();
}

} // namespace ContestTable

Result<qint64> StoreContestRow(LogStore &store, const QsoRow &row)
{
    return store.Write([&](Session &session) { return ContestTable::Insert(session, row); });
}
