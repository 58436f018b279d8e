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

    void AQuestionIsAnsweredByKeys_data()
    {
        QTest::addColumn<bool>("presetYes");
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("answer");
        QTest::newRow("Enter takes No") << false << int(Qt::Key_Return) << false;
        QTest::newRow("Esc is No, whatever the preset") << true << int(Qt::Key_Escape) << false;
        QTest::newRow("S") << false << int(Qt::Key_S) << true;
    }
    void AQuestionIsAnsweredByKeys()
    {
        QFETCH(bool, presetYes);
        QFETCH(int, key);
        WhenOpen<QMessageBox>([&](QMessageBox *box) {
            QCOMPARE(box->buttons().size(), 2);
            QCOMPARE(Label(box->defaultButton()), presetYes ? u"Sí"_qs : u"No"_qs);
            QTest::keyClick(box->defaultButton(), Qt::Key(key));
            QTRY_VERIFY(!box->isVisible());
        });
        const auto preset = presetYes ? Dialogs::Button::Yes : Dialogs::Button::No;
        QTEST(static_cast<Dialogs &>(dialogs_).Ask(nullptr, u"Sale?"_qs, Dialogs::Icon::Question, preset), "answer");
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
