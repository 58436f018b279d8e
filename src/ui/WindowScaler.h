// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>

class QWidget;

// Makes a window grow and shrink with the screen. Only fonts, given minimum and maximum sizes, margins and gaps of the
// layouts and the starting widths of list columns are scaled; the layouts do the rest. The scale is the present size of
// the window over its captured size, the smaller of the two directions, held between 0.8 and 3.

// Takes the present sizes of `window` and its controls as those of scale 1, and from now on runs ApplyLayout at each
// resize. To be called once the controls stand, before the window is shown. Fonts that a control sets itself keep
// their ratio to the rest. Controls added later are taken in, at their own sizes as those of scale 1.
void CaptureLayout(QWidget *window);

// Multiplies position and size of `window` by the ratio of `screen` to 1366x768, the screen the windows are drawn for;
// with `keepProportions` by the smaller of the two ratios. Never larger than `screen`.
void FitToScreen(QWidget *window, QSize screen, bool keepProportions);

// Brings the fonts and sizes to the present size of `window`. Where the content needs more room than there is at that
// scale, the scale is lowered until it fits; where even the least does not, the window grows. Sizes that somebody
// changed meanwhile (a column the operator dragged) are taken as meant for the scale they were set at. Does nothing for
// a window that was not captured.
void ApplyLayout(QWidget *window);

// The scale in use, 1 for a window that was not captured: given pixel widths are multiplied by it.
double ScaleOf(const QWidget *window);
