// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// What can be told of a callsign from its letters and digits alone. The country is DxccTable's business, the Argentine
// province that of Provinces.

// The loose test of the station's and the operator's own call: at least one digit "0" to "9" and at least one other
// character, whatever it is. "LU1" and "/1" pass, "LU", "123" and the empty text fail.
bool IsCallsignShape(QStringView text);

// The test of a correspondent's call: at least one letter "A" to "Z" and at least one digit. Anything else, "/", "?"
// and small letters, counts for neither. The fields do not ask it about an empty text, which fails.
bool LooksLikeCallsign(QStringView text);

// What the operator reads when the strict or the loose test fails: the text as it stands in the field, then why.
QString DoubtfulCallMessage(QStringView call);
QString NotACallsignMessage(QStringView call);
