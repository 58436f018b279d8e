// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/MasterCheck.h"

#include "core/Conversions.h"
#include "core/Wildcard.h"

#include <QSet>
#include <algorithm>

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

// Agrees with what was typed from the fourth character on; "?" agrees with any.
bool AgreesBehindThird(QStringView call, QStringView text)
{
    for (qsizetype i = 3; i < text.size(); ++i)
        if (call[i] != text[i] && text[i] != u'?')
            return false;
    return true;
}

} // namespace

MasterCheck::MasterCheck(QStringList calls, std::optional<QDate> date)
    : calls_(std::move(calls))
    , date_(date)
{
    entries_.reserve(static_cast<size_t>(calls_.size()));
    for (qsizetype i = 0; i < calls_.size(); ++i)
        if (const QString &call = calls_.at(i); call.size() >= shortestSearch)
            entries_.push_back(
                {KeyOf(call), static_cast<quint32>(i), static_cast<quint16>(std::min<qsizetype>(call.size(), 0xFFFF))});
    const auto pairOf = [this](const Entry &entry) { return PairOf(calls_.at(entry.call)); };
    std::stable_sort(
        entries_.begin(), entries_.end(), [&](const Entry &a, const Entry &b) { return pairOf(a) < pairOf(b); });
    for (quint32 i = 0; i < entries_.size(); ++i) {
        Range &range = ranges_[pairOf(entries_[i])];
        if (range.count++ == 0)
            range.first = i;
    }
}

QList<MasterHit> MasterCheck::Search(QStringView text) const
{
    if (text.size() < shortestSearch)
        return {};
    const QString typed = text.toString().toUpper();
    if (typed.contains(u'*') || QStringView(typed).first(2).contains(u'?'))
        return SearchAll(typed);
    return SearchRange(typed, ranges_.value(PairOf(typed)));
}

QList<MasterHit> MasterCheck::SearchRange(QStringView text, Range range) const
{
    const quint64 wanted = KeyOf(text);
    quint64 prefixMask = 0, nearMask = 0;
    for (qsizetype i = keyFirst; i < std::min(text.size(), keyEnd); ++i) {
        prefixMask |= KeyByte(i, 0xFF);
        if (i > keyFirst && text[i] != u'?')
            nearMask |= KeyByte(i, 0xFF);
    }
    QList<MasterHit> hits, near;
    for (quint32 i = range.first; i < range.first + range.count; ++i) {
        const Entry &entry = entries_[i];
        const quint64 difference = entry.key ^ wanted;
        if ((difference & nearMask) != 0 || entry.length < text.size())
            continue;
        const QString &call = calls_.at(entry.call);
        if ((difference & prefixMask) == 0 && call.startsWith(text))
            hits.append({call, true, {}});
        else if (near.size() < mostNearHits && AgreesBehindThird(call, text))
            AddNear(near, text, call);
    }
    return hits + near;
}

QList<MasterHit> MasterCheck::SearchAll(QStringView text) const
{
    const QString pattern = text.first(2) + u'?' + text.mid(3) + u'*';
    QList<MasterHit> hits, near;
    for (const QString &call : calls_) {
        if (call.startsWith(text))
            hits.append({call, true, {}});
        else if (near.size() < mostNearHits && Wildcard::Matches(pattern, call))
            AddNear(near, text, call);
    }
    return hits + near;
}

void MasterCheck::AddNear(QList<MasterHit> &near, QStringView text, const QString &call) const
{
    if (std::any_of(near.begin(), near.end(), [&](const MasterHit &hit) { return hit.call == call; }))
        return;
    MasterHit hit{call, false, {}};
    hit.different.reserve(call.size());
    for (qsizetype i = 0; i < call.size(); ++i)
        hit.different << (i >= text.size() || call[i] != text[i]);
    near << std::move(hit);
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
    const MasterCheck fresh = LoadMasterFile(files, newPath);
    const QSet<QString> known(calls.begin(), calls.end());
    QStringList merged = calls;
    for (const QString &call : fresh.Calls())
        if (!known.contains(call))
            merged << call;
    const Result<void> written = TextFile::WriteLines(files, outputPath, merged, FileSystem::Sync::No);
    if (!written)
        return written.failure();
    return MasterBuild{fresh.Calls().size(), calls.size(), merged.size() - calls.size(), merged.size()};
}

QStringList MasterBuildTexts(const MasterBuild &build)
{
    return {u"NUEVO "_qs + QString::number(build.fresh), u"ACTUAL "_qs + QString::number(build.current),
        u"AGREGA "_qs + QString::number(build.added), u"QUEDA "_qs + QString::number(build.total)};
}
