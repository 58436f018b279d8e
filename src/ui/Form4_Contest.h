// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/ContestLogs.h"
#include "core/Scheduler.h"
#include "ui/Window.h"

#include <memory>

struct Program;
class ContestClock;
class ContestCommands;
class ContestEntryFields;
class ContestLogView;
class KeyerPanel;
class MacroPanel;
class MasterView;
class QComboBox;
class QPushButton;
namespace Ui {
class Form4;
}

// The contest: call and exchange large and side by side, the log on screen, newest first. Modal to the program; the
// main window lies minimised meanwhile.
//
// | control                     | meaning                                    | guarded by            |
// |-----------------------------|--------------------------------------------|-----------------------|
// | Text2                       | own call                                   | CheckContestOwnCall   |
// | Fecha, Hora, Check2         | UTC; typed while Check2 is ticked          | CheckContestFecha, Hora |
// | Corresponsal                | call                                       | KeyFilter::Callsign   |
// | RSE, RSR                    | serial sent, exchange received             | SentSerieFilter       |
// | Combo1, Combo2              | mode, band                                 |                       |
// | mhz, Text1, Label6          | frequency that is stored, band of the list |                       |
// | Label2, Label3              | contest and series type                    |                       |
// | Label7, Frame4, ListView1   | "DUPLICADO" and the earlier contacts       |                       |
// | Label9, Label11             | number of contacts, country of the call    |                       |
// | Check8, Frame2, MCheck      | MasterCheck                                |                       |
// | macros_0 to 6, ESM, RUN ... | see MacroPanel                             |                       |
// | HScroll1, Combo3, Label10 ... | see KeyerPanel                           |                       |
// | Label13, sFondo, Label8     | recorded CQ of the other modes: caption, played part, line |       |
// | Command5                    | editor of the macros                       |                       |
// | Command1, 2, 4, IMP_C_FT8   | Cabrillo, ADIF, general log, Cabrillo in   |                       |
//
// Keys: Enter sends with ESM and stores, Space moves between call and exchange, F1 to F7 send, Esc stops, the Down
// arrow is the key, F9 sends typed text, F12 edits the last contact, Ctrl+W wipes the call, Page Up and Page Down
// change the speed, F8 repaints the log.
class Form4 : public Window {
    Q_OBJECT

public:
    explicit Form4(Program &program);
    ~Form4() override;

    // Shows the contest until the operator leaves it.
    void Enter(const ContestLog &contest);

protected:
    bool PreviewKey(QKeyEvent *event) override;
    bool PreviewKeyRelease(QKeyEvent *event) override;
    bool event(QEvent *event) override;
    bool ClaimsShortcut(const QKeyEvent *event) const override;
    void FieldLeft(QWidget *field) override;
    void FieldEntered(QWidget *field) override;
    QWidget *FocusFallback() const override;
    bool MayClose() override;

private:
    void Connect();
    void BuildMenu();
    void Activate();
    void ShowPanels();
    void EnterPressed();
    bool SendKey(QKeyEvent *event);
    void Escape();
    void EditMacros();
    void TypeText();
    bool InCw() const;
    void ShowLastValues();
    bool Store();
    void Stored(const QsoRow &row);
    void CallChanged();
    void ShowMaster();
    void Chosen(const QComboBox *list);
    void ModeChosen();
    void RunCommand(void (Form4::*work)());
    void MakeCabrillo();
    void MakeAdif();
    void Transfer();
    void ImportCabrillo();
    void NextSerial();
    bool Leave(bool askForCall);
    bool IsIncremental() const;

    Program &program_;
    std::unique_ptr<Ui::Form4> ui_;
    std::unique_ptr<ContestEntryFields> fields_;
    MasterView *master_;
    ContestCommands *commands_;
    ContestLogView *log_;
    KeyerPanel *keyer_;
    MacroPanel *macros_;
    ContestClock *clock_;
    std::unique_ptr<Scheduler::Timer> Timer2_;
    bool leaving_ = false;
    bool working_ = false; // a command of the bottom line
    bool byKey_ = false; // the present event is a key
};
