// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stats/ProvinceTable.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <array>
#include <vector>

// The table of provinces for the view: a row for each of them, and the totals, which stay the last row whatever the
// order. Cells of the bands show an icon and no text; what it says stands in tool tip and accessible text.
class ProvinceModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit ProvinceModel(QObject *parent = nullptr);

    enum Column { Number, Id, Province, FirstBand };
    enum Role { StateRole = Qt::UserRole }; // ProvinceState as int

    // In the order of the provinces' letters.
    void Show(const ProvinceTable &table);
    // By number, by name or by state.
    void SortBy(int column, bool ascending);
    bool IsTotal(int row) const { return row == ProvinceTable::provinces; }

    static QString StateText(ProvinceState state);
    static QIcon StateIcon(ProvinceState state);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    ProvinceState StateAt(const QModelIndex &index) const;
    QString TextAt(const QModelIndex &index) const;
    QString DescriptionAt(const QModelIndex &index) const;

    ProvinceTable table_;
    std::vector<int> order_; // row to province
    std::array<QIcon, 3> icons_;
};
