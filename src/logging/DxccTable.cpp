// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/DxccTable.h"

#include "logging/Provinces.h"

#include <algorithm>

namespace {

// Twice the rows that are searched, and a power of two, so that a probe seldom meets more than one slot.
constexpr int slotBits = 16;
constexpr size_t slotCount = size_t(1) << slotBits;
static_assert(slotCount > 2 * DxccTable::searchedRows);

// The hash of a text grows by one character with Append and shrinks by one with Drop, so one walk over the call gives
// the hashes of all its beginnings. That works because an odd factor has an inverse modulo 2^64.
constexpr quint64 factor = 0x9E3779B97F4A7C15;

constexpr quint64 Inverse(quint64 odd)
{
    quint64 inverse = odd;
    for (int i = 0; i < 5; ++i) // Newton's steps: each doubles the number of correct bits, from three on
        inverse *= 2 - odd * inverse;
    return inverse;
}
constexpr quint64 inverseFactor = Inverse(factor);
static_assert(factor * inverseFactor == 1);

quint64 Append(quint64 hash, QChar c) { return (hash + c.unicode() + 1) * factor; }
quint64 Drop(quint64 hash, QChar c) { return hash * inverseFactor - c.unicode() - 1; }

quint64 HashOf(QStringView text)
{
    quint64 hash = 0;
    for (const QChar c : text)
        hash = Append(hash, c);
    return hash;
}

size_t FirstSlot(quint64 hash) { return size_t(hash >> (64 - slotBits)); }
quint32 TagOf(quint64 hash) { return quint32(hash >> 16); }

QStringView WithoutOuterBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

} // namespace

DxccTable::LineUse DxccTable::AddLine(QStringView line)
{
    const QStringView row = WithoutOuterBlanks(line);
    const qsizetype separator = row.indexOf(u';');
    if (separator < 0 && !row.isEmpty())
        return LineUse::NoSeparator;
    if (rowCount_ == maxRows)
        return LineUse::NoRoom;
    ++rowCount_;
    if (ended_ || rowCount_ > searchedRows)
        return LineUse::NeverSearched;
    if (row.isEmpty())
        ended_ = true;
    else
        Insert(row.first(separator), row.sliced(row.lastIndexOf(u';') + 1).left(100));
    return LineUse::Searched;
}

void DxccTable::Insert(QStringView prefix, QStringView country)
{
    if (slots_.empty())
        slots_.resize(slotCount);
    const quint64 hash = HashOf(prefix);
    if (prefix.isEmpty() || FindPrefix(hash, prefix))
        return;
    size_t slot = FirstSlot(hash);
    while (slots_[slot].row != 0)
        slot = (slot + 1) % slotCount;
    rows_.push_back({prefix.toString(), country.toString()});
    slots_[slot] = {TagOf(hash), quint32(rows_.size())};
    longestPrefix_ = std::max(longestPrefix_, prefix.size());
}

const DxccTable::Row *DxccTable::FindPrefix(quint64 hash, QStringView prefix) const
{
    for (size_t slot = FirstSlot(hash); slots_[slot].row != 0; slot = (slot + 1) % slotCount) {
        const Slot &found = slots_[slot];
        if (found.tag == TagOf(hash) && rows_[found.row - 1].prefix == prefix)
            return &rows_[found.row - 1];
    }
    return nullptr;
}

const DxccTable::Row *DxccTable::FindLongestPrefix(QStringView call) const
{
    // No row can match more than the longest prefix, so a long text costs no more than a call.
    QStringView prefix = call.left(longestPrefix_);
    quint64 hash = HashOf(prefix);
    for (; !prefix.isEmpty(); prefix.chop(1)) {
        if (const Row *row = FindPrefix(hash, prefix))
            return row;
        hash = Drop(hash, prefix.back());
    }
    return nullptr;
}

// The table lists Argentina as one country; the operator sees the province instead.
QString DxccTable::ShownCountry(const Row *row, QStringView call)
{
    if (!row)
        return {};
    if (row->country != u"Argentina")
        return row->country;
    const qsizetype slash = call.indexOf(u'/');
    return ProvinceOfSuffix(slash < 0 ? call.mid(3, 10) : call.mid(slash + 1, 5));
}

QString DxccTable::CountryOfCall(QString &call) const
{
    const Row *row = FindLongestPrefix(call);
    const QString country = ShownCountry(row, call);
    call.truncate(row ? row->prefix.size() : 1);
    return country;
}

QString DxccTable::CountryOf(QStringView call) const { return ShownCountry(FindLongestPrefix(call), call); }

QString DxccTable::CountryLabel(QStringView call) const
{
    const QString country = CountryOf(call);
    return country.isEmpty() ? u"Argentina"_qs : country;
}
