// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>

namespace Ui {
class Form21;
}

// How the phone program's file is read, in Label1.
class Form21 : public Window {
    Q_OBJECT

public:
    Form21(Dialogs &dialogs, QWidget *owner);
    ~Form21() override;

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    std::unique_ptr<Ui::Form21> ui_;
};
