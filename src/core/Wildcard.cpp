// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Wildcard.h"

namespace Wildcard {

QString Fold(QStringView text) { return text.toString().toCaseFolded(); }

bool Matches(QStringView pattern, QStringView text)
{
    // On a mismatch only the last "*" needs to give way, so this takes at most pattern times text steps.
    qsizetype p = 0, t = 0, star = -1, resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            resume = t;
        } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (star >= 0) {
            p = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

} // namespace Wildcard
