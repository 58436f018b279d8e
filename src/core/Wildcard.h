// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Patterns as the operator writes them: "*" stands for any run of characters, the empty one included, "?" for one.
namespace Wildcard {

// Case folded, for accented letters and "Ñ" as well; two texts that differ only in case fold to the same.
QString Fold(QStringView text);

// Both already folded.
bool Matches(QStringView pattern, QStringView text);

} // namespace Wildcard
