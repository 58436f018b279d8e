// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"
#include "core/QsoRow.h"
#include "core/TextFile.h"

#include <QList>
#include <QStringList>
#include <array>
#include <optional>

// QSOs out of the Cabrillo files of other programs. Lines are read as words, not by columns, and the header is not
// looked at. A line counts as a QSO when it holds "QSO:" anywhere, so one that is marked "X-QSO:" counts too, and so
// does a remark that spells it.
namespace CabrilloReader {

// Title of the boxes that tell how an import went.
extern const QString boxTitle;

// The parts of a QSO line by their places.
enum Word { Mark, Frequency, Mode, Date, Time, OwnCall, ReportSent, Sent, WorkedCall, ReportReceived, Received, Count };
using Words = std::array<QString, Count>;

// The words behind "QSO:". A line without reports (8 or 9 words; a ninth is dropped) gets "599" for both, words behind
// the tenth are dropped. Fewer than 8 words give "*" at Mark and nothing else. Tabs part words as blanks do.
Words SplitQsoLine(QStringView text);

// A file with lone LF line ends reads as one long line. The last line of more than 100 characters that holds a LF is
// split, and becomes the whole content of the file, under the same name; other files are left as they are. Gives how
// many lines that hold "QSO:" were not kept. A failure leaves the file untouched.
Result<int> NormalizeCabrilloFile(FileSystem &files, const QString &path);

// The lines of a file. Fails when it cannot be read or is no log by its size.
Result<QStringList> ReadLines(const FileSystem &files, const QString &path);

// Those that hold "QSO:" in capitals, each with CR LF: the text of the window that shows a Cabrillo file.
QString QsoLinesOf(const QStringList &lines);

// The contest that the QSOs go into.
struct Contest {
    QString name;
    QString seriesType;
    QString ownCall;
};

// One QSO of the file. The row is ready to be stored: date "yyyymmdd" and time "hhmm", or empty where the file has
// something else.
struct Contact {
    QsoRow row;
    QString date; // of the file without "-", for the test of repeats
    int line = 0; // in the file, from 1
};

// Why the reading ended before the end of the file.
struct Stop {
    QString text;
    bool critical; // the icon of the box; an information sign otherwise
    int line;
};

struct Taken {
    QList<Contact> contacts; // up to the stop; they are to be stored all the same
    int qsoLines = 0; // lines that hold "QSO:", the one that stopped included
    std::optional<Stop> stop;
};

// Reads the lines of a file for a contest. A frequency that tells no band leaves the one of the line before, at first
// none. That, words too many, and dates and times that are none are reported.
Taken TakeLines(const QStringList &lines, const QString &path, const Contest &contest, const Reporter &report = {});

// What is said when the end of the file was reached, if anything: no QSO found, or some not added since the contest
// held them already.
std::optional<QString> ClosingMessage(const QString &path, int qsoLines, int repeated);

} // namespace CabrilloReader
