// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QString>
#include <memory>

// The two control lines of a serial port that can close a key or a push-to-talk. No data is ever sent.
enum class ModemLine { RTS, DTR };

// One open port. Destroying it lowers both lines and closes the device; when the process dies without that, the system
// lowers them (hang-up on close is set).
class ModemPort {
public:
    virtual ~ModemPort() = default;

    // False when the device does not take the order any more, an adapter that was pulled out for example.
    virtual bool Set(ModemLine line, bool on) = 0;

    // Lowers a line from any thread, also while Set() hangs in another one. Errors are ignored.
    virtual void ForceLow(ModemLine line) = 0;
};

// Where ports come from: the system's, or the test's.
class ModemPorts {
public:
    virtual ~ModemPorts() = default;

    // Opens a device by its path (by its name on Windows), with both lines low. The failure is a sentence that names
    // the device and what to do: it is not there, it may not be used by this account, another program holds it.
    virtual Result<std::unique_ptr<ModemPort>> Open(const QString &device) = 0;
};

// The real ones, through Qt's serial port class.
class SystemModemPorts final : public ModemPorts {
public:
    Result<std::unique_ptr<ModemPort>> Open(const QString &device) override;
};
