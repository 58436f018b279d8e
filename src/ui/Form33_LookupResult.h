// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/CallLookup.h"
#include "ui/Window.h"

#include <memory>

namespace Ui {
class Form33;
}

// What a service knows of a station. Esc closes.
//
// | control                        | meaning                                              |
// |--------------------------------|------------------------------------------------------|
// | Text1                          | the whole answer                                     |
// | Label1, Command1 (in Frame1)   | name, to the remarks                                 |
// | Label2, Command2 (in Frame1)   | mail address, to the remarks                         |
// | Label3, Command4 (in Frame2)   | grid, to the correspondent's grid                    |
//
// The frames serve the entry of a contact, and only LdA fills their labels.
class Form33 : public Window {
    Q_OBJECT

public:
    Form33(Dialogs &dialogs, QWidget *owner);
    ~Form33() override;

    // Shows the answer over `owner` until it is closed. With `forEntry` an answer of LdA can be taken over.
    void ShowResult(QWidget &owner, const LookupResult &result, bool forEntry);

Q_SIGNALS:
    void RemarksChosen(const QString &text);
    void GridChosen(const QString &grid);

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    std::unique_ptr<Ui::Form33> ui_;
};
