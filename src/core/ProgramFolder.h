// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QString>
#include <memory>

class QLockFile;

// Where the program's data lies.
namespace ProgramFolder {

// The folder of the program file when it holds config.ini or base0.mdb or can be written, else `userFolder` (made if
// missing). A folder that holds a log is never passed over, even when it cannot be written; one with the mark of a
// package in it (instalado.txt) is not written into, whoever could.
QString Find(const QString &programFileFolder, const QString &userFolder);

bool IsWritable(const QString &folder);

// Copies the data files that come with an installed program into the program folder where they are missing.
void CopyMissingData(const QString &installedFolder, const QString &folder);

// Holds the program folder for this process. Empty while another process holds it; a folder that cannot be written
// is given without a lock, since nothing can be spoilt there.
struct Lock {
    std::unique_ptr<QLockFile> file;
    bool heldByOther = false;
};
Lock Hold(const QString &folder);

} // namespace ProgramFolder
