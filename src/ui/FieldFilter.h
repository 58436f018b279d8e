// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QChar>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

class QComboBox;
class QEvent;
class QInputMethodEvent;
class QKeyEvent;
class QLineEdit;

// What a field makes of one entered character: another (or the same) character, or nothing.
using CharFilter = std::function<std::optional<QChar>(QChar)>;
enum class LetterCase { Keep, Upper };

// Filters what the operator brings into a line edit: typed, pasted (keys, middle button, context menu), dropped and
// composed text. Characters that the filter drops are as if not entered: when nothing remains, the field and its
// selection stay. Control characters and line ends never pass. What is in the field already, and texts that the program
// sets, are not touched. Maximum length, caret, selection and undo are the line edit's own.
class FieldFilter : public QObject {
    Q_OBJECT

public:
    // With LetterCase::Upper characters are made upper case before `filter` sees them; no `filter` lets all pass. The
    // filter belongs to the field and lives as long; a later one replaces it.
    static void Attach(QLineEdit *field, CharFilter filter, LetterCase letterCase = LetterCase::Keep);
    // The same for an editable combo box, in which choosing an entry is not filtered.
    static void Attach(QComboBox *field, CharFilter filter, LetterCase letterCase = LetterCase::Keep);

    // `text` as it would come into the field.
    QString Filtered(const QString &text) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    FieldFilter(QLineEdit *field, CharFilter filter, LetterCase letterCase);

    bool Type(QKeyEvent *event);
    bool Compose(QInputMethodEvent *event);
    bool Drop(QEvent *event);
    bool PasteSelection(QEvent *event);
    bool ShowMenu(QEvent *event);
    void Insert(const QString &text);

    QLineEdit *field_;
    CharFilter filter_;
    LetterCase letterCase_;
};
