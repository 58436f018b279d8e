// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/ContestListModel.h"

#include <QObject>

struct Failure;
struct Program;
class Window;
namespace Ui {
class Form4;
}

// What the contest window shows of the log: the list of the contest, newest first, the earlier contacts with the call
// that is being typed, and the counter. Its controls stand in the window's layout.
//
// | control                   | meaning                                         |
// |---------------------------|-------------------------------------------------|
// | ListView2, Label9         | the contest and its number of contacts          |
// | Frame4, ListView1, Label7 | earlier contacts on this band and mode, warning |
class ContestLogView : public QObject {
    Q_OBJECT

public:
    ContestLogView(Program &program, Ui::Form4 &ui, Window &window);

    // Reads the whole contest that the window names.
    void LoadList();
    void AddNewest(const QsoRow &row);
    qint64 Count() const { return count_; }
    // The counter as it is written after an import.
    void ShowPlainCount();

    void ShowDuplicates();
    void HideDuplicates();

    void EditLastContestQso();

private:
    void EditRow(const QsoRow &row, int place);
    bool TellIfFailed(const Failure *failure);

    Program &program_;
    Ui::Form4 &ui_;
    Window &window_;
    ContestListModel log_, duplicates_;
    qint64 count_ = 0;
};
