// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/ContestLogs.h"

#include "contest/ContestTable.h"
#include "core/Wildcard.h"

#include <algorithm>

const QString SerieType::Incremental = u"Incremental"_qs;
const QString SerieType::Fija = u"Fija"_qs;

namespace {

// By leaps through the index, one look-up for each contest, however many contacts it has.
const QString namesStatement = u"WITH RECURSIVE contest(name) AS (SELECT min(\"Nombre Log\") FROM Tabla2 "
                               "WHERE \"Nombre Log\">'' UNION ALL "
                               "SELECT (SELECT min(\"Nombre Log\") FROM Tabla2 WHERE \"Nombre Log\">contest.name) "
                               "FROM contest WHERE contest.name IS NOT NULL) "
                               "SELECT name FROM contest WHERE name IS NOT NULL"_qs;

QStringList ContestNames(Session &session)
{
    QStringList names;
    Query query = session.Prepare(namesStatement);
    while (query.Next())
        names << query.Text(0);
    std::stable_sort(names.begin(), names.end(),
        [](const QString &a, const QString &b) { return Wildcard::Fold(a) < Wildcard::Fold(b); });
    return names;
}

// Adds the series types of one contest to `types` and gives the number of its rows.
qint64 CountRows(Session &session, const QString &name, QStringList &types)
{
    Query query = session.Prepare(
        u"SELECT coalesce(Nombre_Sat,'') COLLATE NOCASE, count(*) FROM Tabla2 WHERE \"Nombre Log\"=? GROUP BY 1"_qs);
    query.Bind(1, name);
    qint64 rows = 0;
    while (query.Next()) {
        types << query.Text(0).trimmed();
        rows += query.Number(1);
    }
    return rows;
}

} // namespace

Result<QList<ContestLog>> ListContests(LogStore &store)
{
    return store.Read([](Session &session) {
        QList<ContestLog> contests;
        QStringList types;
        for (const QString &name : ContestNames(session))
            contests.append({name, QString(), CountRows(session, name, types) - 1});
        for (qsizetype i = 0; i < contests.size(); ++i)
            contests[i].type = types.value(i);
        return contests;
    });
}

QList<ContestLog> ContestsWithQsos(const QList<ContestLog> &contests)
{
    QList<ContestLog> full;
    std::copy_if(contests.begin(), contests.end(), std::back_inserter(full),
        [](const ContestLog &contest) { return contest.count > 0; });
    return full;
}

Result<bool> ContestExists(LogStore &store, const QString &name)
{
    return store.Read([&](Session &session) {
        Query query = session.Prepare(u"SELECT 1 FROM Tabla2 WHERE \"Nombre Log\"=? LIMIT 1"_qs);
        if (query.Bind(1, name).Next())
            return true;
        // The engine's own comparison knows no case of "Ñ" and accents.
        const QString folded = Wildcard::Fold(name);
        const QStringList names = ContestNames(session);
        return std::any_of(
            names.begin(), names.end(), [&](const QString &other) { return Wildcard::Fold(other) == folded; });
    });
}

QString CleanContestName(const QString &typed) { return QString(typed).remove(u'\''); }

QString ContestExistsMessage(const QString &name)
{
    return u"Ya existe un concurso creado con el nombre "_qs + name + u"\n\nElija otro nombre!"_qs;
}

Result<qint64> CreateContest(LogStore &store, const QString &name, const QString &type)
{
    QsoRow header;
    header.NombreLog = name;
    header.LdA = name;
    header.Nombre_Sat = type;
    return StoreContestRow(store, header);
}

StartValues StartOfContest(const QString &type)
{
    return type == SerieType::Incremental ? StartValues{u"1"_qs, u"0"_qs} : StartValues{};
}

QString DeleteContestCaption(const QString &name) { return u"Borrar "_qs + name; }

QString DeleteContestQuestion(const QString &name)
{
    return u"Elimina el concurso"_qs + name + u"?\n\nLos datos no se podrán recuperar!"_qs;
}

Result<void> DeleteContest(LogStore &store, const QString &name)
{
    return store.Write([&](Session &session) { ContestTable::DeleteContest(session, name); });
}
