// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/KeyerPanel.h"

#include "keyer/CqCaller.h"
#include "keyer/CwSettings.h"
#include "ui/Dialogs.h"
#include "ui/Program.h"
#include "ui/Window.h"
#include "ui_Form4_Contest.h"

#include <algorithm>

KeyerPanel::KeyerPanel(Program &program, Ui::Form4 &ui, Window &window)
    : QObject(&window)
    , program_(program)
    , ui_(ui)
    , window_(window)
    , keyer_(program.lines, program.makePacer(), program.scheduler)
{
    ui_.Combo3->addItems(KeyerPorts());
    Connect();
}

void KeyerPanel::Connect()
{
    connect(ui_.HScroll1, &QScrollBar::valueChanged, this, &KeyerPanel::SpeedChanged);
    connect(ui_.Check3, &QCheckBox::clicked, this, &KeyerPanel::ChooseLine);
    connect(ui_.Check4, &QCheckBox::clicked, this, [this](bool rts) { ChooseLine(!rts); });
    connect(ui_.Combo3, &QComboBox::activated, this, [this] {
        if (program_.caller.MainHoldsPort()) {
            ui_.Combo3->setCurrentText(port_);
            return;
        }
        ChoosePort();
        Q_EMIT Used();
    });
    connect(&keyer_, &CwKeyer::Changed, this, &KeyerPanel::Show);
    connect(&keyer_, &CwKeyer::LineLost, this, [this] {
        const QString trouble = u"El puerto %1 dejó de responder. El texto sigue, pero no sale al aire.\n\n"
                                "Revise el adaptador y vuelva a elegir el puerto."_qs.arg(ui_.Combo3->currentText());
        ShowPortTrouble(trouble);
        program_.dialogs.Message(&window_, trouble);
    });
    connect(&keyer_, &CwKeyer::HeldTooLong, this, [this] {
        program_.dialogs.Message(&window_,
            u"El manipulador quedó cerrado más de %1 segundos y se abrió."_qs.arg(CwKeyer::longestHold / 1000));
    });
}

void KeyerPanel::Open()
{
    leaving_ = false;
    keyer_.ClearStop();
    if (!keyer_.IsRunning())
        TakePort();
    ui_.HScroll1->setValue(CwSpeed::start);
    keyer_.SetSpeed(CwSpeed::start);
    SaveSpeed();
    Show();
}

void KeyerPanel::TakePort()
{
    const CwSettings settings = ReadCwSettings(program_.logbook);
    ui_.Combo3->setCurrentText(settings.port);
    ui_.Check3->setChecked(settings.dtr);
    ui_.Check4->setChecked(!settings.dtr);
    keyer_.SetLine(settings.dtr ? ModemLine::DTR : ModemLine::RTS);
    port_ = settings.port;
    if (program_.caller.MainHoldsPort())
        ShowPortTrouble(u"El llamador de CQ está usando su puerto. Elija el puerto cuando termine."_qs);
    else
        ChoosePort();
}

QString KeyerPanel::Close()
{
    keyer_.Stop();
    keyer_.Replace({});
    keyer_.CwKeyUp();
    leaving_ = true;
    Show();
    const Result<void> saved =
        SaveKeyerSettings(program_.logbook, {ui_.Combo3->currentText(), ui_.Check3->isChecked()});
    return saved ? QString() : saved.failure().text;
}

void KeyerPanel::ChoosePort()
{
    port_ = ui_.Combo3->currentText();
    const Result<void> opened = keyer_.Choose(port_);
    ShowPortTrouble(opened ? QString() : opened.failure().text);
}

// A missing port is no reason to stop an operator who works without one; it is there to be seen, not to be answered.
void KeyerPanel::ShowPortTrouble(const QString &trouble)
{
    ui_.Combo3->setToolTip(trouble);
    ui_.EstadoPuerto->setText(trouble.isEmpty() ? QString() : u"sin puerto"_qs);
    ui_.EstadoPuerto->setToolTip(trouble);
}

void KeyerPanel::ChooseLine(bool dtr)
{
    ui_.Check3->setChecked(dtr);
    ui_.Check4->setChecked(!dtr);
    keyer_.SetLine(dtr ? ModemLine::DTR : ModemLine::RTS);
    Q_EMIT Used();
}

void KeyerPanel::SpeedChanged(int speed)
{
    ui_.LabelVel->setText(CwSpeed::Text(speed));
    if (CwSpeedMark_)
        return;
    keyer_.SetSpeed(speed);
    Q_EMIT Used();
}

void KeyerPanel::Send(const QString &text)
{
    keyer_.Append(text);
    keyer_.CwSendPending();
    Show();
}

void KeyerPanel::SaveSpeed() { SavedSpeed_ = ui_.HScroll1->value(); }

void KeyerPanel::Escape()
{
    keyer_.Stop();
    keyer_.CwKeyUp();
    // The bar may lag behind a mark that has just gone by.
    keyer_.SetSpeed(SavedSpeed_);
    ui_.HScroll1->setValue(SavedSpeed_);
}

void KeyerPanel::ChangeSpeed(int by)
{
    ui_.HScroll1->setValue(std::clamp(ui_.HScroll1->value() + by, CwSpeed::slowest, CwSpeed::fastest));
}

void KeyerPanel::Show()
{
    const CwKeyer::View view = keyer_.Shown();
    // Of a long text the end is what counts.
    const QString sent = CwKeyer::OnOneLine(view.sent);
    const bool fits = ui_.Label10->fontMetrics().horizontalAdvance(sent) <= ui_.Label10->contentsRect().width() - 8;
    ui_.Label10->setAlignment((fits ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    ui_.Label10->setText(sent);
    ui_.Image1->setVisible(view.keyed);
    for (QWidget *control : std::initializer_list<QWidget *>{ui_.Combo3, ui_.Check3, ui_.Check4})
        control->setEnabled(!view.running);
    if (view.speedByMark) {
        CwSpeedMark_ = true;
        ui_.HScroll1->setValue(view.speed);
        ui_.LabelVel->setText(CwSpeed::MarkText(view.speed));
        CwSpeedMark_ = false;
    }
    if (leaving_ && !view.running)
        keyer_.ReleasePort();
}
