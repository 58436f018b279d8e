// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>

struct Program;
class CwKeyer;
namespace Ui {
class KeyerTest;
}

// A trial of the keyer, with the transmitter off: keys a text on the chosen line and says how exact it was.
//
// | control          | meaning                                            |
// |------------------|----------------------------------------------------|
// | puerto, DTR, RTS | the line, at first that of the contest             |
// | velocidad, texto | what is keyed                                      |
// | resultado        | mean and largest error of the elements             |
// | consejo          | what is wrong with adapter, permissions or machine |
//
// Esc stops the trial, and closes the window when none is under way.
class KeyerTest : public Window {
    Q_OBJECT

public:
    KeyerTest(Program &program, QWidget *owner);
    ~KeyerTest() override;

    void ShowTest();

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    void Try();
    void Follow();

    Program &program_;
    std::unique_ptr<Ui::KeyerTest> ui_;
    std::unique_ptr<CwKeyer> keyer_; // only while the window is shown
    bool running_ = false;
    bool lost_ = false;
};
