// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHeaderView>

class QTreeView;

// The titles of a list. A list that is sorted by a click on them can be sorted by keyboard as well: the titles are a
// stop of the Tab walk, just before their list. Left and Right (Home, End) choose a title, which gets a frame and is
// told to a screen reader, Space acts as a click on it, Down goes into the list.
class TitleHeader : public QHeaderView {
    Q_OBJECT

public:
    // Made by the list in its constructor, through QTreeView::setHeader.
    explicit TitleHeader(QTreeView *list);

    // `sort` is called with the column of each title that is clicked or taken by Space, as long as `context` lives.
    // Once the list has its place in the Tab walk.
    void SortBy(QObject *context, const std::function<void(int)> &sort);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int column) const override;

private:
    // The nearest column that is shown, from this place on in steps of 1 or -1; -1 for none.
    int Shown(int place, int step) const;
    void Choose(int column);

    QTreeView *list_;
    int chosen_ = -1;
};
