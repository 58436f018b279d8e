// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestRegistry.h"
#include "ui/FieldFilter.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

namespace {

std::optional<QChar> CallSign(QChar c)
{
    const bool passes = (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'/' || c == u'?';
    return passes ? std::optional(c) : std::nullopt;
}

} // namespace

class TestFieldFilter : public QObject {
    Q_OBJECT

    std::unique_ptr<QLineEdit> field_;

    // Brings `text` in on one of the ways into a field.
    void Enter(const QString &way, const QString &text)
    {
        QMimeData data;
        data.setText(text);
        QApplication::clipboard()->setText(text);
        if (way == u"typed") {
            for (const QChar c : text)
                QTest::sendKeyEvent(QTest::Click, field_.get(), Qt::Key(c.toUpper().unicode()), QString(c), {});
        } else if (way == u"pasted") {
            QTest::keySequence(field_.get(), QKeySequence::Paste);
        } else if (way == u"menu") {
            QContextMenuEvent event(QContextMenuEvent::Mouse, {2, 2}, field_->mapToGlobal(QPoint(2, 2)));
            QApplication::sendEvent(field_.get(), &event);
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu);
            const QList<QAction *> entries = menu->actions();
            QVERIFY(entries.size() > 6);
            QVERIFY2(entries.at(5)->text().startsWith(u"&Paste"_qs) || entries.at(5)->text().startsWith(u"&Pegar"_qs),
                qPrintable(entries.at(5)->text()));
            entries.at(5)->trigger();
            menu->close();
        } else if (way == u"dropped") {
            QDragEnterEvent enter({200, 2}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(field_.get(), &enter);
            QDropEvent event({200, 2}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(field_.get(), &event);
        } else if (way == u"composed") {
            QInputMethodEvent event;
            event.setCommitString(text);
            QApplication::sendEvent(field_.get(), &event);
        }
    }

private Q_SLOTS:
    void init()
    {
        field_ = std::make_unique<QLineEdit>();
        field_->resize(220, 30);
        field_->show();
        field_->setFocus();
        FieldFilter::Attach(field_.get(), CallSign, LetterCase::Upper);
    }

    void EveryWayInIsFilteredAndUndone()
    {
        for (const QString &way : {u"typed"_qs, u"pasted"_qs, u"menu"_qs, u"dropped"_qs, u"composed"_qs}) {
            init();
            QSignalSpy edited(field_.get(), &QLineEdit::textEdited);
            Enter(way, u"lu-1 ñabc/é?"_qs);
            QVERIFY2(field_->text() == u"LU1ABC/?", qPrintable(way));
            QVERIFY(edited.count() > 0);
            field_->undo();
            QCOMPARE(field_->text(), QString());
            field_->redo();
            QCOMPARE(field_->text(), u"LU1ABC/?"_qs);

            field_->setMaxLength(10);
            field_->end(false);
            Enter(way, u"xyz"_qs);
            QVERIFY2(field_->text() == u"LU1ABC/?XY", qPrintable(way));
        }
    }

    void OnlyWhatComesInIsFiltered()
    {
        field_->setText(u"lu1-abc"_qs);
        QCOMPARE(field_->text(), u"lu1-abc"_qs);
        field_->setSelection(3, 1);
        Enter(u"typed"_qs, u"x"_qs);
        QCOMPARE(field_->text(), u"lu1Xabc"_qs);
        QCOMPARE(field_->cursorPosition(), 4);
        QTest::keyClick(field_.get(), Qt::Key_Backspace);
        QTest::keyClick(field_.get(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(field_->selectedText(), u"lu1abc"_qs);
        field_->setReadOnly(true);
        Enter(u"typed"_qs, u"x"_qs);
        QCOMPARE(field_->text(), u"lu1abc"_qs);
    }
};

TORDILLO_TEST(TestFieldFilter)
#include "TestFieldFilter.moc"
