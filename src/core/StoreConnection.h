// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <memory>
#include <string>
#include <unordered_map>

// The open database behind a LogStore. For the files of core that talk to the engine themselves.
struct Session::Connection {
    SQLite::Database database;
    std::unordered_map<std::string, std::unique_ptr<SQLite::Statement>> idle; // compiled and not in use

    Connection(const QString &path, const QByteArray &vfs);

    // True once the file at the path is no longer the one that is open.
    bool Moved();
    // The engine falls back to reading only when it may not write at the opening, and never tries again.
    bool ReadOnly();
};
