// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/Search.h"

#include "core/Conversions.h"
#include "logging/Provinces.h"

#include <algorithm>
#include <initializer_list>
#include <variant>

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

// SQL that grows together with the values of its parameters.
struct SearchCursor::Statement {
    QString sql;
    std::vector<std::variant<QString, qint64>> values;

    void Add(const QString &more, std::initializer_list<std::variant<QString, qint64>> with = {})
    {
        sql += more;
        values.insert(values.end(), with);
    }
    Query Prepare(Session &session) const
    {
        Query query = session.Prepare(sql);
        int parameter = 0;
        for (const auto &value : values)
            std::visit([&](const auto &held) { query.Bind(++parameter, held); }, value);
        return query;
    }
};

SearchCursor::SearchCursor(LogStore &store, QString logName, SearchFilters filters, SearchSlices *slices)
    : store_(store)
    , logName_(std::move(logName))
    , filters_(std::move(filters))
    , slices_(slices)
{
    if (slices_ && slices_->logName_ == logName_)
        known_ = slices_->ends_;
    const auto add = [this](const QString &condition, const QString &value) {
        conditions_ << condition;
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
                conditions_ << QString(QString::fromUtf16(column) + u"<>''");
    if (filters_.satellite)
        conditions_ << u"Nombre_Sat<>''"_qs;
    if (Conversions::ParseDate(filters_.from))
        from_ = Conversions::StoredDate(filters_.from);
    else if (!filters_.from.isEmpty())
        badDate_ = BadDate::From;
    if (Conversions::ParseDate(filters_.to))
        to_ = Conversions::StoredDate(filters_.to);
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
        end = known_ ? KnownEnd() : SliceEnd(session);
        ReadSlice(session, end, ids);
        if (!end && !from_ && !to_)
            ReadUndated(session, ids);
    });
    if (!read) {
        ids.resize(before);
        return read;
    }
    last_ = end;
    atEnd_ = !end;
    if (end)
        passed_.push_back(*end);
    else if (slices_ && !known_ && !from_ && !to_)
        *slices_ = SearchSlices(logName_, std::move(passed_));
    return {};
}

// Rows of the log by date, from `oldest` to the date that the cursor has reached, in both cases with the whole date.
SearchCursor::Statement SearchCursor::SelectDates(const QString &columns, const QString &oldest) const
{
    Statement select{u"SELECT "_qs + columns + u" FROM Tabla1 WHERE \"Nombre Log\"=? AND Fecha>=?", {logName_, oldest}};
    if (last_ && !(to_ && *to_ < last_->date))
        select.Add(u" AND Fecha<=?"_qs, {last_->date});
    else if (to_)
        select.Add(u" AND Fecha<=?"_qs, {*to_});
    return select;
}

void SearchCursor::AddFilters(Statement &select) const
{
    select.Add(conditions_.isEmpty() ? u"1"_qs : conditions_.join(u" AND "_qs));
    for (const QString &value : values_)
        select.Add({}, {value});
}

// What Keep wants to know of a row. Without the call the index alone answers.
QString SearchCursor::KeptColumns() const { return filters_.argentinesOnly ? u"id, Estacion, LdA"_qs : u"id"_qs; }

std::optional<SearchCursor::Key> SearchCursor::KnownEnd() const
{
    if (passed_.size() >= known_->size() || (from_ && (*known_)[passed_.size()].date < *from_))
        return std::nullopt;
    return (*known_)[passed_.size()];
}

// Where a slice that begins behind last_ ends: at its last contact. Nothing when the log ends before. The place is
// counted from the beginning of last_'s date, which spares the index a comparison of every row.
std::optional<SearchCursor::Key> SearchCursor::SliceEnd(Session &session) const
{
    Statement place = SelectDates(u"Fecha, Hora, id"_qs, from_.value_or(u""_qs));
    place.Add(u" ORDER BY Fecha DESC, Hora DESC, id DESC LIMIT 1 OFFSET ?"_qs,
        {sliceRows - 1 + (last_ ? last_->ofItsDate : 0)});
    Query query = place.Prepare(session);
    if (!query.Next())
        return std::nullopt;
    Key end{query.Text(0), query.Text(1), query.Number(2)};
    const Statement count{u"SELECT count(*) FROM Tabla1 WHERE \"Nombre Log\"=? AND Fecha=? "
                          "AND (coalesce(Hora,''), id)>=(?, ?)"_qs,
        {logName_, end.date, end.time, end.id}};
    Query counted = count.Prepare(session);
    end.ofItsDate = counted.Next() ? counted.Number(0) : 0;
    return end;
}

// The dates bound the slice, by the index; where in them it begins and ends is asked last, of rows that the filters
// keep. It is read from its oldest row on and turned round: rows lie in the file as they were entered, and the engine
// reaches the next one faster than the one before.
void SearchCursor::ReadSlice(Session &session, const std::optional<Key> &end, std::vector<qint64> &ids) const
{
    Statement slice = SelectDates(KeptColumns(), end ? end->date : from_.value_or(u""_qs));
    slice.Add(u" AND Modo<>'' AND CASE WHEN "_qs);
    AddFilters(slice);
    slice.Add(u" THEN 1"_qs);
    if (last_)
        slice.Add(u" AND (Fecha, coalesce(Hora,''), id)<(?, ?, ?)"_qs, {last_->date, last_->time, last_->id});
    if (end)
        slice.Add(u" AND (Fecha, coalesce(Hora,''), id)>=(?, ?, ?)"_qs, {end->date, end->time, end->id});
    slice.Add(u" END ORDER BY Fecha, Hora, id"_qs);
    const auto first = qsizetype(ids.size());
    Keep(slice.Prepare(session), ids);
    std::reverse(ids.begin() + first, ids.end());
}

// Rows of foreign origin may lack the date; they are the oldest.
void SearchCursor::ReadUndated(Session &session, std::vector<qint64> &ids) const
{
    Statement undated{
        u"SELECT "_qs + KeptColumns() + u" FROM Tabla1 WHERE \"Nombre Log\"=? AND Fecha IS NULL AND Modo<>'' AND ",
        {logName_}};
    AddFilters(undated);
    undated.Add(u" ORDER BY Hora DESC, id DESC"_qs);
    Keep(undated.Prepare(session), ids);
}

void SearchCursor::Keep(Query query, std::vector<qint64> &ids) const
{
    while (query.Next())
        if (!filters_.argentinesOnly
            || (!ArgentineProvince(query.Text(1)).isEmpty() && KeptByLda(filters_.lda, query.Text(2))))
            ids.push_back(query.Number(0));
}

bool SearchCursor::HasAnyRow(Session &session) const
{
    Statement any{u"SELECT 1 FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>'' AND "_qs, {logName_}};
    AddFilters(any);
    for (const auto &[operation, date] : {std::pair(u">"_qs, from_), std::pair(u"<"_qs, to_)})
        if (date)
            any.Add(u" AND Fecha"_qs + operation + u"=?", {*date});
    any.Add(u" LIMIT 1"_qs);
    return any.Prepare(session).Next();
}
