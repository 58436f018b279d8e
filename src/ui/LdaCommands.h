// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

struct Program;
class Form1;
class MainMenu;

// The upload of the open log to LdA from the menu "Log de Argentina".
class LdaCommands : public QObject {
    Q_OBJECT

public:
    LdaCommands(Program &program, Form1 &window, MainMenu &menu);

    // Sends the Argentine contacts that are not confirmed yet, and brings the confirmations in.
    void UploadAndCheck();

private:
    Program &program_;
    Form1 &window_;
    MainMenu &menu_;
};
