// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/CallerView.h"

// The recorded CQ of the contest window, for its modes other than CW: the line opens by itself at the end of the audio.
class ContestCaller {
public:
    // The window's own controls: the bar, and its "Tx" label.
    ContestCaller(CqCaller &caller, QFrame *sFondo, QLabel *Label8);

    // F1.
    void Start();
    // Esc.
    void Escape();
    // The mode is no longer CW.
    void ModeLeftCw();
    // The window is left: what plays here ends with it. A line that the main window holds stays as it is.
    void Leave();
    // The main window's CQ holds its port; the keyer's port must not be chosen anew then.
    bool MainHoldsPort() const;
    bool LineIsOn() const;

private:
    CqCaller &caller_;
};
