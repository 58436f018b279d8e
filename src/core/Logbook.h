// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Clock.h"
#include "core/Configuration.h"
#include "core/FileSystem.h"
#include "core/LogStore.h"
#include "core/Run.h"

#include <QString>

// What the whole program shares, handed by reference to whoever needs it. It holds and hands out, nothing more.
class Logbook {
public:
    // The version that the windows show and the services are told.
    static const QString AppVersion;

    // `folder` is the program folder, where all data lies. `files` and `clock` must outlive the logbook.
    Logbook(QString folder, FileSystem &files, const Clock &clock, QByteArray vfs = {});

    const QString &Folder() const { return folder_; }
    QString PathOf(const QString &name) const { return folder_ + u'/' + name; }
    FileSystem &Files() const { return files_; }
    const Clock &ClockInUse() const { return clock_; }
    LogStore &Store() { return store_; }
    Runs &LongWork() { return runs_; }

    Configuration configuration;
    // Name of the open log; empty until the configuration is read or the first one is saved.
    QString LogInUse;
    // What the main window shows of the configuration: it follows LoadConfig and SaveConfig, not every key stroke.
    struct Captions {
        QString station, operador, grid, log;
    } captions;

private:
    QString folder_;
    FileSystem &files_;
    const Clock &clock_;
    LogStore store_;
    Runs runs_;
};

// Whether config.ini is there; its absence is the first run.
bool HasConfig(const Logbook &logbook);

// Merges config.ini into the configuration and sets LogInUse and the captions. Gives whether the file told the theme.
// A missing or unreadable file changes nothing but what an empty one would.
bool LoadConfig(Logbook &logbook);

// Writes config.ini and sets the captions. Without an open log it first opens "Log inicial" and brings it into
// existence in the database; with `firstRun` it also makes the database when there is none. On a failure config.ini
// is as it was, and a log that could not be made is not open.
Result<void> SaveConfig(Logbook &logbook, bool firstRun);
