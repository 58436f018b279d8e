// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

class CqCaller;
namespace Ui {
class CallerPanel;
}

// The recorded CQ of the main window: how much of it has been played, and whether the transmitter is keyed.
//
// | control            | meaning                                   |
// |--------------------|-------------------------------------------|
// | sFondo,sPorcentaje | the bar and the part of it that is played |
// | IndicadorTx        | "Tx", red while the line is closed        |
class CallerPanel : public QWidget {
    Q_OBJECT

public:
    CallerPanel(CqCaller &caller, QWidget *parent);
    ~CallerPanel() override;

private:
    std::unique_ptr<Ui::CallerPanel> ui_;
};
