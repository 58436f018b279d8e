// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// What Qt does not offer and each system does in its own way: the fate of the lines when the process dies, and the rank
// of the thread that keys.
namespace PlatformLine {

#ifdef Q_OS_WIN
using Handle = void *;
#else
using Handle = int;
#endif

// The system lowers both lines when the last handle goes, however the process ends.
void HangUpOnClose(Handle handle);

// Lines low, at once, without asking whether it worked.
void Lower(Handle handle, bool rts, bool dtr);

// What the operator can do to be allowed to use serial ports; a Spanish sentence, empty where there is nothing to say.
QString PermissionHint();

// What makes an adapter slow and can be set otherwise; empty where nothing is known.
QString LatencyHint(const QString &device);

// The calling thread gets the highest rank the system grants, and waits with the finest grain. True when it is a
// real-time rank.
bool RaiseThread();

} // namespace PlatformLine
