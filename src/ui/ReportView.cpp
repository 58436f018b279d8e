// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ReportView.h"

#include "ui/Theme.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QStyledItemDelegate>

namespace {

// Rows a little higher than the text, so that twenty of them are read as lines.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QSize plain = QStyledItemDelegate::sizeHint(option, index);
        return {plain.width(), option.fontMetrics.height() + 2};
    }
};

} // namespace

ReportView::ReportView(QWidget *parent)
    : QTreeView(parent)
{
    setItemDelegate(new RowDelegate(this));
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

void ReportView::SetColumnTwips(const QList<int> &twips, const QStringList &samples)
{
    constexpr int twipsPerPixel = 15, margin = 14;
    const QFontMetrics metrics(font());
    for (int column = 0; column < twips.size(); ++column) {
        setColumnHidden(column, twips[column] == 0);
        const QString title = model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const int content =
            std::max(metrics.horizontalAdvance(title), metrics.horizontalAdvance(samples.value(column)));
        if (twips[column] > 0)
            setColumnWidth(column, std::max(twips[column] / twipsPerPixel, content + margin));
    }
}
