// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Window.h"

#include "ui/KeyRouter.h"
#include "ui/Theme.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <algorithm>

namespace {

constexpr char showsFocus[] = "showsFocus";

QWidget *FieldOf(QWidget *widget)
{
    QWidget *parent = widget->parentWidget();
    return qobject_cast<QComboBox *>(parent) || qobject_cast<QAbstractSpinBox *>(parent) ? parent : widget;
}

void PaintFocus(QWidget *field, bool focused)
{
    if (field && field->property(showsFocus).toBool())
        SetFieldFocused(field, focused);
}

} // namespace

Window::Window(const QString &name, Dialogs &dialogs, QWidget *owner)
    : QWidget(owner, owner ? Qt::Dialog : Qt::Window)
    , dialogs_(dialogs)
{
    setObjectName(name);
    KeyRouter::Install();
    connect(qApp, &QApplication::focusChanged, this, &Window::OnFocusChanged);
}

Window::~Window()
{
    // The fields die after this, and the focus would still be told to a window that is half gone.
    disconnect(qApp, nullptr, this, nullptr);
    if (loop_)
        loop_->quit();
}

void Window::ShowModal()
{
    if (loop_)
        return;
    const QPointer<Window> self(this);
    const QPointer<QWidget> before(QApplication::activeWindow());
    QEventLoop loop;
    loop_ = &loop;
    setWindowModality(parentWidget() ? Qt::WindowModal : Qt::ApplicationModal);
    show();
    raise();
    activateWindow();
    if (isVisible())
        loop.exec(QEventLoop::DialogExec);
    if (self)
        loop_ = nullptr;
    if (before && before->isVisible() && !before->isMinimized() && !QApplication::activeWindow())
        before->activateWindow();
}

void Window::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F1 && !event->isAutoRepeat())
        Q_EMIT HelpWanted();
    else
        QWidget::keyPressEvent(event);
}

void Window::closeEvent(QCloseEvent *event) { event->setAccepted(MayClose()); }

void Window::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (event->spontaneous()) // minimised, not gone
        return;
    SetCurrent(nullptr);
    ctrlHeld_ = false;
    if (loop_)
        loop_->quit();
}

bool Window::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::WindowActivate:
        // Qt would pick the first field where the one that had the focus went away meanwhile.
        if (current_ && !(focusWidget() && CanHaveFocus(focusWidget())))
            GiveFocusTo(FocusFallback());
        break;
    case QEvent::WindowDeactivate:
        ctrlHeld_ = false;
        break;
    case QEvent::WindowBlocked:
        blocked_ = true;
        break;
    case QEvent::WindowUnblocked:
        blocked_ = false;
        if (std::exchange(messageWaits_, false))
            PostFieldMessage();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

bool Window::Preview(QKeyEvent *event)
{
    const bool press = event->type() == QEvent::KeyPress;
    ctrlHeld_ = event->key() == Qt::Key_Control ? press : event->modifiers().testFlag(Qt::ControlModifier);
    return press ? PreviewKey(event) : PreviewKeyRelease(event);
}

bool Window::PreviewKey(QKeyEvent *) { return false; }

bool Window::PreviewKeyRelease(QKeyEvent *) { return false; }

bool Window::ClaimsShortcut(const QKeyEvent *) const { return false; }

void Window::FieldEntered(QWidget *) { }

void Window::FieldLeft(QWidget *) { }

bool Window::CanHaveFocus(const QWidget *widget) const
{
    return widget->isEnabled() && widget->isEnabledTo(this) && widget->isVisibleTo(this);
}

void Window::GiveFocusTo(QWidget *widget)
{
    if (!widget || !CanHaveFocus(widget))
        widget = FocusFallback();
    if (widget && CanHaveFocus(widget))
        widget->setFocus();
}

// Qt calls this for Tab, and also to find a new place for the focus of a control that was just hidden or disabled.
bool Window::focusNextPrevChild(bool next)
{
    QWidget *focused = focusWidget();
    if (!focused || focused == this || CanHaveFocus(focused))
        return QWidget::focusNextPrevChild(next);
    GiveFocusTo(FocusFallback());
    if (focusWidget() == focused)
        focused->clearFocus();
    return true;
}

void Window::OnFocusChanged(QWidget *old, QWidget *now)
{
    if (!now) {
        // With its whole frame disabled the control just loses the focus.
        if (old && old->window() == this && isVisible() && isActiveWindow() && !CanHaveFocus(old))
            GiveFocusTo(FocusFallback());
        return;
    }
    if (now == this || now->window() != this || qobject_cast<QMenuBar *>(now))
        return;
    const QPointer<QWidget> field(FieldOf(now));
    if (field == current_)
        return;
    const QPointer<QWidget> left = current_;
    SetCurrent(field);
    if (left)
        FieldLeft(left);
    if (field && field == current_)
        FieldEntered(field);
}

void Window::SetCurrent(QWidget *field)
{
    PaintFocus(current_, false);
    current_ = field;
    PaintFocus(field, true);
}

void Window::ShowFocusOn(std::initializer_list<QWidget *> fields)
{
    for (QWidget *field : fields)
        field->setProperty(showsFocus, true);
}

void Window::QueueFieldMessage(QWidget *field, const QString &message, Dialogs::Icon icon)
{
    if (messagePending_)
        return;
    messagePending_ = true;
    message_ = {field, message, icon};
    PostFieldMessage();
}

void Window::PostFieldMessage() { QMetaObject::invokeMethod(this, &Window::ShowFieldMessage, Qt::QueuedConnection); }

void Window::ShowFieldMessage()
{
    if (blocked_) {
        messageWaits_ = true;
        return;
    }
    const QPointer<Window> self(this);
    if (isVisible())
        dialogs_.Message(this, message_.text, message_.icon, Dialogs::DefaultTitle());
    if (!self)
        return;
    messagePending_ = false;
    if (isVisible() && message_.field)
        ReturnFocusTo(message_.field);
}

void Window::ReturnFocusTo(QWidget *field)
{
    if (!CanHaveFocus(field))
        return GiveFocusTo(field);
    const bool moves = FieldOf(field) != current_;
    // Current before it has the focus: so the field that loses it is not left, and its own check does not run.
    if (moves)
        SetCurrent(FieldOf(field));
    field->setFocus();
    if (moves)
        FieldEntered(current_);
}

void Window::SetTextKeepingFocus(QLineEdit *field, const QString &text)
{
    if (field->text() == text)
        return;
    const int caret = field->cursorPosition(), start = field->selectionStart(), length = field->selectionLength();
    field->setText(text);
    const auto size = int(text.size());
    if (start < 0 || start >= size)
        return field->setCursorPosition(std::min(caret, size));
    const int end = std::min(start + length, size);
    if (caret == start)
        field->setSelection(end, start - end);
    else
        field->setSelection(start, end - start);
}
