// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QString>
#include <array>

class Logbook;

// The seven messages of the contest window, kept in macros_concurso_3.cfg, and what their buttons say.
inline constexpr int macroCount = 7;
using MacroTexts = std::array<QString, macroCount>;

const MacroTexts &DefaultMacros();

// Merges the file into `macros`: a text whose key is absent stays. A missing file sets the defaults and is written;
// only that can fail, and the defaults are set all the same.
Result<void> LoadMacros(Logbook &logbook, MacroTexts &macros);

// Replaces the whole file.
Result<void> SaveMacros(Logbook &logbook, const MacroTexts &macros);

// The captions of the buttons, from F1 to F7. The fourth names the own call. The fifth names the call that is being
// typed where the serial to be sent is empty.
std::array<QString, macroCount> MacroCaptions(const QString &ownCall, const QString &call, const QString &rse);
