// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/KeyerTest.h"

#include "keyer/CwSettings.h"
#include "keyer/KeyerReport.h"
#include "keyer/PlatformLine.h"
#include "keyer/PortDevice.h"
#include "ui/Program.h"
#include "ui/WindowScaler.h"
#include "ui_KeyerTest.h"

#include <QKeyEvent>
#include <QScreen>

KeyerTest::KeyerTest(Program &program, QWidget *owner)
    : Window(u"KeyerTest"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::KeyerTest>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Prueba del manipulador"_qs);
    ui_->puerto->addItems(KeyerPorts());
    ui_->velocidad->setRange(CwSpeed::slowest, CwSpeed::fastest);
    ui_->velocidad->setValue(CwSpeed::start);
    connect(ui_->probar, &QPushButton::clicked, this, &KeyerTest::Try);
    ShowFocusOn({ui_->texto});
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

KeyerTest::~KeyerTest() = default;

void KeyerTest::ShowTest()
{
    const CwSettings settings = ReadCwSettings(program_.logbook);
    ui_->puerto->setCurrentText(settings.port);
    (settings.dtr ? ui_->DTR : ui_->RTS)->setChecked(true);
    ui_->resultado->setEnabled(false);
    ui_->resultado->setText(u"Todavía sin probar"_qs);
    ui_->consejo->clear();
    running_ = false;
    keyer_ = std::make_unique<CwKeyer>(program_.lines, program_.makePacer(), program_.scheduler);
    connect(keyer_.get(), &CwKeyer::Changed, this, &KeyerTest::Follow);
    connect(keyer_.get(), &CwKeyer::LineLost, this, [this] { lost_ = true; });
    ui_->probar->setFocus();
    ShowModal();
    keyer_.reset();
}

void KeyerTest::Try()
{
    if (running_)
        return;
    ui_->resultado->setEnabled(true);
    ui_->consejo->clear();
    keyer_->SetLine(ui_->DTR->isChecked() ? ModemLine::DTR : ModemLine::RTS);
    if (const Result<void> opened = keyer_->Choose(ui_->puerto->currentText()); !opened) {
        ui_->resultado->clear();
        ui_->consejo->setText(opened.failure().text);
        return;
    }
    keyer_->SetSpeed(ui_->velocidad->value());
    running_ = true;
    lost_ = false;
    ui_->probar->setEnabled(false);
    keyer_->Replace(ui_->texto->text());
    keyer_->CwSendPending();
    Follow();
}

void KeyerTest::Follow()
{
    if (!running_)
        return;
    const CwKeyer::View view = keyer_->Shown();
    ui_->resultado->setText(view.sent);
    if (view.running)
        return;
    running_ = false;
    ui_->probar->setEnabled(true);
    ui_->probar->setFocus();
    const CwKeyer::Timing timing = keyer_->LastTiming();
    keyer_->ReleasePort();
    const QString device = PortDevice(program_.logbook, ui_->puerto->currentText());
    const KeyerReport report = ReportTiming(timing, keyer_->IsRealTime(), PlatformLine::LatencyHint(device));
    ui_->resultado->setText(report.figures);
    ui_->consejo->setText(
        lost_ ? u"El puerto %1 dejó de responder. Revise el adaptador."_qs.arg(device) : report.advice);
}

bool KeyerTest::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    if (running_)
        keyer_->Stop();
    else
        close();
    return true;
}
