// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/QsoRow.h"
#include "core/Result.h"

#include <QByteArray>
#include <QList>

// The records of a contest in ADIF. The header comes from AdifWriter; there is no closing line.
namespace ContestAdif {

// QSOs of the contest: the rows with a mode.
qsizetype CountQsos(const QList<QsoRow> &rows);
// What is said when there are none.
extern const QString nothingToExport;

// Makes the records of one contest, row by row in the table's own order.
class Records {
public:
    Records(QString contest, QString ownCall);

    // The record with its line end, or nothing for a row without a mode. A row under another own call is a failure,
    // and with it the export ends; what was written stays. A band without a frequency of its own repeats the frequency
    // of the record before, at first an empty one.
    Result<QByteArray> Next(const QsoRow &row);

private:
    QString contest_;
    QString ownCall_;
    QString frequency_;
};

} // namespace ContestAdif
