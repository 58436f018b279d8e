// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/CallInfo.h"

#include <algorithm>

namespace {

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }
bool IsLetter(QChar c) { return c >= u'A' && c <= u'Z'; }

} // namespace

bool IsCallsignShape(QStringView text)
{
    const auto digits = std::count_if(text.begin(), text.end(), IsDigit);
    return digits > 0 && digits < text.size();
}

bool LooksLikeCallsign(QStringView text)
{
    return std::any_of(text.begin(), text.end(), IsLetter) && std::any_of(text.begin(), text.end(), IsDigit);
}

QString DoubtfulCallMessage(QStringView call) { return call + u" NO Parece ser una Señal distintiva Válida!"; }

QString NotACallsignMessage(QStringView call) { return call + u" no es una señal distintiva!"; }
