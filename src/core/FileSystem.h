// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <memory>

// The files of the program, behind one small layer so that tests can fill the disk, cut a write short or take a
// permission away. Paths are absolute. Failures are Spanish sentences that name the path.
class FileSystem {
public:
    enum class Sync {
        No, // atomic, but may be lost with the power: small state files written at every QSO
        Yes, // on the disk when the call returns
        YesOwnerOnly, // the same, and nobody but the owner may read the file, not even while it is being written
    };

    virtual ~FileSystem() = default;

    // Looks for a file of exactly this name; a folder of that name does not count.
    virtual bool Exists(const QString &path) const;

    // Opens for reading, or gives nothing when the file is missing or may not be read.
    virtual std::unique_ptr<QIODevice> OpenForReading(const QString &path) const;

    // The whole file, refused as Damaged above `limit` bytes.
    Result<QByteArray> ReadWhole(const QString &path, qint64 limit = 16 << 20) const;

    // Replaces the file's whole content. Atomic: on a failure the old content stands untouched.
    virtual Result<void> Replace(const QString &path, const QByteArray &content, Sync sync);

    // Opens for writing from the start, emptying an old file; for files that are written line by line.
    virtual Result<std::unique_ptr<QIODevice>> OpenForWriting(const QString &path);

    // Takes the file away from everybody but its owner, where the disk knows owners and it is not so already.
    void KeepPrivate(const QString &path) const;

    virtual bool Remove(const QString &path);
};
