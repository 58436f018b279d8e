// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/Search.h"

#include "core/Conversions.h"
#include "logging/Provinces.h"

namespace {

bool KeptByLda(SearchFilters::Lda wanted, const QString &lda)
{
    const double state = Conversions::LeadingNumber(lda);
    switch (wanted) {
    case SearchFilters::Lda::NotUploaded:
        return state == 0;
    case SearchFilters::Lda::Uploaded:
    case SearchFilters::Lda::Confirmed:
        return state == 1; // both ask for 1: a confirmed contact (2) passes neither
    case SearchFilters::Lda::All:
        break;
    }
    return true;
}

struct PatternFilter {
    QString SearchFilters::*text;
    const char16_t *column;
};

constexpr PatternFilter patterns[] = {{&SearchFilters::myCall, u"MyCall"}, {&SearchFilters::operatorCall, u"Operador"},
    {&SearchFilters::call, u"Estacion"}, {&SearchFilters::mode, u"Modo"}, {&SearchFilters::band, u"Banda"}};

struct TickFilter {
    bool SearchFilters::*tick;
    std::vector<const char16_t *> columns;
};

const std::vector<TickFilter> &Ticks()
{
    static const std::vector<TickFilter> ticks{{&SearchFilters::POTA, {u"POTA"}}, {&SearchFilters::IOTA, {u"IOTA"}},
        {&SearchFilters::SOTA, {u"SOTA"}}, {&SearchFilters::MYSOTA, {u"MYSOTA"}},
        {&SearchFilters::S2S, {u"MYSOTA", u"SOTA"}}, {&SearchFilters::P2P, {u"IOTA", u"POTA"}}};
    return ticks;
}

} // namespace

QString SearchStatement(const QString &logName, const SearchFilters &filters)
{
    QString sql = u"SELECT * FROM Tabla1 WHERE [Nombre Log]='"_qs + logName + u"' and [Modo]<>''"_qs;
    for (const PatternFilter &pattern : patterns)
        if (const QString value = (filters.*pattern.text).toUpper(); !value.isEmpty())
            sql += u"AND ["_qs + QString::fromUtf16(pattern.column) + u"] LIKE '"_qs + value + u"' "_qs;
    if (!filters.remarks.isEmpty())
        sql += u"AND [Obs] LIKE '*"_qs + filters.remarks.toUpper() + u"*' "_qs;
    for (const TickFilter &tick : Ticks()) {
        if (!(filters.*tick.tick))
            continue;
        QStringList conditions;
        for (const char16_t *column : tick.columns)
            conditions << u"AND ["_qs + QString::fromUtf16(column) + u"] <>''"_qs;
        sql += conditions.join(u' ');
    }
    if (filters.satellite)
        sql += u"AND [Nombre_Sat] <>'' "_qs;
    return sql + u" ORDER BY [Fecha] desc, [Hora] desc"_qs;
}

QString ListStatement(const QString &logName)
{
    return u"SELECT * FROM Tabla1 WHERE [Modo]<>'' and [Nombre Log]='"_qs + logName
        + u"' ORDER BY [Fecha] DESC, [Hora] DESC"_qs;
}

QString TidyBandFilter(const QString &text)
{
    const QString band = text.toUpper().trimmed();
    return band.isEmpty() || band.contains(u'M') ? band : QString(band + u'M');
}

QString CheckSearchDate(const QString &text)
{
    if (text.trimmed().isEmpty() || Conversions::ParseDate(text))
        return {};
    return u"Error en el formato de fecha!"_qs;
}

SearchCursor::SearchCursor(LogStore &store, QString logName, SearchFilters filters)
    : store_(store)
    , logName_(std::move(logName))
    , filters_(std::move(filters))
{
    const auto add = [this](const QString &condition, const QString &value) {
        where_ += u" AND "_qs + condition;
        values_ << value;
    };
    for (const PatternFilter &pattern : patterns)
        if (const QString value = filters_.*pattern.text; !value.isEmpty())
            add(u"wildcard(?, "_qs + QString::fromUtf16(pattern.column) + u')', value);
    if (!filters_.remarks.isEmpty())
        add(u"wildcard(?, Obs)"_qs, u'*' + filters_.remarks + u'*');
    for (const TickFilter &tick : Ticks())
        for (const char16_t *column : tick.columns)
            if (filters_.*tick.tick)
                where_ += u" AND "_qs + QString::fromUtf16(column) + u"<>''"_qs;
    if (filters_.satellite)
        where_ += u" AND Nombre_Sat<>''"_qs;
    if (const auto date = Conversions::ParseDate(filters_.from))
        add(u"Fecha>=?"_qs, Conversions::StoredDate(filters_.from));
    else if (!filters_.from.isEmpty())
        badDate_ = BadDate::From;
    if (const auto date = Conversions::ParseDate(filters_.to))
        add(u"Fecha<=?"_qs, Conversions::StoredDate(filters_.to));
    else if (!filters_.to.isEmpty() && badDate_ == BadDate::None)
        badDate_ = BadDate::To;
}

Result<void> SearchCursor::Next(std::vector<qint64> &ids)
{
    if (badDate_ != BadDate::None && !checked_) {
        const Result<bool> any = store_.Read([this](Session &session) { return HasAnyRow(session); });
        if (!any)
            return any.failure();
        checked_ = atEnd_ = true;
        if (!*any)
            badDate_ = BadDate::None;
        return {};
    }
    std::optional<Key> end;
    const size_t before = ids.size();
    const Result<void> read = store_.Read([&](Session &session) {
        end = SliceEnd(session);
        ReadSlice(session, end, ids);
    });
    if (!read) {
        ids.resize(before);
        return read;
    }
    last_ = end;
    atEnd_ = !end;
    return {};
}

// A condition on the place of a row in the log, with the values bound to it.
struct SearchCursor::Range {
    QString sql;
    std::vector<Key> keys;

    void Add(const Key &key, const QString &comparison)
    {
        const QString columns = key.wholeDay ? u"Fecha%1?"_qs : u"(Fecha, Hora, id)%1(?, ?, ?)"_qs;
        sql += u" AND "_qs + columns.arg(comparison);
        keys.push_back(key);
    }
    int Bind(Query &query, int parameter) const
    {
        for (const Key &key : keys) {
            query.Bind(++parameter, key.date);
            if (key.wholeDay)
                continue;
            query.Bind(parameter + 1, key.time).Bind(parameter + 2, key.id);
            parameter += 2;
        }
        return parameter;
    }
};

// Where a slice that begins behind last_ ends: at its last contact. Nothing when the log ends before. Nulls, which only
// foreign tools write, compare with nothing and come last: a day with a contact without a time is read to its end, and
// those without a date with the last slice.
std::optional<SearchCursor::Key> SearchCursor::SliceEnd(Session &session) const
{
    Range range;
    if (last_)
        range.Add(*last_, u"<"_qs);
    Query query = session.Prepare(u"SELECT Fecha, Hora, id, Fecha IS NULL FROM Tabla1 WHERE \"Nombre Log\"=?"_qs
        + range.sql + u" ORDER BY Fecha DESC, Hora DESC, id DESC LIMIT 1 OFFSET "_qs + QString::number(sliceRows - 1));
    query.Bind(1, logName_);
    range.Bind(query, 1);
    if (!query.Next() || query.Number(3) != 0)
        return std::nullopt;
    Key end{query.Text(0), query.Text(1), query.Number(2)};
    Query timeless =
        session.Prepare(u"SELECT 1 FROM Tabla1 WHERE \"Nombre Log\"=? AND Fecha=? AND Hora IS NULL LIMIT 1"_qs);
    timeless.Bind(1, logName_).Bind(2, end.date);
    end.wholeDay = timeless.Next();
    return end;
}

void SearchCursor::ReadSlice(Session &session, const std::optional<Key> &end, std::vector<qint64> &ids) const
{
    Range range;
    if (last_)
        range.Add(*last_, u"<"_qs);
    if (end)
        range.Add(*end, u">="_qs);
    ReadRange(session, range, ids);
    if (last_ && !end)
        ReadRange(session, {u" AND Fecha IS NULL"_qs, {}}, ids);
}

void SearchCursor::ReadRange(Session &session, const Range &range, std::vector<qint64> &ids) const
{
    QString sql = filters_.argentinesOnly ? u"SELECT id, Estacion, LdA"_qs : u"SELECT id"_qs;
    sql += u" FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>''"_qs;
    sql += range.sql + where_ + u" ORDER BY Fecha DESC, Hora DESC, id DESC"_qs;
    Query query = session.Prepare(sql);
    query.Bind(1, logName_);
    int parameter = range.Bind(query, 1);
    for (const QString &value : values_)
        query.Bind(++parameter, value);
    while (query.Next()) {
        if (filters_.argentinesOnly
            && (ArgentineProvince(query.Text(1)).isEmpty() || !KeptByLda(filters_.lda, query.Text(2))))
            continue;
        ids.push_back(query.Number(0));
    }
}

bool SearchCursor::HasAnyRow(Session &session) const
{
    Query query =
        session.Prepare(u"SELECT 1 FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>''"_qs + where_ + u" LIMIT 1"_qs);
    int parameter = 0;
    query.Bind(++parameter, logName_);
    for (const QString &value : values_)
        query.Bind(++parameter, value);
    return query.Next();
}
