// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "keyer/ModemPort.h"

#include <QMutex>
#include <array>
#include <map>

class Logbook;

// The serial lines of the station. The keyer of the contest and the caller of the recorded CQ may name the same port:
// then one device is shared, each line belongs to who raised it last, and one user's leaving does not touch what the
// other one holds.
//
// All members may be called from any thread. Opening can take as long as the device does.
class SerialLines {
public:
    enum class User { Keyer, Caller };

    SerialLines(const Logbook &logbook, ModemPorts &ports);
    // Lowers all lines and closes all ports.
    ~SerialLines();

    // Leaves the port the user had, then opens "COM1" to "COM20" with the user's lines low. A name that is no port
    // ("Ninguno") leaves the user without one and is no failure. The device is looked up anew each time, so a port can
    // be chosen again after its adapter was plugged in.
    Result<void> Open(User user, const QString &com);
    void Close(User user);
    bool IsOpen(User user) const;

    // Raises or lowers a line. Without a port nothing happens, which is no failure; false when the device is gone.
    bool Set(User user, ModemLine line, bool on);

    // For a watchdog: lowers both lines of the user's port, also while another thread hangs in Set().
    void ForceLow(User user);

private:
    struct Port {
        std::shared_ptr<ModemPort> device;
        std::map<ModemLine, User> raisedBy;
    };
    using Held = std::array<QString, 2>; // the device that each user has, empty: none

    void Leave(User user);
    QString &DeviceOf(User user) { return devices_[size_t(user)]; }

    const Logbook &logbook_;
    ModemPorts &source_;
    mutable QMutex mutex_; // for all below
    mutable QMutex handles_; // only for the shared pointers, never held while a device works
    Held devices_;
    std::map<QString, Port> ports_;
};
