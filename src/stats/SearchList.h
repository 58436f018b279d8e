// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"
#include "core/Run.h"

#include <QList>
#include <QStringList>
#include <cstdint>
#include <vector>

// The rows that a search has found, in the order in which they are shown. It holds a dozen bytes a row; texts are read
// when they are asked for.
class SearchList {
public:
    explicit SearchList(LogStore &store)
        : store_(store)
    {
    }

    qsizetype Size() const { return qsizetype(order_.size()); }
    void Clear();
    // Appends found rows behind the last one; they are numbered on from it.
    void Append(const std::vector<qint64> &ids);

    qint64 IdAt(qsizetype place) const { return ids_[order_[size_t(place)]]; }
    // The running number that the row got when it was found, whatever its place now.
    qint64 NumberAt(qsizetype place) const { return order_[size_t(place)] + 1; }
    void RemoveAt(qsizetype place);

    // The rows from `place` on, at most `count` of them. A row that has gone meanwhile comes with an id of 0.
    Result<QList<QsoRow>> Rows(qsizetype place, qsizetype count) const;

    // The texts of a row as the list and the files show them, by sub-item 1 to 21; 0 is the running number.
    static QStringList Texts(const QsoRow &row, qint64 number);

    // Sorts by the text of a sub-item, as text and without regard to case; equal texts keep their order. A long sort
    // lets events through; when it is stopped or fails the order stays as it was.
    Result<void> Sort(int subItem, bool ascending, Run &run);

private:
    struct Keys;
    void ReadKeys(Session &session, int subItem, const std::vector<std::uint32_t> &numbers, Keys &keys) const;
    Result<void> CollectKeys(int subItem, Run &run, Keys &keys) const;

    LogStore &store_;
    std::vector<qint64> ids_; // by running number
    std::vector<std::uint32_t> order_; // place to running number, from 0
};
