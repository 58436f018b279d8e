// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Transmission.h"

#include "contest/CwSettings.h"
#include "ui/Program.h"
#include "ui_Form4_Contest.h"

#include <algorithm>

Transmission::Transmission(Program &program, Ui::Form4 &ui, QObject *parent)
    : QObject(parent)
    , program_(program)
    , ui_(ui)
    , buttons_{ui.macros_0, ui.macros_1, ui.macros_2, ui.macros_3, ui.macros_4, ui.macros_5, ui.macros_6}
    , Timer2_(program.scheduler.Make(500, [this] { ShowPanels(); }))
{
    ui_.Combo3->addItems(KeyerPorts());
    // The keyer comes with its own work; until then these only show what they will do.
    for (QWidget *later : std::initializer_list<QWidget *>{ui_.ESM, ui_.Command5})
        later->setEnabled(false);
    connect(ui_.HScroll1, &QScrollBar::valueChanged, this, [this](int speed) {
        ui_.LabelVel->setText(CwSpeed::Text(speed));
        Q_EMIT Used();
    });
    connect(ui_.Check3, &QCheckBox::clicked, this, [this](bool on) { ui_.Check4->setChecked(!on); });
    connect(ui_.Check4, &QCheckBox::clicked, this, [this](bool on) { ui_.Check3->setChecked(!on); });
    connect(ui_.Combo3, &QComboBox::activated, this, &Transmission::Used);
    connect(ui_.Text2, &QLineEdit::textChanged, this, &Transmission::ShowMacroCaptions);
    connect(ui_.RSE, &QLineEdit::textChanged, this, &Transmission::ShowMacroCaptions);
    connect(ui_.Corresponsal, &QLineEdit::textChanged, this, &Transmission::ShowMacroCaptions);
}

QString Transmission::Open()
{
    const CwSettings keyer = ReadCwSettings(program_.logbook);
    ui_.Combo3->setCurrentText(keyer.port);
    ui_.Check3->setChecked(keyer.dtr);
    ui_.Check4->setChecked(!keyer.dtr);
    const Result<void> loaded = LoadMacros(program_.logbook, macros_);
    ShowMacroCaptions();
    ui_.HScroll1->setValue(CwSpeed::start);
    return loaded ? QString() : loaded.failure().text;
}

QString Transmission::Close()
{
    const Result<void> saved =
        SaveKeyerSettings(program_.logbook, {ui_.Combo3->currentText(), ui_.Check3->isChecked()});
    return saved ? QString() : saved.failure().text;
}

void Transmission::ShowPanels()
{
    const bool cw = ui_.Combo1->currentText() == u"CW";
    if (!cw)
        ui_.ESM->setChecked(false);
    ui_.panelTransmision->setCurrentWidget(cw ? ui_.panelCw : ui_.panelFonia);
}

void Transmission::ShowMacroCaptions()
{
    const auto captions = MacroCaptions(ui_.Text2->text(), ui_.Corresponsal->text(), ui_.RSE->text());
    for (size_t i = 0; i < captions.size(); ++i)
        buttons_[i]->setText(captions[i]);
}

void Transmission::ChangeSpeed(int by)
{
    ui_.HScroll1->setValue(std::clamp(ui_.HScroll1->value() + by, CwSpeed::slowest, CwSpeed::fastest));
}
