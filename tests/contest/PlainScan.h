// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/MasterCheck.h"
#include "core/Wildcard.h"

// The search by its definition: two passes through the whole list. Texts and calls in upper case.
inline QList<MasterHit> PlainScan(const QStringList &calls, const QString &text)
{
    QList<MasterHit> hits;
    QStringList shown;
    for (const QString &call : calls)
        if (call.left(text.size()) == text) {
            hits.append({call, true, {}});
            shown << call;
        }
    const QString pattern = text.left(2) + u'?' + text.mid(3) + u'*';
    int near = 0;
    for (const QString &call : calls) {
        if (!Wildcard::Matches(Wildcard::Fold(pattern), Wildcard::Fold(call)) || shown.contains(call))
            continue;
        MasterHit hit{call, false, {}};
        for (qsizetype i = 0; i < call.size(); ++i)
            hit.different << (call.mid(i, 1) != text.mid(i, 1));
        hits << hit;
        shown << call;
        if (++near > 15)
            break;
    }
    return hits;
}
