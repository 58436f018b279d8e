// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

struct Program;
class Form1;
class LogListPanel;
class MainMenu;

// The menu entry "Provincias Argentinas": reads the open log, with its progress in the list's place, and shows the
// statistics. Esc stops the reading and shows nothing.
class ProvinceCommands : public QObject {
    Q_OBJECT

public:
    ProvinceCommands(Program &program, Form1 &window, MainMenu &menu, LogListPanel &list);

    void ShowOfLog();

private:
    Program &program_;
    Form1 &window_;
    LogListPanel &list_;
    bool working_ = false;
};
