// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>

class CwKeyer;
namespace Ui {
class Form22;
}

// Free text as Morse: Enter sends what Text1 holds, again and again; Esc stops after the character in hand and closes.
class Form22 : public Window {
    Q_OBJECT

public:
    enum class Outcome {
        Escaped, // the contest window goes on as it is
        Closed, // by the frame; it takes everything up anew
    };

    Form22(Dialogs &dialogs, QWidget *owner);
    ~Form22() override;

    Outcome Send(CwKeyer &keyer);

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    std::unique_ptr<Ui::Form22> ui_;
    CwKeyer *keyer_ = nullptr;
    Outcome outcome_ = Outcome::Closed;
};
