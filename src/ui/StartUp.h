// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Scheduler.h"
#include "ui/DatabaseCare.h"

#include <memory>

struct Program;
class EntryPanel;
class Form1;
class SatellitePanel;

// How the main window comes up: the load step before it is shown, and 900 ms later the configuration and the log. It
// owns the window's timers.
class StartUp {
public:
    StartUp(Program &program, Form1 &window, EntryPanel &entry, SatellitePanel &satellite);
    ~StartUp();

    // The load step: lists, small files, prefix table, schema. A damaged file costs only its own value. False when the
    // database is missing, foreign or damaged, which has been told then; other troubles with it are told and may pass.
    bool Load();

    // Starts the timers, once.
    void Begin();

    // Brings the second half forward if it is still to come, for an operator who is quicker than it.
    void Hurry();
    // Whether the configuration is that of the file (or of a first run that was saved), so that it may be written back.
    bool IsConfigured() const { return configured_; }

    DatabaseCare &Care() { return care_; }

    void StartTimer7() { Timer7_->Start(); }
    void StopTimer7() { Timer7_->Stop(); }

private:
    void SecondHalf();
    // Lists and small files; debug.txt tells how far it came.
    void FillWindow();
    void LoadPrefixTable();

    Program &program_;
    Form1 &window_;
    EntryPanel &entry_;
    SatellitePanel &satellite_;
    DatabaseCare care_;
    bool begun_ = false;
    bool configured_ = false;
    std::unique_ptr<Scheduler::Timer> Timer1_; // the clock of the entry fields
    std::unique_ptr<Scheduler::Timer> Timer2_; // the second half, once
    std::unique_ptr<Scheduler::Timer> Timer7_; // once after the start and after each saving of the settings
};
