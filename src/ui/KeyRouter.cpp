// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/KeyRouter.h"

#include "ui/Window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QMenuBar>
#include <algorithm>

namespace {

bool IsEnter(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

// Enter that nobody took must not press a button or pick a list entry on its own; some platforms do that.
bool ActsOnEnter(const QWidget *receiver)
{
    return qobject_cast<const QAbstractButton *>(receiver) || qobject_cast<const QComboBox *>(receiver)
        || qobject_cast<const QComboBox *>(receiver->parentWidget());
}

// A held key answers no dialog, whoever it belongs to.
bool AnswersByRepeat(const QWidget *receiver, const QWidget *top, const QKeyEvent *event)
{
    if (event->type() != QEvent::KeyPress || !event->isAutoRepeat() || !qobject_cast<const QDialog *>(top))
        return false;
    return IsEnter(event) || event->key() == Qt::Key_Escape
        || (event->key() == Qt::Key_Space && qobject_cast<const QAbstractButton *>(receiver));
}

} // namespace

void KeyRouter::Install()
{
    if (qApp->findChild<KeyRouter *>(QString(), Qt::FindDirectChildrenOnly))
        return;
    qApp->installEventFilter(new KeyRouter(qApp));
}

bool KeyRouter::eventFilter(QObject *receiver, QEvent *event)
{
    if (!receiver->isWidgetType())
        return false;
    auto *widget = static_cast<QWidget *>(receiver);
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        return FilterOverride(widget, static_cast<QKeyEvent *>(event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return FilterKey(widget, static_cast<QKeyEvent *>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        return FilterMouse(widget, event);
    default:
        return false;
    }
}

bool KeyRouter::BelongsElsewhere(const QWidget *top, const QKeyEvent *event) const
{
    if (event->type() != QEvent::KeyRelease && !event->isAutoRepeat())
        return false;
    const auto pressed = pressedIn_.constFind(event->key());
    return pressed != pressedIn_.constEnd() && *pressed != top;
}

bool KeyRouter::FilterOverride(QWidget *receiver, QKeyEvent *event)
{
    QWidget *top = receiver->window();
    auto *window = qobject_cast<Window *>(top);
    // An accepted override is what keeps menu entries and shortcuts from acting on the key.
    const bool keep = BelongsElsewhere(top, event)
        || (window && !qobject_cast<QMenuBar *>(receiver) && window->ClaimsShortcut(event));
    if (!event->isAutoRepeat())
        pressedIn_.insert(event->key(), top);
    event->setAccepted(keep);
    return keep;
}

bool KeyRouter::FilterKey(QWidget *receiver, QKeyEvent *event)
{
    if (std::find(inFlight_.begin(), inFlight_.end(), event) != inFlight_.end())
        return false;
    QWidget *top = receiver->window();
    const bool refused = BelongsElsewhere(top, event) || AnswersByRepeat(receiver, top, event);
    if (!event->isAutoRepeat()) {
        if (event->type() == QEvent::KeyPress)
            pressedIn_.insert(event->key(), top);
        else
            pressedIn_.remove(event->key());
    }
    if (refused) {
        event->accept();
        return true;
    }
    auto *window = qobject_cast<Window *>(top);
    const bool repeatedRelease = event->type() == QEvent::KeyRelease && event->isAutoRepeat();
    if (!window || repeatedRelease || qobject_cast<QMenuBar *>(receiver))
        return false;
    return Deliver(window, receiver, event);
}

// The rest of the way is walked from here, with the event marked, so that the mark holds exactly as long as the event
// travels. A new event can stand at the same address later.
bool KeyRouter::Deliver(Window *window, QWidget *receiver, QKeyEvent *event)
{
    const QPointer<QWidget> alive(receiver);
    inFlight_.push_back(event);
    const bool eaten = window->Preview(event);
    event->accept();
    const bool idleEnter = !eaten && alive && IsEnter(event) && ActsOnEnter(receiver);
    if (!eaten && alive && !idleEnter)
        qApp->notify(receiver, event);
    inFlight_.erase(std::find(inFlight_.begin(), inFlight_.end(), event));
    event->accept();
    return true;
}

bool KeyRouter::FilterMouse(QWidget *receiver, QEvent *event)
{
    if (event->type() != QEvent::MouseButtonRelease) {
        const auto *window = qobject_cast<Window *>(receiver->window());
        pressRefused_ = window && window->FieldMessagePending();
        return pressRefused_;
    }
    return std::exchange(pressRefused_, false);
}
