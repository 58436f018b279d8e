// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/MasterCheck.h"

#include <QObject>

class QListWidget;
class QTextBrowser;

// What MasterCheck found for the call that is being typed: one call a line, the differences coloured. A click on a
// line chooses its call.
class MasterView : public QObject {
    Q_OBJECT

public:
    // `MCheck` shows the calls; `List1` and `List2` hold them in the order of their lines.
    MasterView(QTextBrowser *MCheck, QListWidget *List1, QListWidget *List2, QObject *parent);

    void Show(const QList<MasterHit> &hits);
    void Clear();

Q_SIGNALS:
    void Chosen(const QString &call);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QTextBrowser *MCheck_;
    QListWidget *List1_, *List2_;
};
