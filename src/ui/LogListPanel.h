// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "logging/LogPage.h"
#include "ui/LogListModel.h"

#include <QWidget>
#include <memory>

struct Program;
namespace Ui {
class LogListPanel;
}

// The open log on the main window, one page at a time, with its paging controls.
//
// | control                      | meaning                                         |
// |------------------------------|-------------------------------------------------|
// | ListView2                    | the page, newest contact first                  |
// | Label6                       | name of the log and number of its contacts      |
// | txt_pagina, txt_total        | page shown, number of pages                     |
// | anterior, menos, mas, ultima | first, previous, next, last page                |
// | Text3, Command8              | a page by its number (KeyFilter::Digits)        |
// | Command11                    | reads the page again                            |
// | ProgressBar1                 | while the whole log is being read               |
// | Label9                       | hidden: a page is there at once                 |
class LogListPanel : public QWidget {
    Q_OBJECT

public:
    explicit LogListPanel(Program &program, QWidget *parent = nullptr);
    ~LogListPanel() override;

    // Shows the page of the open log that begins with this row. A failure is signalled, and the old page stays.
    void LoadLogPage(qint64 firstRow);
    // The page that is shown, read again; the page before, when nothing is left on it.
    void ReloadPage();
    qint64 QsoCountShown() const { return count_; }

    // A long work over the whole log: a bar in place of the list until it is over.
    void BeginProcessing();
    void ShowProcessed(qint64 done, qint64 total);
    void EndProcessing();

    // What the window's paging keys do; nothing where the control is off.
    void PageDown();
    void PageUp();
    void FirstPage();
    void LastPage();

Q_SIGNALS:
    // The page could not be read; the old one is still shown.
    void PageFailed(const Failure &failure);
    // A double click on this contact.
    void QsoChosen(const QsoRow &row);
    // A paging control was used; the focus belongs to the entry again.
    void PageMoved();

private:
    void ShowPaging();
    void Move(void (Paging::*step)());
    void GoToPage();

    Program &program_;
    std::unique_ptr<Ui::LogListPanel> ui_;
    LogListModel model_;
    Paging paging_;
    Paging shown_; // of the page that could be read last
    qint64 count_ = 0;
};
