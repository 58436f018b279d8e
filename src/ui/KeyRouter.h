// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <vector>

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
// Some window systems send a held key as pairs of release and press, and Qt does not always see that a pair is one
// (X11). There a release waits for two milliseconds; a press with the same time stamp makes it a repeat.
//
// It also drops mouse presses and keys in a window with a field message under way: the click that made the operator
// leave the bad field does not act, and nothing is typed into the next one. And it keeps the wheel from changing the
// value of a combo or spin box that the pointer happens to be over.
class KeyRouter : public QObject {
    Q_OBJECT

public:
    // Makes the router of the running application at the first call. It lives as long as the application.
    static void Install();

    // Whether releases wait for their pair; the default depends on the platform.
    void SetPairedRepeats(bool paired) { pairedRepeats_ = paired; }

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    explicit KeyRouter(QObject *application);

    bool FilterOverride(QWidget *receiver, QKeyEvent *event);
    bool FilterKey(QWidget *receiver, QKeyEvent *event);
    bool FilterMouse(QWidget *receiver, QEvent *event);
    bool Deliver(Window *window, QWidget *receiver, QKeyEvent *event);
    bool TakeForPairing(QWidget *receiver, QKeyEvent *event);
    void DeliverHeldRelease();
    void Redispatch(QWidget *receiver, QKeyEvent *event);
    bool IsRepeat(const QKeyEvent *event) const;
    bool BelongsElsewhere(const QWidget *top, const QKeyEvent *event) const;

    std::vector<const QEvent *> inFlight_; // previewed, on their way through the controls
    const QKeyEvent *walking_ = nullptr; // the innermost of them
    QHash<int, QPointer<QWidget>> pressedIn_; // key code -> top level where it went down
    bool pressRefused_ = false;

    bool pairedRepeats_ = false;
    QPointer<QWidget> heldFor_;
    std::unique_ptr<QKeyEvent> held_; // a release of which it is not known yet whether it is one
    QTimer heldTimer_;
    QPointer<QWidget> releasedFrom_; // top level, key and time of the last release
    int releasedKey_ = 0;
    quint64 releasedAt_ = 0;
    const QKeyEvent *settled_ = nullptr; // passes without waiting
};
