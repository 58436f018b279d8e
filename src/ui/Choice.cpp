// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Choice.h"

#include <QComboBox>
#include <QLineEdit>

void Choice::OnlyByClick(QComboBox *combo)
{
    combo->setCompleter(nullptr);
    QObject::disconnect(combo->lineEdit(), &QLineEdit::editingFinished, combo, nullptr);
    QObject::connect(
        combo->lineEdit(), &QLineEdit::editingFinished, combo, [combo] { Show(combo, combo->currentText()); });
}

void Choice::Show(QComboBox *combo, const QString &text)
{
    combo->setCurrentIndex(combo->findText(text));
    combo->setEditText(text);
}
