// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"
#include "core/Result.h"
#include "core/Run.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

// The road of a foreign ADIF file up to its records: odd line ends and broken records are repaired into a file of one
// record a line, and that is read. Memory is bounded by the number of records told below and by what is looked at of
// each, not by the size of the file. A file that cannot be read to its end is a failure.
namespace AdifFile {

inline constexpr int mostRecords = 10000;
// Longer records are left out, and longer lines cut; whatever makes one so long is no contact.
inline constexpr qsizetype longestRecord = 1 << 20;

// What was dropped or changed on the way: line number in the file (0: the file as a whole) and why.
using Report = std::function<void(qint64 line, const QString &reason)>;
// A line about what is going on.
using Show = std::function<void(const QString &text)>;

struct Repaired {
    QString path; // the file of one record a line
    qint64 lines = 0; // read from the file that was repaired
    QString program; // that wrote it; the last that the file names
    QList<qint64> recordLines; // where the contacts of the new file ended in the old one
};

// A file of one line only was written with lone LF line ends, or all in one: a copy of it in capitals with proper line
// ends is made at `copyPath`, and true is given. Capitals keep the number of bytes of every letter.
Result<bool> SplitSingleLineFile(
    FileSystem &files, const QString &path, const QString &copyPath, Run &run, const Show &show);

// Joins the lines of each record and writes them to `target`, and one empty line behind the last. What stands before
// the line with <EOH> and behind the last <EOR> is dropped. Behind `mostRecords` contacts and one more nothing is
// written.
Result<Repaired> JoinRecordLines(
    FileSystem &files, const QString &path, const QString &target, Run &run, const Show &show, const Report &report);

// Writes the file anew with a record a line; nothing reads it.
Result<void> RejoinRecords(FileSystem &files, const QString &path, const QString &target);

struct Records {
    QList<QByteArray> records; // those with a call, an end and a ">"; of long ones only what is looked at
    QList<qint64> lines; // where each of them ends in the chosen file
    QStringList stations; // distinct station calls, in the order found
    QMap<QByteArray, int> otherTags; // in capitals, that are in the records and not taken, and how often
    qint64 withCall = 0; // lines that hold a call at all
    bool tooMany = false; // above mostRecords; nothing is kept then
};

// Reads the file of one record a line.
Result<Records> ReadRecords(FileSystem &files, const Repaired &repaired, Run &run, const Show &show);

} // namespace AdifFile
