// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QList>

class QWidget;

// What a test can see of any control.
namespace ControlLook {

QList<QWidget *> Shown(const QWidget &window);
// Scroll bars, the line edit of a combo box and the like belong to the control that they lie in.
bool IsPart(const QWidget *widget);
bool TakesInput(const QWidget *widget);

struct Reading {
    QColor text, ground;
};
// All that has to be read in a control, the first rows of a list and the colours of a text included.
QList<Reading> Readings(QWidget *widget);

// How many pixels of its text, its titles or its longest entry a control has no room for; 0 or less: none.
int CutOff(QWidget *widget);

} // namespace ControlLook
