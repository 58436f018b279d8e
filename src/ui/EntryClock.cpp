// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EntryClock.h"

#include "logging/EntryTime.h"
#include "ui/Program.h"
#include "ui/Window.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

EntryClock::EntryClock(Program &program, Controls controls, QObject *parent)
    : QObject(parent)
    , program_(program)
    , controls_(controls)
    , Timer3_(program.scheduler.Make(250, [] {}))
{
    controls_.Label11->setText(u"LU"_qs);
    controls_.Label11->hide();
    connect(controls_.Check1, &QCheckBox::clicked, this, [this] {
        ManualChanged();
        if (running_)
            Q_EMIT ManualClicked();
    });
    connect(controls_.Label11, &QPushButton::clicked, this, [this] {
        controls_.Label11->setText(controls_.Label11->text() == u"LU" ? u"UTC"_qs : u"LU"_qs);
        Fill();
    });
}

bool EntryClock::IsManual() const { return controls_.Check1->isChecked(); }

void EntryClock::SetManual(bool manual)
{
    controls_.Check1->setChecked(manual);
    ManualChanged();
}

void EntryClock::ManualChanged()
{
    controls_.Label11->setVisible(IsManual());
    if (!IsManual()) {
        Timer3_->Stop();
        return;
    }
    Timer3_->Start();
    Fill();
}

void EntryClock::Fill()
{
    const QDateTime now = program_.logbook.ClockInUse().Now();
    const EntryTime::DateAndTime shown = controls_.Label11->text() == u"LU"
        ? EntryTime::LocalFields(now)
        : EntryTime::ClockFields(now, program_.logbook.configuration.DiferUTC);
    controls_.Fecha->setText(shown.fecha);
    controls_.Hora->setText(shown.hora);
}

void EntryClock::Tick()
{
    running_ = true;
    if (IsManual())
        return;
    const EntryTime::DateAndTime now =
        EntryTime::ClockFields(program_.logbook.ClockInUse().Now(), program_.logbook.configuration.DiferUTC);
    Window::SetTextKeepingFocus(controls_.Fecha, now.fecha);
    Window::SetTextKeepingFocus(controls_.Hora, now.hora);
}
