// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/PlatformFile.h"

#include <QFile>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace PlatformFile {

#ifdef Q_OS_WIN
bool Sync(int handle) { return _commit(handle) == 0; }

void SyncFolder(const QString &) { }
#else
bool Sync(int handle) { return fsync(handle) == 0; }

void SyncFolder(const QString &folder)
{
    const int handle = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    // Some file systems refuse to sync a folder; the rename itself stands all the same.
    static_cast<void>(fsync(handle));
    close(handle);
}
#endif

} // namespace PlatformFile
