// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/ContestLogs.h"
#include "online/SyncLda.h"
#include "ui/Window.h"

#include <QStandardItemModel>
#include <memory>

struct Program;
class SyncPanel;
namespace Ui {
class Form13;
}

// A list of what a command works through, for one of two commands at a time.
// - The contests that hold contacts: a double click (or Enter) analyses one. Label13 says what is going on.
// - The contacts that are sent to LdA, in a SyncPanel. Esc stops the run, and closes when none is under way.
class Form13 : public Window {
    Q_OBJECT

public:
    Form13(Program &program, QWidget *owner);
    ~Form13() override;

    void ShowAnalysis();
    // Asks whether the selected contacts are to be sent, sends them, and shows what came back until it is closed. The
    // question's No and a dead connection close it at once.
    void ShowUpload(const SyncSelection &selection, const SyncRules::Account &account);

protected:
    bool PreviewKey(QKeyEvent *event) override;
    bool MayClose() override;

private:
    void Analyse(const QModelIndex &row);
    void ShowParts(bool upload);
    void Tell(const QString &text);

    Program &program_;
    std::unique_ptr<Ui::Form13> ui_;
    QStandardItemModel model_;
    QList<ContestLog> contests_;
    SyncPanel *upload_;
    bool working_ = false;
};
