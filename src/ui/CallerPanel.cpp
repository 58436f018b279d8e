// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CallerPanel.h"

#include "ui/CallerView.h"
#include "ui_CallerPanel.h"

CallerPanel::CallerPanel(CqCaller &caller, QWidget *parent)
    : QWidget(parent)
    , ui_(std::make_unique<Ui::CallerPanel>())
{
    ui_->setupUi(this);
    new CallerView(caller, ui_->sFondo, ui_->IndicadorTx);
}

CallerPanel::~CallerPanel() = default;
