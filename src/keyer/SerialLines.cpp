// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/SerialLines.h"

#include "keyer/PortDevice.h"

#include <QMutexLocker>

SerialLines::SerialLines(const Logbook &logbook, ModemPorts &ports)
    : logbook_(logbook)
    , source_(ports)
{
}

SerialLines::~SerialLines()
{
    Close(User::Keyer);
    Close(User::Caller);
}

Result<void> SerialLines::Open(User user, const QString &com)
{
    const QString device = PortDevice(logbook_, com);
    const QMutexLocker lock(&mutex_);
    Leave(user);
    if (device.isEmpty())
        return {};
    if (ports_.find(device) == ports_.end()) {
        auto opened = source_.Open(device);
        if (!opened)
            return opened.failure();
        const QMutexLocker handles(&handles_);
        ports_[device].device = *std::move(opened);
    }
    const QMutexLocker handles(&handles_);
    DeviceOf(user) = device;
    return {};
}

void SerialLines::Close(User user)
{
    const QMutexLocker lock(&mutex_);
    Leave(user);
}

void SerialLines::Leave(User user)
{
    const QString device = DeviceOf(user);
    if (device.isEmpty())
        return;
    Port &port = ports_[device];
    for (const ModemLine line : {ModemLine::RTS, ModemLine::DTR}) {
        const auto raised = port.raisedBy.find(line);
        if (raised != port.raisedBy.end() && raised->second == user) {
            port.device->Set(line, false);
            port.raisedBy.erase(raised);
        }
    }
    std::shared_ptr<ModemPort> unused; // closed when handles_ is free again
    const QMutexLocker handles(&handles_);
    DeviceOf(user).clear();
    if (devices_[0] != device && devices_[1] != device) {
        unused = port.device;
        ports_.erase(device);
    }
}

bool SerialLines::IsOpen(User user) const
{
    const QMutexLocker lock(&mutex_);
    return !devices_[size_t(user)].isEmpty();
}

bool SerialLines::Set(User user, ModemLine line, bool on)
{
    const QMutexLocker lock(&mutex_);
    const QString device = DeviceOf(user);
    if (device.isEmpty())
        return true;
    Port &port = ports_[device];
    if (on)
        port.raisedBy[line] = user;
    else
        port.raisedBy.erase(line);
    return port.device->Set(line, on);
}

void SerialLines::ForceLow(User user)
{
    std::shared_ptr<ModemPort> device;
    {
        const QMutexLocker handles(&handles_);
        const auto port = ports_.find(DeviceOf(user));
        if (port != ports_.end())
            device = port->second.device;
    }
    if (device)
        device->ForceLow();
}
