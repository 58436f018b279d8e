// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Field.h"

#include <QFontMetrics>

Field::Field(QWidget *parent)
    : QLineEdit(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Field::setCharacters(int characters)
{
    characters_ = characters;
    updateGeometry();
}

QSize Field::sizeHint() const
{
    // "M" and "0" together are the width of an average capital letter or digit, what these fields mostly hold.
    const QFontMetrics metrics(font());
    const int width = characters_ * (metrics.horizontalAdvance(u'0') + metrics.horizontalAdvance(u'M')) / 2;
    return {width + 14, QLineEdit::sizeHint().height()};
}
