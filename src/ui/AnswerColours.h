// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

// The colours of what services answer: as they have always been on a light ground, lighter ones on the dark one.
namespace AnswerColours {
QColor Good(); // green
QColor Bad(); // red
QColor Own(); // blue: what the program says itself
} // namespace AnswerColours
