// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "keyer/ModemPort.h"

#include <QHash>
#include <QMutex>
#include <QStringList>
#include <functional>

// Serial ports that only write down what they are told: "open /dev/ttyS0", "/dev/ttyS0 DTR 1", "close /dev/ttyS0", each
// with "<milliseconds> " in front when there is a clock. Any thread may use them.
class RecordingPorts final : public ModemPorts {
public:
    std::function<double()> clock;
    QHash<QString, Failure> refused; // by device
    QStringList gone; // devices that do not take orders any more
    bool deafToOff = false; // lines can be raised and not lowered

    // What was recorded since the last call.
    QStringList Taken()
    {
        const QMutexLocker lock(&mutex_);
        return std::exchange(record_, {});
    }

    Result<std::unique_ptr<ModemPort>> Open(const QString &device) override
    {
        if (refused.contains(device))
            return refused.value(device);
        if (held_.contains(device))
            return Failure{device + u" está en uso", Failure::Kind::Locked};
        held_ << device;
        Write(u"open "_qs + device);
        return std::unique_ptr<ModemPort>(std::make_unique<Port>(*this, device));
    }

private:
    class Port final : public ModemPort {
    public:
        Port(RecordingPorts &owner, QString device)
            : owner_(owner)
            , device_(std::move(device))
        {
        }
        ~Port() override
        {
            owner_.held_.removeOne(device_);
            owner_.Write(u"close "_qs + device_);
        }
        bool Set(ModemLine line, bool on) override
        {
            if (owner_.gone.contains(device_) || (!on && owner_.deafToOff))
                return false;
            owner_.Write(device_ + (line == ModemLine::RTS ? u" RTS "_qs : u" DTR "_qs) + (on ? u'1' : u'0'));
            return true;
        }
        void ForceLow(ModemLine line) override
        {
            owner_.Write(device_ + (line == ModemLine::RTS ? u" RTS low" : u" DTR low"));
        }

    private:
        RecordingPorts &owner_;
        QString device_;
    };

    void Write(const QString &what)
    {
        const QMutexLocker lock(&mutex_);
        record_ << (clock ? QString::number(clock()) + u' ' + what : what);
    }

    QMutex mutex_;
    QStringList record_, held_;
};
