// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/LdaMember.h"

std::optional<LdaMember> ReadLdaMember(QStringView reply)
{
    constexpr QStringView nameMark = u"nomo:", dateMark = u"ultimar:";
    constexpr qsizetype longest = 2000;
    const qsizetype atName = reply.indexOf(nameMark);
    if (atName < 0)
        return std::nullopt;
    const QStringView behind = reply.mid(atName + nameMark.size(), longest);
    const qsizetype atDate = behind.indexOf(dateMark);
    if (atDate < 0)
        return std::nullopt;
    const auto clean = [](QStringView text) { return text.toString().simplified(); };
    return LdaMember{
        clean(reply.first(atName)), clean(behind.first(atDate)), clean(behind.sliced(atDate + dateMark.size()))};
}
