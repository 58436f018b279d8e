// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/LogNames.h"

#include "core/CodePage.h"
#include "core/QsoTable.h"
#include "core/Wildcard.h"

#include <QCollator>
#include <algorithm>

namespace {

QList<LogEntry> Logs(Session &session)
{
    QList<LogEntry> logs;
    Query counter = session.Prepare(u"SELECT QSOs FROM Contadores WHERE \"Nombre Log\"=?"_qs);
    for (const QString &name : QsoTable::LogNames(session)) {
        counter.Reset();
        counter.Bind(1, name);
        logs.append({name, counter.Next() ? counter.Number(0) : 0});
    }
    QCollator order(QLocale(QLocale::Spanish, QLocale::Argentina));
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(logs.begin(), logs.end(),
        [&](const LogEntry &a, const LogEntry &b) { return order.compare(a.name, b.name) < 0; });
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

Result<QString> ResolveLogName(LogStore &store, const QString &name)
{
    const Result<QList<LogEntry>> logs = ListLogs(store);
    if (!logs)
        return logs.failure();
    if (!SameLog(*logs, name).isEmpty())
        return name;
    for (const LogEntry &entry : *logs)
        if (CodePage::ToText(CodePage::FromText(entry.name)).left(100) == name)
            return entry.name;
    return name;
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
