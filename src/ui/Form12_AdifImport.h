// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "interchange/AdifFile.h"
#include "interchange/AdifImport.h"
#include "interchange/AdifStaging.h"
#include "ui/Window.h"

#include <memory>

struct Program;
namespace Ui {
class Form12;
}

// The import of an ADIF file in two steps: "Abrir" repairs and reads it, and stages its contacts beside the log;
// "Cargar" moves them into the open log.
//
// | control                   | meaning                                            |
// |---------------------------|----------------------------------------------------|
// | Command1, Command3        | "Abrir", "Cargar"                                  |
// | Check1, Check2, Command6  | the phone program's SOTA or POTA file, help        |
// | Label2 to Label7          | file, path, program, lines, records, station calls |
// | Label9, Label10           | records new to the log, repeats                    |
// | List2                     | errors by kind                                     |
// | Detalle                   | each record that was dropped or changed            |
// | Label8, ProgressBar1      | what is going on                                   |
class Form12 : public Window {
    Q_OBJECT

public:
    Form12(Program &program, QWidget *owner);
    ~Form12() override;

    // Shows the window until it is closed; what an earlier "Abrir" staged is still there to be loaded.
    void ShowImport();

protected:
    bool PreviewKey(QKeyEvent *event) override;
    bool MayClose() override;

private:
    void Connect();
    void Open();
    void ReadFile(const QString &path);
    bool RepairAndRead(const QString &path, Run &run);
    void Rejoin(const QString &path);
    bool HasContacts(const QString &path);
    bool AskForStation();
    void ParseAdifRecords(Run &run);
    void Parsed(qsizetype number, const AdifImport::Contact &contact);
    bool StageSoFar();
    void LoadStagedRows();
    bool LoadRows(const QList<AdifStaging::Staged> &rows);
    bool CancelAsked();
    void ClearLabels();
    void Finish();
    void ShowActivity(const QString &text);
    void ShowDetail();
    void Tell(const Failure &failure, const QString &before = {});

    Program &program_;
    std::unique_ptr<Ui::Form12> ui_;
    std::unique_ptr<class TextWindow> detail_;
    bool ImportBusy_ = false;
    bool ImportCancel_ = false;
    bool ReplaceDuplicates_ = false;

    AdifFile::Records records_;
    QString writtenBy_; // the program that wrote the file
    QString typedStation_;
    QList<AdifStaging::Staged> prepared_; // not in the staging table yet
    int newOnes_ = 0, repeats_ = 0;
    QMap<AdifImport::Trouble, int> troubles_;
    QStringList details_;
};
