// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QStringList>
#include <QTreeView>

// A list in report form: one line a row, columns with titles, the whole row selected, alternating grounds.
class ReportView : public QTreeView {
    Q_OBJECT

public:
    explicit ReportView(QWidget *parent = nullptr);

    // Starting widths in twips (15 a pixel at 96 dpi), widened where a column's title or its text of `samples` would
    // be cut; a column of width 0 is hidden. After the model is set.
    void SetColumnTwips(const QList<int> &twips, const QStringList &samples = {});
};
