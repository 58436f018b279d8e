// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class Logbook;

// The services of the web that the program talks to, by what they are asked for.
enum class Service {
    Lda, // the fixed LdA server: account test, member query, confirmations
    LdaSecure1, // the two that take the uploads of the search window
    LdaSecure2,
    LdaDefault, // what LDAQ_web= becomes where the configuration says nothing
    Qrz,
    QrzPlain, // the same without encryption
    HamQth,
    Eqsl,
    Web, // the program's own site
    Passes, // satellite passes
    LdaSite, // the page of LdA that an operator looks at
};

// The base address of a service, without a slash at its end: the line of servicios.ini in the program folder, or the
// built-in one. Services whose address is not public have one under the reserved name "example" built in, which leads
// nowhere. The file is read at each call, so that a change in it holds at once.
QString ServiceAddress(const Logbook &logbook, Service service);
