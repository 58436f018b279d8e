// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The few file operations that Qt does not have and that differ between systems.
namespace PlatformFile {

// Brings what was written to this open file to the disk; false when the system reports a failure.
bool Sync(int handle);

// Brings a folder's entries (a renamed or removed file) to the disk, where the system has such an operation.
void SyncFolder(const QString &folder);

} // namespace PlatformFile
