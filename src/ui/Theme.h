// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>

class QApplication;
class QWidget;

// The look of the program: Qt's Fusion style, one font, and two palettes. No style sheets. All pairs of text and ground
// have a contrast of at least 4.5:1, disabled text of 3:1.
enum class Theme { Light, Dark };

// Style and font, the light theme. Once, after the application object is made.
void SetUpLook(QApplication &application);

// Paints all windows, those made later included: light with the colours of an ordinary button face, dark on 0x404040.
// What is open follows at the next turn of the event loop, accents and grounds below included.
void ApplyWindowTheme(Theme theme);
Theme CurrentTheme();

QPalette ThemePalette(Theme theme);
// For the rows of a list, whose texts are dark green (0x004000) or black in both themes: in the dark theme they stand
// on the green of a lit display, two shades of it, no brighter than those texts need. The list around them is dark.
QPalette ListRowPalette(Theme theme);

// The text of this label is an accent (station, operator, grid): blue, on the dark ground light cyan.
void MarkAccent(QWidget *label);

// The ground of the field that has the focus, light blue with black text in both themes; false takes it away again,
// and with it any colours of the widget's own.
void SetFieldFocused(QWidget *field, bool focused);
