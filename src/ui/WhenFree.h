// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <functional>
#include <vector>

class QWidget;

// What comes from the network when it pleases must not jump over the window in which the operator works. It is shown at
// once where `window` is free, else when what stands before it has closed; a hidden window shows nothing.
class WhenFree : public QObject {
    Q_OBJECT

public:
    explicit WhenFree(QWidget &window);

    void Show(const std::function<void()> &what);
    // Forgets what waits.
    void Clear() { waiting_.clear(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool IsFree() const;
    void ShowNext();

    QWidget &window_;
    std::vector<std::function<void()>> waiting_; // in the order of their coming
};
