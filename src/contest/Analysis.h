// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/ContestTable.h"
#include "core/FileSystem.h"
#include "core/LogStore.h"
#include "core/QsoRow.h"
#include "core/Run.h"
#include "logging/DxccTable.h"

#include <QList>
#include <QString>
#include <vector>

// The analysis of one contest: multipliers, duplicates, time, rate, score, and a text of it all.

// The marks of each row, in the order of the rows. A row's multiplier value is the country of its call in an
// "Incremental" contest, else what was received. The value counts once for each mode and band, in the newest contact
// (by id); a call that came before in mode and band, by date and time, makes a duplicate, and a duplicate loses its
// multiplier. Rows without a value take no part in either.
std::vector<ContestTable::Marks> ContestMarks(const QList<QsoRow> &rows, const DxccTable &countries);

struct AnalysisFigures {
    qint64 qsos = 0; // duplicates included
    qint64 duplicates = 0;
    qint64 multipliers = 0;
    qint64 minutes = 0; // from the first contact to the last
    QString ownCall; // of the last contact
};
// Counts marked rows in the order of date and time.
AnalysisFigures CountContest(const QList<QsoRow> &rows);

// "8 min.", "2 hs. 5 min.": hours only above 60 minutes.
QString ContestTimeText(qint64 minutes);
// QSOs an hour with a decimal comma: "12,00", "12,5", "0,33"; "?" for 0 minutes.
QString ContestRateText(qint64 qsos, qint64 minutes);

// The report of marked rows in the order of date and time, lines ended by CR LF.
QString ContestReportText(const QString &contest, const QString &type, const QList<QsoRow> &rows);
// "Analisis_<contest> (<type>).txt", with "_" for each character that a file name cannot hold.
QString ContestReportName(const QString &contest, const QString &type);

// Marks all contacts of the contest in one transaction, then writes the report into `folder`, in place of an older one,
// and gives its path. The series type of the report is that of the contest's first row. Reading lets events through; a
// cancel there leaves everything as it was (a failure of kind Cancelled). When the file cannot be written the marks
// stand.
Result<QString> AnalyseContest(LogStore &store, FileSystem &files, const QString &folder, const DxccTable &countries,
    const QString &contest, Run &run);

// What `Label13` says.
QString NoContestToAnalyseText();
QString AnalysingText(const QString &contest);
