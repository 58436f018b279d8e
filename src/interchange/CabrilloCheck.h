// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"
#include "core/QsoRow.h"
#include "core/Result.h"

#include <QList>
#include <QStringList>

// Looks at a Cabrillo file as its receiver will: reads it again from the disk and compares it with the log, QSO by QSO.
namespace CabrilloCheck {

struct Finding {
    int line = 0; // in the file, from 1; 0 where the file lacks something
    QString reason; // in Spanish, without a full stop
    QString text; // the line of the file, or the one that is missing
};

struct Report {
    qsizetype inLog = 0; // QSOs of the contest
    qsizetype inFile = 0; // QSO lines of the file
    QList<Finding> findings; // in the order of the lines; what is missing comes last

    bool Agrees() const { return findings.isEmpty(); }
    // For the box: what was counted and the first `most` findings, a line each with the line of the file below it, and
    // how many more there are. Empty when all agrees.
    QString Text(qsizetype most = 10) const;
};

// `rows` are the contest's rows in any order, the header row may be among them. Told are: a frequency, mode, date,
// time, call or exchange that differs, is missing or unknown to the format; columns that moved; words glued together or
// too many; lines of no QSO of the log and QSOs without a line; header and end missing or doubled; a CALLSIGN that is
// not the own call of the QSOs. Kilohertz that the operator has put in by hand agree when they lie in the QSO's band.
Report Compare(const QStringList &fileLines, const QList<QsoRow> &rows);

// The same for a file; a file that cannot be read is a failure.
Result<Report> CheckFile(const FileSystem &files, const QString &path, const QList<QsoRow> &rows);

} // namespace CabrilloCheck
