// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ContestClock.h"

#include "logging/EntryTime.h"
#include "ui/Program.h"
#include "ui/Window.h"

#include <QCheckBox>
#include <QLineEdit>

ContestClock::ContestClock(Program &program, Controls controls, QObject *parent)
    : QObject(parent)
    , program_(program)
    , controls_(controls)
    , Timer1_(program.scheduler.Make(1000, [this] { Tick(); }))
    , Timer3_(program.scheduler.Make(250, [] {}))
{
    connect(controls_.Check2, &QCheckBox::clicked, this, &ContestClock::ManualTicked);
}

void ContestClock::Start()
{
    controls_.Check2->setChecked(false);
    ManualTicked(false);
    Tick();
}

void ContestClock::ManualTicked(bool manual)
{
    (manual ? Timer1_ : Timer3_)->Stop();
    (manual ? Timer3_ : Timer1_)->Start();
    controls_.Fecha->setReadOnly(!manual);
    controls_.Hora->setReadOnly(!manual);
}

void ContestClock::Tick()
{
    const EntryTime::DateAndTime now =
        EntryTime::ClockFields(program_.logbook.ClockInUse().Now(), program_.logbook.configuration.DiferUTC);
    Window::SetTextKeepingFocus(controls_.Fecha, now.fecha);
    Window::SetTextKeepingFocus(controls_.Hora, now.hora);
}
