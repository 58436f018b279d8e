// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/TextFile.h"

#include "core/CodePage.h"

#include <algorithm>

LineReader::LineReader(QIODevice &device)
    : device_(device)
{
}

bool LineReader::Fill()
{
    constexpr qint64 largest = 64 * 1024; // most files are far smaller
    chunk_ = device_.read(std::clamp<qint64>(device_.bytesAvailable(), 1, largest));
    position_ = 0;
    return !chunk_.isEmpty();
}

std::optional<QString> LineReader::Next()
{
    QByteArray line;
    bool begun = false;
    cut_ = false;
    while (position_ < chunk_.size() || Fill()) {
        begun = true;
        const qsizetype end = chunk_.indexOf('\r', position_);
        const qsizetype stop = end < 0 ? chunk_.size() : end;
        const qsizetype room = longestLine - line.size();
        cut_ = cut_ || stop - position_ > room;
        line += QByteArrayView(chunk_).sliced(position_, std::min(stop - position_, room));
        position_ = stop;
        if (end < 0)
            continue;
        ++position_;
        if ((position_ < chunk_.size() || Fill()) && chunk_.at(position_) == '\n')
            ++position_;
        break;
    }
    if (!begun)
        return std::nullopt;
    ++lineNumber_;
    return CodePage::ToText(line);
}

namespace TextFile {

namespace {

// What the lines of one file may take, text and bookkeeping, before the rest of the file is left unread.
constexpr qsizetype mostMemory = 32 << 20;
constexpr qsizetype lineCost = 48;

} // namespace

std::optional<QStringList> ReadLines(const FileSystem &files, const QString &path)
{
    const auto device = files.OpenForReading(path);
    if (!device)
        return std::nullopt;
    QStringList lines;
    LineReader reader(*device);
    for (qsizetype room = mostMemory; room > 0;) {
        const auto line = reader.Next();
        if (!line)
            break;
        lines << *line;
        room -= lineCost + 2 * line->size();
    }
    return lines;
}

Result<void> WriteLines(FileSystem &files, const QString &path, const QStringList &lines, FileSystem::Sync sync)
{
    QByteArray content;
    for (const QString &line : lines)
        content += CodePage::FromText(line) + "\r\n";
    return files.Replace(path, content, sync);
}

} // namespace TextFile
