// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>

class QWidget;

// All questions and messages of the program go through here, so that tests can read and answer them. Each call blocks
// until the operator has answered. Texts are plain text, "\n" breaks the line. `owner` may be null: the box is then
// modal to the whole program.
class Dialogs {
public:
    enum class Icon { None, Information, Exclamation, Critical, Question };
    enum class Button { Yes, No };

    virtual ~Dialogs() = default;

    static QString DefaultTitle() { return QStringLiteral("Tordillo Compact"); }

    // A text with the one button "Aceptar".
    virtual void Message(
        QWidget *owner, const QString &text, Icon icon = Icon::Exclamation, const QString &title = DefaultTitle()) = 0;

    // "Sí" or "No": true is Yes. `preset` is the button that Enter presses; Esc and the frame's cross mean No.
    [[nodiscard]] virtual bool Ask(QWidget *owner, const QString &text, Icon icon = Icon::Question,
        Button preset = Button::Yes, const QString &title = DefaultTitle()) = 0;

    // "Aceptar" or "Cancelar": true is Aceptar, for which Button::Yes stands in `preset`. Esc and the frame's cross
    // mean Cancelar.
    [[nodiscard]] virtual bool Confirm(QWidget *owner, const QString &text, Icon icon = Icon::Question,
        Button preset = Button::Yes, const QString &title = DefaultTitle()) = 0;

    // A line of text, nothing after a cancel. An accepted empty line is an empty text.
    [[nodiscard]] virtual std::optional<QString> Input(
        QWidget *owner, const QString &prompt, const QString &preset = {}, const QString &title = DefaultTitle()) = 0;

    // Full path of a file, nothing after a cancel. `filter` as in "ADIF (*.adi *.adif)", several joined by ";;".
    // Saving asks nothing about a file that exists: the caller has a question of its own, and adds what is missing of
    // the name. `name` is the proposed file name.
    [[nodiscard]] virtual std::optional<QString> OpenFile(
        QWidget *owner, const QString &title, const QString &filter, const QString &folder) = 0;
    [[nodiscard]] virtual std::optional<QString> SaveFile(QWidget *owner, const QString &title, const QString &filter,
        const QString &folder, const QString &name = {}) = 0;
};
