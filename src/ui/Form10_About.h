// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>

namespace Ui {
class Form10;
}

// Version, thanks and a picture.
class Form10 : public Window {
    Q_OBJECT

public:
    Form10(Dialogs &dialogs, QWidget *owner);
    ~Form10() override;

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    std::unique_ptr<Ui::Form10> ui_;
};
