// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/SiteCalls.h"

#include "core/Conversions.h"
#include "core/Logbook.h"

#include <algorithm>
#include <array>

namespace SiteCalls {

namespace {

// A page that the site sends in the place of the file is no version, whatever numbers it holds.
constexpr qsizetype longestVersion = 40;

std::optional<std::array<int, 3>> Numbers(const QString &version)
{
    const bool clean = std::all_of(version.begin(), version.end(),
        [](QChar c) { return c.isPrint() && c != u'<' && c != QChar::ReplacementCharacter; });
    const qsizetype first = version.indexOf(u'.'), second = version.indexOf(u'.', first + 1);
    if (!clean || version.size() > longestVersion || first < 0 || second < 0)
        return std::nullopt;
    const auto number = [&](qsizetype from) { return Conversions::LeadingInteger(QStringView(version).mid(from)); };
    const auto whole = [](QStringView text) { return int(std::clamp(Conversions::LeadingNumber(text), 0.0, 1e6)); };
    return std::array{whole(QStringView(version).left(first)),
        whole(QStringView(version).mid(first + 1, second - first - 1)), number(second + 1)};
}

} // namespace

QString VersionAddress(const QString &base) { return base + u"/assets/compact/version.dat"; }

QString TransportError(const WebReply &reply)
{
    constexpr int timeOut = 4; // as the network numbers it
    const bool late = reply.outcome == WebReply::Outcome::TimedOut;
    const int number = late ? timeOut : reply.errorNumber;
    return (late ? u"El sitio no respondió a tiempo."_qs : reply.trouble)
        + (number != 0 ? u"\nError "_qs + QString::number(number) : QString());
}

std::optional<VersionVerdict> CompareVersion(const QString &own, const QString &published)
{
    qsizetype end = 0;
    while (end < published.size() && published[end] != u'\n' && published[end] != u'\r')
        ++end;
    const QString line = published.left(end).trimmed();
    const auto ours = Numbers(own), theirs = Numbers(line);
    if (!ours || !theirs)
        return std::nullopt;
    VersionVerdict verdict;
    for (size_t i = 0; i < ours->size(); ++i)
        verdict.outdated = verdict.outdated || (*ours)[i] < (*theirs)[i];
    verdict.message = u"Su versión: "_qs + own + u"\nen la Web: " + line + u"\n\n"
        + (verdict.outdated ? u"debe actualizar!"_qs : u"está actualizado"_qs);
    return verdict;
}

QString PresenceAddress(const QString &base, const QString &station, Presence presence)
{
    return base + u"/tordillo.php?qrz=" + station + u"&prog=Tordillo Compact 2&ver=" + Logbook::AppVersion
        + (presence == Presence::On ? u"&comando=on"_qs : u"&comando=off"_qs);
}

QString MasterListAddress(const QString &base) { return base + u"/assets/compact/master.txt"; }

} // namespace SiteCalls
