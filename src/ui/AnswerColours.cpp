// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/AnswerColours.h"

#include "ui/Theme.h"

namespace {

QColor ByTheme(QRgb onLight, QRgb onDark) { return QColor(CurrentTheme() == Theme::Dark ? onDark : onLight); }

} // namespace

QColor AnswerColours::Good() { return ByTheme(0x004000, 0xA0E0A0); }
QColor AnswerColours::Bad() { return ByTheme(0xFF0000, 0xFF9090); }
QColor AnswerColours::Own() { return ByTheme(0x0000C0, 0x90B8FF); }
