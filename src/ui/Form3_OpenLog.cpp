// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form3_OpenLog.h"

#include "ui/WindowScaler.h"
#include "ui_Form3_OpenLog.h"

#include <QKeyEvent>
#include <QScreen>

Form3::Form3(Dialogs &dialogs, QWidget *owner)
    : Window(u"Form3"_qs, dialogs, owner)
    , ui_(std::make_unique<Ui::Form3>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Abrir Log ..."_qs);
    connect(ui_->List1, &QListWidget::itemClicked, this,
        [this](const QListWidgetItem *item) { Take(ui_->List1->row(item)); });
    resize(minimumSize());
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form3::~Form3() = default;

std::optional<QString> Form3::Choose(const QList<LogEntry> &logs, const QString &open)
{
    logs_ = logs;
    chosen_.reset();
    ui_->List1->clear();
    int current = 0;
    for (const LogEntry &entry : logs) {
        if (entry.name == open)
            current = ui_->List1->count();
        ui_->List1->addItem(LogListText(entry));
    }
    ui_->List1->setCurrentRow(current);
    ui_->List1->setFocus();
    ShowModal();
    return chosen_;
}

void Form3::Take(int row)
{
    if (row < 0 || row >= logs_.size())
        return;
    chosen_ = logs_[row].name;
    hide();
}

bool Form3::PreviewKey(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat())
        Take(ui_->List1->currentRow());
    else
        return false;
    return true;
}
