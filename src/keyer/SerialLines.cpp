// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/SerialLines.h"

#include "keyer/PortDevice.h"

#include <QFileInfo>
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

// The port of the other user when it is the same device. One that failed is closed here, since no device can be opened
// while it is held; `reopen` tells that the other user waits for it too.
SerialLines::PortOf SerialLines::Shared(User user, const QString &device, bool &reopen)
{
    PortOf port = Held(OtherOf(user));
    if (!port || port->name != device)
        return nullptr;
    {
        const QMutexLocker busy(&port->busy);
        reopen = port->dead;
    }
    if (!reopen)
        return port;
    const QMutexLocker lock(&mutex_);
    held_[size_t(OtherOf(user))].reset();
    return nullptr;
}

Result<void> SerialLines::Open(User user, const QString &com)
{
    Close(user);
    const QString path = PortDevice(logbook_, com);
    if (path.isEmpty())
        return {};
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QString device = canonical.isEmpty() ? path : canonical;
    bool reopen = false;
    PortOf port = Shared(user, device, reopen);
    if (!port) {
        auto opened = source_.Open(path);
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
    if (reopen)
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
            port->raisedBy.erase(raised);
            Drive(*port, line, false);
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
    return Drive(*port, line, on);
}

bool SerialLines::Drive(Port &port, ModemLine line, bool on)
{
    if (port.device->Set(line, on))
        return true;
    port.dead = true;
    port.raisedBy.clear();
    for (const ModemLine each : {ModemLine::RTS, ModemLine::DTR})
        port.device->ForceLow(each);
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
