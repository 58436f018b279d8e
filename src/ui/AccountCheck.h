// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/AccountTest.h"

#include <QObject>
#include <memory>

struct Program;
class QLabel;
class QProgressBar;
class QPushButton;
class Window;

// The test of the LdA account in the settings. Hiding the window ends it.
class AccountCheck : public QObject {
    Q_OBJECT

public:
    // The controls belong to the window.
    struct Controls {
        QPushButton *Command4; // starts it
        QProgressBar *ProgressBar1; // the seconds that it waits
        QLabel *Label3; // what is asked, then the reply
    };
    AccountCheck(Program &program, Window &window, Controls controls);
    ~AccountCheck() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Begin();
    void End();
    void Show(const AccountTest::Verdict &verdict);

    Program &program_;
    Controls controls_;
    WebClient client_;
    std::unique_ptr<PolledRequest> request_;
};
