// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"

#include <QString>
#include <optional>

class Logbook;

// What the entry fields held at the last run, kept in small files beside the program. A file that is missing or
// damaged leaves its values empty, and with that the fields as they are.

// mem.ini: written at each QSO.
struct FieldMemory {
    bool present = false; // whether there is such a file at all
    std::optional<QString> mhz, khz; // both or neither: a first line without a point tells nothing
    std::optional<QString> band;
    std::optional<bool> qtrManual;
};
FieldMemory ReadFieldMemory(const Logbook &logbook);
Result<void> SaveFieldMemory(
    Logbook &logbook, const QString &mhz, const QString &khz, const QString &band, bool qtrManual);

// memModo.cfg, memMhz.cfg, memKhz.cfg, memqSat.cfg: written when the program ends.
struct ExitMemory {
    std::optional<QString> modo, mhz, khz;
    std::optional<bool> viaSatelite;
};
ExitMemory ReadExitMemory(const Logbook &logbook);
Result<void> SaveExitMemory(
    Logbook &logbook, const QString &modo, const QString &mhz, const QString &khz, bool viaSatelite);

// memsat.ini: the satellite last chosen; an empty name when there is none.
QString ReadSatelliteMemory(const Logbook &logbook);
Result<void> SaveSatelliteMemory(Logbook &logbook, const QString &name);
