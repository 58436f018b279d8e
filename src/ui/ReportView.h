// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QStringList>
#include <QTreeView>

class TitleHeader;

// A list in report form: one line a row, columns with titles, the whole row selected, alternating grounds. A row keeps
// its ground when others come above it.
class ReportView : public QTreeView {
    Q_OBJECT

public:
    explicit ReportView(QWidget *parent = nullptr);

    // Starting widths in twips (15 a pixel at 96 dpi), widened where a column's title or its text of `samples` would
    // be cut; a column of width 0 is hidden. After the model is set. Where the list is wider than all its columns, they
    // share the rest in proportion, until the operator drags one.
    void SetColumnTwips(const QList<int> &twips, const QStringList &samples = {});

    // A click on a title, or the keyboard's way of it (see TitleHeader), calls `sort` with the column. Once the list
    // has its place in the Tab walk.
    void SortBy(QObject *context, const std::function<void(int)> &sort);
    // A double click on a row calls `open` with it, Ctrl+E with the row that is chosen.
    void OpenRows(QObject *context, const std::function<void(const QModelIndex &)> &open);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void ShareRoom();

    TitleHeader *titles_;
    bool opens_ = false;
    QList<int> starting_; // pixels at scale 1, 0 for hidden
    bool dragged_ = false;
};
