// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/ContestLogs.h"
#include "ui/Window.h"

#include <QStandardItemModel>
#include <memory>
#include <optional>

struct Program;
namespace Ui {
class Form8;
}

// The contests: a double click (or Enter) opens one, the right button deletes one, "Aceptar" creates one.
class Form8 : public Window {
    Q_OBJECT

public:
    Form8(Program &program, QWidget *owner);
    ~Form8() override;

    // Shows the list and gives the contest to open; nothing when the window was closed.
    std::optional<ContestLog> Choose();

    // The columns that every list of contests has.
    static void SetUpList(QStandardItemModel &model);
    static void FillList(QStandardItemModel &model, const QList<ContestLog> &contests);

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    void FillContestList();
    void Create();
    void Take(const QModelIndex &row);
    void ShowMenu(const QPoint &at);
    void Remove(const QString &name);

    Program &program_;
    std::unique_ptr<Ui::Form8> ui_;
    QStandardItemModel model_;
    QList<ContestLog> contests_;
    std::optional<ContestLog> chosen_;
};
