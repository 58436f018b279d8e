// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <functional>
#include <vector>

// Lets the window system process its events once.
using Pump = std::function<void()>;

class Run;

// The long works under way, innermost last. Esc and closing windows reach them through here.
class Runs {
public:
    bool Any() const { return !active_.empty(); }
    // Asks every work under way to stop at its next step.
    void CancelAll();

private:
    friend class Run;
    std::vector<Run *> active_;
};

// One long work on the thread of the windows. It is made when the work begins, told of each step, and gone when the
// work has ended. No statement and no transaction may be open when Step is called, since anything can happen in it.
class Run {
public:
    // How far the work is; total 0 where that is not known beforehand.
    using Progress = std::function<void(qint64 done, qint64 total)>;

    // Pumping costs more than most steps, so it happens at most every `pauseMilliseconds`; 0 pumps at every step.
    Run(Runs &runs, Pump pump, Progress progress = {}, int pauseMilliseconds = 10);
    ~Run();
    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

    // Reports progress and lets events through when it is time. False once the work is to stop.
    bool Step(qint64 done, qint64 total = 0);

    // For work that waits for the outside world and takes no steps meanwhile: `stop` is called when the run is
    // cancelled. It may end the run.
    void WhenCancelled(std::function<void()> stop) { stop_ = std::move(stop); }
    void Cancel();
    bool Cancelled() const { return cancelled_; }

private:
    Runs &runs_;
    Pump pump_;
    Progress progress_;
    std::function<void()> stop_;
    int pauseMilliseconds_;
    QElapsedTimer sinceEvents_;
    bool cancelled_ = false;
};
