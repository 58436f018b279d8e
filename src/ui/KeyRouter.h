// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <vector>

class QKeyEvent;
class Window;

// Brings every key to its Window before a control of that window sees it, once per key however many parents the
// unhandled key travels up to. It watches the whole application, so controls that are made later, the line edit inside
// a combo box and the like need nothing done to them. Keys of other top levels (boxes, pop-ups, menus) are left alone,
// with one exception:
//
// A key belongs to the top level in which it went down. Repeats and the release that arrive elsewhere, because a
// dialog opened or closed meanwhile, are dropped. So a box cannot take the Enter that opened it for its answer, and the
// Enter that closed it does nothing in the window below.
//
// It also drops mouse presses in a window with a field message under way: the click that made the operator leave the
// bad field does not act.
class KeyRouter : public QObject {
    Q_OBJECT

public:
    // Makes the router of the running application at the first call. It lives as long as the application.
    static void Install();

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    using QObject::QObject;

    bool FilterOverride(QWidget *receiver, QKeyEvent *event);
    bool FilterKey(QWidget *receiver, QKeyEvent *event);
    bool FilterMouse(QWidget *receiver, QEvent *event);
    bool Deliver(Window *window, QWidget *receiver, QKeyEvent *event);
    bool BelongsElsewhere(const QWidget *top, const QKeyEvent *event) const;

    std::vector<const QEvent *> inFlight_; // previewed, on their way through the controls
    QHash<int, QPointer<QWidget>> pressedIn_; // key code -> top level where it went down
    bool pressRefused_ = false;
};
