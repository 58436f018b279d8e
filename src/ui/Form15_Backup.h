// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "logging/LogNames.h"
#include "ui/Window.h"

#include <QStandardItemModel>
#include <memory>

struct Program;
namespace Ui {
class Form15;
}

// The ADIF of all logs.
//
// | control        | meaning                                  |
// |----------------|------------------------------------------|
// | ListView1      | the logs with their numbers of contacts  |
// | List1          | the same as texts, hidden                |
// | Label1, Label2 | number of logs, of contacts in all       |
// | Command1       | writes the file, ProgressBar1 follows    |
class Form15 : public Window {
    Q_OBJECT

public:
    Form15(Program &program, QWidget *owner);
    ~Form15() override;

    // Counts the logs, warns of a file too large to be imported again, and shows the window until it is closed.
    void OpenBackupWindow();

protected:
    bool PreviewKey(QKeyEvent *event) override;
    bool MayClose() override;

private:
    void FillList(const QList<LogEntry> &logs);
    void SortBy(int column);
    void ExportAllLogsAdif();

    Program &program_;
    std::unique_ptr<Ui::Form15> ui_;
    QStandardItemModel model_;
    qint64 total_ = 0;
    bool ascending_ = false;
    bool writing_ = false;
};
