// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WhenFree.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <utility>

WhenFree::WhenFree(QWidget &window)
    : QObject(&window)
    , window_(window)
{
    window.installEventFilter(this);
}

bool WhenFree::IsFree() const
{
    const QWidget *front = QApplication::activeModalWidget();
    return !front || front == &window_;
}

void WhenFree::Show(const std::function<void()> &what)
{
    waiting_.push_back(what);
    ShowNext();
}

void WhenFree::ShowNext()
{
    while (!waiting_.empty() && IsFree()) {
        const auto show = waiting_.front();
        waiting_.erase(waiting_.begin());
        if (window_.isVisible())
            show();
    }
}

bool WhenFree::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::WindowUnblocked && !waiting_.empty())
        QMetaObject::invokeMethod(this, &WhenFree::ShowNext, Qt::QueuedConnection);
    return false;
}
