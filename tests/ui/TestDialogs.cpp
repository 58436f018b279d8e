// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestRegistry.h"
#include "ui/RealDialogs.h"
#include "ui/Spanish.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

// Runs `answer` on the dialog that opens next.
template <typename Dialog, typename Answer>
void WhenOpen(Answer answer)
{
    QTimer::singleShot(0, qApp, [answer] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        answer(dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
}

QString Label(const QAbstractButton *button) { return button->text().remove(u'&'); }

} // namespace

class TestDialogs : public QObject {
    Q_OBJECT

    RealDialogs dialogs_;

private Q_SLOTS:
    void AMessageShowsItsTextPlainly()
    {
        const QString text = u"<b>Falta</b> el Corresponsal!\nA"_qs;
        WhenOpen<QMessageBox>([&](QMessageBox *box) {
            QCOMPARE(box->text(), text);
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QCOMPARE(box->icon(), QMessageBox::Critical);
            QCOMPARE(box->windowTitle(), u"Tordillo Compact"_qs);
            QCOMPARE(box->buttons().size(), 1);
            QCOMPARE(Label(box->buttons().first()), u"Aceptar"_qs);
            QTest::keyClick(box, Qt::Key_A); // typing on does not answer
            QTest::qWait(150);
            QVERIFY(box->isVisible());
            QTest::keyClick(box, Qt::Key_Escape);
            QVERIFY(!box->isVisible());
        });
        static_cast<Dialogs &>(dialogs_).Message(nullptr, text, Dialogs::Icon::Critical);
    }

    void AQuestionIsAnsweredByKeys()
    {
        // The preset, the key, the answer: Enter takes it, Esc is No whatever it is, S is "Sí".
        const std::tuple<bool, Qt::Key, bool> cases[] = {
            {false, Qt::Key_Return, false}, {true, Qt::Key_Escape, false}, {false, Qt::Key_S, true}};
        for (const auto &[presetYes, key, answer] : cases) {
            WhenOpen<QMessageBox>([yes = presetYes, pressed = key](QMessageBox *box) {
                QCOMPARE(box->buttons().size(), 2);
                QCOMPARE(Label(box->defaultButton()), yes ? u"Sí"_qs : u"No"_qs);
                QTest::keyClick(box->defaultButton(), pressed);
                QTRY_VERIFY(!box->isVisible());
            });
            const auto preset = presetYes ? Dialogs::Button::Yes : Dialogs::Button::No;
            QCOMPARE(
                static_cast<Dialogs &>(dialogs_).Ask(nullptr, u"Sale?"_qs, Dialogs::Icon::Question, preset), answer);
        }
    }

    void AConfirmationHasItsOwnButtons()
    {
        const std::tuple<Dialogs::Button, Qt::Key, bool> cases[] = {{Dialogs::Button::No, Qt::Key_Return, false},
            {Dialogs::Button::Yes, Qt::Key_Return, true}, {Dialogs::Button::Yes, Qt::Key_Escape, false}};
        for (const auto &[preset, key, answer] : cases) {
            WhenOpen<QMessageBox>([set = preset, pressed = key](QMessageBox *box) {
                QCOMPARE(Label(box->defaultButton()), set == Dialogs::Button::Yes ? u"Aceptar"_qs : u"Cancelar"_qs);
                QTest::keyClick(box->defaultButton(), pressed);
                QTRY_VERIFY(!box->isVisible());
            });
            QCOMPARE(static_cast<Dialogs &>(dialogs_).Confirm(nullptr, u"Sigue?"_qs, Dialogs::Icon::Question, preset),
                answer);
        }
    }

    void QtSpeaksSpanish()
    {
        if (!InstallSpanish(*qApp))
            QSKIP("Qt's Spanish translation is not installed");
        QDialogButtonBox box(QDialogButtonBox::Cancel | QDialogButtonBox::Save);
        QCOMPARE(Label(box.button(QDialogButtonBox::Cancel)), u"Cancelar"_qs);
        QCOMPARE(Label(box.button(QDialogButtonBox::Save)), u"Guardar"_qs);
        QCOMPARE(QLocale().name(), u"es_AR"_qs);
    }
};

TORDILLO_TEST(TestDialogs)
#include "TestDialogs.moc"
