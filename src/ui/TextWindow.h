// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>

namespace Ui {
class TextWindow;
}

// A text to read; Esc closes.
class TextWindow : public Window {
    Q_OBJECT

public:
    TextWindow(const QString &name, Dialogs &dialogs, QWidget *owner);
    ~TextWindow() override;

    void ShowText(const QString &title, const QString &text);

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    std::unique_ptr<Ui::TextWindow> ui_;
};
