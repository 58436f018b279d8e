// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"

#include <QList>
#include <QString>

// The open log, twenty contacts at a time, newest first; equal times come newest entered first.
inline constexpr int pageSize = 20;

// What one page shows.
struct LogPage {
    qint64 count = 0; // contacts in the whole log
    QList<QsoRow> rows; // at most pageSize
};

// The page that begins with row `firstRow` (from 1). A row number behind the end gives no rows. An old file that
// lacks columns is upgraded on the way. Reads the counter and one page, whatever the size of the log.
Result<LogPage> ReadLogPage(LogStore &store, const QString &logName, qint64 firstRow);

// Where the list stands, and where the paging controls take it.
struct Paging {
    qint64 PageCount = 0; // 0 for an empty log
    qint64 PageNumber = 1; // from 1
    qint64 PageFirstRow = 1; // 1, 21, 41 ...

    // After a page has been read from `firstRow` on: the number of pages follows the count; row 1 is page 1.
    void Loaded(qint64 count, qint64 firstRow);

    void First();
    void Previous();
    void Next();
    // Steps of one page are counted out, at most 1000 of them: above 20,020 contacts the list stays where it is.
    void Last(qint64 count);
    // 0 goes to page 1, a number above the last page to the last one. Gives the page it went to.
    qint64 GoTo(qint64 page);

    // Which of the four buttons can be used.
    struct Buttons {
        bool first = false, previous = false, next = false, last = false;
    };
    Buttons Enabled(qint64 count) const;
};

// "Log: <name>, con <count> QSOs".
QString LogCaption(const QString &logName, qint64 count);
