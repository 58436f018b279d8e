// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Dialogs.h"

#include <QList>
#include <QStringList>
#include <functional>
#include <optional>

// Records what would have been shown and answers at once. Answers are taken from the front of the lists; with none left
// a question gets its preset button, as Enter would give it, and inputs and files are cancelled.
class RecordingDialogs : public Dialogs {
public:
    enum class Kind { Message, Ask, Input, OpenFile, SaveFile };
    struct Shown {
        Kind kind;
        QWidget *owner;
        QString text; // the title of a file dialog
        Icon icon = Icon::None;
        Button preset = Button::Yes;
        QString title;
        QString detail; // preset of an input; filter, folder and name of a file dialog, joined by "|"
    };

    QList<Shown> shown;
    QList<bool> answers;
    QList<std::optional<QString>> inputs;
    QList<std::optional<QString>> files;
    std::function<void()> whileShown; // runs while the dialog is "open"

    QStringList Texts() const
    {
        QStringList texts;
        for (const Shown &dialog : shown)
            texts << dialog.text;
        return texts;
    }

    void Message(QWidget *owner, const QString &text, Icon icon, const QString &title) override
    {
        Record({Kind::Message, owner, text, icon, Button::Yes, title, {}});
    }
    bool Ask(QWidget *owner, const QString &text, Icon icon, Button preset, const QString &title) override
    {
        Record({Kind::Ask, owner, text, icon, preset, title, {}});
        return answers.isEmpty() ? preset == Button::Yes : answers.takeFirst();
    }
    bool Confirm(QWidget *owner, const QString &text, Icon icon, Button preset, const QString &title) override
    {
        return Ask(owner, text, icon, preset, title);
    }
    std::optional<QString> Input(
        QWidget *owner, const QString &prompt, const QString &preset, const QString &title) override
    {
        Record({Kind::Input, owner, prompt, Icon::None, Button::Yes, title, preset});
        return inputs.isEmpty() ? std::nullopt : inputs.takeFirst();
    }
    std::optional<QString> OpenFile(
        QWidget *owner, const QString &title, const QString &filter, const QString &folder) override
    {
        Record({Kind::OpenFile, owner, title, Icon::None, Button::Yes, title, filter + u'|' + folder});
        return files.isEmpty() ? std::nullopt : files.takeFirst();
    }
    std::optional<QString> SaveFile(QWidget *owner, const QString &title, const QString &filter, const QString &folder,
        const QString &name) override
    {
        Record({Kind::SaveFile, owner, title, Icon::None, Button::Yes, title, filter + u'|' + folder + u'|' + name});
        return files.isEmpty() ? std::nullopt : files.takeFirst();
    }

private:
    void Record(Shown dialog)
    {
        shown << std::move(dialog);
        if (whileShown)
            whileShown();
    }
};
