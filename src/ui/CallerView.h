// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class CqCaller;
class QFrame;
class QLabel;
class QWidget;

// How a window shows the recorded CQ: the part sPorcentaje of the bar sFondo that is played, and the "Tx" label, red
// while the line is closed. It makes sPorcentaje itself, with the width 0.
class CallerView : public QObject {
    Q_OBJECT

public:
    // `tx` may be null. Lives as long as `sFondo`.
    CallerView(CqCaller &caller, QFrame *sFondo, QLabel *tx);

    bool eventFilter(QObject *watched, QEvent *event) override; // the bar is as high as its ground

private:
    void ShowBar(int width);
    void ShowLine(bool on);

    QFrame *sFondo_;
    QWidget *sPorcentaje_;
    QLabel *tx_;
};
