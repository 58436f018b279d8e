// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/QsoRow.h"

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>

// The twenty rows that the main window shows. Column 0 carries a fixed text and column 1 the id; both are hidden.
class LogListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    // Titles and widths in twips of the 22 columns.
    static const QStringList &Titles();
    static const QList<int> &Widths();

    // Shows these rows in their order, which is the date order of the log.
    void SetRows(const QList<QsoRow> &rows);
    const QsoRow &RowAt(int row) const { return rows_[row].qso; }

    // A click on a title: sorts the page's rows by the texts of that column, each time in the other direction.
    void SortByColumn(int column);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row {
        QsoRow qso;
        QStringList texts;
    };
    static QStringList Texts(const QsoRow &qso);

    QList<Row> rows_;
    bool ascending_ = false;
};
