// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TextWindow.h"

#include "ui/WindowScaler.h"
#include "ui_TextWindow.h"

#include <QKeyEvent>
#include <QScreen>

TextWindow::TextWindow(const QString &name, Dialogs &dialogs, QWidget *owner)
    : Window(name, dialogs, owner)
    , ui_(std::make_unique<Ui::TextWindow>())
{
    ui_->setupUi(this);
    setObjectName(name);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

TextWindow::~TextWindow() = default;

void TextWindow::ShowText(const QString &title, const QString &text)
{
    setWindowTitle(title);
    ui_->texto->setPlainText(text);
    ShowModal();
}

bool TextWindow::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    close();
    return true;
}
