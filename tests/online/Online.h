// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/LocalServer.h"
#include "support/ManualScheduler.h"

#include <QTest>

// A service and the time, both in the test's hand. The network runs by itself, the told seconds only when it is moved.
struct Online {
    LocalServer server;
    ManualScheduler scheduler;

    // Lets the network run, and so much time pass at each look, until `condition` holds. False after ten real seconds.
    bool Until(const std::function<bool()> &condition, int milliseconds = 0)
    {
        return QTest::qWaitFor(
            [&] {
                scheduler.Advance(milliseconds);
                return condition();
            },
            10000);
    }
};
