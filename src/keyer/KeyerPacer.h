// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <optional>

// Calls the keyer at the moments it asks for: a thread of the highest rank it can get, or the hand of a test.
// Times are microseconds of a monotonic clock.
class KeyerPacer {
public:
    // Does what is due at `now` and gives when it wants to be called next; nothing: only after Wake().
    using Service = std::function<std::optional<qint64>(qint64 now)>;

    virtual ~KeyerPacer() = default;

    // Once. The service is always called from the same place, one call at a time.
    virtual void Start(Service service) = 0;
    // No call of the service is under way or comes any more afterwards. Must be called before what it serves goes.
    virtual void Stop() = 0;
    // There is something to do before the time asked for. Any thread.
    virtual void Wake() = 0;
    virtual qint64 Now() const = 0;
    // Whether the system granted a real-time rank; known once the pacer has started.
    virtual bool IsRealTime() const = 0;
};

// The real one.
std::unique_ptr<KeyerPacer> MakeThreadPacer();
