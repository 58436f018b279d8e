// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/QsoRow.h"
#include "ui/Window.h"

#include <QStringListModel>
#include <memory>

namespace Ui {
class Form17;
}

// The plain list of contacts with one call. List1 holds a line of titles and one line a contact; Esc closes.
class Form17 : public Window {
    Q_OBJECT

public:
    Form17(Dialogs &dialogs, QWidget *owner);
    ~Form17() override;

    // Fills the list and shows the window until it is closed.
    void Show(const QString &call, const QList<QsoRow> &rows);

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    std::unique_ptr<Ui::Form17> ui_;
    QStringListModel lines_;
};
