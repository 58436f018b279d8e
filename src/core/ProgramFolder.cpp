// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSysInfo>
#include <QTemporaryFile>

namespace ProgramFolder {

namespace {

// A lock of this computer names a process that can be looked for.
bool NamesAHolderHere(const QLockFile &file)
{
    qint64 process = 0;
    QString host, application;
    return file.getLockInfo(&process, &host, &application) && host == QSysInfo::machineHostName();
}

} // namespace

bool IsWritable(const QString &folder)
{
    // Permission bits do not tell of read-only media, so it is tried.
    QTemporaryFile probe(folder + u"/.tordillo-XXXXXX"_qs);
    return probe.open();
}

QString Find(const QString &programFileFolder, const QString &userFolder)
{
    const QDir folder(programFileFolder);
    if (folder.exists(u"config.ini"_qs) || folder.exists(u"base0.mdb"_qs))
        return programFileFolder;
    // An administrator can write everywhere, and would leave a log there that keeps all others out.
    if (!folder.exists(u"instalado.txt"_qs) && IsWritable(programFileFolder))
        return programFileFolder;
    QDir().mkpath(userFolder);
    return userFolder;
}

void CopyMissingData(const QString &installedFolder, const QString &folder)
{
    const QString name = u"dxcc.txt"_qs;
    const QString target = folder + u'/' + name;
    if (!QFileInfo::exists(target))
        QFile::copy(installedFolder + u'/' + name, target);
}

Lock Hold(const QString &folder)
{
    auto file = std::make_unique<QLockFile>(folder + u"/tordillo.lock"_qs);
    // A process that was killed leaves its lock behind; it is stale once that process is gone, whatever its age.
    file->setStaleLockTime(0);
    bool held = file->tryLock(0);
    // A power cut can leave a lock that names nobody, and a folder that is carried about one of another computer. The
    // removal asks the system whether any process holds the file.
    if (!held && file->error() == QLockFile::LockFailedError && !NamesAHolderHere(*file))
        held = file->removeStaleLockFile() && file->tryLock(0);
    if (held)
        return {std::move(file), false};
    return {nullptr, file->error() == QLockFile::LockFailedError};
}

} // namespace ProgramFolder
