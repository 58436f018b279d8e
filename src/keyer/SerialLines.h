// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "keyer/ModemPort.h"

#include <QMutex>
#include <array>
#include <map>

class Logbook;

// The serial lines of the station. The keyer of the contest and the caller of the recorded CQ may name the same port:
// then one device is shared, each line belongs to who raised it last, and nobody lowers what the other one holds.
//
// All members may be called from any thread; a device that hangs holds up only who uses the same port.
class SerialLines {
public:
    enum class User { Keyer, Caller };

    SerialLines(const Logbook &logbook, ModemPorts &ports);
    // Lowers all lines and closes all ports.
    ~SerialLines();

    // Leaves the port the user had, then opens "COM1" to "COM20" with the user's lines low. A name that is no port
    // ("Ninguno") leaves the user without one and is no failure. The device is looked up anew each time, and one that
    // failed is opened anew for both users, so a port can be chosen again after its adapter was plugged in.
    Result<void> Open(User user, const QString &com);
    void Close(User user);
    bool IsOpen(User user) const;

    // Raises or lowers a line; lowering one that the other user holds does nothing. Without a port nothing happens,
    // which is no failure. False when the device is gone; both lines have been forced low then as far as can be.
    bool Set(User user, ModemLine line, bool on);

    // For a watchdog: lowers a line of the user's port, also while another thread hangs in Set().
    void ForceLow(User user, ModemLine line);

    // The end of all keying: every port is closed with its lines low, and none can be opened any more.
    void Silence();

private:
    struct Port {
        QString name; // the device itself, where it goes by several names
        std::unique_ptr<ModemPort> device;
        QMutex busy; // while the device works; for the two below
        std::map<ModemLine, User> raisedBy;
        bool dead = false;
    };
    using PortOf = std::shared_ptr<Port>;

    PortOf Held(User user) const;
    PortOf Shared(User user, const QString &device, bool &reopen);
    static bool Drive(Port &port, ModemLine line, bool on);

    const Logbook &logbook_;
    ModemPorts &source_;
    mutable QMutex mutex_; // for the two below; never held while a device works
    std::array<PortOf, 2> held_; // the port that each user has, null: none
    bool silenced_ = false;
};
