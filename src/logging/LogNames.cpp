// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/LogNames.h"

#include "core/QsoTable.h"
#include "core/Wildcard.h"

#include <algorithm>

namespace {

// The names come by leaps through the index, one look-up each, however many contacts a log has.
const QString names = u"WITH RECURSIVE log(name) AS (SELECT min(\"Nombre Log\") FROM Tabla1 UNION ALL "
                      "SELECT (SELECT min(\"Nombre Log\") FROM Tabla1 WHERE \"Nombre Log\">log.name) FROM log "
                      "WHERE log.name IS NOT NULL) "
                      "SELECT name, coalesce(QSOs,0) FROM log LEFT JOIN Contadores ON \"Nombre Log\"=name "
                      "WHERE name IS NOT NULL"_qs;

QList<LogEntry> Logs(Session &session)
{
    QList<LogEntry> logs;
    Query query = session.Prepare(names);
    while (query.Next())
        logs.append({query.Text(0), query.Number(1)});
    std::stable_sort(logs.begin(), logs.end(),
        [](const LogEntry &a, const LogEntry &b) { return Wildcard::Fold(a.name) < Wildcard::Fold(b.name); });
    return logs;
}

} // namespace

Result<QList<LogEntry>> ListLogs(LogStore &store)
{
    return store.Read([](Session &session) { return Logs(session); });
}

QString LogListText(const LogEntry &entry)
{
    return entry.name + u" ("_qs + QString::number(entry.count) + u" QSOs)"_qs;
}

QString CleanLogName(const QString &typed) { return QString(typed).remove(u'\''); }

QString SameLog(const QList<LogEntry> &logs, const QString &name)
{
    const QString folded = Wildcard::Fold(name);
    const auto same = std::find_if(
        logs.begin(), logs.end(), [&](const LogEntry &entry) { return Wildcard::Fold(entry.name) == folded; });
    return same == logs.end() ? QString() : same->name;
}

Result<void> CreateLog(LogStore &store, const QString &name)
{
    return store.Write([&](Session &session) { QsoTable::InsertLogMarker(session, name); });
}

Result<QString> DeleteLog(LogStore &store, const QString &name)
{
    return store.Write([&](Session &session) {
        QsoTable::DeleteLog(session, name);
        const QList<LogEntry> rest = Logs(session);
        return rest.isEmpty() ? u"Base 1"_qs : rest.first().name;
    });
}
