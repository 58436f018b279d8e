// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/KeyRouter.h"

#include "ui/Window.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <algorithm>
#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds pairGap{2}; // both are sent at once, but may be read one by one

bool IsEnter(const QKeyEvent *event) { return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter; }

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

// The combo or spin box that would take the wheel for a change of its value.
QWidget *ValueUnderWheel(QWidget *receiver)
{
    if (qobject_cast<QComboBox *>(receiver) || qobject_cast<QAbstractSpinBox *>(receiver))
        return receiver;
    QWidget *parent = receiver->parentWidget();
    const bool inside = qobject_cast<QLineEdit *>(receiver)
        && (qobject_cast<QComboBox *>(parent) || qobject_cast<QAbstractSpinBox *>(parent));
    return inside ? parent : nullptr;
}

} // namespace

void KeyRouter::Install()
{
    if (qApp->findChild<KeyRouter *>(QString(), Qt::FindDirectChildrenOnly))
        return;
    qApp->installEventFilter(new KeyRouter(qApp));
}

KeyRouter::KeyRouter(QObject *application)
    : QObject(application)
    , pairedRepeats_(QGuiApplication::platformName() == u"xcb")
{
    heldTimer_.setSingleShot(true);
    heldTimer_.callOnTimeout(this, &KeyRouter::DeliverHeldRelease);
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
    case QEvent::Wheel:
        // A turn of the wheel on the way to the list must not change a mode, a frequency or a port.
        event->ignore();
        return ValueUnderWheel(widget) != nullptr;
    default:
        return false;
    }
}

bool KeyRouter::IsRepeat(const QKeyEvent *event) const
{
    if (event->isAutoRepeat())
        return true;
    const bool pair = event->key() == releasedKey_ && event->timestamp() == releasedAt_ && releasedAt_ != 0;
    return pairedRepeats_ && pair && event->type() != QEvent::KeyRelease;
}

// True: the event was held back or passed on as another one.
bool KeyRouter::TakeForPairing(QWidget *receiver, QKeyEvent *event)
{
    if (!pairedRepeats_ || event == settled_)
        return false;
    if (IsRepeat(event) && !event->isAutoRepeat()) {
        held_.reset();
        if (!pressedIn_.contains(event->key())) // the release went out before its pair came
            pressedIn_.insert(event->key(), releasedFrom_);
        QKeyEvent repeat(event->type(), event->key(), event->modifiers(), event->nativeScanCode(),
            event->nativeVirtualKey(), event->nativeModifiers(), event->text(), true, quint16(event->count()));
        repeat.setTimestamp(event->timestamp());
        Redispatch(receiver, &repeat);
        return true;
    }
    DeliverHeldRelease();
    if (event->type() != QEvent::KeyRelease || event->isAutoRepeat() || event->timestamp() == 0)
        return false;
    releasedFrom_ = pressedIn_.value(event->key());
    releasedKey_ = event->key();
    releasedAt_ = event->timestamp();
    heldFor_ = receiver;
    held_.reset(event->clone());
    heldTimer_.start(pairGap);
    return true;
}

void KeyRouter::DeliverHeldRelease()
{
    heldTimer_.stop();
    const std::unique_ptr<QKeyEvent> release = std::move(held_);
    if (release && heldFor_)
        Redispatch(heldFor_, release.get());
}

void KeyRouter::Redispatch(QWidget *receiver, QKeyEvent *event)
{
    const QKeyEvent *before = std::exchange(settled_, event);
    qApp->notify(receiver, event);
    settled_ = before;
}

bool KeyRouter::BelongsElsewhere(const QWidget *top, const QKeyEvent *event) const
{
    if (event->type() != QEvent::KeyRelease && !IsRepeat(event))
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
    // A shortcut swallows the key itself, so this may be all that is seen of it.
    if (!IsRepeat(event) && !(walking_ && walking_->key() == event->key()))
        pressedIn_.insert(event->key(), top);
    event->setAccepted(keep);
    return keep;
}

bool KeyRouter::FilterKey(QWidget *receiver, QKeyEvent *event)
{
    if (std::find(inFlight_.begin(), inFlight_.end(), event) != inFlight_.end())
        return false;
    if (TakeForPairing(receiver, event)) {
        event->accept();
        return true;
    }
    QWidget *top = receiver->window();
    auto *window = qobject_cast<Window *>(top);
    // What is typed between a refused field and its message would land in the next field.
    const bool early = window && window->FieldMessagePending() && event->type() == QEvent::KeyPress;
    const bool refused = early || BelongsElsewhere(top, event) || AnswersByRepeat(receiver, top, event);
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
    const bool repeatedRelease = event->type() == QEvent::KeyRelease && event->isAutoRepeat();
    if (!window || repeatedRelease)
        return false;
    return Deliver(window, receiver, event);
}

// The rest of the way is walked from here, with the event marked, so that the mark holds exactly as long as the event
// travels; a new event can stand at the same address later. Qt looks for shortcuts a second time then, after a preview
// in which a dialog may have come and gone.
bool KeyRouter::Deliver(Window *window, QWidget *receiver, QKeyEvent *event)
{
    const QPointer<QWidget> alive(receiver);
    inFlight_.push_back(event);
    const bool eaten = !qobject_cast<QMenuBar *>(receiver) && window->Preview(event);
    event->accept();
    const bool idleEnter = !eaten && alive && IsEnter(event) && ActsOnEnter(receiver);
    if (!eaten && alive && !idleEnter) {
        const QKeyEvent *before = std::exchange(walking_, event);
        qApp->notify(receiver, event);
        walking_ = before;
    }
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
