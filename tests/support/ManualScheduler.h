// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Scheduler.h"

#include <algorithm>
#include <deque>
#include <vector>

// A scheduler whose time the test moves by hand. Timers may outlive it; callbacks may start, stop, make and destroy
// timers, their own included.
class ManualScheduler final : public Scheduler {
public:
    std::unique_ptr<Timer> Make(int milliseconds, std::function<void()> callback) override
    {
        return std::make_unique<ManualTimer>(state_, milliseconds, std::move(callback));
    }
    void WhenIdle(std::function<void()> callback) override { state_->idle.push_back(std::move(callback)); }

    // Lets the time pass: what waits for the idle loop first, then every tick in the order of its time, ticks of the
    // same moment in the order in which their timers were started. A timer of interval 0 ticks once a millisecond.
    void Advance(int milliseconds)
    {
        const qint64 end = state_->now + milliseconds;
        RunIdle();
        while (ManualTimer *next = state_->Next(end)) {
            state_->now = next->due;
            next->Tick();
            RunIdle();
        }
        state_->now = end;
    }
    // Only what waits for the idle loop, what it adds included.
    void RunIdle()
    {
        while (!state_->idle.empty()) {
            const auto callback = std::move(state_->idle.front());
            state_->idle.pop_front();
            callback();
        }
    }
    // Milliseconds since the scheduler was made.
    qint64 Now() const { return state_->now; }
    int RunningTimers() const { return static_cast<int>(state_->running.size()); }

private:
    class ManualTimer;
    struct State {
        qint64 now = 0;
        std::vector<ManualTimer *> running; // in the order of their starts
        std::deque<std::function<void()>> idle;

        ManualTimer *Next(qint64 end) const
        {
            const auto next = std::min_element(running.begin(), running.end(),
                [](const ManualTimer *a, const ManualTimer *b) { return a->due < b->due; });
            return next == running.end() || (*next)->due > end ? nullptr : *next;
        }
    };

    class ManualTimer final : public Timer {
    public:
        ManualTimer(std::shared_ptr<State> state, int milliseconds, std::function<void()> callback)
            : state_(std::move(state))
            , interval_(std::max(1, milliseconds))
            , callback_(std::move(callback))
        {
        }
        ~ManualTimer() override { Stop(); }

        void Start() override
        {
            Stop();
            due = state_->now + interval_;
            state_->running.push_back(this);
        }
        void Stop() override { std::erase(state_->running, this); }
        bool IsRunning() const override
        {
            return std::find(state_->running.begin(), state_->running.end(), this) != state_->running.end();
        }
        void Tick()
        {
            due += interval_;
            const auto callback = callback_; // the timer may be destroyed by it
            callback();
        }

        qint64 due = 0;

    private:
        std::shared_ptr<State> state_;
        int interval_;
        std::function<void()> callback_;
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
};
