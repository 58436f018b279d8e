// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CounterAudit.h"
#include "core/SafetyCopies.h"

struct Program;
class Form1;

// Looks after the database around a start: brings an old file up to date, keeps the safety copies, and when the file
// is damaged or gone offers the newest good copy in its place. Nothing is replaced without asking.
class DatabaseCare {
public:
    DatabaseCare(Program &program, Form1 &window);

    // False when the database cannot be used at all, which has been told then; other troubles are told and may pass.
    bool Probe();

    // A page of the log could not be read: told, and where the file is damaged the newest good copy is offered.
    void PageFailed(const Failure &failure);

    // What can wait until the first page is seen: the counters are counted again, then a copy is taken if one is due.
    void AfterFirstPage();

private:
    // Tells the failure and offers the newest good copy; true when that one is in place now.
    bool OfferCopy(const Failure &failure);

    void CopyFailed(const Failure &failure);
    void AuditStep();

    Program &program_;
    Form1 &window_;
    SafetyCopies copies_;
    std::unique_ptr<CounterAudit> audit_;
    std::unique_ptr<Scheduler::Timer> auditTimer_;
    bool offered_ = false;
};
