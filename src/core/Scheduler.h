// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

// Every timer of the program comes from here, so that tests can drive time by hand.
class Scheduler {
public:
    // One timer. It calls back again and again while it runs; destroying it stops it.
    class Timer {
    public:
        virtual ~Timer() = default;
        // Runs from now on; a running timer starts its interval anew.
        virtual void Start() = 0;
        virtual void Stop() = 0;
        virtual bool IsRunning() const = 0;
    };

    virtual ~Scheduler() = default;

    // A timer that stands still until it is started. The callback runs on the caller's thread, from its event loop.
    virtual std::unique_ptr<Timer> Make(int milliseconds, std::function<void()> callback) = 0;

    // Calls back once, as soon as the event loop is idle.
    virtual void WhenIdle(std::function<void()> callback) = 0;
};

// The real one, on the event loop of the thread it is used in.
class EventLoopScheduler final : public Scheduler {
public:
    EventLoopScheduler();
    ~EventLoopScheduler() override;
    std::unique_ptr<Timer> Make(int milliseconds, std::function<void()> callback) override;
    void WhenIdle(std::function<void()> callback) override;

private:
    struct Context;
    std::unique_ptr<Context> context_;
};
