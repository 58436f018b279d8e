// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

struct Program;
class Form1;
class MainMenu;

// The commands of the menu "Archivo" that open, create and delete logs, and the copy of the database.
class LogCommands : public QObject {
    Q_OBJECT

public:
    LogCommands(Program &program, Form1 &window, MainMenu &menu);

    void OpenLog();
    void NewLog();
    void DeleteOpenLog();
    // The dated copy beside the database.
    void BackupDatabase();

private:
    void Use(const QString &name);
    void Tell(const QString &failure);

    Program &program_;
    Form1 &window_;
};
