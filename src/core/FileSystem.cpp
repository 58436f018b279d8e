// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileSystem.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "core/PlatformFile.h"

namespace {

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

Failure OpenFailure(const QString &path, const QFileDevice &device)
{
    return {u"No se puede escribir el archivo\n%1\n%2"_qs.arg(path, device.errorString()), Failure::Kind::ReadOnly};
}

Failure WriteFailure(const QString &path, const QFileDevice &device)
{
    const bool full = device.error() == QFileDevice::ResourceError || device.error() == QFileDevice::WriteError;
    return {u"No se pudo terminar de escribir el archivo\n%1\n%2"_qs.arg(path, device.errorString()),
        full ? Failure::Kind::Full : Failure::Kind::Other};
}

// A full disk first takes what still fits, without an error; only the next write says why it took no more.
bool WriteAll(QFileDevice &device, const QByteArray &content)
{
    for (qint64 written = 0; written < content.size();) {
        const qint64 taken = device.write(content.constData() + written, content.size() - written);
        if (taken <= 0)
            return false;
        written += taken;
    }
    return device.flush();
}

} // namespace

bool FileSystem::Exists(const QString &path) const { return QFileInfo(path).isFile(); }

std::unique_ptr<QIODevice> FileSystem::OpenForReading(const QString &path) const
{
    auto file = std::make_unique<QFile>(path);
    if (!Exists(path) || !file->open(QIODevice::ReadOnly))
        return nullptr;
    return file;
}

Result<QByteArray> FileSystem::ReadWhole(const QString &path, qint64 limit) const
{
    const auto device = OpenForReading(path);
    if (!device)
        return Failure{u"No se puede leer el archivo\n%1"_qs.arg(path), Failure::Kind::Missing};
    // The limit itself is not asked for: each small file would be given the memory of the largest.
    if (device->size() > limit)
        return Failure{u"El archivo\n%1\nes demasiado grande."_qs.arg(path), Failure::Kind::Damaged};
    return device->readAll();
}

Result<void> FileSystem::Replace(const QString &path, const QByteArray &content, Sync sync)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return OpenFailure(path, file);
    // Where the disk knows no owners this fails, and nothing can be done about it.
    if (sync == Sync::YesOwnerOnly)
        static_cast<void>(file.setPermissions(ownerOnly));
    if (!WriteAll(file, content) || (sync != Sync::No && !PlatformFile::Sync(file.handle()))) {
        const Failure failure = WriteFailure(path, file);
        file.cancelWriting();
        return failure;
    }
    if (!file.commit())
        return WriteFailure(path, file);
    if (sync != Sync::No)
        PlatformFile::SyncFolder(QFileInfo(path).absolutePath());
    return {};
}

Result<std::unique_ptr<QIODevice>> FileSystem::OpenForWriting(const QString &path)
{
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Truncate))
        return OpenFailure(path, *file);
    return std::unique_ptr<QIODevice>(std::move(file));
}

void FileSystem::KeepPrivate(const QString &path) const
{
    constexpr QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
        | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
    if (QFile::permissions(path) & others)
        QFile::setPermissions(path, ownerOnly);
}

bool FileSystem::Remove(const QString &path) { return QFile::remove(path); }
