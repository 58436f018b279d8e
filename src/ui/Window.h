// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Dialogs.h"

#include <QPointer>
#include <QWidget>
#include <initializer_list>

class KeyRouter;
class QEventLoop;
class QKeyEvent;
class QLineEdit;

// Base of all windows. It replaces what Qt does with keys and focus by what an operator at the key needs: the window
// sees each key first, no button acts on Enter, Esc closes nothing by itself, a field is "left" only when the focus
// moves inside the window, and the focus is never lost to a control that was hidden or disabled.
class Window : public QWidget {
    Q_OBJECT

public:
    // `name` becomes the objectName. Without an owner it is a main window, with one a dialog window over it.
    Window(const QString &name, Dialogs &dialogs, QWidget *owner = nullptr);
    ~Window() override;

    // Shows the window and returns when it is hidden again; meanwhile its owner (without one: all other windows) takes
    // no input. Does nothing when it is already up that way.
    void ShowModal();

    // The field that has the focus, or had it last while the window was active; null before the first. A combo box or
    // spin box stands for the line edit inside it.
    QWidget *CurrentField() const { return current_; }
    // Ctrl was down at the last key this window saw.
    bool CtrlHeld() const { return ctrlHeld_; }

    // Shows `message` once the present event is over, then puts the focus into `field`; FieldLeft is not called for
    // the field that loses it thereby. With one under way a second is dropped, so boxes never stack. A message waits
    // while another dialog blocks the window, and is dropped when the window is hidden first. Where `field` cannot
    // take the focus, FocusFallback() gets it.
    void QueueFieldMessage(QWidget *field, const QString &message, Dialogs::Icon icon = Dialogs::Icon::Exclamation);
    // From QueueFieldMessage until the box is closed. Mouse presses in the window are dropped meanwhile; handlers that
    // can be reached in another way refuse to act.
    bool FieldMessagePending() const { return messagePending_; }

    // Puts the focus into `widget`, or into FocusFallback() where that is hidden or disabled.
    void GiveFocusTo(QWidget *widget);

    // These fields get the focus ground while they are the current one, and lose it after.
    static void ShowFocusOn(std::initializer_list<QWidget *> fields);

    // For texts that the program writes while the operator types: the focus does not move, the caret and the selected
    // range stay where they are as far as the new text reaches. Works in a disabled field too.
    static void SetTextKeepingFocus(QLineEdit *field, const QString &text);

Q_SIGNALS:
    // The operator asks for the manual: by F1 where neither the window nor a control has another use for it, or by a
    // menu.
    void HelpWanted();

protected:
    Dialogs &dialogs() const { return dialogs_; }

    // A key that went down in this window (repeats included, see isAutoRepeat) before the field sees it, and the one
    // release that ends it. True: the key is done with. Each key comes once.
    virtual bool PreviewKey(QKeyEvent *event);
    virtual bool PreviewKeyRelease(QKeyEvent *event);
    // True for keys that PreviewKey is to get although a menu entry, a shortcut or the field's own editing (cut, undo,
    // caret to the end) would have them. Only asks; may be called several times for a key.
    virtual bool ClaimsShortcut(const QKeyEvent *event) const;

    // The focus moved inside the window. Not called when the window loses the focus to a dialog, a menu, a pop-up or
    // another program and gets it back. FieldLeft comes first; CurrentField() is the new one then. A field that is
    // hidden or disabled while it has the focus is left as well.
    virtual void FieldEntered(QWidget *field);
    virtual void FieldLeft(QWidget *field);

    // Where the focus goes when its control is hidden or disabled. Null: nowhere; keys then go to the window.
    virtual QWidget *FocusFallback() const { return nullptr; }

    // The frame's close button (and close()) hides the window when this gives true.
    virtual bool MayClose() { return true; }

    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    friend class KeyRouter;

    bool Preview(QKeyEvent *event);
    void OnFocusChanged(QWidget *old, QWidget *now);
    void SetCurrent(QWidget *field);
    bool CanHaveFocus(const QWidget *widget) const;
    void PostFieldMessage();
    void ShowFieldMessage();
    void ReturnFocusTo(QWidget *field);

    struct FieldMessage {
        QPointer<QWidget> field;
        QString text;
        Dialogs::Icon icon = Dialogs::Icon::None;
    };

    Dialogs &dialogs_;
    QPointer<QWidget> current_;
    QEventLoop *loop_ = nullptr;
    FieldMessage message_;
    bool messagePending_ = false;
    bool messageWaits_ = false; // for the dialog in front to close
    bool blocked_ = false;
    bool ctrlHeld_ = false;
};
