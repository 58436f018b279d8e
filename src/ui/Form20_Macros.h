// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/Macros.h"
#include "ui/Window.h"

#include <array>
#include <memory>

class Logbook;
class QLineEdit;
namespace Ui {
class Form20;
}

// The editor of the contest's seven messages.
//
// | control            | meaning                                    |
// |--------------------|--------------------------------------------|
// | Text1_0 to Text1_6 | the messages of F1 to F7                   |
// | Label2_*, Label3_* | what the variables and speed marks mean    |
// | Command1, Command2 | keep, leave                                |
// | Command3           | the messages the program came with         |
class Form20 : public Window {
    Q_OBJECT

public:
    enum class Outcome {
        Finished, // by one of the buttons; the contest window goes on as it is
        Escaped, // by Esc or the frame; it takes everything up anew, the macros as the file has them
    };

    Form20(Logbook &logbook, Dialogs &dialogs, QWidget *owner);
    ~Form20() override;

    // Shows the messages of the file. What is kept is in the file and in `macros`.
    Outcome Edit(MacroTexts &macros);

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    void FillHelp();
    void Keep(const MacroTexts &texts);

    Logbook &logbook_;
    std::unique_ptr<Ui::Form20> ui_;
    std::array<QLineEdit *, macroCount> fields_;
    MacroTexts *macros_ = nullptr;
    Outcome outcome_ = Outcome::Escaped;
};
