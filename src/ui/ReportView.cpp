// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ReportView.h"

#include "ui/Theme.h"
#include "ui/TitleHeader.h"
#include "ui/WindowScaler.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>
#include <numeric>

namespace {

// Rows a little higher than the text, so that twenty of them are read as lines.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QSize plain = QStyledItemDelegate::sizeHint(option, index);
        return {plain.width(), option.fontMetrics.height() * 7 / 6};
    }
};

} // namespace

ReportView::ReportView(QWidget *parent)
    : QTreeView(parent)
    , titles_(new TitleHeader(this))
{
    setHeader(titles_);
    setItemDelegate(new RowDelegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setStretchLastSection(false);
    connect(header(), &QHeaderView::sectionResized, this,
        [this] { dragged_ = dragged_ || QGuiApplication::mouseButtons() != Qt::NoButton; });
}

void ReportView::SetColumnTwips(const QList<int> &twips, const QStringList &samples)
{
    constexpr int twipsPerPixel = 15, margin = 14;
    const QFontMetrics metrics(font());
    starting_.clear();
    for (int column = 0; column < twips.size(); ++column) {
        setColumnHidden(column, twips[column] == 0);
        const QString title = model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const int content =
            std::max(metrics.horizontalAdvance(title), metrics.horizontalAdvance(samples.value(column)));
        starting_ << (twips[column] > 0 ? std::max(twips[column] / twipsPerPixel, content + margin) : 0);
        if (twips[column] > 0)
            setColumnWidth(column, starting_.last());
    }
}

void ReportView::ShareRoom()
{
    const int all = std::accumulate(starting_.cbegin(), starting_.cend(), 0);
    if (dragged_ || all == 0)
        return;
    const double factor = std::max(ScaleOf(window()), double(viewport()->width()) / all);
    int told = 0, edge = 0;
    for (int column = 0; column < starting_.size(); ++column) {
        told += starting_[column];
        const int next = int(told * factor + 0.001);
        if (starting_[column] > 0)
            setColumnWidth(column, next - edge);
        edge = next;
    }
}

void ReportView::SortBy(QObject *context, const std::function<void(int)> &sort) { titles_->SortBy(context, sort); }

void ReportView::OpenRows(QObject *context, const std::function<void(const QModelIndex &)> &open)
{
    connect(this, &QAbstractItemView::doubleClicked, context, open);
    opens_ = true;
    setAccessibleDescription(u"Ctrl+E abre la fila elegida"_qs);
}

void ReportView::keyPressEvent(QKeyEvent *event)
{
    if (!opens_ || event->key() != Qt::Key_E || event->modifiers() != Qt::ControlModifier)
        QTreeView::keyPressEvent(event);
    else if (currentIndex().isValid() && !event->isAutoRepeat())
        Q_EMIT doubleClicked(currentIndex());
}

void ReportView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    ShareRoom();
}

void ReportView::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem row = option;
    row.palette = ListRowPalette(CurrentTheme());
    const bool even = (model()->rowCount() - index.row()) % 2 == 0;
    const QRect whole(0, option.rect.y(), viewport()->width(), option.rect.height());
    painter->fillRect(whole, row.palette.brush(even ? QPalette::AlternateBase : QPalette::Base));
    QTreeView::drawRow(painter, row, index);
}
