// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/ProvinceStatistics.h"

#include "stats/SearchList.h"

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 sliceRows = 10000;

const Failure &Stopped()
{
    static const Failure failure{u"Detenido."_qs, Failure::Kind::Cancelled};
    return failure;
}

// The province is empty where the call is.
const QString columns = u"id, iif(Estacion<>'', Argento, ''), Banda, Nombre_Sat, LdA, SuGrid"_qs;

void Take(const Query &query, ProvinceStatistics &statistics)
{
    const QString province = query.Text(1);
    if (province.isEmpty())
        return;
    statistics.ids.push_back(query.Number(0));
    statistics.tally.Add({province, query.Text(2), query.Text(3), query.Text(4), query.Text(5)});
}

// Walks a log in the order of its index, slice by slice: first the rows whose date is null, which other programs can
// leave, then the others. The order puts nulls before empty texts, and so does the place; rows of later days need no
// look at it.
class LogWalk {
public:
    LogWalk(LogStore &store, const QString &logName)
        : store_(store)
        , logName_(logName)
    {
    }

    bool AtEnd() const { return atEnd_; }

    // Takes the next rows and gives how many it has looked at.
    Result<qint64> Next(ProvinceStatistics &statistics)
    {
        return store_.Read([&](Session &session) {
            Query query = Prepare(session);
            qint64 rows = 0;
            while (query.Next()) {
                Take(query, statistics);
                if (++rows == sliceRows)
                    last_ = {query.Text(6), query.Number(7), query.Text(8), query.Number(0)};
            }
            if (rows < sliceRows) {
                atEnd_ = !undated_;
                undated_ = false;
                last_ = {};
            }
            return rows;
        });
    }

private:
    struct Place {
        QString date;
        qint64 hasTime = 0;
        QString time;
        qint64 id = std::numeric_limits<qint64>::min();
    };

    Query Prepare(Session &session) const
    {
        Query query = session.Prepare(u"SELECT "_qs + columns
            + u", Fecha, Hora IS NOT NULL, Hora FROM Tabla1 WHERE \"Nombre Log\"=?1 AND "
            + (undated_ ? u"Fecha IS NULL"_qs : u"Fecha>=?2"_qs)
            + u" AND (+Fecha>?2 OR (coalesce(Fecha, '') COLLATE NOCASE, Hora IS NOT NULL, "
              "coalesce(Hora, '') COLLATE NOCASE, id)>(?2, ?3, ?4, ?5)) ORDER BY Fecha, Hora, id LIMIT ?6");
        query.Bind(1, logName_).Bind(2, last_.date).Bind(3, last_.hasTime).Bind(4, last_.time).Bind(5, last_.id);
        query.Bind(6, sliceRows);
        return query;
    }

    LogStore &store_;
    const QString &logName_;
    Place last_;
    bool undated_ = true;
    bool atEnd_ = false;
};

} // namespace

Result<ProvinceStatistics> StatisticsOfLog(LogStore &store, const QString &logName, qint64 total, Run &run)
{
    ProvinceStatistics statistics;
    LogWalk walk(store, logName);
    qint64 done = 0;
    while (!walk.AtEnd()) {
        if (!run.Step(std::min(done, total), total))
            return Stopped();
        const Result<qint64> read = walk.Next(statistics);
        if (!read)
            return read.failure();
        done += *read;
    }
    return statistics;
}

Result<ProvinceStatistics> StatisticsOfList(LogStore &store, const SearchList &list, Run &run)
{
    ProvinceStatistics statistics;
    for (qsizetype first = 0; first < list.Size(); first += sliceRows) {
        if (!run.Step(first, list.Size()))
            return Stopped();
        const qsizetype end = std::min<qsizetype>(first + sliceRows, list.Size());
        const Result<void> read = store.Read([&](Session &session) {
            Query query = session.Prepare(u"SELECT "_qs + columns + u" FROM Tabla1 WHERE id=?");
            for (qsizetype place = first; place < end; ++place) {
                query.Reset();
                query.Bind(1, list.IdAt(place));
                if (query.Next())
                    Take(query, statistics);
            }
        });
        if (!read)
            return read.failure();
    }
    return statistics;
}
