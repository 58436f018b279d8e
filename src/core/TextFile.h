// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"

#include <QStringList>
#include <functional>
#include <optional>

// Reads a device line by line: windows-1252, a line ends at CR or CR LF, a lone LF is part of the line. The end of
// the file ends the last line; nothing behind the last line end gives no further line.
class LineReader {
public:
    // Longer lines are cut here, so that a damaged file cannot fill the memory; the rest of the line is passed over.
    static constexpr qsizetype longestLine = 1 << 20;

    explicit LineReader(QIODevice &device);

    // The next line without its end, or nothing at the end of the file.
    std::optional<QString> Next();

    // Number of the line that Next gave last, from 1.
    int LineNumber() const { return lineNumber_; }
    // Whether that line was cut.
    bool WasCut() const { return cut_; }

private:
    bool Fill();

    QIODevice &device_;
    QByteArray chunk_;
    qsizetype position_ = 0;
    int lineNumber_ = 0;
    bool cut_ = false;
};

// Where the readers of foreign files put what they could not use: line number (0: the file as a whole) and reason.
using Reporter = std::function<void(int line, const QString &reason)>;

namespace TextFile {

// All lines of a file; nothing when the file is missing or cannot be read. For the small files of the program: what
// stands behind several hundred thousand lines, or behind 16 million characters, is not read.
std::optional<QStringList> ReadLines(const FileSystem &files, const QString &path);

// Replaces the file by these lines, each ended by CR LF.
Result<void> WriteLines(FileSystem &files, const QString &path, const QStringList &lines, FileSystem::Sync sync);

} // namespace TextFile
