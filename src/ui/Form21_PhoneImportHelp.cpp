// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form21_PhoneImportHelp.h"

#include "ui/WindowScaler.h"
#include "ui_Form21_PhoneImportHelp.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QScreen>

Form21::Form21(Dialogs &dialogs, QWidget *owner)
    : Window(u"Form21"_qs, dialogs, owner)
    , ui_(std::make_unique<Ui::Form21>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Importar SOTA/POTA de Tordillo Mobile"_qs);
    // The lines are aligned at their brackets, so every letter takes the same room.
    ui_->Label1->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    ui_->Label1->setText(QStringList{u"Usa los campos ADIF"_qs, QString(), u"SOTA:"_qs,
        u"[COMMENT:] para [MY_SOTA_REF]"_qs, u"    [NAME:] para [SOTA_REF]"_qs, QString(), u"POTA:"_qs,
        u"[COMMENT:] para [MY_SIG_INFO]"_qs, u"    [NAME:] para [SIG_INFO]"_qs}
                             .join(u"\r\n"_qs));
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form21::~Form21() = default;

bool Form21::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    hide();
    return true;
}
