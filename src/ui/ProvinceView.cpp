// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ProvinceView.h"

#include "ui/ProvinceModel.h"
#include "ui/TitleHeader.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

namespace {

constexpr int totalRow = ProvinceTable::provinces, rows = totalRow + 1;
constexpr int padding = 6, iconMargin = 3, tintStrength = 56;

QColor Tint(ProvinceState state)
{
    switch (state) {
    case ProvinceState::Worked:
        return {0x7d, 0x8b, 0x99, tintStrength};
    case ProvinceState::Uploaded:
        return {0xe0, 0x90, 0x10, tintStrength};
    case ProvinceState::Confirmed:
        return {0x20, 0xa0, 0x4c, tintStrength};
    case ProvinceState::None:
        break;
    }
    return Qt::transparent;
}

class CellDelegate : public QStyledItemDelegate {
public:
    explicit CellDelegate(ProvinceView *view)
        : QStyledItemDelegate(view)
        , view_(view)
    {
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return {QStyledItemDelegate::sizeHint(option, index).width(), view_->RowHeight(index.row())};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const auto state = ProvinceState(index.data(ProvinceModel::StateRole).toInt());
        const bool band = index.column() >= ProvinceModel::FirstBand, total = index.row() == totalRow;
        painter->save();
        painter->fillRect(option.rect, option.palette.color(total ? QPalette::Button : QPalette::Base));
        if (band)
            painter->fillRect(option.rect, Tint(state));
        DrawGrid(*painter, option, total);
        if (option.state & QStyle::State_Selected)
            DrawSelection(*painter, option, index);
        QRect room = option.rect.adjusted(padding, 0, -padding, 0);
        if (index.column() == ProvinceModel::Province || band)
            room = DrawIcon(*painter, room, index.data(Qt::DecorationRole).value<QIcon>(), band);
        QFont font = option.font;
        font.setBold(total);
        painter->setFont(font);
        painter->setPen(option.palette.color(total ? QPalette::ButtonText : QPalette::Text));
        painter->drawText(room, index.data(Qt::TextAlignmentRole).toInt(), index.data().toString());
        painter->restore();
    }

private:
    static void DrawGrid(QPainter &painter, const QStyleOptionViewItem &option, bool total)
    {
        QColor line = option.palette.color(QPalette::Text);
        line.setAlpha(40);
        painter.setPen(line);
        painter.drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
        painter.drawLine(option.rect.topRight(), option.rect.bottomRight());
        line.setAlpha(140);
        painter.setPen(line);
        if (total)
            painter.drawLine(option.rect.topLeft(), option.rect.topRight());
    }

    // A frame around the row: its ground tells the states.
    void DrawSelection(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
    {
        const int line = view_->hasFocus() ? 2 : 1;
        const QRect &cell = option.rect;
        const bool dark = option.palette.color(QPalette::Base).lightness() < 128;
        const QColor colour = option.palette.color(QPalette::Highlight).lighter(dark ? 150 : 100);
        painter.fillRect(cell.left(), cell.top(), cell.width(), line, colour);
        painter.fillRect(cell.left(), cell.bottom() + 1 - line, cell.width(), line, colour);
        if (index.column() == ProvinceModel::Number)
            painter.fillRect(cell.left(), cell.top(), line, cell.height(), colour);
        if (index.column() + 1 == index.model()->columnCount())
            painter.fillRect(cell.right() + 1 - line, cell.top(), line, cell.height(), colour);
    }

    // Draws the icon in the middle, or before a text; gives the room that is left.
    static QRect DrawIcon(QPainter &painter, const QRect &room, const QIcon &icon, bool centred)
    {
        const int side = room.height() - 2 * iconMargin;
        QRect place(0, 0, side, side);
        place.moveCenter(room.center());
        if (!centred)
            place.moveLeft(room.left());
        icon.paint(&painter, place);
        return centred ? room : room.adjusted(side + padding, 0, 0, 0);
    }

    ProvinceView *view_;
};

} // namespace

ProvinceView::ProvinceView(QWidget *parent)
    : QTreeView(parent)
    , titles_(new TitleHeader(this))
{
    setHeader(titles_);
    setItemDelegate(new CellDelegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(10);
}

void ProvinceView::SetUpColumns()
{
    setColumnHidden(ProvinceModel::Id, true); // a province has none
    header()->setStretchLastSection(false);
    for (int column = 0; column < model()->columnCount(); ++column)
        header()->setSectionResizeMode(
            column, column < ProvinceModel::FirstBand ? QHeaderView::Fixed : QHeaderView::Stretch);
    FitNames();
}

void ProvinceView::SortBy(QObject *context, const std::function<void(int)> &sort) { titles_->SortBy(context, sort); }

// The setting above is per column; names and numbers get what their longest text needs.
void ProvinceView::FitNames()
{
    if (!model())
        return;
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    const auto width = [&](const QString &text) { return metrics.horizontalAdvance(text) + 4 * padding; };
    header()->resizeSection(ProvinceModel::Number, width(u"Indice"_qs));
    header()->resizeSection(
        ProvinceModel::Province, width(u"Confirmados/Trabajados"_qs) + RowHeight() - 2 * iconMargin);
}

int ProvinceView::RowHeight(int row) const
{
    const int room = viewport()->height(), least = QFontMetrics(font()).height() + 3;
    return std::max(least, room / rows + (row < room % rows ? 1 : 0));
}

void ProvinceView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    FitNames();
    scheduleDelayedItemsLayout();
}

void ProvinceView::changeEvent(QEvent *event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        FitNames();
}
