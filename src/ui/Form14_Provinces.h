// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/WebClient.h"
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
// | ProgressBar1            | hidden, full: the table is filled at once, before it is shown    |
// | Command1, Command2      | the members of LdA, in List3 of Frame5, and away with it again   |
// | consulta                | while LdA is asked for them; Command2 ends the asking            |
// | Image4                  | the site of LdA in the browser: double click, or Space           |
class Form14 : public Window {
    Q_OBJECT

public:
    Form14(Program &program, QWidget *owner);
    ~Form14() override;

    // Shows the window over `owner` until it is closed. `source` says what the contacts were taken from.
    void ShowStatistics(QWidget &owner, const QString &source, const ProvinceStatistics &statistics);

protected:
    bool PreviewKey(QKeyEvent *event) override;
    QWidget *FocusFallback() const override;

private:
    void SetUpLists();
    void Connect();
    void Fill(const ProvinceStatistics &statistics);
    void ShowQsos(bool on);
    void SortBy(int column);
    void AskMembers();
    void ShowMembers(const WebReply &reply);
    void StopAsking();
    void OpenSite();

    Program &program_;
    std::unique_ptr<Ui::Form14> ui_;
    ProvinceModel provinces_;
    ProvinceQsoModel qsos_;
    bool ascending_ = false;
    WebClient client_;
    std::unique_ptr<PolledRequest> request_; // for the members, ends with the window
};
