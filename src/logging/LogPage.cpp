// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/LogPage.h"

#include "core/QsoTable.h"
#include "core/Schema.h"

#include <algorithm>

namespace {

// Ids of a page, read from whichever end of the log is nearer.
QList<qint64> PageIds(Session &session, const QString &logName, qint64 firstRow, qint64 count)
{
    const qint64 before = firstRow - 1;
    const qint64 size = std::min<qint64>(pageSize, count - before);
    if (before < 0 || size <= 0)
        return {};
    const qint64 after = count - before - size;
    const bool fromOldest = after < before;
    Query query = session.Prepare(fromOldest
            ? u"SELECT id FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>'' ORDER BY Fecha, Hora, id LIMIT ? OFFSET ?"_qs
            : u"SELECT id FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>'' "
              "ORDER BY Fecha DESC, Hora DESC, id DESC LIMIT ? OFFSET ?"_qs);
    query.Bind(1, logName).Bind(2, size).Bind(3, fromOldest ? after : before);
    QList<qint64> ids;
    while (query.Next())
        ids << query.Number(0);
    if (fromOldest)
        std::reverse(ids.begin(), ids.end());
    return ids;
}

LogPage Read(Session &session, const QString &logName, qint64 firstRow)
{
    LogPage page;
    {
        Query counter = session.Prepare(u"SELECT QSOs FROM Contadores WHERE \"Nombre Log\"=?"_qs);
        counter.Bind(1, logName);
        page.count = counter.Next() ? counter.Number(0) : 0;
    }
    Query row = session.Prepare(u"SELECT " + QsoColumns::SelectList() + u" FROM Tabla1 WHERE id=?");
    for (const qint64 id : PageIds(session, logName, firstRow, page.count)) {
        row.Reset();
        row.Bind(1, id);
        if (row.Next())
            page.rows << row.Row();
    }
    return page;
}

} // namespace

Result<LogPage> ReadLogPage(LogStore &store, const QString &logName, qint64 firstRow)
{
    const auto read = [&](Session &session) { return Read(session, logName, firstRow); };
    Result<LogPage> page = store.Read(read);
    if (page || page.failure().kind != Failure::Kind::OldSchema)
        return page;
    if (const Result<void> upgraded = UpgradeSchema(store); !upgraded)
        return upgraded.failure();
    return store.Read(read);
}

void Paging::Loaded(qint64 count, qint64 firstRow)
{
    PageCount = (count + pageSize - 1) / pageSize;
    if (firstRow == 1)
        PageNumber = 1;
    PageFirstRow = firstRow;
}

void Paging::First()
{
    PageNumber = 1;
    PageFirstRow = 1;
}

void Paging::Previous()
{
    if (PageNumber <= 1)
        return;
    PageNumber -= 1;
    PageFirstRow -= pageSize;
}

void Paging::Next()
{
    if (PageNumber >= PageCount)
        return;
    PageNumber += 1;
    PageFirstRow += pageSize;
}

void Paging::Last(qint64 count)
{
    constexpr qint64 mostSteps = 1000;
    if (count <= 0 || count > (mostSteps + 1) * pageSize)
        return;
    PageNumber = (count + pageSize - 1) / pageSize;
    PageFirstRow = (PageNumber - 1) * pageSize + 1;
}

qint64 Paging::GoTo(qint64 page)
{
    const qint64 target = std::clamp<qint64>(page, 1, std::max<qint64>(1, PageCount));
    PageFirstRow += (target - PageNumber) * pageSize;
    PageNumber = target;
    return target;
}

Paging::Buttons Paging::Enabled(qint64 count) const
{
    if (count <= pageSize || PageCount < 2)
        return {};
    const bool atFirst = PageNumber <= 1, atLast = PageNumber >= PageCount;
    return {!atFirst, !atFirst, !atLast, !atLast};
}

QString LogCaption(const QString &logName, qint64 count)
{
    return u"Log: "_qs + logName + u", con "_qs + QString::number(count) + u" QSOs"_qs;
}
