// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CallerPanel.h"

#include "ui_CallerPanel.h"

CallerPanel::CallerPanel(QWidget *parent)
    : QWidget(parent)
    , ui_(std::make_unique<Ui::CallerPanel>())
{
    ui_->setupUi(this);
    ui_->sFondo->setBackgroundRole(QPalette::Base);
    ui_->sFondo->setAutoFillBackground(true);
    sPorcentaje_ = new QWidget(ui_->sFondo);
    sPorcentaje_->setObjectName(u"sPorcentaje"_qs);
    sPorcentaje_->setAutoFillBackground(true);
    sPorcentaje_->setBackgroundRole(QPalette::Highlight);
    sPorcentaje_->setGeometry(0, 0, 0, ui_->sFondo->height());

    QPalette idle = ui_->IndicadorTx->palette();
    idle.setColor(QPalette::Window, QColor(64, 0, 0));
    idle.setColor(QPalette::WindowText, Qt::white);
    ui_->IndicadorTx->setPalette(idle);
    ui_->IndicadorTx->setAutoFillBackground(true);
}

CallerPanel::~CallerPanel() = default;
