// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Dialogs.h"

// The dialogs the operator sees: QMessageBox, QInputDialog and QFileDialog, all of them drawn by Qt itself, with their
// buttons in Spanish whether Qt's own translation was found or not. While one is open the rest of the program takes no
// input; after it, the owner's window is the active one again.
class RealDialogs : public Dialogs {
public:
    void Message(QWidget *owner, const QString &text, Icon icon, const QString &title) override;
    [[nodiscard]] bool Ask(
        QWidget *owner, const QString &text, Icon icon, Button preset, const QString &title) override;
    [[nodiscard]] bool Confirm(
        QWidget *owner, const QString &text, Icon icon, Button preset, const QString &title) override;
    [[nodiscard]] std::optional<QString> Input(
        QWidget *owner, const QString &prompt, const QString &preset, const QString &title) override;
    [[nodiscard]] std::optional<QString> OpenFile(
        QWidget *owner, const QString &title, const QString &filter, const QString &folder) override;
    [[nodiscard]] std::optional<QString> SaveFile(QWidget *owner, const QString &title, const QString &filter,
        const QString &folder, const QString &name) override;
};
