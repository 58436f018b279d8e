// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/SerialLines.h"

#include "keyer/PortDevice.h"

#include <QMutexLocker>
#include <utility>

namespace {

SerialLines::User OtherOf(SerialLines::User user)
{
    return user == SerialLines::User::Keyer ? SerialLines::User::Caller : SerialLines::User::Keyer;
}

} // namespace

SerialLines::SerialLines(const Logbook &logbook, ModemPorts &ports)
    : logbook_(logbook)
    , source_(ports)
{
}

SerialLines::~SerialLines() { Silence(); }

SerialLines::PortOf SerialLines::Held(User user) const
{
    const QMutexLocker lock(&mutex_);
    return held_[size_t(user)];
}

Result<void> SerialLines::Open(User user, const QString &com)
{
    Close(user);
    const QString device = PortDevice(logbook_, com);
    if (device.isEmpty())
        return {};
    const PortOf others = Held(OtherOf(user));
    const bool same = others && others->name == device;
    PortOf port = same ? others : nullptr;
    if (port) {
        const QMutexLocker busy(&port->busy);
        if (port->dead)
            port.reset();
    }
    if (!port) {
        auto opened = source_.Open(device);
        if (!opened)
            return opened.failure();
        port = std::make_shared<Port>();
        port->name = device;
        port->device = *std::move(opened);
    }
    const QMutexLocker lock(&mutex_);
    if (silenced_)
        return {};
    held_[size_t(user)] = port;
    if (same)
        held_[size_t(OtherOf(user))] = port;
    return {};
}

void SerialLines::Close(User user)
{
    PortOf port;
    {
        const QMutexLocker lock(&mutex_);
        port = std::exchange(held_[size_t(user)], nullptr);
    }
    if (!port)
        return;
    const QMutexLocker busy(&port->busy);
    for (const ModemLine line : {ModemLine::RTS, ModemLine::DTR}) {
        const auto raised = port->raisedBy.find(line);
        if (raised != port->raisedBy.end() && raised->second == user) {
            port->device->Set(line, false);
            port->raisedBy.erase(raised);
        }
    }
}

bool SerialLines::IsOpen(User user) const { return Held(user) != nullptr; }

bool SerialLines::Set(User user, ModemLine line, bool on)
{
    const PortOf port = Held(user);
    if (!port)
        return true;
    const QMutexLocker busy(&port->busy);
    if (Held(user) != port) // closed while we waited
        return true;
    const auto raised = port->raisedBy.find(line);
    if (on)
        port->raisedBy[line] = user;
    else if (raised != port->raisedBy.end() && raised->second != user)
        return true;
    else
        port->raisedBy.erase(line);
    if (port->device->Set(line, on))
        return true;
    port->dead = true;
    port->raisedBy.clear();
    for (const ModemLine each : {ModemLine::RTS, ModemLine::DTR})
        port->device->ForceLow(each);
    return false;
}

void SerialLines::ForceLow(User user, ModemLine line)
{
    if (const PortOf port = Held(user))
        port->device->ForceLow(line);
}

void SerialLines::Silence()
{
    {
        const QMutexLocker lock(&mutex_);
        silenced_ = true;
    }
    Close(User::Keyer);
    Close(User::Caller);
}
