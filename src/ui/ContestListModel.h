// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/QsoRow.h"

#include <QAbstractTableModel>
#include <QList>

// Contacts of a contest, newest first, for the log on screen and the list of earlier contacts with a call. Rows
// alternate between black and dark green; a row keeps its colour when others come above it.
class ContestListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum class Columns { Log, Duplicates };
    explicit ContestListModel(Columns columns, QObject *parent = nullptr);

    const QList<int> &Widths() const;
    void SetRows(const QList<QsoRow> &rows);
    void AddNewest(const QsoRow &row);
    const QsoRow &RowAt(int row) const { return rows_[row]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString TextOf(const QsoRow &row, int column) const;

    Columns columns_;
    QList<QsoRow> rows_;
};
