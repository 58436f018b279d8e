// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form19_CabrilloText.h"

#include "interchange/CabrilloReader.h"
#include "ui/Program.h"
#include "ui/WindowScaler.h"
#include "ui_Form19_CabrilloText.h"

#include <QScreen>

Form19::Form19(Program &program, QWidget *owner)
    : Window(u"Form19"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form19>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Importado Cabrillo ..."_qs);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form19::~Form19() = default;

void Form19::ShowFile()
{
    ui_->Text1->clear();
    const auto path = dialogs().OpenFile(
        parentWidget(), u"Abrir Archivo de ADIF ..."_qs, u"Cabrillo (*.log *.cbr *.txt)"_qs, program_.logbook.Folder());
    if (!path || path->isEmpty())
        return;
    const auto lines = CabrilloReader::ReadLines(program_.logbook.Files(), *path);
    if (!lines) {
        dialogs().Message(parentWidget(), lines.failure().text, Dialogs::Icon::Critical);
        return;
    }
    ui_->Text1->setPlainText(CabrilloReader::QsoLinesOf(*lines));
    ShowModal();
}
