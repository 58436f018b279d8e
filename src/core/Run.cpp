// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Run.h"

#include <algorithm>
#include <utility>

void Runs::CancelAll()
{
    const std::vector<Run *> asked = active_;
    for (Run *run : asked)
        if (std::find(active_.begin(), active_.end(), run) != active_.end()) // another may have ended with it
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

void Run::Cancel()
{
    if (cancelled_)
        return;
    cancelled_ = true;
    if (const auto stop = std::exchange(stop_, {}))
        stop();
}

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
