// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CallerView.h"

#include "keyer/CqCaller.h"

#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <algorithm>

namespace {

constexpr int restingWidth = 15;

} // namespace

CallerView::CallerView(CqCaller &caller, QFrame *sFondo, QLabel *tx)
    : QObject(sFondo)
    , sFondo_(sFondo)
    , sPorcentaje_(new QWidget(sFondo))
    , tx_(tx)
{
    sFondo_->setBackgroundRole(QPalette::Base);
    sFondo_->setAutoFillBackground(true);
    sPorcentaje_->setObjectName(u"sPorcentaje"_qs);
    sPorcentaje_->setBackgroundRole(QPalette::Highlight);
    sPorcentaje_->setAutoFillBackground(true);
    ShowBar(0);
    sFondo_->installEventFilter(this);
    if (tx_)
        tx_->setAutoFillBackground(true);
    ShowLine(caller.LineIsOn());
    connect(&caller, &CqCaller::Progress, this, [this](qint64 position, qint64 length) {
        ShowBar(int(sFondo_->width() * std::clamp<qint64>(position, 0, length) / length));
    });
    connect(&caller, &CqCaller::Rested, this, [this] { ShowBar(restingWidth); });
    connect(&caller, &CqCaller::LineChanged, this, &CallerView::ShowLine);
}

void CallerView::ShowBar(int width) { sPorcentaje_->setGeometry(0, 0, width, sFondo_->height()); }

bool CallerView::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        ShowBar(sPorcentaje_->width());
    return false;
}

void CallerView::ShowLine(bool on)
{
    if (!tx_)
        return;
    tx_->setAccessibleDescription(on ? u"Transmitiendo"_qs : u"En reposo"_qs);
    QPalette colours = tx_->palette();
    colours.setColor(QPalette::Window, on ? QColor(255, 0, 0) : QColor(64, 0, 0));
    colours.setColor(QPalette::WindowText, Qt::white);
    tx_->setPalette(colours);
}
