// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/CounterAudit.h"

#include "core/QsoTable.h"

namespace {

constexpr int sliceRows = 40000;

} // namespace

void CounterAudit::ListLogs(Session &session)
{
    logs_ = QsoTable::LogNames(session);
    // A counter whose log has gone counts too much.
    Query query = session.Prepare(u"SELECT \"Nombre Log\" FROM Contadores WHERE QSOs<>0"_qs);
    while (query.Next())
        if (!logs_->contains(query.Text(0), Qt::CaseInsensitive))
            *logs_ << query.Text(0);
}

// Counts the next rows of the present log; true while there are more.
bool CounterAudit::CountSlice(Session &session)
{
    const QString rows = last_ ? u"FROM Tabla1 WHERE \"Nombre Log\"=? AND (Fecha, Hora, id)>(?, ?, ?)"_qs
                               : u"FROM Tabla1 WHERE \"Nombre Log\"=?"_qs;
    const auto bind = [&](Query &query) {
        query.Bind(1, logs_->last());
        if (last_)
            query.Bind(2, last_->date).Bind(3, last_->time).Bind(4, last_->id);
    };
    const QString slice = u" ORDER BY Fecha, Hora, id LIMIT "_qs + QString::number(sliceRows);
    {
        Query count = session.Prepare(
            u"SELECT count(*) FROM (SELECT Modo, Fecha, Hora, id "_qs + rows + slice + u") WHERE Modo<>''"_qs);
        bind(count);
        counted_ += count.Next() ? count.Number(0) : 0;
    }
    Query end = session.Prepare(u"SELECT Fecha, Hora, id "_qs + rows + u" ORDER BY Fecha, Hora, id LIMIT 1 OFFSET "_qs
        + QString::number(sliceRows - 1));
    bind(end);
    const bool more = end.Next();
    last_ = more ? std::optional(Place{end.Text(0), end.Text(1), end.Number(2)}) : std::nullopt;
    return more;
}

qint64 CounterAudit::Counter(Session &session) const
{
    Query query = session.Prepare(u"SELECT QSOs FROM Contadores WHERE \"Nombre Log\"=?"_qs);
    query.Bind(1, logs_->last());
    return query.Next() ? query.Number(0) : 0;
}

Result<CounterAudit::Finding> CounterAudit::Step()
{
    return store_.Read([this](Session &session) {
        if (!logs_)
            ListLogs(session);
        if (logs_->isEmpty())
            return Finding::Right;
        if (CountSlice(session))
            return Finding::Working;
        const bool right = counted_ == Counter(session);
        counted_ = 0;
        logs_->removeLast();
        return right ? Finding::Working : Finding::Wrong;
    });
}
