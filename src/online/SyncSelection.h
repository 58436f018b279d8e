// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/Run.h"

#include <QString>
#include <QStringList>

// A contact of the log as the LdA server is asked about it.
struct SyncQso {
    qint64 id = 0;
    QString micall, sucall, banda, modo, fecha, hora, rst;
};

// The contacts of a log that LdA may confirm, and how many others there are.
struct SyncSelection {
    static constexpr qsizetype mostSent = 1000; // in one run
    static constexpr qsizetype mostCalls = 900;

    QString logName;
    qint64 total = 0; // contacts with a call
    qint64 confirmed = 0, mobile = 0, foreign = 0, toSend = 0;
    QList<SyncQso> qsos; // the oldest of those to send, mostSent at most
    QStringList ownCalls; // of those to send, in order of first appearance, mostCalls at most

    // Why there is nothing to do; empty when there is.
    QString Refusal() const;
    // What is asked before the run.
    QString Question() const;
};

// Walks the log `logName`, oldest contacts first. Stopping `run` gives a failure of kind Cancelled.
// Confirmed contacts (state 2) are left out first, then mobile ones ("/MM", "/MA"), then those without a province.
Result<SyncSelection> SelectForSync(LogStore &store, const QString &logName, Run &run);
