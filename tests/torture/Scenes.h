// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Logbook.h"
#include "support/FixedClock.h"

#include <memory>

// One kind of work that is tortured: steps 0, 1, 2, ... each of which the program does in one go. What the database
// holds after so many steps is told again in models.py, which compares it; numbers and texts must agree with it.
class Scene {
public:
    virtual ~Scene() = default;

    // What the steps need and is not there yet. Can be repeated after a failure.
    virtual Result<void> Prepare(Logbook &) { return {}; }
    // The same step can be repeated after a failure.
    virtual Result<void> Step(Logbook &logbook, int number) = 0;
};

// "store", "edit", "delete", "contest", "import", "transfer" or "copy"; nothing for other names. The clock is moved by
// the scenes whose files carry the time.
std::unique_ptr<Scene> MakeScene(const QString &name, FixedClock &clock);
