// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class Logbook;

// Opens a text file for the operator to read: with the editor named in programas.ini ([programas], key "editor"), or
// with the system's own viewer. Gives false when neither could be started.
bool OpenTextFile(const Logbook &logbook, const QString &path);
