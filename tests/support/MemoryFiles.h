// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"

#include <QBuffer>
#include <QMap>
#include <map>

// Files that live in memory: quick, and gone with the test.
class MemoryFiles : public FileSystem {
public:
    std::map<QString, QByteArray> content; // by path

    bool Exists(const QString &path) const override { return content.count(path) > 0; }
    std::unique_ptr<QIODevice> OpenForReading(const QString &path) const override
    {
        if (!Exists(path))
            return nullptr;
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(content.at(path));
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    }
    Result<void> Replace(const QString &path, const QByteArray &bytes, Sync) override
    {
        content[path] = bytes;
        return {};
    }
    Result<std::unique_ptr<QIODevice>> OpenForWriting(const QString &path) override
    {
        auto buffer = std::make_unique<QBuffer>(&content[path]);
        buffer->open(QIODevice::WriteOnly | QIODevice::Truncate);
        return std::unique_ptr<QIODevice>(std::move(buffer));
    }
    bool Remove(const QString &path) override { return content.erase(path) > 0; }
};
