// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QApplication;

// Makes Qt's own buttons, menus and dialogs speak Spanish and the default locale that of Argentina. Gives false when
// Qt's translation file is neither in Qt's folder nor in "translations" beside the program: everything still works
// then, with some of Qt's own texts in English.
bool InstallSpanish(QApplication &application);
