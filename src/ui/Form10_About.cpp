// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form10_About.h"

#include "core/Logbook.h"
#include "ui/WindowScaler.h"
#include "ui_Form10_About.h"

#include <QIcon>
#include <QKeyEvent>
#include <QScreen>

Form10::Form10(Dialogs &dialogs, QWidget *owner)
    : Window(u"Form10"_qs, dialogs, owner)
    , ui_(std::make_unique<Ui::Form10>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Acerca de Tordillo Compact"_qs);
    ui_->Image1->setPixmap(QIcon(u":/icons/tordillo.svg"_qs).pixmap(160, 160));
    ui_->Label1->setText(u"Versión "_qs + Logbook::AppVersion);
    ui_->agradecimientos->setText(
        u"Libro de guardia para estaciones de radioaficionados.\n\n"
        "Gracias a los radioaficionados que lo usan, lo prueban y cuentan qué le falta; a quienes mantienen la lista "
        "de países y prefijos y la ofrecen libremente; y a los autores de Qt y de SQLite, sobre los que está hecho.\n\n"
        "Software libre bajo la licencia GNU GPL, versión 3 o posterior. Se entrega sin garantía alguna.\n\n73!"_qs);
    connect(ui_->Command1, &QPushButton::clicked, this, &QWidget::close);
    resize(minimumSize());
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form10::~Form10() = default;

bool Form10::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    close();
    return true;
}
