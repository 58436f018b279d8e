// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/MasterCheck.h"

#include "core/Conversions.h"
#include "core/Wildcard.h"

#include <QSet>
#include <algorithm>
#include <iterator>

namespace {

constexpr qsizetype mostCalls = 1'000'000;
constexpr qsizetype keyFirst = 2, keyEnd = 10;

quint32 PairOf(QStringView text)
{
    return static_cast<quint32>(text[0].unicode()) << 16 | static_cast<quint32>(text[1].unicode());
}

// The byte of the key in which a place of the text stands.
quint64 KeyByte(qsizetype place, quint64 value) { return (value & 0xFF) << (8 * (place - keyFirst)); }

quint64 KeyOf(QStringView text)
{
    quint64 key = 0;
    for (qsizetype i = keyFirst; i < std::min(text.size(), keyEnd); ++i)
        key |= KeyByte(i, text[i].unicode());
    return key;
}

// Whether the key holds all that stands behind the first two characters.
bool IsExact(QStringView text)
{
    return text.size() <= keyEnd && std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xFF; });
}

// Agrees with what was typed from the fourth character on; "?" agrees with any.
bool AgreesBehindThird(QStringView call, QStringView text)
{
    for (qsizetype i = 3; i < text.size(); ++i)
        if (call[i] != text[i] && text[i] != u'?')
            return false;
    return true;
}

MasterHit NearHit(const QString &call, QStringView text)
{
    MasterHit hit{call, false, {}};
    hit.different.reserve(call.size());
    for (qsizetype i = 0; i < call.size(); ++i)
        hit.different << (i >= text.size() || call[i] != text[i]);
    return hit;
}

} // namespace

// What was typed, and where the keys must equal its own.
struct MasterCheck::Typed {
    QStringView text;
    quint64 key = 0, prefixMask = 0, nearMask = 0;
    bool exact; // a key that agrees says all, where the call's is exact too
    bool doubtful; // holds "?"

    explicit Typed(QStringView typed)
        : text(typed)
        , key(KeyOf(typed))
        , exact(IsExact(typed))
        , doubtful(typed.contains(u'?'))
    {
        for (qsizetype i = keyFirst; i < std::min(text.size(), keyEnd); ++i) {
            prefixMask |= KeyByte(i, 0xFF);
            if (i > keyFirst && text[i] != u'?')
                nearMask |= KeyByte(i, 0xFF);
        }
    }
};

MasterCheck::MasterCheck(QStringList calls, std::optional<QDate> date)
    : calls_(std::move(calls))
    , date_(date)
{
    std::vector<std::pair<quint64, quint32>> order; // first three characters, place in the list
    order.reserve(static_cast<size_t>(calls_.size()));
    for (qsizetype i = 0; i < calls_.size(); ++i)
        if (const QStringView call = calls_.at(i); call.size() >= shortestSearch)
            order.emplace_back(static_cast<quint64>(PairOf(call)) << 16 | call[2].unicode(), static_cast<quint32>(i));
    std::sort(order.begin(), order.end());
    // The texts are made anew in the order of the entries, so that those of one range lie close together in memory.
    entries_.reserve(order.size());
    texts_.reserve(order.size());
    for (quint32 i = 0; i < order.size(); ++i) {
        QString &call = calls_[order[i].second];
        call = QString(call.constData(), call.size());
        texts_.push_back(call);
        const auto length = static_cast<quint16>(std::min<qsizetype>(call.size(), 0xFFFF));
        entries_.push_back({KeyOf(call), order[i].second, length, IsExact(call)});
        QList<Range> &ranges = ranges_[PairOf(call)];
        if (ranges.isEmpty() || order[ranges.last().first].first != order[i].first)
            ranges.append({i, 0});
        ++ranges.last().count;
    }
}

QList<MasterHit> MasterCheck::Search(QStringView text) const
{
    if (text.size() < shortestSearch)
        return {};
    const QString upper = text.toString().toUpper();
    if (upper.contains(u'*') || QStringView(upper).first(2).contains(u'?'))
        return SearchAll(upper);
    const Typed typed(upper);
    const QList<Range> ranges = ranges_.value(PairOf(upper));
    QList<MasterHit> hits;
    for (const Range &range : ranges)
        if (texts_[range.first][2] == upper[2])
            AddPrefixHits(hits, typed, range);
    AddNearHits(hits, typed, ranges);
    return hits;
}

void MasterCheck::AddPrefixHits(QList<MasterHit> &hits, const Typed &typed, Range range) const
{
    if (typed.text.size() == shortestSearch)
        hits.reserve(range.count + mostNearHits);
    for (quint32 i = range.first; i < range.first + range.count; ++i)
        if (((entries_[i].key ^ typed.key) & typed.prefixMask) == 0 && texts_[i].startsWith(typed.text))
            hits.append({texts_[i], true, {}});
}

void MasterCheck::AddNearHits(QList<MasterHit> &hits, const Typed &typed, const QList<Range> &ranges) const
{
    // Of each range its first ones, and of these the first of all.
    std::vector<quint32> found;
    for (const Range &range : ranges)
        if (typed.doubtful || texts_[range.first][2] != typed.text[2])
            CollectNear(found, typed, range);
    std::sort(
        found.begin(), found.end(), [this](quint32 a, quint32 b) { return entries_[a].place < entries_[b].place; });
    if (found.size() > mostNearHits)
        found.resize(mostNearHits);
    for (const quint32 i : found)
        hits << NearHit(texts_[i], typed.text);
}

// Calls that begin as typed were shown already. One that is in the list twice is in one range twice.
void MasterCheck::CollectNear(std::vector<quint32> &found, const Typed &typed, Range range) const
{
    const size_t before = found.size();
    const auto isSame = [this](quint32 a, quint32 b) {
        return entries_[a].key == entries_[b].key && entries_[a].length == entries_[b].length && texts_[a] == texts_[b];
    };
    for (quint32 i = range.first; i < range.first + range.count && found.size() < before + mostNearHits; ++i) {
        const Entry &entry = entries_[i];
        if (((entry.key ^ typed.key) & typed.nearMask) != 0 || entry.length < typed.text.size())
            continue;
        if (!(typed.exact && entry.exact) && !AgreesBehindThird(texts_[i], typed.text))
            continue;
        if (typed.doubtful && texts_[i].startsWith(typed.text))
            continue;
        const auto own = found.begin() + static_cast<std::ptrdiff_t>(before);
        if (std::none_of(own, found.end(), [&](quint32 other) { return isSame(other, i); }))
            found.push_back(i);
    }
}

QList<MasterHit> MasterCheck::SearchAll(QStringView text) const
{
    const QString pattern = text.first(2) + u'?' + text.mid(3) + u'*';
    QList<MasterHit> hits, near;
    for (const QString &call : calls_) {
        if (call.startsWith(text))
            hits.append({call, true, {}});
        else if (near.size() < mostNearHits && Wildcard::Matches(pattern, call)
            && std::none_of(near.begin(), near.end(), [&](const MasterHit &hit) { return hit.call == call; }))
            near << NearHit(call, text);
    }
    return hits + near;
}

MasterCheck LoadMasterFile(const FileSystem &files, const QString &path, const Reporter &report)
{
    const auto device = files.OpenForReading(path);
    if (!device)
        return {};
    QStringList calls;
    std::optional<QDate> date;
    LineReader reader(*device);
    const auto tell = [&](const QString &reason) {
        if (report)
            report(reader.LineNumber(), reason);
    };
    while (const auto line = reader.Next()) {
        if (reader.WasCut())
            tell(u"La línea es demasiado larga y se cortó."_qs);
        for (const QStringView piece : QStringView(*line).split(u'\n')) {
            const QStringView entry = piece.trimmed();
            if (entry.contains(u'#')) {
                const auto found = MasterDateOf(entry);
                if (found)
                    date = found;
                else
                    tell(u"La línea con # no tiene una fecha."_qs);
            } else if (!entry.isEmpty() && calls.size() < mostCalls) {
                calls << entry.toString().toUpper();
            }
        }
    }
    if (calls.size() == mostCalls)
        tell(u"La lista es demasiado larga: el resto no se leyó."_qs);
    return MasterCheck(std::move(calls), date);
}

std::optional<QDate> MasterDateOf(QStringView line)
{
    constexpr qsizetype longestDate = 11;
    const QString text = line.toString().remove(u'#').trimmed().left(longestDate);
    return Conversions::ParseDate(text);
}

QString MasterCheckCaption(qsizetype count) { return u"MasterCheck ("_qs + QString::number(count) + u')'; }

Result<MasterBuild> BuildMasterList(
    FileSystem &files, const QString &newPath, const QStringList &calls, const QString &outputPath)
{
    const QSet<QString> known(calls.begin(), calls.end());
    QStringList fresh, merged = calls;
    for (const QString &line : TextFile::ReadLines(files, newPath).value_or(QStringList()))
        for (const QString &entry : line.toUpper().split(u'\n'))
            if (const QString call = entry.trimmed(); !call.isEmpty())
                fresh << call;
    std::copy_if(fresh.begin(), fresh.end(), std::back_inserter(merged),
        [&known](const QString &call) { return !known.contains(call); });
    const Result<void> written = TextFile::WriteLines(files, outputPath, merged, FileSystem::Sync::No);
    if (!written)
        return written.failure();
    return MasterBuild{fresh.size(), calls.size(), merged.size() - calls.size(), merged.size()};
}

QStringList MasterBuildTexts(const MasterBuild &build)
{
    return {u"NUEVO "_qs + QString::number(build.fresh), u"ACTUAL "_qs + QString::number(build.current),
        u"AGREGA "_qs + QString::number(build.added), u"QUEDA "_qs + QString::number(build.total)};
}
