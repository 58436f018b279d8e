// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/ContestLookup.h"

#include "contest/ContestTable.h"

namespace {

constexpr qsizetype rowsOfSlice = 1000;

QString ModeInLog(const QString &mode) { return mode == u"PH" ? u"SSB"_qs : mode; }

bool IsStored(Session &session, const QsoRow &row)
{
    static const QString sql = u"SELECT 1 FROM Tabla2 WHERE \"Nombre Log\"=? AND Estacion=? AND Modo=? AND Banda=? "
                               "AND Fecha=? AND MyCall=? AND RSE=? AND RSR=? LIMIT 1"_qs;
    Query query = session.Prepare(sql);
    query.Bind(1, row.NombreLog).Bind(2, row.Estacion).Bind(3, row.Modo).Bind(4, row.Banda);
    query.Bind(5, row.Fecha).Bind(6, row.MyCall).Bind(7, row.RSE).Bind(8, row.RSR);
    return query.Next();
}

// The newest id of each mode, found by leaps, and of these the greatest.
const QString lastStatement = u"WITH RECURSIVE mode(name) AS "
                              "(SELECT min(Modo) FROM Tabla2 WHERE \"Nombre Log\"=?1 AND Modo>'' UNION ALL "
                              "SELECT (SELECT min(Modo) FROM Tabla2 WHERE \"Nombre Log\"=?1 AND Modo>mode.name) "
                              "FROM mode WHERE mode.name IS NOT NULL) "
                              "SELECT max((SELECT max(id) FROM Tabla2 WHERE \"Nombre Log\"=?1 AND Modo=mode.name)) "
                              "FROM mode WHERE mode.name IS NOT NULL"_qs;

std::optional<QsoRow> RowOfId(Session &session, qint64 id)
{
    static const QString sql = u"SELECT "_qs + QsoColumns::SelectList() + u" FROM Tabla2 WHERE id=?"_qs;
    Query query = session.Prepare(sql);
    return query.Bind(1, id).Next() ? std::optional(query.Row()) : std::nullopt;
}

QList<qint64> Ids(Session &session, const QString &contest)
{
    QList<qint64> ids;
    Query query = session.Prepare(u"SELECT id FROM Tabla2 WHERE \"Nombre Log\"=? ORDER BY id"_qs);
    query.Bind(1, contest);
    while (query.Next())
        ids << query.Number(0);
    return ids;
}

} // namespace

Result<QString> LastContestValue(LogStore &store, const QString &contest, ContestValue kind)
{
    return store.Read([&](Session &session) {
        Query query = session.Prepare(u"SELECT Modo, Banda FROM Tabla2 WHERE \"Nombre Log\"=? AND Modo<>'' "
                                      "ORDER BY Fecha DESC, Hora DESC, id DESC LIMIT 1"_qs);
        return query.Bind(1, contest).Next() ? query.Text(kind == ContestValue::Mode ? 0 : 1) : QString();
    });
}

Result<QString> LastContestSerial(LogStore &store, const QString &contest, const QString &mode)
{
    return store.Read([&](Session &session) {
        Query query =
            session.Prepare(u"SELECT RSE FROM Tabla2 WHERE \"Nombre Log\"=? AND Modo=? ORDER BY id DESC LIMIT 1"_qs);
        return query.Bind(1, contest).Bind(2, ModeInLog(mode)).Next() ? query.Text(0) : QString();
    });
}

Result<QList<QsoRow>> FindContestDuplicates(
    LogStore &store, const QString &contest, const QString &call, const QString &mode, const QString &band)
{
    return store.Read([&](Session &session) {
        static const QString sql = u"SELECT "_qs + QsoColumns::SelectList()
            + u" FROM Tabla2 WHERE \"Nombre Log\"=? AND Estacion=? AND Modo=? AND Banda=? "
              "ORDER BY Fecha DESC, Hora DESC, id DESC"_qs;
        QList<QsoRow> rows;
        Query query = session.Prepare(sql);
        query.Bind(1, contest).Bind(2, call).Bind(3, ModeInLog(mode)).Bind(4, band);
        while (query.Next())
            rows << query.Row();
        return rows;
    });
}

Result<bool> QsoAlreadyStored(LogStore &store, const QsoRow &row)
{
    return store.Read([&](Session &session) { return IsStored(session, row); });
}

Result<std::optional<qint64>> StoreContestQso(LogStore &store, const QsoRow &row)
{
    return store.Write([&](Session &session) -> std::optional<qint64> {
        if (IsStored(session, row))
            return std::nullopt;
        return ContestTable::Insert(session, row);
    });
}

Result<QList<QsoRow>> ContestListLoad(LogStore &store, const QString &contest)
{
    static constexpr QString QsoRow::*columns[] = {&QsoRow::Banda, &QsoRow::Modo, &QsoRow::Fecha, &QsoRow::Hora,
        &QsoRow::MyCall, &QsoRow::RSE, &QsoRow::Estacion, &QsoRow::RSR, &QsoRow::LdA, &QsoRow::Nombre_Sat};
    return store.Read([&](Session &session) {
        QList<QsoRow> rows;
        Query query = session.Prepare(u"SELECT id, Banda, Modo, Fecha, Hora, MyCall, RSE, Estacion, RSR, LdA, "
                                      "Nombre_Sat FROM Tabla2 WHERE \"Nombre Log\"=? AND Modo<>'' ORDER BY id DESC"_qs);
        query.Bind(1, contest);
        while (query.Next()) {
            QsoRow row;
            row.id = query.Number(0);
            int column = 0;
            for (QString QsoRow::*field : columns)
                row.*field = query.Text(++column);
            rows << std::move(row);
        }
        return rows;
    });
}

Result<QList<QsoRow>> ContestRows(LogStore &store, const QString &contest, Run *run)
{
    const auto ids = store.Read([&](Session &session) { return Ids(session, contest); });
    if (!ids)
        return ids.failure();
    QList<QsoRow> rows;
    rows.reserve(ids->size());
    for (qsizetype first = 0; first < ids->size(); first += rowsOfSlice) {
        const auto slice = store.Read([&](Session &session) {
            for (const qint64 id : ids->mid(first, rowsOfSlice))
                if (auto row = RowOfId(session, id))
                    rows << std::move(*row);
        });
        if (!slice)
            return slice.failure();
        if (run && !run->Step(std::min(first + rowsOfSlice, ids->size()), ids->size()))
            return Failure{u"Se interrumpió la lectura del concurso."_qs, Failure::Kind::Cancelled};
    }
    return rows;
}

Result<std::optional<QsoRow>> LastContestQso(LogStore &store, const QString &contest)
{
    return store.Read([&](Session &session) -> std::optional<QsoRow> {
        Query query = session.Prepare(lastStatement);
        query.Bind(1, contest).Next();
        return RowOfId(session, query.Number(0));
    });
}

Result<std::optional<QsoRow>> FindContestQso(LogStore &store, qint64 id)
{
    return store.Read([&](Session &session) {
        auto row = RowOfId(session, id);
        return row && !row->Modo.isEmpty() ? row : std::nullopt;
    });
}
