// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/MasterCheck.h"
#include "core/Logbook.h"
#include "core/Scheduler.h"
#include "logging/DxccTable.h"
#include "ui/Launcher.h"

#include <functional>
#include <memory>

class CqCaller;
class Dialogs;
class KeyerPacer;
class SerialLines;
class Windows;

// What every window is given: the logbook, and the ways to the operator and to time.
struct Program {
    Logbook &logbook;
    Scheduler &scheduler;
    Dialogs &dialogs;
    Windows &windows;
    SerialLines &lines;
    std::function<std::unique_ptr<KeyerPacer>()> makePacer; // who keys the transmitter in time
    CqCaller &caller;
    std::function<void()> processEvents; // one round of the event loop
    std::function<void(int exitCode)> end; // leaves the event loop; nothing is saved on the way
    std::function<void(const char *name)> mark; // for the measures of script/bench

    DxccTable dxcc;
    MasterCheck master;
    bool LoadingMainWindow = false;
    bool FirstRun = false;
    QString manualFolder = {}; // README.md, the chapters and their pictures
    std::shared_ptr<Launcher> launcher = std::make_shared<Launcher>();
};
