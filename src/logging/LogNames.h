// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"

#include <QList>
#include <QString>

// The logs of the general logbook. A log exists as long as one row carries its name.
struct LogEntry {
    QString name;
    qint64 count = 0; // contacts; a log without any is there by its marker row
};

// All logs in alphabetical order, without regard to case, "Ñ" and accents included. Asks counters and index, not rows.
Result<QList<LogEntry>> ListLogs(LogStore &store);

// "<name> (<count> QSOs)", as the list of logs shows it.
QString LogListText(const LogEntry &entry);

// A typed name as it will be used: without apostrophes.
QString CleanLogName(const QString &typed);

// The log whose name equals this one apart from case; an empty text when there is none.
QString SameLog(const QList<LogEntry> &logs, const QString &name);

// The log that a name from config.ini means: that of this name or, where none is, one whose name the file could not
// hold whole (it is cut to 100 characters there, and foreign letters become "?"). The name itself when there is none.
Result<QString> ResolveLogName(LogStore &store, const QString &name);

// Brings a log without contacts into existence.
Result<void> CreateLog(LogStore &store, const QString &name);

// Deletes a log with all its contacts, and gives the log to open then: the first of those that remain, or "Base 1",
// which comes to exist with its first contact.
Result<QString> DeleteLog(LogStore &store, const QString &name);
