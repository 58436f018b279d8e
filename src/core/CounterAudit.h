// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"

#include <QStringList>
#include <optional>

// Counts every log again and compares with the counters, in steps of a few milliseconds, so that an operator who types
// meanwhile notices nothing. A contact stored during the audit can make it find a difference that is none; the recount
// that follows then changes nothing.
class CounterAudit {
public:
    explicit CounterAudit(LogStore &store)
        : store_(store)
    {
    }

    enum class Finding { Working, Right, Wrong };
    Result<Finding> Step();

private:
    struct Place {
        QString date, time;
        qint64 id = 0;
    };
    void ListLogs(Session &session);
    bool CountSlice(Session &session);
    qint64 Counter(Session &session) const;

    LogStore &store_;
    std::optional<QStringList> logs_; // still to be counted, the present one last
    std::optional<Place> last_; // of the present log
    qint64 counted_ = 0;
};
