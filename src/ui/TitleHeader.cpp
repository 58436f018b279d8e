// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TitleHeader.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTreeView>

TitleHeader::TitleHeader(QTreeView *list)
    : QHeaderView(Qt::Horizontal, list)
    , list_(list)
{
    setFocusPolicy(Qt::NoFocus);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void TitleHeader::SortBy(QObject *context, const std::function<void(int)> &sort)
{
    connect(this, &QHeaderView::sectionClicked, context, sort);
    setSectionsClickable(true);
    setFocusPolicy(Qt::TabFocus);
    setObjectName(u"titulos"_qs + list_->objectName());
    setToolTip(u"Un clic en un título ordena la lista. Con el teclado: Tab hasta los títulos, flechas y Espacio"_qs);
    setAccessibleName(u"Títulos: "_qs + list_->accessibleName());
    setAccessibleDescription(u"Las flechas eligen un título y Espacio ordena la lista por él"_qs);
    setTabOrder(list_, this); // to the list's place in the walk, and
    setTabOrder(this, list_); // the list behind it
}

int TitleHeader::Shown(int place, int step) const
{
    while (place >= 0 && place < count() && isSectionHidden(logicalIndex(place)))
        place += step;
    return place >= 0 && place < count() ? logicalIndex(place) : -1;
}

void TitleHeader::Choose(int column)
{
    if (column < 0)
        return;
    chosen_ = column;
    // The list scrolls its titles with it.
    const int left = sectionViewportPosition(column), right = left + sectionSize(column);
    QScrollBar *bar = list_->horizontalScrollBar();
    if (left < 0 || sectionSize(column) > viewport()->width())
        bar->setValue(bar->value() + left);
    else if (right > viewport()->width())
        bar->setValue(bar->value() + right - viewport()->width());
    setAccessibleName(
        model()->headerData(column, Qt::Horizontal).toString() + u", título de "_qs + list_->accessibleName());
    viewport()->update();
}

void TitleHeader::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        Choose(Shown(visualIndex(chosen_) - 1, -1));
        break;
    case Qt::Key_Right:
        Choose(Shown(visualIndex(chosen_) + 1, 1));
        break;
    case Qt::Key_Home:
        Choose(Shown(0, 1));
        break;
    case Qt::Key_End:
        Choose(Shown(count() - 1, -1));
        break;
    case Qt::Key_Space:
        if (chosen_ >= 0 && !event->isAutoRepeat())
            Q_EMIT sectionClicked(chosen_);
        break;
    case Qt::Key_Down:
        list_->setFocus(Qt::TabFocusReason);
        break;
    default:
        event->ignore();
    }
}

void TitleHeader::focusInEvent(QFocusEvent *event)
{
    QHeaderView::focusInEvent(event);
    Choose(chosen_ >= 0 && chosen_ < count() && !isSectionHidden(chosen_) ? chosen_ : Shown(0, 1));
}

void TitleHeader::focusOutEvent(QFocusEvent *event)
{
    QHeaderView::focusOutEvent(event);
    viewport()->update();
}

void TitleHeader::paintSection(QPainter *painter, const QRect &rect, int column) const
{
    painter->save();
    QHeaderView::paintSection(painter, rect, column);
    painter->restore();
    if (!hasFocus() || column != chosen_)
        return;
    const bool dark = palette().color(QPalette::Button).lightness() < 128;
    const int line = std::max(2, fontMetrics().height() / 8);
    QPen pen(palette().color(QPalette::Highlight).lighter(dark ? 170 : 100), line);
    pen.setJoinStyle(Qt::MiterJoin);
    painter->setPen(pen);
    painter->drawRect(QRectF(rect).adjusted(line / 2.0, line / 2.0, -line / 2.0, -line / 2.0));
}
