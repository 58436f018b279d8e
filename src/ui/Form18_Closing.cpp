// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form18_Closing.h"

#include "ui/WindowScaler.h"
#include "ui_Form18_Closing.h"

#include <QScreen>

Form18::Form18(Dialogs &dialogs, QWidget *owner)
    : Window(u"Form18"_qs, dialogs, owner)
    , ui_(std::make_unique<Ui::Form18>())
{
    ui_->setupUi(this);
    ui_->ProgressBar1->setMaximum(steps);
    resize(minimumSize());
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form18::~Form18() = default;

void Form18::ShowStep(int step)
{
    ui_->Label1->setText(u"Aguarde, cerrando Tordillo Compact2 ...%1/%2"_qs.arg(step).arg(steps));
    ui_->ProgressBar1->setValue(step);
    show();
}
