// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QUrl;

// Other programs of this machine, behind one small layer that tests record. Nothing here is waited for.
class Launcher {
public:
    virtual ~Launcher() = default;

    // Starts a program minimised, with its argument as it stands: on Windows blanks in it are not quoted, elsewhere it
    // is one argument. False when it cannot be started.
    virtual bool Start(const QString &program, const QString &argument);

    // Opens a file or an address with the program that the system has for it, maximised where that can be asked for.
    virtual bool Open(const QUrl &url);
};
