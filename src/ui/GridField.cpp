// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/GridField.h"

#include "logging/EntryRules.h"
#include "ui/FieldFilter.h"

#include <QLineEdit>
#include <memory>

void KeepGridShape(QLineEdit *field)
{
    FieldFilter::Attach(field, [](QChar key) { return EntryRules::FilterKey(key, EntryRules::KeyFilter::Grid); });
    const auto before = std::make_shared<QString>(field->text());
    QObject::connect(field, &QLineEdit::textEdited, field, [field, before](const QString &text) {
        if (const QString good = EntryRules::TidyGrid(text, *before); good != text)
            field->setText(good);
    });
    // Comes after textEdited, and with what was typed even where that was put right meanwhile.
    QObject::connect(field, &QLineEdit::textChanged, field, [field, before] { *before = field->text(); });
}
