// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>

struct Program;
namespace Ui {
class Form19;
}

// The QSO lines of a Cabrillo file, in Text1. No command opens it.
class Form19 : public Window {
    Q_OBJECT

public:
    Form19(Program &program, QWidget *owner);
    ~Form19() override;

    // Asks for a file and shows its lines.
    void ShowFile();

private:
    Program &program_;
    std::unique_ptr<Ui::Form19> ui_;
};
