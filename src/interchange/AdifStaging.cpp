// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/AdifStaging.h"

#include "core/Conversions.h"
#include "core/QsoTable.h"
#include "logging/Provinces.h"

#include <cstdlib>

namespace AdifStaging {

namespace {

constexpr qint64 repeatMinutes = 10;

const QString &InsertStatement()
{
    static const QString sql = [] {
        QString columns, values;
        for (const QsoColumns::Column &column : QsoColumns::all) {
            columns += QString::fromLatin1(column.sql) + u',';
            values += u"?,"_qs;
        }
        return QString(u"INSERT INTO Tabla3 (" + columns + u"Dupe) VALUES (" + values + u"?)");
    }();
    return sql;
}

QDateTime Moment(const QString &date, const QString &time)
{
    return {Conversions::ParseDate(date).value_or(QDate()), Conversions::ParseTime(time).value_or(QTime()), Qt::UTC};
}

// The row as it goes into the log.
QsoRow Tidied(QsoRow row, const QString &logName)
{
    static const QStringList voices{u"DIGITALVOICE"_qs, u"C4FM"_qs, u"DMR"_qs, u"VOI"_qs, u"DSTAR"_qs, u"FREEDV"_qs};
    row.NombreLog = logName;
    row.LdA = QString::number(Conversions::LeadingInteger(row.LdA));
    row.Hora = Conversions::ShownTime(row.Hora);
    if (voices.contains(row.Modo))
        row.Modo = u"DVoice"_qs;
    for (QString *reference : {&row.Nombre_Sat, &row.Argento, &row.SOTA, &row.IOTA, &row.POTA, &row.MYSOTA})
        *reference = reference->trimmed();
    return row;
}

// All columns but the log's name: a contact that is replaced keeps its id and its log, nothing else.
QsoTable::Changes AllColumns(const QsoRow &row)
{
    QsoTable::Changes changes;
    for (const QsoColumns::Column &column : QsoColumns::all)
        if (column.field != &QsoRow::NombreLog && column.field != &QsoRow::Perfil)
            changes.append({column.field, row.*column.field});
    return changes;
}

} // namespace

std::optional<qint64> FindDuplicateInLog(Session &session, const QString &logName, const QsoRow &row)
{
    const QDateTime moment = Moment(row.Fecha, row.Hora);
    if (!moment.isValid())
        return std::nullopt;
    Query query =
        session.Prepare(u"SELECT id, Fecha, Hora FROM Tabla1 WHERE Estacion=? AND \"Nombre Log\"=? AND Modo=? "
                        "AND Banda=? AND MyCall=? ORDER BY id"_qs);
    query.Bind(1, row.Estacion).Bind(2, logName.section(u',', 0, 0)).Bind(3, row.Modo);
    query.Bind(4, row.Banda).Bind(5, row.MyCall);
    while (query.Next()) {
        const QDateTime logged = Moment(query.Text(1), query.Text(2));
        if (logged.isValid() && std::llabs(Conversions::MinutesBetween(logged, moment)) < repeatMinutes)
            return query.Number(0);
    }
    return std::nullopt;
}

Result<Staged> Prepare(LogStore &store, const QString &logName, const QsoRow &row)
{
    Staged staged{row, u"VA"_qs};
    staged.row.NombreLog = logName;
    staged.row.Argento = ArgentineProvince(row.Estacion);
    staged.row.MiGrid = row.MiGrid.trimmed();
    staged.row.SuGrid = row.SuGrid.trimmed();
    const auto repeats = store.Read([&](Session &session) { return FindDuplicateInLog(session, logName, staged.row); });
    if (!repeats)
        return repeats.failure();
    if (*repeats)
        staged.dupe = QString::number(**repeats);
    return staged;
}

Result<void> ClearStaging(LogStore &store)
{
    return store.Write([](Session &session) { session.Execute(u"DELETE FROM Tabla3"_qs); });
}

Result<void> StageRows(LogStore &store, const QList<Staged> &rows)
{
    return store.Write([&](Session &session) {
        Query query = session.Prepare(InsertStatement());
        for (const Staged &staged : rows) {
            query.Reset();
            int parameter = 0;
            for (const QsoColumns::Column &column : QsoColumns::all) {
                const QString &value = staged.row.*column.field;
                query.Bind(++parameter,
                    column.field == &QsoRow::Fecha      ? Conversions::StoredDate(value)
                        : column.field == &QsoRow::Hora ? Conversions::StoredTime(value)
                                                        : value);
            }
            query.Bind(++parameter, staged.dupe).Execute();
        }
    });
}

Result<QList<Staged>> StagedRows(LogStore &store)
{
    return store.Read([](Session &session) {
        QList<Staged> rows;
        Query query = session.Prepare(
            u"SELECT " + QsoColumns::SelectList() + u", Dupe FROM Tabla3 ORDER BY Fecha DESC, Hora DESC, id DESC");
        while (query.Next())
            rows.append({query.Row(), query.Text(QsoColumns::count + 1)});
        return rows;
    });
}

Result<Loaded> LoadRows(
    LogStore &store, const QString &logName, const QList<Staged> &rows, qsizetype count, bool replace)
{
    return store.Write([&](Session &session) {
        Loaded loaded;
        for (const Staged &staged : rows.first(count)) {
            if (!staged.IsNew() && !replace) {
                ++loaded.skipped;
                continue;
            }
            const QsoRow row = Tidied(staged.row, logName);
            if (!staged.IsNew() && QsoTable::Update(session, staged.dupe.toLongLong(), AllColumns(row))) {
                ++loaded.replaced;
                continue;
            }
            loaded.lastId = QsoTable::Insert(session, row);
            ++loaded.inserted;
        }
        return loaded;
    });
}

} // namespace AdifStaging
