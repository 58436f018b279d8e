// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "keyer/CqCaller.h"
#include "support/TestRegistry.h"
#include "ui/CallerView.h"
#include "ui/Form1_Main.h"

#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QTest>

// The recorded CQ and its line, as the windows have them.
class TestCaller : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    void Start(const QString &port = u"COM1"_qs)
    {
        desk_->Configure(u"ArcAudio="_qs, u"/audio/cq.mp3"_qs);
        desk_->Configure(u"Puerto  ="_qs, port);
        desk_->Configure(u"PinPTT  ="_qs, u"0"_qs);
        desk_->Start();
    }
    void InSettings(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("conf"); }, act);
    }
    int Bar() const { return desk_->Find(u"sPorcentaje"_qs)->width(); }
    // Ground and text.
    QString Lamp(const QString &name = u"IndicadorTx"_qs) const
    {
        const QPalette colours = desk_->Find(name)->palette();
        return colours.color(QPalette::Window).name() + u' ' + colours.color(QPalette::WindowText).name();
    }

private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        desk_->Furnish();
    }
    void cleanup() { desk_.reset(); }

    void F1PlaysWithTheLineClosedUntilEsc()
    {
        Start();
        QCOMPARE(desk_->ports.Taken(), QStringList{u"open /dev/ttyS0"_qs});
        QCOMPARE(Lamp(), u"#400000 #ffffff"_qs);
        QCOMPARE(Bar(), 0);
        desk_->Hold(Qt::Key_F1, 5); // a held key starts it once
        desk_->player.Opens();
        QCOMPARE(desk_->player.Taken(), QStringList({u"close"_qs, u"rewind"_qs, u"open"_qs, u"play"_qs}));
        QCOMPARE(desk_->player.File(), u"/audio/cq.mp3"_qs);
        desk_->player.Plays(2500, 10000);
        QCOMPARE(Bar(), desk_->Find(u"sFondo"_qs)->width() / 4);
        QCOMPARE(Lamp(), u"#ff0000 #ffffff"_qs);
        desk_->player.Ends();
        QCOMPARE(desk_->ports.Taken(), QStringList{u"/dev/ttyS0 DTR 1"_qs});
        QCOMPARE(Lamp(), u"#ff0000 #ffffff"_qs);
        desk_->Press(Qt::Key_Escape);
        QCOMPARE(desk_->ports.Taken(), QStringList{u"/dev/ttyS0 DTR 0"_qs});
        QCOMPARE(desk_->player.Taken(), QStringList({u"stop"_qs, u"close"_qs}));
        QCOMPARE(Lamp(), u"#400000 #ffffff"_qs);
        QCOMPARE(Bar(), 15);
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        QCOMPARE(desk_->Told(), QStringList());
    }

    void AFileThatCannotBePlayedChangesNothing()
    {
        Start();
        static_cast<void>(desk_->ports.Taken());
        desk_->Press(Qt::Key_F1);
        desk_->player.Opens(u"no es un audio"_qs);
        QCOMPARE(desk_->ports.Taken(), QStringList());
        QCOMPARE(Lamp(), u"#400000 #ffffff"_qs);
        QCOMPARE(Bar(), 0);
        QCOMPARE(desk_->Told(), QStringList());
    }

    void EveryWayOutOpensTheLine_data()
    {
        QTest::addColumn<QString>("way");
        QTest::newRow("frame") << u"frame"_qs;
        QTest::newRow("menu") << u"salir"_qs;
        QTest::newRow("gone") << u"gone"_qs;
    }
    void EveryWayOutOpensTheLine()
    {
        QFETCH(QString, way);
        Start();
        desk_->Press(Qt::Key_F1);
        desk_->player.Opens();
        static_cast<void>(desk_->ports.Taken());
        desk_->dialogs.answers = {true};
        if (way == u"frame")
            desk_->Main().close();
        else if (way == u"salir")
            desk_->Menu("salir");
        else
            desk_->Kill();
        QCOMPARE(desk_->ports.Taken().value(0), u"/dev/ttyS0 DTR 0"_qs);
        QVERIFY(desk_->player.CurrentMode() == AudioPlayer::Mode::Closed);
    }

    void AStartWithoutTheAdapterTellsItAboveTheLog()
    {
        desk_->ports.refused[u"/dev/ttyUSB0"_qs] = {u"No existe el puerto."_qs, Failure::Kind::Missing};
        desk_->dialogs.whileShown = [&] { QVERIFY(desk_->marks.contains(u"page-shown"_qs)); };
        Start(u"COM5"_qs);
        const QStringList told = desk_->Told();
        QCOMPARE(told.size(), 1);
        QVERIFY(told[0].startsWith(u"!COM5: No existe el puerto.") && told[0].contains(u"NINGUNO"));
        desk_->Contact(u"LU1ABC"_qs);
        QCOMPARE(desk_->LastStored(&QsoRow::Estacion), u"LU1ABC"_qs);
        QCOMPARE(desk_->OpenLogbook().configuration.Puerto, u"NINGUNO"_qs);
        // Plugged in again, the settings find it, since nothing was saved meanwhile.
        desk_->ports.refused.clear();
        InSettings([&] {
            QCOMPARE(desk_->Text(u"Puerto"_qs), u"COM5"_qs);
            desk_->Click(u"Command1"_qs);
        });
        QCOMPARE(desk_->ports.Taken(), QStringList{u"open /dev/ttyUSB0"_qs});
        QCOMPARE(desk_->Told(), QStringList());
    }

    void AFirstRunOpensNoPort()
    {
        desk_ = std::make_unique<Desk>();
        desk_->InModal([&] { desk_->Start(); },
            [&] {
                desk_->Fill(u"Text1"_qs, u"LU9ZZZ"_qs);
                desk_->Click(u"Command1"_qs);
            });
        desk_->Start();
        QCOMPARE(desk_->ports.Taken(), QStringList());
        QCOMPARE(desk_->Told(), QStringList());
    }

    void ThePortIsChosenInTheSettings()
    {
        Start(u"NINGUNO"_qs);
        desk_->ports.refused[u"/dev/ttyS2"_qs] = {u"En uso."_qs, Failure::Kind::Locked};
        InSettings([&] {
            desk_->Choose(u"Puerto"_qs, u"COM1"_qs);
            desk_->Choose(u"Puerto"_qs, u"COM1"_qs); // again, after it was pulled out and in
            desk_->Choose(u"Puerto"_qs, u"COM2"_qs);
            QCOMPARE(desk_->ports.Taken(),
                QStringList({u"open /dev/ttyS0"_qs, u"close /dev/ttyS0"_qs, u"open /dev/ttyS0"_qs,
                    u"close /dev/ttyS0"_qs, u"open /dev/ttyS1"_qs}));
            desk_->Choose(u"Puerto"_qs, u"COM3"_qs);
            QCOMPARE(desk_->ports.Taken(), QStringList{u"close /dev/ttyS1"_qs});
            QCOMPARE(desk_->Text(u"Puerto"_qs), u"NINGUNO"_qs);
            QVERIFY(desk_->Told().value(0).startsWith(u"!COM3: En uso."));
            desk_->Choose(u"Puerto"_qs, u"COM1"_qs);
            desk_->Choose(u"Puerto"_qs, u"NINGUNO"_qs);
            QCOMPARE(desk_->ports.Taken(), QStringList({u"open /dev/ttyS0"_qs, u"close /dev/ttyS0"_qs}));
            desk_->Click(u"Command1"_qs);
        });
        QCOMPARE(desk_->Told(), QStringList());
    }

    void TheSettingsPlayWithoutTheLine()
    {
        Start();
        InSettings([&] {
            static_cast<void>(desk_->ports.Taken());
            static_cast<void>(desk_->player.Taken());
            desk_->Click(u"Command7"_qs); // nothing to stop
            QVERIFY(desk_->Find(u"Command7"_qs)->isEnabled());
            desk_->Click(u"Command6"_qs);
            desk_->player.Opens();
            desk_->player.Plays(500, 1000);
            QCOMPARE(Bar(), desk_->Find(u"sFondo"_qs)->width() / 2);
            desk_->Click(u"Command7"_qs);
            QVERIFY(!desk_->Find(u"Command7"_qs)->isEnabled());
            desk_->player.Ends();
            QVERIFY(desk_->Find(u"Command7"_qs)->isEnabled());
            QCOMPARE(desk_->Focus(), u"Command7"_qs);
            QCOMPARE(desk_->player.Taken(),
                QStringList({u"stop"_qs, u"close"_qs, u"rewind"_qs, u"open"_qs, u"play"_qs, u"stop"_qs}));
            QVERIFY(!desk_->Find(u"AvisoAudio"_qs)->isVisible());
            desk_->Click(u"Command6"_qs);
            desk_->player.Opens(u"No es un audio."_qs);
            QVERIFY(desk_->Find(u"AvisoAudio"_qs)->isVisible());
            QCOMPARE(desk_->Text(u"AvisoAudio"_qs), u"No es un audio."_qs);
            desk_->Click(u"Command6"_qs);
            desk_->player.Opens();
            QVERIFY(!desk_->Find(u"AvisoAudio"_qs)->isVisible());
            QCOMPARE(desk_->ports.Taken(), QStringList());
            desk_->Click(u"Command1"_qs);
        });
        QVERIFY(desk_->player.CurrentMode() == AudioPlayer::Mode::Closed);
        QCOMPARE(desk_->Told(), QStringList());
    }

    void TheTestOfTheLineLastsAsLongAsTheButtonIsHeld()
    {
        Start();
        const QStringList on{u"/dev/ttyS0 DTR 1"_qs}, off{u"/dev/ttyS0 DTR 0"_qs};
        InSettings([&] {
            QTRY_COMPARE(QApplication::activeWindow(), desk_->Front()); // or the focus below does not move
            auto *button = desk_->Find<QPushButton>(u"Command8"_qs);
            static_cast<void>(desk_->ports.Taken());
            QTest::mousePress(button, Qt::LeftButton);
            QCOMPARE(desk_->ports.Taken(), on);
            QTest::mouseRelease(button, Qt::LeftButton);
            QCOMPARE(desk_->ports.Taken(), off);
            button->setFocus();
            QTest::keyPress(button, Qt::Key_Space);
            QCOMPARE(desk_->ports.Taken(), on);
            desk_->Find(u"Text9"_qs)->setFocus(); // the key is let go somewhere else
            QCOMPARE(desk_->ports.Taken(), off);
            button->setFocus();
            QTest::keyPress(button, Qt::Key_Space);
            QCOMPARE(desk_->ports.Taken(), on);
            desk_->Press(Qt::Key_Return); // saves and leaves
        });
        QCOMPARE(desk_->ports.Taken(), off);
        QCOMPARE(Lamp(), u"#400000 #ffffff"_qs);
    }

    // The contest's share in a window of its own.
    void InTheContestTheLineOpensAtTheEndOfTheAudio()
    {
        Start();
        QWidget window;
        auto *bar = new QFrame(&window);
        bar->resize(220, 12);
        auto *lamp = new QLabel(&window);
        lamp->setObjectName(u"Label8"_qs);
        CqCaller &caller = desk_->Caller();
        new CallerView(caller, bar, lamp);
        const auto ground = [&] { return lamp->palette().color(QPalette::Window).name(); };
        const QStringList on{u"/dev/ttyS0 DTR 1"_qs}, off{u"/dev/ttyS0 DTR 0"_qs};
        static_cast<void>(desk_->ports.Taken());

        caller.Start(CqCaller::From::Contest);
        desk_->player.Opens();
        QCOMPARE(desk_->ports.Taken(), on);
        QCOMPARE(ground(), u"#ff0000"_qs);
        QCOMPARE(Lamp(), u"#ff0000 #ffffff"_qs); // one transmitter, two windows that show it
        desk_->player.Plays(1, 2);
        QCOMPARE(bar->findChild<QWidget *>(u"sPorcentaje"_qs)->width(), 110);
        desk_->player.Ends();
        QCOMPARE(desk_->ports.Taken(), off);
        QCOMPARE(ground(), u"#400000"_qs);

        caller.Start(CqCaller::From::Contest);
        desk_->player.Opens();
        caller.Leave(CqCaller::From::Contest);
        QCOMPARE(desk_->ports.Taken(), on + off);
        caller.PttOff(caller.Line());
        QCOMPARE(desk_->ports.Taken(), off);
        QVERIFY(!caller.MainHoldsPort());
        desk_->Press(Qt::Key_F1);
        desk_->player.Opens();
        QVERIFY(caller.MainHoldsPort());
        caller.Leave(CqCaller::From::Contest);
        QCOMPARE(desk_->ports.Taken(), on);
        caller.Escape();
        QCOMPARE(desk_->ports.Taken(), off);
        QVERIFY(!caller.MainHoldsPort());
    }
};

TORDILLO_TEST(TestCaller)
#include "TestCaller.moc"
