// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "keyer/CwKeyer.h"

#include <QObject>

struct Program;
class Window;
namespace Ui {
class Form4;
}

// The Morse keyer of the contest window: port and line, speed, and what is going out. Its controls stand in the
// window's layout.
//
// | control        | meaning                                              |
// |----------------|------------------------------------------------------|
// | Combo3         | port; the tool tip says why it is not open           |
// | Check3, Check4 | DTR, RTS                                             |
// | HScroll1       | speed; LabelVel says it, speed marks with "="        |
// | Label10        | what has been sent of the present text               |
// | Image1         | lit while the key is closed, without a port too      |
class KeyerPanel : public QObject {
    Q_OBJECT

public:
    KeyerPanel(Program &program, Ui::Form4 &ui, Window &window);

    // Port, line and speed as they stand at the opening of a contest; opens the port. Of a text that is being sent only
    // the speed changes.
    void Open();
    // Ends what is being sent and keeps port and line; gives what went wrong.
    QString Close();

    // Puts the text behind what is still to be sent, and sends.
    void Send(const QString &text);
    // SavedSpeed: the speed that Esc comes back to.
    void SaveSpeed();
    // Stops at the end of the character, opens the manual key, takes the speed back.
    void Escape();
    void Stop() { keyer_.Stop(); }
    void ChangeSpeed(int by);
    void PressKey() { keyer_.CwKeyDown(); }
    void ReleaseKey() { keyer_.CwKeyUp(); }

    CwKeyer &Keyer() { return keyer_; }

Q_SIGNALS:
    // A control was used; the focus belongs to the call.
    void Used();

private:
    void Connect();
    void TakePort();
    void ChoosePort();
    void ChooseLine(bool dtr);
    void SpeedChanged(int speed);
    void Show();
    void ShowPortTrouble(const QString &trouble);

    Program &program_;
    Ui::Form4 &ui_;
    Window &window_;
    CwKeyer keyer_;
    QString port_; // the entry that is in force
    int SavedSpeed_ = 20;
    bool CwSpeedMark_ = false; // the text moves the speed bar; the focus stays
    bool leaving_ = false; // the port goes when the character in hand has ended
};
