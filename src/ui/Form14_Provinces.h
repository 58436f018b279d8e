// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stats/ProvinceStatistics.h"
#include "ui/ProvinceModel.h"
#include "ui/SearchModel.h"
#include "ui/Window.h"

#include <memory>

struct Program;
namespace Ui {
class Form14;
}

// The contacts that a province table was made of: the first columns of a search, calls in upper case.
class ProvinceQsoModel : public SearchModel {
    Q_OBJECT

public:
    using SearchModel::SearchModel;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
};

// How far the operator has come with the Argentine provinces.
//
// | control                 | meaning                                                          |
// |-------------------------|------------------------------------------------------------------|
// | ListView2               | provinces by bands (ProvinceTable), a click on a title sorts     |
// | ListView1, Check1       | the contacts it was made of, in its place while Check1 is ticked |
// | List1 in Frame2         | grid squares confirmed                                           |
// | List2 in Frame3         | grid squares worked by contacts that are not confirmed           |
// | ProgressBar1            | while the table is filled                                        |
// | Command1, Command2      | the members of LdA, in List3 of Frame5, and away with it again   |
// | Image4                  | the site of LdA in the browser: double click, or Space           |
class Form14 : public Window {
    Q_OBJECT

public:
    Form14(Program &program, QWidget *owner);
    ~Form14() override;

    // Shows the window over `owner` until it is closed. `source` says what the contacts were taken from.
    void ShowStatistics(QWidget &owner, const QString &source, const ProvinceStatistics &statistics);

    // Adds the member that a reply of the service tells to List3; a reply without one is told.
    void ShowMember(const QString &reply);

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    void SetUpLists();
    void Connect();
    void Fill(const ProvinceStatistics &statistics);
    void SortBy(int column);
    void OpenSite();

    Program &program_;
    std::unique_ptr<Ui::Form14> ui_;
    ProvinceModel provinces_;
    ProvinceQsoModel qsos_;
    bool ascending_ = false;
};
