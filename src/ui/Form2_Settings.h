// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>
#include <vector>

struct Program;
class QLineEdit;
class QToolButton;
namespace Ui {
class Form2;
}

// The settings. Its controls are bound to the configuration one by one: what is typed here holds at once everywhere,
// and leaving the window always saves it, by either button.
//
// | control                     | setting                                   | guarded by                     |
// |-----------------------------|-------------------------------------------|--------------------------------|
// | Text1, Text2                | station, operator                         | KeyFilter::Callsign, IsCallsignShape |
// | Text3                       | offset from UTC in hours                  | KeyFilter::UtcOffset           |
// | Text4                       | own grid                                  | KeepGridShape, GridLengthAllowed |
// | Check1, panta               | country while typing, dark                |                                |
// | user_lda, pass_lda          | LdA account                               |                                |
// | Command4, ProgressBar1, Label3 | tests it (AccountCheck)                |                                |
// | Text5, Text6                | QRZ account                               |                                |
// | Text8, Text7                | LdA lookup account                        |                                |
// | Text9, Text10               | eQSL account                              |                                |
// | Label6, Command5 to 7       | audio file of the caller: choose, try out |                                |
// | sFondo, AvisoAudio          | how much is played, why it cannot be      |                                |
// | Puerto, RTS, DTR            | serial port and line; Command8 tries them |                                |
// | ProbarManipulador           | opens the trial of the Morse keyer        |                                |
// | Combo1, Combo2              | milliseconds of PTT before and after      |                                |
// | Command3, Image1, 2, 3      | show a password while held                |                                |
class Form2 : public Window {
    Q_OBJECT

public:
    Form2(Program &program, QWidget *owner);
    ~Form2() override;

    // Ports and delays. On the first run they stay empty.
    void FillLists();
    // Puts the configuration into the controls and shows the window until it is left.
    void ShowSettings();
    // Opens the port that the configuration tells, with its lines open; one that is empty is left alone. When that
    // fails it is told over `owner`, and the caller goes on without a port ("NINGUNO").
    void OpenPort(QWidget *owner);
    // The theme that the configuration tells.
    void ApplyTheme();

protected:
    bool PreviewKey(QKeyEvent *event) override;
    void FieldEntered(QWidget *field) override;
    void FieldLeft(QWidget *field) override;
    bool MayClose() override { return false; }
    void hideEvent(QHideEvent *event) override;

private:
    void Bind();
    void BindLines();
    void BindCaller();
    void BindPasswords();
    void ShowConfiguration();
    bool FieldsAreGood();
    void Save();
    void Cancel();
    void SaveAndHide();
    void ChooseAudio();

    Program &program_;
    std::unique_ptr<Ui::Form2> ui_;
    bool pttTest_ = false; // Command8 is held
    bool stopHadFocus_ = false; // when Command7 was disabled
    bool showing_ = false; // while the configuration is put into the controls
};
