// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Logbook.h"
#include "core/Scheduler.h"
#include "keyer/CqCaller.h"
#include "keyer/KeyerPacer.h"
#include "keyer/SerialLines.h"
#include "ui/Program.h"
#include "ui/RealDialogs.h"
#include "ui/RealPlayer.h"
#include "ui/Windows.h"

#include <QCoreApplication>

// The whole program over a folder, wired as main.cpp does it, for measures that need real windows.
struct BenchProgram {
    explicit BenchProgram(const QString &folder)
        : logbook(folder, files, clock)
    {
        windows.SetProgram(program);
    }

    FileSystem files;
    SystemClock clock;
    EventLoopScheduler scheduler;
    RealDialogs dialogs;
    Logbook logbook;
    SystemModemPorts ports;
    SerialLines lines{logbook, ports};
    RealPlayer player;
    CqCaller caller{logbook, lines, player, scheduler};
    Windows windows;
    Program program{logbook, scheduler, dialogs, windows, lines, MakeThreadPacer, caller,
        [] { QCoreApplication::processEvents(); }, [](int exitCode) { QCoreApplication::exit(exitCode); },
        [](const char *) {}, {}, {}, false, false};
};
