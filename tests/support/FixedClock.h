// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Clock.h"

// A clock that shows what the test sets.
class FixedClock final : public Clock {
public:
    explicit FixedClock(QDateTime start = QDateTime(QDate(2026, 11, 24), QTime(21, 15)))
        : now(std::move(start))
    {
    }
    QDateTime Now() const override { return now; }

    QDateTime now;
};
