// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/KeyerPacer.h"

#include "keyer/PlatformLine.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

// An idle processor takes up to this long to wake; the rest is spent looking at the clock, which also has the processor
// at its pace when the moment comes. At 40 words a minute that is one part in a hundred of it.
constexpr qint64 wakeUp = 250;

class ThreadPacer final : public KeyerPacer {
public:
    ~ThreadPacer() override { ThreadPacer::Stop(); }

    void Start(Service service) override
    {
        service_ = std::move(service);
        thread_ = std::thread([this] { Run(); });
    }
    void Stop() override
    {
        {
            const std::lock_guard lock(mutex_);
            quit_ = true;
        }
        wake_.notify_one();
        if (thread_.joinable())
            thread_.join();
    }
    void Wake() override
    {
        {
            const std::lock_guard lock(mutex_);
            woken_ = true;
        }
        wake_.notify_one();
    }
    qint64 Now() const override
    {
        return std::chrono::duration_cast<std::chrono::microseconds>(Clock::now().time_since_epoch()).count();
    }
    bool IsRealTime() const override { return realTime_; }

private:
    void Run()
    {
        realTime_ = PlatformLine::RaiseThread();
        std::unique_lock lock(mutex_);
        while (!quit_) {
            woken_ = false;
            lock.unlock();
            const std::optional<qint64> next = service_(Now());
            lock.lock();
            Wait(lock, next);
        }
    }
    void Wait(std::unique_lock<std::mutex> &lock, std::optional<qint64> until)
    {
        const auto disturbed = [this] { return quit_ || woken_; };
        if (!until) {
            wake_.wait(lock, disturbed);
            return;
        }
        const Clock::time_point asleep{std::chrono::microseconds(*until - wakeUp)};
        if (wake_.wait_until(lock, asleep, disturbed))
            return;
        lock.unlock();
        while (Now() < *until)
            ;
        lock.lock();
    }

    Service service_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool quit_ = false;
    bool woken_ = false;
    std::atomic<bool> realTime_{false};
    std::thread thread_;
};

} // namespace

std::unique_ptr<KeyerPacer> MakeThreadPacer() { return std::make_unique<ThreadPacer>(); }
