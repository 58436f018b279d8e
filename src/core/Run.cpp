// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Run.h"

#include <algorithm>

void Runs::CancelAll()
{
    for (Run *run : active_)
        run->Cancel();
}

Run::Run(Runs &runs, Pump pump, Progress progress, int pauseMilliseconds)
    : runs_(runs)
    , pump_(std::move(pump))
    , progress_(std::move(progress))
    , pauseMilliseconds_(pauseMilliseconds)
{
    runs_.active_.push_back(this);
    sinceEvents_.start();
}

Run::~Run() { std::erase(runs_.active_, this); }

bool Run::Step(qint64 done, qint64 total)
{
    if (sinceEvents_.elapsed() >= pauseMilliseconds_) {
        if (progress_)
            progress_(done, total);
        if (pump_)
            pump_();
        sinceEvents_.restart();
    }
    return !cancelled_;
}
