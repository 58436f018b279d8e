// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ContestCaller.h"

#include "keyer/CqCaller.h"

#include <QFrame>

ContestCaller::ContestCaller(CqCaller &caller, QFrame *sFondo, QLabel *Label8)
    : caller_(caller)
{
    new CallerView(caller, sFondo, Label8);
}

void ContestCaller::Start() { caller_.Start(CqCaller::From::Contest); }

void ContestCaller::Escape() { caller_.Escape(); }

void ContestCaller::ModeLeftCw() { caller_.PttOff(caller_.Line()); }

void ContestCaller::Leave() { caller_.Leave(CqCaller::From::Contest); }

bool ContestCaller::LineIsOn() const { return caller_.LineIsOn(); }

bool ContestCaller::MainHoldsPort() const { return caller_.MainHoldsPort(); }
