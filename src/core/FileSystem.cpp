// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileSystem.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "core/PlatformFile.h"

namespace {

Failure WriteFailure(const QString &path, const QFileDevice &device)
{
    const bool full = device.error() == QFileDevice::ResourceError || device.error() == QFileDevice::WriteError;
    const QString reason = device.errorString();
    if (device.error() == QFileDevice::PermissionsError || device.error() == QFileDevice::OpenError)
        return {u"No se puede escribir el archivo\n%1\n%2"_qs.arg(path, reason), Failure::Kind::ReadOnly};
    return {u"No se pudo terminar de escribir el archivo\n%1\n%2"_qs.arg(path, reason),
        full ? Failure::Kind::Full : Failure::Kind::Other};
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
    QByteArray content = device->read(limit + 1);
    if (content.size() > limit)
        return Failure{u"El archivo\n%1\nes demasiado grande."_qs.arg(path), Failure::Kind::Damaged};
    return content;
}

Result<void> FileSystem::Replace(const QString &path, const QByteArray &content, Sync sync)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return WriteFailure(path, file);
    if (file.write(content) != content.size() || !file.flush()
        || (sync == Sync::Yes && !PlatformFile::Sync(file.handle()))) {
        const Failure failure = WriteFailure(path, file);
        file.cancelWriting();
        return failure;
    }
    if (!file.commit())
        return WriteFailure(path, file);
    if (sync == Sync::Yes)
        PlatformFile::SyncFolder(QFileInfo(path).absolutePath());
    return {};
}

Result<std::unique_ptr<QIODevice>> FileSystem::OpenForWriting(const QString &path)
{
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Truncate))
        return WriteFailure(path, *file);
    return std::unique_ptr<QIODevice>(std::move(file));
}

bool FileSystem::Remove(const QString &path) { return QFile::remove(path); }
