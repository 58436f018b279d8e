// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "keyer/CwKeyer.h"

// What a trial of the keyer says to the operator, in Spanish.
struct KeyerReport {
    QString figures; // elements, mean and largest error in milliseconds
    QString advice; // how good that is, and what can be done where it is not
};

// `latencyHint`: what is known of a slow adapter, or empty. An error that nobody can hear (2 ms at most, half a
// millisecond on the average) is good, whatever else is known.
KeyerReport ReportTiming(const CwKeyer::Timing &timing, bool realTime, const QString &latencyHint);
