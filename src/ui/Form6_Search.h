// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Scheduler.h"
#include "stats/Search.h"
#include "ui/SearchModel.h"
#include "ui/Window.h"

#include <memory>

struct Program;
class ListUploads;
namespace Ui {
class Form6;
}

// The search window: filters above, what they leave of the open log below. What the list holds, in its order, is what
// the export and the uploads work on.
//
// | control                              | filter on                                  |
// |--------------------------------------|--------------------------------------------|
// | Text1, Text2                         | first and last date (CheckSearchDate)      |
// | Text3, Text4, Text5                  | MyCall, Operador, Estacion, as patterns    |
// | Text6, Text7                         | Modo, Banda, as patterns                   |
// | Text8                                | part of Obs                                |
// | Check1                               | via satellite                              |
// | Check2, Option1 to 4                 | Argentine stations, and their LdA state    |
// | Check3                               | nothing                                    |
// | POTA, IOTA, SOTA, MYSOTA, S2S, P2P   | references present                         |
// | Label6, Label7                       | number of rows, last statement             |
// | Command3, Command4                   | search; empty the filters and search       |
// | Command1, 6, 8, 5                    | export, LdA, eQSL, provinces of the rows   |
// | Frame5                               | answers of an upload (ListUploads)         |
class Form6 : public Window {
    Q_OBJECT

public:
    Form6(Program &program, QWidget *owner);
    ~Form6() override;

    // Lists the whole open log and shows the window until it is closed. An empty log is told instead.
    void ShowSearch();
    // After an edit that began here.
    void RefreshEditedRow();

protected:
    bool PreviewKey(QKeyEvent *event) override;
    void FieldLeft(QWidget *field) override;
    bool MayClose() override;
    QWidget *FocusFallback() const override;

private:
    void AttachFilters();
    void Connect();
    SearchFilters ReadFilters() const;
    void FillSearchList();
    void RunSearch();
    void ClearSearchFilters();
    void Fill(const SearchFilters &filters, const QString &statement);
    void TellBadDate(SearchCursor::BadDate which);
    void ShowCount();
    void SetWorking(bool working);
    void UpdateClearButton();
    void ArgentinesTicked(bool on);
    void SatelliteTicked(bool on);
    void SortBy(int column);
    void EditRow(const QModelIndex &row);
    void ExportSearchResultsAdif();
    void ConnectUploads();
    void ShowProvinces();

    Program &program_;
    std::unique_ptr<Ui::Form6> ui_;
    ListUploads *uploads_;
    SearchModel model_;
    SearchSlices slices_; // of the log, since the window was opened
    std::unique_ptr<Scheduler::Timer> Timer1_; // blinks Image2
    bool working_ = false;
    QPointer<QWidget> startedFrom_; // what had the focus when the work began
    bool ascending_ = false;
    int editedRow_ = -1;
};
