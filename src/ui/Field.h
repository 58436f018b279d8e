// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>

// A one-line field as wide as what it holds: `characters` characters of its font, whatever size that has.
class Field : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(int characters READ Characters WRITE setCharacters)

public:
    explicit Field(QWidget *parent = nullptr);

    int Characters() const { return characters_; }
    // Spelled as the layout files call it.
    void setCharacters(int characters);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    int characters_ = 10;
};
