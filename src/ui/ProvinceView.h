// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeView>

class TitleHeader;

// The table of provinces as a map: cells tinted by their state with the icon in the middle, the bands sharing the
// width, rows the height that is there, the totals set off below. Shows a ProvinceModel.
class ProvinceView : public QTreeView {
    Q_OBJECT

public:
    explicit ProvinceView(QWidget *parent = nullptr);

    // Once the model is set.
    void SetUpColumns();
    // All rows share the height that is there, as far as their text allows.
    int RowHeight(int row = 0) const;
    // See ReportView.
    void SortBy(QObject *context, const std::function<void(int)> &sort);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void FitNames();

    TitleHeader *titles_;
};
