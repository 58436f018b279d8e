// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QString>
#include <array>

class Logbook;

// Up to three profile names, kept in Perfiles.cfg. Nothing uses them yet.
using ProfileNames = std::array<QString, 3>;

ProfileNames ReadProfiles(const Logbook &logbook);
// The names go out in upper case.
Result<void> SaveProfiles(Logbook &logbook, const ProfileNames &names);
