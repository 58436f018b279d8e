// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

// The Spanish sentence for an error of the database engine (its result code, primary or extended) on the file `path`.
// `detail` is the engine's own text, shown where nothing better is known.
Failure StoreFailure(int engineCode, const QString &path, const QString &detail);

// What a file is by its first bytes, when it is no database of ours; nothing when it may be one.
struct ForeignFile {
    // A failure for an old Access file or any other kind of file.
    static Failure Describe(const QString &path, const QByteArray &head);
    static bool IsDatabaseHead(const QByteArray &head);
};

Failure MissingFileFailure(const QString &path);
