// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>

namespace Ui {
class Form18;
}

// How far the closing of the program is. It takes no input.
class Form18 : public Window {
    Q_OBJECT

public:
    static constexpr int steps = 25;

    Form18(Dialogs &dialogs, QWidget *owner);
    ~Form18() override;

    void ShowStep(int step);

protected:
    bool MayClose() override { return false; }

private:
    std::unique_ptr<Ui::Form18> ui_;
};
