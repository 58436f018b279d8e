// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/SearchList.h"

#include "core/Conversions.h"
#include "core/Wildcard.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <string_view>

namespace {

constexpr size_t scanSlice = 20000;
constexpr size_t sortSlice = 1 << 15;

const Failure &Stopped()
{
    static const Failure failure{u"Detenido."_qs, Failure::Kind::Cancelled};
    return failure;
}

// The columns behind the sub-items 1 to 21.
constexpr const char *columns[] = {"id", "id", "Estacion", "Banda", "Frecuencia", "Modo", "RSE", "RSR", "Fecha", "Hora",
    "MyCall", "Operador", "Obs", "MiGrid", "SuGrid", "LdA", "Nombre_Sat", "Argento", "SOTA", "IOTA", "POTA", "MYSOTA"};

QString ShownText(int subItem, const QString &stored)
{
    switch (subItem) {
    case 4:
        return QString(stored).replace(u',', u'.');
    case 8:
        return Conversions::ShownDate(stored);
    case 9:
        return Conversions::ShownTime(stored);
    default:
        return subItem >= 15 ? stored.trimmed() : stored;
    }
}

using Numbers = std::vector<std::uint32_t>;

// Merges two neighbouring sorted runs, [first, middle) and [middle, end), into the same places of `target`.
template <typename Before>
bool MergeInSteps(
    const Numbers &source, Numbers &target, size_t first, size_t middle, size_t end, Before before, Run &run)
{
    size_t left = first, right = middle;
    for (size_t at = first; at < end; ++at) {
        const bool takesRight = left == middle || (right < end && before(source[right], source[left]));
        target[at] = source[takesRight ? right++ : left++];
        if (at % sortSlice == 0 && !run.Step(0))
            return false;
    }
    return true;
}

// A stable sort that lets events through; false when it was stopped.
template <typename Before>
bool SortInSteps(Numbers &numbers, Before before, Run &run)
{
    for (size_t at = 0; at < numbers.size(); at += sortSlice) {
        const auto from = numbers.begin() + qsizetype(at);
        std::stable_sort(from, from + qsizetype(std::min(sortSlice, numbers.size() - at)), before);
        if (!run.Step(0))
            return false;
    }
    Numbers merged(numbers.size());
    for (size_t width = sortSlice; width < numbers.size(); width *= 2) {
        for (size_t at = 0; at < numbers.size(); at += 2 * width) {
            const size_t middle = std::min(at + width, numbers.size()), end = std::min(at + 2 * width, numbers.size());
            if (!MergeInSteps(numbers, merged, at, middle, end, before, run))
                return false;
        }
        numbers.swap(merged);
    }
    return true;
}

} // namespace

// The texts to sort by, in one block of memory, by running number.
struct SearchList::Keys {
    std::string block;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> places; // begin and length

    std::string_view At(std::uint32_t number) const
    {
        return std::string_view(block).substr(places[number].first, places[number].second);
    }
    void Set(std::uint32_t number, const QString &text)
    {
        const QByteArray key = Wildcard::Fold(text).toUtf8();
        places[number] = {std::uint32_t(block.size()), std::uint32_t(key.size())};
        block.append(key.constData(), size_t(key.size()));
    }
};

void SearchList::Clear()
{
    ids_.clear();
    order_.clear();
}

void SearchList::Append(const std::vector<qint64> &ids)
{
    const auto first = std::uint32_t(ids_.size());
    ids_.insert(ids_.end(), ids.begin(), ids.end());
    order_.resize(order_.size() + ids.size());
    std::iota(order_.end() - qsizetype(ids.size()), order_.end(), first);
}

void SearchList::RemoveAt(qsizetype place) { order_.erase(order_.begin() + place); }

Result<QList<QsoRow>> SearchList::Rows(qsizetype place, qsizetype count) const
{
    return store_.Read([&](Session &session) {
        Query query = session.Prepare(u"SELECT " + QsoColumns::SelectList() + u" FROM Tabla1 WHERE id=?");
        QList<QsoRow> rows;
        for (qsizetype at = place; at < std::min(place + count, Size()); ++at) {
            query.Reset();
            query.Bind(1, IdAt(at));
            rows << (query.Next() ? query.Row() : QsoRow());
        }
        return rows;
    });
}

QStringList SearchList::Texts(const QsoRow &row, qint64 number)
{
    QStringList texts{QString::number(number), QString::number(row.id)};
    const QString *stored[] = {&row.Estacion, &row.Banda, &row.Frecuencia, &row.Modo, &row.RSE, &row.RSR, &row.Fecha,
        &row.Hora, &row.MyCall, &row.Operador, &row.Obs, &row.MiGrid, &row.SuGrid, &row.LdA, &row.Nombre_Sat,
        &row.Argento, &row.SOTA, &row.IOTA, &row.POTA, &row.MYSOTA};
    int subItem = 2;
    for (const QString *text : stored)
        texts << ShownText(subItem++, *text);
    return texts;
}

// The keys of some rows, which come in the order of their ids. Where they lie close together that part of the table is
// read in one go; a thin result is looked up row by row.
void SearchList::ReadKeys(Session &session, int subItem, const std::vector<std::uint32_t> &numbers, Keys &keys) const
{
    const QString select = u"SELECT id, "_qs + QString::fromLatin1(columns[subItem]) + u" FROM Tabla1 WHERE "_qs;
    const qint64 first = ids_[numbers.front()], last = ids_[numbers.back()];
    if (last - first > qint64(numbers.size()) * 4) {
        Query query = session.Prepare(select + u"id=?"_qs);
        for (const std::uint32_t number : numbers) {
            query.Reset();
            query.Bind(1, ids_[number]);
            if (query.Next())
                keys.Set(number, ShownText(subItem, query.Text(1)));
        }
        return;
    }
    Query query = session.Prepare(select + u"id>=? AND id<=?"_qs);
    query.Bind(1, first).Bind(2, last);
    for (auto number = numbers.begin(); number != numbers.end() && query.Next();) {
        const qint64 id = query.Number(0);
        number = std::find_if(number, numbers.end(), [&](std::uint32_t at) { return ids_[at] >= id; });
        if (number != numbers.end() && ids_[*number] == id)
            keys.Set(*number++, ShownText(subItem, query.Text(1)));
    }
}

Result<void> SearchList::CollectKeys(int subItem, Run &run, Keys &keys) const
{
    keys.places.resize(ids_.size());
    // The table is read in the order of its ids, whatever the order of the list.
    std::vector<std::uint32_t> byId(order_);
    const auto before = [this](std::uint32_t a, std::uint32_t b) { return ids_[a] < ids_[b]; };
    if (subItem > 1 && !SortInSteps(byId, before, run))
        return Stopped();
    for (size_t at = 0; at < byId.size(); at += scanSlice) {
        const auto from = byId.begin() + qsizetype(at);
        const std::vector<std::uint32_t> slice(from, from + qsizetype(std::min(scanSlice, byId.size() - at)));
        if (subItem <= 1) {
            for (const std::uint32_t number : slice)
                keys.Set(number, QString::number(subItem == 0 ? qint64(number) + 1 : ids_[number]));
        } else if (const Result<void> read =
                       store_.Read([&](Session &session) { ReadKeys(session, subItem, slice, keys); });
                   !read) {
            return read;
        }
        if (!run.Step(qint64(at), qint64(byId.size())))
            return Stopped();
    }
    return {};
}

Result<void> SearchList::Sort(int subItem, bool ascending, Run &run)
{
    Keys keys;
    if (const Result<void> collected = CollectKeys(subItem, run, keys); !collected)
        return collected;
    const auto before = [&](std::uint32_t a, std::uint32_t b) {
        return ascending ? keys.At(a) < keys.At(b) : keys.At(b) < keys.At(a);
    };
    std::vector<std::uint32_t> sorted(order_);
    if (!SortInSteps(sorted, before, run))
        return Stopped();
    order_ = std::move(sorted);
    return {};
}
