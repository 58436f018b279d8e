// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QString>
#include <QStringList>

class Logbook;

// The keyer's port and line, kept in varCW.cfg.
struct CwSettings {
    QString port = u"COM1"_qs; // "Ninguno" or "COM1" to "COM20"
    bool dtr = true; // else RTS

    bool operator==(const CwSettings &) const = default;
};

// "Ninguno", "COM1" to "COM20": the list of the window.
const QStringList &KeyerPorts();

// A missing file gives the values above; a port that is none leaves COM1, a second line that is not 1 says RTS.
CwSettings ReadCwSettings(const Logbook &logbook);
Result<void> SaveKeyerSettings(Logbook &logbook, const CwSettings &settings);

// The speed bar, in words a minute.
namespace CwSpeed {
inline constexpr int slowest = 10;
inline constexpr int fastest = 40;
inline constexpr int start = 20;
// "Vel 20 ppm".
QString Text(int speed);
// "Vel=24 ppm": the speed that a mark in the text has set.
QString MarkText(int speed);
} // namespace CwSpeed
