// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MasterView.h"

#include "ui/Theme.h"

#include <QListWidget>
#include <QMouseEvent>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>

namespace {

// On the dark ground lighter ones, that can be read there.
QColor SameColour() { return CurrentTheme() == Theme::Dark ? QColor(0x90B8FF) : QColor(0x0000FF); }
QColor DifferentColour() { return CurrentTheme() == Theme::Dark ? QColor(0xFF9090) : QColor(0xFF0000); }

// More calls with one beginning are no help to anybody, and painting them would hold up the typing.
constexpr qsizetype mostOfPrefix = 2000;

} // namespace

MasterView::MasterView(QTextBrowser *MCheck, QListWidget *List1, QListWidget *List2, QObject *parent)
    : QObject(parent)
    , MCheck_(MCheck)
    , List1_(List1)
    , List2_(List2)
{
    MCheck_->setOpenLinks(false);
    MCheck_->viewport()->installEventFilter(this);
    MCheck_->setFocusPolicy(Qt::NoFocus); // it shows, and takes no keys
}

void MasterView::Clear()
{
    List1_->clear();
    List2_->clear();
    MCheck_->clear();
}

void MasterView::Show(const QList<MasterHit> &hits)
{
    Clear();
    QStringList calls;
    QTextCursor cursor(MCheck_->document());
    cursor.beginEditBlock();
    QTextCharFormat same, different;
    same.setForeground(SameColour());
    different.setForeground(DifferentColour());
    for (const MasterHit &hit : hits) {
        if (hit.prefix && calls.size() >= mostOfPrefix)
            continue;
        if (!calls.isEmpty())
            cursor.insertBlock();
        if (hit.prefix)
            cursor.insertText(hit.call, same);
        for (qsizetype i = 0; i < hit.different.size(); ++i)
            cursor.insertText(QString(hit.call[i]), hit.different[i] ? different : same);
        calls << hit.call;
    }
    cursor.endEditBlock();
    MCheck_->moveCursor(QTextCursor::Start);
    List1_->addItems(calls);
    List2_->addItems(calls);
}

bool MasterView::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::MouseButtonRelease)
        return false;
    const QPoint at = static_cast<QMouseEvent *>(event)->position().toPoint();
    const QListWidgetItem *line = List1_->item(MCheck_->cursorForPosition(at).blockNumber());
    if (line)
        Q_EMIT Chosen(line->text());
    return false;
}
