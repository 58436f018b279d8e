// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MacroPanel.h"

#include "ui/KeyerPanel.h"
#include "ui/Program.h"
#include "ui_Form4_Contest.h"

namespace {

constexpr int autoCqInterval = 4000;

const QColor usual(0xC0, 0xFF, 0xFF), suggested(0xFF, 0xC0, 0x80);

} // namespace

MacroPanel::MacroPanel(Program &program, Ui::Form4 &ui, KeyerPanel &keyer, std::function<bool()> store, QObject *parent)
    : QObject(parent)
    , program_(program)
    , ui_(ui)
    , keyer_(keyer)
    , store_(std::move(store))
    , buttons_{ui.macros_0, ui.macros_1, ui.macros_2, ui.macros_3, ui.macros_4, ui.macros_5, ui.macros_6}
    , TimerACQ_(program.scheduler.Make(autoCqInterval, [this] { SendMacro(MacroCq); }))
{
    Connect();
    HighlightMacro(MacroCq);
}

void MacroPanel::Connect()
{
    for (int i = 0; i < macroCount; ++i)
        connect(buttons_[size_t(i)], &QPushButton::clicked, this, [this, i] { SendMacro(i); });
    connect(ui_.ESM, &QCheckBox::toggled, this, &MacroPanel::EsmChanged);
    connect(ui_.ESM, &QCheckBox::clicked, this, &MacroPanel::Used);
    connect(ui_.RUN, &QRadioButton::clicked, this, &MacroPanel::RunChosen);
    connect(ui_.SYP, &QRadioButton::clicked, this, &MacroPanel::SearchChosen);
    connect(ui_.Check9, &QCheckBox::toggled, this, &MacroPanel::AutoCqChanged);
    connect(ui_.Check9, &QCheckBox::clicked, this, &MacroPanel::Used);
    for (QLineEdit *field : std::initializer_list<QLineEdit *>{ui_.Text2, ui_.RSE, ui_.Corresponsal})
        connect(field, &QLineEdit::textChanged, this, &MacroPanel::ShowCaptions);
    connect(ui_.RSR, &QLineEdit::textChanged, this, &MacroPanel::ExchangeChanged);
}

QString MacroPanel::Load()
{
    const Result<void> loaded = LoadMacros(program_.logbook, macros_);
    ShowCaptions();
    return loaded ? QString() : loaded.failure().text;
}

MacroFields MacroPanel::Fields() const
{
    return {ui_.Text2->text(), ui_.Corresponsal->text(), ui_.RSE->text(), ui_.Label3->text(), ui_.Check5->isChecked(),
        SavedCall_, SavedSerie_};
}

bool MacroPanel::SendMacro(int index)
{
    keyer_.SaveSpeed();
    if (index == MacroCq && ui_.ESM->isChecked() && ui_.SYP->isChecked()) {
        ui_.RUN->setChecked(true);
        RunChosen();
    }
    const QString text = MacroMessage(macros_, index, Fields());
    // The contact is on the disk before its TU is heard, and one that is not gets none.
    if (index == MacroTu && !ui_.Corresponsal->text().isEmpty() && !ui_.RSR->text().isEmpty() && !store_())
        return false;
    keyer_.Send(text);
    return true;
}

void MacroPanel::SendExchangeAgain(const QString &call, const QString &serial)
{
    keyer_.Send(ExchangeAgain(call, serial, ui_.Check5->isChecked()));
}

bool MacroPanel::Enter()
{
    const EsmStep step = StepOfEnter(ui_.RUN->isChecked(), !ui_.Corresponsal->text().isEmpty(),
        !ui_.RSR->text().isEmpty(), !SavedCall_.isEmpty() && !SavedSerie_.isEmpty());
    if (step.stopsAutoCq) {
        ui_.Check9->setChecked(false);
        StopAutoCq();
    }
    if (step.savesExchange) {
        SavedCall_ = ui_.Corresponsal->text();
        SavedSerie_ = ui_.RSE->text();
    }
    bool sent = true;
    if (step.sends == EsmStep::Sends::Message)
        sent = SendMacro(step.macro);
    else if (step.sends == EsmStep::Sends::ExchangeAgain)
        SendExchangeAgain(SavedCall_, SavedSerie_);
    // A refused contact has put the focus where something is missing.
    if (sent && step.focus == EsmStep::Focus::Call)
        Q_EMIT Used();
    else if (sent && step.focus == EsmStep::Focus::Exchange)
        ui_.RSR->setFocus();
    return step.stopsAutoCq;
}

void MacroPanel::HighlightMacro(int index)
{
    for (size_t i = 0; i < buttons_.size(); ++i) {
        QPalette palette;
        palette.setColor(QPalette::Button, ui_.ESM->isChecked() && int(i) == index ? suggested : usual);
        palette.setColor(QPalette::ButtonText, Qt::black);
        buttons_[i]->setPalette(palette);
    }
}

void MacroPanel::CallChanged()
{
    const QString call = ui_.Corresponsal->text();
    if (call.isEmpty()) {
        HighlightMacro(MacroCq);
        // Its pace stays what it is where it runs.
        if (!ui_.SYP->isChecked() && ui_.Check9->isChecked() && !TimerACQ_->IsRunning())
            TimerACQ_->Start();
    } else if (ui_.RSE->text().isEmpty()) {
        SavedCall_ = call;
        SavedSerie_.clear();
        HighlightMacro(MacroSerie);
    }
    if (ui_.SYP->isChecked())
        HighlightMacro(MacroOwnCall);
}

void MacroPanel::ExchangeChanged()
{
    if (ui_.Corresponsal->text().isEmpty())
        return;
    const bool filled = !ui_.RSR->text().isEmpty();
    if (ui_.SYP->isChecked() || !filled)
        HighlightMacro(MacroSerie);
    else if (ui_.ESM->isChecked())
        HighlightMacro(MacroTu);
}

void MacroPanel::StopAutoCq() { TimerACQ_->Stop(); }

void MacroPanel::SwitchOff()
{
    ui_.ESM->setChecked(false);
    StopAutoCq();
}

void MacroPanel::EsmChanged(bool on)
{
    if (!on)
        ui_.RUN->setChecked(true);
    for (QWidget *control : std::initializer_list<QWidget *>{ui_.RUN, ui_.SYP, ui_.Check9})
        control->setEnabled(on);
    ui_.Check9->setChecked(false);
    ForgetExchange();
    HighlightMacro(MacroCq);
}

void MacroPanel::RunChosen()
{
    HighlightMacro(MacroCq);
    ForgetExchange();
    ui_.Check9->setChecked(false);
    ui_.Check9->setEnabled(true);
}

void MacroPanel::SearchChosen()
{
    ui_.Check9->setChecked(false);
    ui_.Check9->setEnabled(false);
    ForgetExchange();
    HighlightMacro(MacroOwnCall);
}

void MacroPanel::AutoCqChanged(bool on)
{
    if (on)
        TimerACQ_->Start();
    else
        TimerACQ_->Stop();
}

void MacroPanel::ForgetExchange()
{
    SavedCall_.clear();
    SavedSerie_.clear();
}

void MacroPanel::ShowCaptions()
{
    const auto captions = MacroCaptions(ui_.Text2->text(), ui_.Corresponsal->text(), ui_.RSE->text());
    for (size_t i = 0; i < captions.size(); ++i)
        buttons_[i]->setText(captions[i]);
}
