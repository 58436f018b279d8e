// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stats/SearchList.h"

#include <QAbstractTableModel>
#include <QCache>

// The rows of a SearchList for the view. Rows are read in small blocks as they are scrolled to, and the last few blocks
// are kept.
class SearchModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit SearchModel(LogStore &store, QObject *parent = nullptr);

    static const QStringList &Titles();
    static const QList<int> &Widths();

    const SearchList &List() const { return list_; }
    void Clear();
    void Append(const std::vector<qint64> &ids);
    Result<void> Sort(int subItem, bool ascending, Run &run);
    // Reads a row anew after it was edited; a row that has gone leaves the list.
    void Refresh(int place);
    // The row as the log holds it now; an id of 0 when it has gone or cannot be read.
    QsoRow RowAt(int place) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const QStringList &TextsAt(int place) const;

    SearchList list_;
    mutable QCache<int, QList<QStringList>> blocks_;
};
