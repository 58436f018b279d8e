// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "logging/LogNames.h"
#include "ui/Window.h"

#include <memory>
#include <optional>

namespace Ui {
class Form3;
}

// The list of logs, List1. A click on an entry, or Enter, chooses it.
class Form3 : public Window {
    Q_OBJECT

public:
    Form3(Dialogs &dialogs, QWidget *owner);
    ~Form3() override;

    // Shows the logs with their counts, `open` selected, and gives the name of the one that was chosen; nothing when
    // none was.
    std::optional<QString> Choose(const QList<LogEntry> &logs, const QString &open = {});

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    void Take(int row);

    std::unique_ptr<Ui::Form3> ui_;
    QList<LogEntry> logs_;
    std::optional<QString> chosen_;
};
