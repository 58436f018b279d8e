// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "keyer/KeyerPacer.h"

#include <algorithm>

// A pacer whose time the test moves by hand; what is due at a moment is done at that very moment.
class ManualPacer final : public KeyerPacer {
public:
    // Lives on its own, so that a test can hold it while the keyer owns the pacer.
    struct Time {
        qint64 now = 1'000'000; // microseconds
        Service service;
        std::optional<qint64> next;

        void Serve(qint64 at)
        {
            now = std::max(now, at);
            if (service)
                next = service(now);
        }
        void Advance(double milliseconds)
        {
            const qint64 end = now + qint64(milliseconds * 1000);
            while (next && *next <= end)
                Serve(*next);
            now = end;
        }
    };

    explicit ManualPacer(std::shared_ptr<Time> time)
        : time_(std::move(time))
    {
    }
    ~ManualPacer() override { ManualPacer::Stop(); }

    void Stop() override
    {
        time_->service = {};
        time_->next.reset();
    }

    void Start(Service service) override
    {
        time_->service = std::move(service);
        time_->Serve(time_->now);
    }
    void Wake() override { time_->Serve(time_->now); }
    qint64 Now() const override { return time_->now; }
    bool IsRealTime() const override { return true; }

private:
    std::shared_ptr<Time> time_;
};
