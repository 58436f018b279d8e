// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

struct Program;
class QWidget;

// Opens a text file for the operator to read: with the editor named in programas.ini ([programas], key "editor"), or
// with the system's own viewer. That none could be started is told above `owner`.
void ShowTextFile(Program &program, QWidget *owner, const QString &path);
