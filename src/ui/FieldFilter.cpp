// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FieldFilter.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>

void FieldFilter::Attach(QLineEdit *field, CharFilter filter, LetterCase letterCase)
{
    delete field->findChild<FieldFilter *>(QString(), Qt::FindDirectChildrenOnly);
    field->installEventFilter(new FieldFilter(field, std::move(filter), letterCase));
}

void FieldFilter::Attach(QComboBox *field, CharFilter filter, LetterCase letterCase)
{
    Attach(field->lineEdit(), std::move(filter), letterCase);
}

FieldFilter::FieldFilter(QLineEdit *field, CharFilter filter, LetterCase letterCase)
    : QObject(field)
    , field_(field)
    , filter_(std::move(filter))
    , letterCase_(letterCase)
{
}

QString FieldFilter::Filtered(const QString &text) const
{
    QString result;
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            continue;
        const QChar cased = letterCase_ == LetterCase::Upper ? c.toUpper() : c;
        if (const auto kept = filter_ ? filter_(cased) : cased)
            result += *kept;
    }
    return result;
}

bool FieldFilter::eventFilter(QObject *watched, QEvent *event)
{
    // A field that is being destroyed still gets events here: nothing is asked of it before the kind is known.
    if (watched != field_)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
        return Type(static_cast<QKeyEvent *>(event));
    case QEvent::InputMethod:
        return Compose(static_cast<QInputMethodEvent *>(event));
    case QEvent::Drop:
        return Drop(event);
    case QEvent::MouseButtonRelease:
        return PasteSelection(event);
    case QEvent::ContextMenu:
        return ShowMenu(event);
    default:
        return false;
    }
}

// The line edit gets the event with the text replaced, so that completion and the rest of its key handling still run.
bool FieldFilter::Type(QKeyEvent *event)
{
    if (field_->isReadOnly())
        return false;
    if (event->matches(QKeySequence::Paste)) {
        Insert(QGuiApplication::clipboard()->text());
        event->accept();
        return true;
    }
    const Qt::KeyboardModifiers held = event->modifiers();
    const bool command = held.testFlag(Qt::ControlModifier) && !held.testFlag(Qt::AltModifier);
    if (command || event->text().isEmpty() || !event->text().at(0).isPrint())
        return false;
    const QString text = Filtered(event->text());
    if (text == event->text())
        return false;
    event->accept();
    if (!text.isEmpty()) {
        QKeyEvent replaced(event->type(), event->key(), held, event->nativeScanCode(), event->nativeVirtualKey(),
            event->nativeModifiers(), text, event->isAutoRepeat(), quint16(event->count()));
        static_cast<QObject *>(field_)->event(&replaced);
    }
    return true;
}

bool FieldFilter::Compose(QInputMethodEvent *event)
{
    const QString text = Filtered(event->commitString());
    if (text == event->commitString() || field_->isReadOnly())
        return false;
    QInputMethodEvent replaced(event->preeditString(), event->attributes());
    replaced.setCommitString(text, event->replacementStart(), event->replacementLength());
    static_cast<QObject *>(field_)->event(&replaced);
    event->accept();
    return true;
}

bool FieldFilter::Drop(QEvent *event)
{
    auto *drop = static_cast<QDropEvent *>(event);
    if (field_->isReadOnly() || drop->source() == field_ || !drop->mimeData()->hasText())
        return false;
    field_->deselect();
    field_->setCursorPosition(field_->cursorPositionAt(drop->position().toPoint()));
    Insert(drop->mimeData()->text());
    drop->setDropAction(Qt::CopyAction); // what was dropped here may differ from the source, which must keep its text
    drop->accept();
    return true;
}

bool FieldFilter::PasteSelection(QEvent *event)
{
    const auto *mouse = static_cast<QMouseEvent *>(event);
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (field_->isReadOnly() || mouse->button() != Qt::MiddleButton || !clipboard->supportsSelection())
        return false;
    field_->deselect();
    field_->setCursorPosition(field_->cursorPositionAt(mouse->position().toPoint()));
    Insert(clipboard->text(QClipboard::Selection));
    return true;
}

bool FieldFilter::ShowMenu(QEvent *event)
{
    if (field_->isReadOnly() || field_->contextMenuPolicy() != Qt::DefaultContextMenu)
        return false;
    QMenu *menu = field_->createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QString pasteText = QLineEdit::tr("&Paste"); // entries have no names; with the keys behind it
    for (QAction *paste : menu->actions()) {
        if (!paste->text().startsWith(pasteText))
            continue;
        paste->disconnect(SIGNAL(triggered(bool)));
        connect(paste, &QAction::triggered, this, [this] { Insert(QGuiApplication::clipboard()->text()); });
    }
    menu->popup(static_cast<QContextMenuEvent *>(event)->globalPos());
    return true;
}

void FieldFilter::Insert(const QString &text)
{
    if (const QString kept = Filtered(text); !kept.isEmpty())
        field_->insert(kept);
}
