// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Scheduler.h"

#include <QObject>
#include <QTimer>

namespace {

class EventLoopTimer final : public Scheduler::Timer {
public:
    EventLoopTimer(int milliseconds, std::function<void()> callback)
    {
        timer_.setInterval(milliseconds);
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(callback));
    }
    void Start() override { timer_.start(); }
    void Stop() override { timer_.stop(); }
    bool IsRunning() const override { return timer_.isActive(); }

private:
    QTimer timer_;
};

} // namespace

// What is still waiting when the scheduler goes is dropped with this object.
struct EventLoopScheduler::Context {
    QObject object;
};

EventLoopScheduler::EventLoopScheduler()
    : context_(std::make_unique<Context>())
{
}

EventLoopScheduler::~EventLoopScheduler() = default;

std::unique_ptr<Scheduler::Timer> EventLoopScheduler::Make(int milliseconds, std::function<void()> callback)
{
    return std::make_unique<EventLoopTimer>(milliseconds, std::move(callback));
}

void EventLoopScheduler::WhenIdle(std::function<void()> callback)
{
    QTimer::singleShot(0, &context_->object, std::move(callback));
}
