// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>

class QAbstractItemView;
class QApplication;
class QWidget;

// The look of the program: Qt's Fusion style, one font, and two palettes. No style sheets. All pairs of text and ground
// have a contrast of at least 4.5:1, disabled text of 3:1.
enum class Theme { Light, Dark };

// Style and font, the light theme. Once, after the application object is made.
void SetUpLook(QApplication &application);

// Paints all windows, those made later included: light with the colours of an ordinary button face, dark on 0x404040.
// What is open follows at the next turn of the event loop, marks and grounds below included.
void ApplyWindowTheme(Theme theme);
Theme CurrentTheme();

QPalette ThemePalette(Theme theme);
// For lists whose cells have the text colour 0x004000 in both themes: a ground on which that reads.
QPalette ListPalette(Theme theme);

// The text of this label is an accent (station, operator, grid): blue, on the dark ground light cyan.
void MarkAccent(QWidget *label);
// This list is painted by ListPalette.
void MarkList(QAbstractItemView *list);

// The ground of the field that has the focus, light blue with black text in both themes; false takes it away again,
// and with it any colours of the widget's own.
void SetFieldFocused(QWidget *field, bool focused);
