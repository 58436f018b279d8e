// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecordingDialogs.h"
#include "support/TestRegistry.h"
#include "ui/KeyRouter.h"
#include "ui/RealDialogs.h"
#include "ui/Theme.h"
#include "ui/Window.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// A window that writes down what reaches it.
class Desk : public Window {
public:
    explicit Desk(Dialogs &dialogs, QWidget *owner = nullptr)
        : Window(u"Desk"_qs, dialogs, owner)
    {
        auto *layout = new QVBoxLayout(this);
        auto *menu = new QMenuBar(this);
        cut = menu->addMenu(u"&Archivo"_qs)->addAction(u"Cortar"_qs);
        cut->setShortcut(QKeySequence(u"Ctrl+X"_qs));
        layout->setMenuBar(menu);
        combo->setEditable(true);
        combo->addItems({u"3"_qs, u"7"_qs});
        auto *inner = new QVBoxLayout(frame);
        inner->addWidget(framed);
        for (QWidget *w : std::initializer_list<QWidget *>{first, second, combo, spin, check, button, frame})
            layout->addWidget(w);
        const std::pair<QWidget *, QString> names[] = {{first, u"first"_qs}, {second, u"second"_qs},
            {combo, u"combo"_qs}, {spin, u"spin"_qs}, {button, u"button"_qs}, {framed, u"framed"_qs}};
        for (const auto &[control, name] : names)
            control->setObjectName(name);
        ShowFocusOn({first, second});
    }

    void Open()
    {
        show();
        activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(this));
        first->setFocus();
        log.clear();
    }

    QAction *cut;
    QLineEdit *first = new QLineEdit(this), *second = new QLineEdit(this);
    QComboBox *combo = new QComboBox(this);
    QSpinBox *spin = new QSpinBox(this);
    QCheckBox *check = new QCheckBox(this);
    QPushButton *button = new QPushButton(u"Guardar"_qs, this);
    QGroupBox *frame = new QGroupBox(this);
    QLineEdit *framed = new QLineEdit(frame);

    QStringList log;
    QList<int> eats, claims;
    QString badField; // leaving it queues a message
    QWidget *fallback = nullptr;
    std::function<void(QKeyEvent *)> onKey;

    bool PreviewKey(QKeyEvent *event) override
    {
        log << u"press "_qs + QKeySequence(event->key()).toString();
        if (onKey)
            onKey(event);
        return eats.contains(event->key());
    }
    bool PreviewKeyRelease(QKeyEvent *event) override
    {
        log << u"release "_qs + QKeySequence(event->key()).toString();
        return false;
    }
    bool ClaimsShortcut(const QKeyEvent *event) const override { return claims.contains(event->key()); }
    void FieldEntered(QWidget *field) override { log << u"enter "_qs + field->objectName(); }
    void FieldLeft(QWidget *field) override
    {
        log << u"leave "_qs + field->objectName();
        if (field->objectName() == badField)
            QueueFieldMessage(field, badField + u" no es válida!");
    }
    QWidget *FocusFallback() const override { return fallback; }
};

void Send(QWidget *to, QEvent::Type type, int key, bool repeat, const QString &text = {})
{
    QKeyEvent event(type, key, Qt::NoModifier, text, repeat);
    QApplication::sendEvent(to, &event);
}

QMessageBox *OpenBox() { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); }

} // namespace

class TestWindow : public QObject {
    Q_OBJECT

    RecordingDialogs dialogs_;
    std::unique_ptr<Desk> desk_;

private Q_SLOTS:
    void init()
    {
        dialogs_ = {};
        desk_ = std::make_unique<Desk>(dialogs_);
        desk_->Open();
    }

    // Unhandled keys travel up to the window through every parent; handled ones stop at the field.
    void EachKeyIsPreviewedOnce()
    {
        auto *late = new QLineEdit(desk_->frame);
        late->setObjectName(u"late"_qs);
        late->show();
        QSignalSpy clicked(desk_->button, &QPushButton::clicked);
        for (const QString &field : {u"first"_qs, u"combo"_qs, u"spin"_qs, u"button"_qs, u"framed"_qs, u"late"_qs})
            for (const auto key : {Qt::Key_F9, Qt::Key_5, Qt::Key_Return}) {
                desk_->findChild<QWidget *>(field)->setFocus();
                desk_->log.clear();
                QTest::keyClick(QApplication::focusWidget(), key);
                const QString name = QKeySequence(key).toString();
                QCOMPARE(desk_->log.join(u','), QString(u"press " + name + u",release " + name));
                QCOMPARE(clicked.count(), 0);
                QVERIFY(desk_->isVisible());
            }
    }

    void ClaimedKeysComeInsteadOfMenuAndEditing()
    {
        QSignalSpy cut(desk_->cut, &QAction::triggered);
        desk_->first->setText(u"LU1ABC"_qs);
        desk_->first->selectAll();
        // What the menu has, the window does not see unless it claims it.
        QTest::keyClick(desk_->check, Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(cut.count(), 1);
        QVERIFY(!desk_->log.contains(u"press X"_qs));

        desk_->claims = desk_->eats = {Qt::Key_X};
        bool ctrl = false;
        desk_->onKey = [&](QKeyEvent *event) { ctrl |= event->key() == Qt::Key_X && desk_->CtrlHeld(); };
        for (QWidget *field : std::initializer_list<QWidget *>{desk_->first, desk_->check, desk_->combo})
            QTest::keyClick(field, Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(desk_->log.count(u"press X"_qs), 3);
        QCOMPARE(cut.count(), 1);
        QVERIFY(ctrl && !desk_->CtrlHeld());
        QCOMPARE(desk_->first->text(), u"LU1ABC"_qs);
    }

    // X11 sends a held key as release and press with one time stamp, and Qt's own mark is missing now and then.
    void UnmarkedRepeatsAreTold()
    {
        auto *router = qApp->findChild<KeyRouter *>();
        router->SetPairedRepeats(true);
        auto send = [this](QEvent::Type type, quint64 stamp) {
            QKeyEvent event(type, Qt::Key_Down, Qt::NoModifier);
            event.setTimestamp(stamp);
            QApplication::sendEvent(desk_->first, &event);
        };
        QList<bool> repeats;
        desk_->onKey = [&](QKeyEvent *event) { repeats << event->isAutoRepeat(); };
        send(QEvent::KeyPress, 100);
        for (const quint64 stamp : {700, 740}) {
            send(QEvent::KeyRelease, stamp);
            send(QEvent::KeyPress, stamp);
            QCoreApplication::processEvents();
        }
        QCOMPARE(desk_->log.count(u"release Down"_qs), 0);
        send(QEvent::KeyRelease, 780);
        send(QEvent::KeyPress, 900); // pressed anew: the release before it comes first
        send(QEvent::KeyRelease, 950);
        QTRY_COMPARE(desk_->log.count(u"release Down"_qs), 2);
        QCOMPARE(repeats, QList<bool>({false, true, true, false}));
        QCOMPARE(desk_->log.mid(3), QStringList({u"release Down"_qs, u"press Down"_qs, u"release Down"_qs}));
        router->SetPairedRepeats(QGuiApplication::platformName() == u"xcb");
    }

    void KeysOfMenusAndPopupsAreNotOurs()
    {
        auto *menuBar = desk_->findChild<QMenuBar *>();
        menuBar->setFocus(Qt::MenuBarFocusReason);
        QTest::keyClick(menuBar, Qt::Key_Escape);
        desk_->combo->showPopup();
        QWidget *popup = desk_->combo->view();
        QVERIFY(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyPress(popup, Qt::Key_Return);
        Send(desk_->combo, QEvent::KeyRelease, Qt::Key_Return, false);
        QCOMPARE(desk_->log.filter(u"press"_qs), QStringList());
        QCOMPARE(desk_->log.filter(u"release"_qs), QStringList());
    }

    void TheEnterThatOpensABoxDoesNotAnswerIt()
    {
        RealDialogs real;
        int boxesAnswered = 0;
        desk_->onKey = [&](QKeyEvent *event) {
            if (event->key() != Qt::Key_Return || event->isAutoRepeat())
                return;
            QTimer::singleShot(0, this, [&] {
                QMessageBox *box = OpenBox();
                QVERIFY(box);
                QWidget *button = box->defaultButton();
                Send(button, QEvent::KeyPress, Qt::Key_Return, true, u"\r"_qs);
                Send(button, QEvent::KeyRelease, Qt::Key_Return, false, u"\r"_qs);
                QVERIFY(box->isVisible());
                boxesAnswered++;
                Send(button, QEvent::KeyPress, Qt::Key_Return, false, u"\r"_qs);
                QVERIFY(!box->isVisible());
            });
            real.Message(desk_.get(), u"Falta el Corresponsal!"_qs, Dialogs::Icon::Exclamation, {});
        };
        Send(desk_->first, QEvent::KeyPress, Qt::Key_Return, false, u"\r"_qs);
        QCOMPARE(boxesAnswered, 1);
        // The Enter that answered is still held.
        Send(desk_->first, QEvent::KeyPress, Qt::Key_Return, true, u"\r"_qs);
        Send(desk_->first, QEvent::KeyRelease, Qt::Key_Return, false, u"\r"_qs);
        QCOMPARE(desk_->log.count(u"press Return"_qs), 1);
        QCOMPARE(desk_->log.count(u"release Return"_qs), 0);
        QTest::keyClick(desk_->second, Qt::Key_Tab);
        QVERIFY(desk_->log.contains(u"press Tab"_qs));
    }

    void FieldsAreLeftOnlyForOthersInTheWindow()
    {
        QTest::keyClick(desk_->first, Qt::Key_Tab);
        QCOMPARE(desk_->log, QStringList({u"press Tab"_qs, u"leave first"_qs, u"enter second"_qs, u"release Tab"_qs}));
        QCOMPARE(desk_->CurrentField(), desk_->second);
        desk_->log.clear();

        Desk other(dialogs_, desk_.get());
        other.Open();
        other.hide();
        desk_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(desk_.get()));
        auto *menuBar = desk_->findChild<QMenuBar *>();
        menuBar->setFocus(Qt::MenuBarFocusReason);
        desk_->second->setFocus(Qt::MenuBarFocusReason);
        QMenu menu;
        menu.addAction(u"Cortar"_qs);
        menu.popup({});
        menu.close();
        QCOMPARE(desk_->log, QStringList());

        desk_->combo->setFocus();
        desk_->combo->showPopup();
        desk_->combo->hidePopup();
        desk_->combo->lineEdit()->setFocus();
        desk_->spin->setFocus();
        QCOMPARE(desk_->log, QStringList({u"leave second"_qs, u"enter combo"_qs, u"leave combo"_qs, u"enter spin"_qs}));
    }

    void AFieldMessageComesOnceAndBringsTheFocusBack()
    {
        desk_->badField = u"first"_qs;
        QSignalSpy clicked(desk_->button, &QPushButton::clicked);
        QTest::mouseClick(desk_->button, Qt::LeftButton);
        QCOMPARE(clicked.count(), 0);
        QVERIFY(desk_->FieldMessagePending());
        QVERIFY(dialogs_.shown.isEmpty());
        desk_->badField = u"second"_qs; // a second field left before the box is up does not stack another
        desk_->second->setFocus();
        desk_->spin->setFocus();
        desk_->badField = u"spin"_qs; // the way back is no leaving
        QCoreApplication::processEvents();
        QCOMPARE(dialogs_.Texts(), QStringList({u"first no es válida!"_qs}));
        QCOMPARE(dialogs_.shown.first().owner, desk_.get());
        QCOMPARE(desk_->log.mid(desk_->log.size() - 2), QStringList({u"enter spin"_qs, u"enter first"_qs}));
        QVERIFY(!desk_->FieldMessagePending());
        QVERIFY(desk_->first->hasFocus());
        QCoreApplication::processEvents();
        QCOMPARE(dialogs_.shown.size(), 1);
        desk_->badField.clear();
        QTest::mouseClick(desk_->button, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
    }

    void AFieldMessageWaitsForOpenDialogsAndDiesWithItsWindow()
    {
        desk_->badField = u"first"_qs;
        desk_->second->setFocus();
        Desk above(dialogs_, desk_.get());
        QTimer::singleShot(0, this, [&] {
            QCoreApplication::processEvents();
            QVERIFY(dialogs_.shown.isEmpty());
            above.hide();
        });
        above.ShowModal();
        QTRY_COMPARE(dialogs_.shown.size(), 1);
        QVERIFY(desk_->focusWidget() == desk_->first);

        desk_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(desk_.get()));
        desk_->second->setFocus();
        QVERIFY(desk_->FieldMessagePending());
        desk_->hide();
        QCoreApplication::processEvents();
        QCOMPARE(dialogs_.shown.size(), 1);
        QVERIFY(!desk_->FieldMessagePending());
    }

    void TheFocusOfADisabledOrHiddenControlGoesWhereItIsTold()
    {
        for (int how = 0; how < 8; ++how) {
            init();
            const bool told = how < 4;
            desk_->fallback = told ? desk_->second : nullptr;
            desk_->framed->setFocus();
            desk_->log.clear();
            QWidget *gone = how % 4 < 2 ? static_cast<QWidget *>(desk_->framed) : desk_->frame;
            how % 2 ? gone->hide() : gone->setEnabled(false);
            QCOMPARE(QApplication::focusWidget(), told ? desk_->second : nullptr);
            QCOMPARE(desk_->log.join(u','), told ? u"leave framed,enter second"_qs : QString());
        }
    }
};

TORDILLO_TEST(TestWindow)
#include "TestWindow.moc"
