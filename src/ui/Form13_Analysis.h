// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/ContestLogs.h"
#include "ui/Window.h"

#include <QStandardItemModel>
#include <memory>

struct Program;
namespace Ui {
class Form13;
}

// The contests that hold contacts; a double click (or Enter) analyses one. Label13 says what is going on.
class Form13 : public Window {
    Q_OBJECT

public:
    Form13(Program &program, QWidget *owner);
    ~Form13() override;

    void ShowAnalysis();

protected:
    bool PreviewKey(QKeyEvent *event) override;
    bool MayClose() override;

private:
    void Analyse(const QModelIndex &row);

    Program &program_;
    std::unique_ptr<Ui::Form13> ui_;
    QStandardItemModel model_;
    QList<ContestLog> contests_;
    bool working_ = false;
};
