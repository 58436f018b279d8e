// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

// A label that tells of a double click.
class ClickLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

Q_SIGNALS:
    void DoubleClicked();

protected:
    void mouseDoubleClickEvent(QMouseEvent *) override { Q_EMIT DoubleClicked(); }
};
