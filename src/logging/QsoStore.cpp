// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/QsoStore.h"

#include "core/QsoTable.h"
#include "logging/Provinces.h"

namespace {

QsoRow RowOf(const QString &logName, const NewQso &qso)
{
    QsoRow row;
    row.Modo = qso.mode;
    row.Banda = qso.band;
    row.MyCall = qso.station;
    row.Estacion = qso.call;
    row.Fecha = qso.date;
    row.Hora = qso.time;
    row.RSE = qso.reportSent;
    row.RSR = qso.reportReceived;
    row.Obs = qso.remarks;
    row.Operador = qso.operatorCall;
    row.NombreLog = logName;
    row.Frecuencia = qso.frequency;
    row.MiGrid = qso.ownGrid;
    row.SuGrid = qso.grid;
    row.LdA = u"1"_qs;
    row.Nombre_Sat = qso.satellite.trimmed();
    row.Argento = ArgentineProvince(qso.call);
    row.SOTA = qso.SOTA;
    row.IOTA = qso.MY_POTA;
    row.POTA = qso.POTA;
    row.MYSOTA = qso.MYSOTA;
    return row;
}

Result<void> SetColumn(LogStore &store, qint64 id, QString QsoRow::*column, const QString &value)
{
    return store.Write([&](Session &session) { QsoTable::Update(session, id, {{column, value}}); });
}

} // namespace

Result<qint64> AddQso(LogStore &store, const QString &logName, const NewQso &qso)
{
    const QsoRow row = RowOf(logName, qso);
    return store.Write([&](Session &session) {
        const qint64 id = QsoTable::Insert(session, row);
        if (!qso.grid.isEmpty() && !qso.call.contains(u'/'))
            SpreadGrid(session, logName, qso.call, qso.grid);
        return id;
    });
}

void SpreadGrid(Session &session, const QString &logName, const QString &call, const QString &grid)
{
    QList<qint64> ids;
    Query query = session.Prepare(u"SELECT id FROM Tabla1 WHERE Estacion=? AND \"Nombre Log\"=? "
                                  "AND coalesce(SuGrid,'')=''"_qs);
    query.Bind(1, call).Bind(2, logName);
    while (query.Next())
        ids << query.Number(0);
    for (const qint64 id : ids)
        QsoTable::Update(session, id, {{&QsoRow::SuGrid, grid}});
}

Result<QString> FindGridOfCall(LogStore &store, const QString &logName, const QString &call)
{
    return store.Read([&](Session &session) {
        Query query = session.Prepare(u"SELECT SuGrid FROM Tabla1 WHERE Estacion=? AND \"Nombre Log\"=? AND SuGrid<>'' "
                                      "ORDER BY id LIMIT 1"_qs);
        query.Bind(1, call).Bind(2, logName);
        return query.Next() ? query.Text(0) : QString();
    });
}

Result<void> SetSuGrid(LogStore &store, qint64 id, const QString &grid)
{
    return SetColumn(store, id, &QsoRow::SuGrid, grid);
}

Result<void> SetLdaState(LogStore &store, qint64 id, const QString &value)
{
    return SetColumn(store, id, &QsoRow::LdA, value);
}

Result<QList<QsoRow>> QsosWithCall(LogStore &store, const QString &logName, const QString &call)
{
    // The letters before the first wildcard bound the search in the index; the pattern then decides. All columns come
    // from the index of calls, so the table is never touched.
    const qsizetype letters = std::min(call.indexOf(u'?') < 0 ? call.size() : call.indexOf(u'?'),
        call.indexOf(u'*') < 0 ? call.size() : call.indexOf(u'*'));
    const QString from = call.left(letters);
    const QString beyond = from + QString::fromUcs4(U"\U0010FFFF", 1);
    const bool hasWildcard = letters < call.size();
    return store.Read([&](Session &session) {
        // "+" keeps the engine from the index of logs, by which it would walk the whole log to spare itself the sort.
        Query query = session.Prepare(
            u"SELECT MyCall, Estacion, Banda, Modo, Fecha, Hora FROM Tabla1 WHERE Estacion>=? AND Estacion<? "
            "AND +\"Nombre Log\"=?"_qs
            + (hasWildcard ? u" AND wildcard(?, Estacion)"_qs : QString()) + u" ORDER BY Fecha, Hora, id DESC");
        query.Bind(1, from).Bind(2, beyond).Bind(3, logName);
        if (hasWildcard)
            query.Bind(4, QString(call + u'*'));
        QList<QsoRow> rows;
        while (query.Next()) {
            QsoRow row;
            row.MyCall = query.Text(0);
            row.Estacion = query.Text(1);
            row.Banda = query.Text(2);
            row.Modo = query.Text(3);
            row.Fecha = query.Text(4);
            row.Hora = query.Text(5);
            rows << row;
        }
        return rows;
    });
}
