// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/PlatformLine.h"

#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <pthread.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <termios.h>
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif
#endif

namespace PlatformLine {

#ifdef Q_OS_WIN

// The driver drops the lines by itself when a handle goes.
void HangUpOnClose(Handle) { }

void Lower(Handle handle, bool rts, bool dtr)
{
    if (rts)
        EscapeCommFunction(handle, CLRRTS);
    if (dtr)
        EscapeCommFunction(handle, CLRDTR);
}

QString PermissionHint() { return {}; }

QString LatencyHint(const QString &) { return {}; }

bool RaiseThread() { return SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_TIME_CRITICAL) != 0; }

#else

void HangUpOnClose(Handle handle)
{
    termios settings{};
    if (tcgetattr(handle, &settings) != 0)
        return;
    settings.c_cflag |= HUPCL;
    tcsetattr(handle, TCSANOW, &settings);
}

void Lower(Handle handle, bool rts, bool dtr)
{
    int lines = (rts ? TIOCM_RTS : 0) | (dtr ? TIOCM_DTR : 0);
    ioctl(handle, TIOCMBIC, &lines);
}

QString PermissionHint()
{
    return u"Agregue su usuario al grupo dialout (sudo adduser usuario dialout), cierre la sesión y vuelva a entrar."_qs;
}

QString LatencyHint(const QString &device)
{
    const QString name = QFileInfo(QFileInfo(device).canonicalFilePath()).fileName();
    QFile file(u"/sys/bus/usb-serial/devices/"_qs + name + u"/latency_timer");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const int milliseconds = file.readAll().trimmed().toInt();
    if (milliseconds <= 1)
        return {};
    return u"El adaptador USB espera %1 ms antes de responder; con 1 ms manipula mejor (%2)."_qs.arg(
        QString::number(milliseconds), file.fileName());
}

bool RaiseThread()
{
#ifdef Q_OS_LINUX
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
#endif
    sched_param rank{};
    rank.sched_priority = sched_get_priority_max(SCHED_FIFO) / 2;
    return pthread_setschedparam(pthread_self(), SCHED_FIFO, &rank) == 0;
}

#endif

} // namespace PlatformLine
