// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>

// The outside world's time, handed in so that tests can set it.
class Clock {
public:
    virtual ~Clock() = default;
    // The present local date and time.
    virtual QDateTime Now() const = 0;
};

class SystemClock final : public Clock {
public:
    QDateTime Now() const override { return QDateTime::currentDateTime(); }
};
