// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ReportView.h"

#include "ui/Theme.h"

#include <QHeaderView>

ReportView::ReportView(QWidget *parent)
    : QTreeView(parent)
{
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setStretchLastSection(false);
    header()->setSectionsClickable(true);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    MarkList(this);
}

void ReportView::SetColumnTwips(const QList<int> &twips)
{
    constexpr int twipsPerPixel = 15;
    for (int column = 0; column < twips.size(); ++column) {
        setColumnHidden(column, twips[column] == 0);
        if (twips[column] > 0)
            setColumnWidth(column, twips[column] / twipsPerPixel);
    }
}
