// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ContestDesk.h"
#include "support/TestRegistry.h"

#include <QAbstractButton>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

// The contest window on the air, with the keyer's time in the test's hand.
class TestForm4Keyer : public QObject {
    Q_OBJECT

    std::unique_ptr<ContestDesk> desk_;

    void InCw(const std::function<void()> &act, const QString &contest = u"CONDOR"_qs)
    {
        desk_->Furnish();
        desk_->Start();
        desk_->InContest(contest, [&] {
            desk_->Choose(u"Combo1"_qs, u"CW"_qs);
            act();
        });
    }
    void Tick(const QString &name, bool on = true)
    {
        if (desk_->Find<QAbstractButton>(name)->isChecked() != on)
            desk_->Click(name);
    }
    bool Ticked(const QString &name) { return desk_->Find<QAbstractButton>(name)->isChecked(); }
    bool Sending() { return !desk_->Find(u"Combo3"_qs)->isEnabled(); }
    // What goes out from here to the end of the text.
    QString Sent()
    {
        for (int i = 0; i < 600 && Sending(); ++i)
            desk_->Advance(100);
        return desk_->Text(u"Label10"_qs);
    }
    QString Press(int key)
    {
        desk_->Press(key);
        return Sent();
    }
    QString Lines()
    {
        QStringList lines;
        for (QString line : desk_->ports.Taken())
            lines << line.remove(u"/dev/"_qs);
        return lines.join(u", "_qs);
    }
    // The number of the message whose button is coloured as the next one; 0 for none.
    int Suggested()
    {
        for (int i = 0; i < 7; ++i)
            if (desk_->Find(u"macros_%1"_qs.arg(i))->palette().color(QPalette::Button) == QColor(0xFF, 0xC0, 0x80))
                return i + 1;
        return 0;
    }
    QString FieldsAndFocus()
    {
        return desk_->Texts({u"RSE"_qs, u"Corresponsal"_qs, u"RSR"_qs}) + u' ' + desk_->Focus();
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<ContestDesk>(); }
    void cleanup() { desk_.reset(); }

    void MessagesByKeyAndButton()
    {
        InCw([&] {
            QCOMPARE(Press(Qt::Key_F1), u"CQ LU9ZZZ LU9ZZZ >>TEST<<"_qs);
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel=20 ppm"_qs);
            desk_->Type(u"lu1abc"_qs);
            QCOMPARE(Press(Qt::Key_F2), u"LU1ABC >> 599 << 001 001"_qs);
            QCOMPARE(Press(Qt::Key_F4), u"LU9ZZZ"_qs);
            QCOMPARE(Press(Qt::Key_F5), u"LU1ABC"_qs);
            QCOMPARE(Press(Qt::Key_F6), u"AGN"_qs);
            desk_->Click(u"macros_6"_qs);
            QCOMPARE(Sent(), u"NR?"_qs);
            Tick(u"Check5"_qs);
            desk_->Fill(u"RSE"_qs, u"90"_qs);
            QCOMPARE(Press(Qt::Key_F2), u"LU1ABC >> 5NN << TNT TNT"_qs);
            // The first message keeps the own call it was sent with.
            desk_->Fill(u"Text2"_qs, u"LU1AAA"_qs);
            QCOMPARE(Press(Qt::Key_F1), u"CQ LU9ZZZ LU9ZZZ >>TEST<<"_qs);
            QCOMPARE(Press(Qt::Key_F4), u"LU1AAA"_qs);
            QCOMPARE(desk_->Text(u"macros_3"_qs), u"F4-LU1AAA"_qs);
        });
    }

    // A whole contact by Enter alone, and another one searched for.
    void EnterSendsMessage()
    {
        InCw([&] {
            desk_->Press(Qt::Key_Return); // without ESM nothing goes out
            QVERIFY(!Sending());
            Tick(u"ESM"_qs);
            QCOMPARE(Suggested(), 1);
            QCOMPARE(Press(Qt::Key_Return), u"CQ LU9ZZZ LU9ZZZ >>TEST<<"_qs);
            QCOMPARE(FieldsAndFocus(), u"1|| Corresponsal"_qs);
            desk_->Type(u"LU1ABC"_qs);
            QCOMPARE(Press(Qt::Key_Return), u"LU1ABC  >> 599 << 001 001"_qs);
            QCOMPARE(FieldsAndFocus(), u"1|LU1ABC| RSR"_qs);
            desk_->Type(u"012"_qs);
            QCOMPARE(Suggested(), 3);
            Tick(u"Check9"_qs);
            desk_->Press(Qt::Key_Return);
            // The contact is stored before the thanks are over.
            QCOMPARE(desk_->Calls(u"CONDOR"_qs), (QStringList{u"LU1ABC CW 80m 1 012"_qs}));
            QVERIFY(Sending() && !Ticked(u"Check9"_qs));
            QCOMPARE(Sent(), u"TU"_qs);
            QCOMPARE(FieldsAndFocus(), u"2|| Corresponsal"_qs);

            // A call corrected after the exchange is named again.
            desk_->Type(u"LU2AB"_qs);
            Press(Qt::Key_Return);
            desk_->Fill(u"Corresponsal"_qs, u"LU2ABC"_qs);
            desk_->Fill(u"RSR"_qs, u"5"_qs);
            QCOMPARE(Press(Qt::Key_Return), u"LU2ABC TU"_qs);

            desk_->Click(u"SYP"_qs);
            QCOMPARE(Suggested(), 4);
            QVERIFY(!desk_->Find(u"Check9"_qs)->isEnabled());
            desk_->Find(u"Corresponsal"_qs)->setFocus();
            QCOMPARE(Press(Qt::Key_Return), u"LU9ZZZ"_qs); // nothing to repeat yet
            desk_->Type(u"PY2AA"_qs);
            QCOMPARE(Suggested(), 4);
            QCOMPARE(Press(Qt::Key_Return), u"LU9ZZZ"_qs);
            QCOMPARE(desk_->Focus(), u"RSR"_qs);
            desk_->Type(u"77"_qs);
            QCOMPARE(Suggested(), 2);
            QCOMPARE(Press(Qt::Key_Return), u"PY2AA >> 599 << 003 003"_qs);
            QCOMPARE(FieldsAndFocus(), u"4|| Corresponsal"_qs);
            QCOMPARE(Press(Qt::Key_Return), u"PY2AA 599 3"_qs); // once more, with the serial it was sent with
            QCOMPARE(Press(Qt::Key_F2), u" >> 599 << 003 003"_qs);
            // F1 goes back to calling, which forgets that exchange.
            Press(Qt::Key_F1);
            QVERIFY(Ticked(u"RUN"_qs) && desk_->Find(u"Check9"_qs)->isEnabled());
            QCOMPARE(Press(Qt::Key_F2), u" >> 599 << 004 004"_qs);
        });
        QCOMPARE(desk_->Calls(u"CONDOR"_qs).size(), 3);
    }

    void AContactThatIsNotStoredGetsNoThanks()
    {
        InCw([&] {
            Tick(u"ESM"_qs);
            desk_->Type(u"LU1ABC"_qs);
            Press(Qt::Key_Return);
            desk_->Type(u"12"_qs);
            FaultVfs::Instance().SetRoom(0);
            QCOMPARE(Press(Qt::Key_Return), u"LU1ABC  >> 599 << 001 001"_qs);
            QCOMPARE(desk_->Told().size(), 1);
            QCOMPARE(desk_->Text(u"Corresponsal"_qs), u"LU1ABC"_qs);
            Desk::HealDisk();
            QCOMPARE(Press(Qt::Key_Return), u"TU"_qs);
        });
        QCOMPARE(desk_->Calls(u"CONDOR"_qs).size(), 1);
    }

    void WhatIsMissingComesFirst()
    {
        InCw([&] {
            Tick(u"ESM"_qs);
            desk_->Fill(u"RSR"_qs, u"5"_qs);
            desk_->Press(Qt::Key_Return); // an exchange of nobody
            QVERIFY(!Sending());
            QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
            desk_->Type(u"LU1ABC"_qs);
            desk_->Fill(u"RSE"_qs, u" "_qs);
            desk_->Put(u"RSE"_qs, QString());
            desk_->Find(u"RSR"_qs)->setFocus();
            desk_->Press(Qt::Key_Return);
            QVERIFY(!Sending());
            QCOMPARE(desk_->Focus(), u"RSE"_qs);
            QCOMPARE(desk_->Told(), (QStringList{u"!Falta la Serie Enviada"_qs}));
        });
        QVERIFY(desk_->Calls(u"CONDOR"_qs).isEmpty());
    }

    void FixedExchange()
    {
        InCw(
            [&] {
                desk_->Type(u"LU1ABC"_qs);
                QCOMPARE(desk_->Text(u"macros_4"_qs), u"F5-LU1ABC"_qs); // no exchange to send yet
                desk_->Fill(u"RSE"_qs, u"bs09"_qs);
                Tick(u"Check5"_qs);
                QCOMPARE(Press(Qt::Key_F2), u"LU1ABC >> 5NN << BSTN BSTN"_qs);
                QCOMPARE(desk_->Text(u"macros_4"_qs), u"F5-SuCall"_qs);
            },
            u"ANDES"_qs);
    }

    void AutoCq()
    {
        InCw([&] {
            Tick(u"ESM"_qs);
            Tick(u"Check9"_qs);
            desk_->Advance(3000);
            desk_->Type(u"L"_qs); // neither puts a call off
            desk_->Press(Qt::Key_W, Qt::ControlModifier);
            desk_->Advance(990);
            QVERIFY(!Sending());
            desk_->Advance(20);
            QVERIFY(Sending());
            desk_->Press(Qt::Key_Escape);
            desk_->Advance(6000);
            QVERIFY(!Sending());
            Tick(u"Check8"_qs); // MasterCheck is no reason to call
            desk_->Advance(6000);
            QVERIFY(!Sending());
            // The call is typed and wiped: the calls begin again.
            desk_->Type(u"L"_qs);
            desk_->Press(Qt::Key_W, Qt::ControlModifier);
            desk_->Advance(4010);
            QVERIFY(Sending());
            desk_->Choose(u"Combo1"_qs, u"SSB"_qs);
            desk_->Advance(9000);
            QVERIFY(!Ticked(u"ESM"_qs) && !Ticked(u"Check9"_qs) && !Sending());
        });
    }

    void EscTakesTheSpeedBack()
    {
        InCw([&] {
            desk_->Press(Qt::Key_PageDown);
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel 21 ppm"_qs);
            desk_->Press(Qt::Key_F1);
            for (int i = 0; i < 200 && desk_->Find<QScrollBar>(u"HScroll1"_qs)->value() != 29; ++i)
                desk_->Advance(100);
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel=29 ppm"_qs);
            desk_->Press(Qt::Key_Escape);
            desk_->Advance(1000);
            QVERIFY(!Sending());
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel 21 ppm"_qs);
            QCOMPARE(Press(Qt::Key_F3), u"TU"_qs); // a stop of before does not cut it
            // Two CQs in a row: the second goes on behind the first.
            desk_->Press(Qt::Key_F1);
            QCOMPARE(Press(Qt::Key_F1), u"Q LU9ZZZ LU9ZZZ >>TEST<<CQ LU9ZZZ LU9ZZZ >>TEST<<"_qs);
        });
    }

    void PortAndLine()
    {
        desk_->Write(u"varCW.cfg"_qs, "COM2\r\n 0 \r\n");
        InCw([&] {
            QCOMPARE(Lines(), u"open ttyS1"_qs);
            desk_->Press(Qt::Key_F4); // L
            desk_->Advance(70);
            QVERIFY(Lines().startsWith(u"ttyS1 RTS 1, ttyS1 RTS 0"));
            desk_->Press(Qt::Key_Escape);
            Sent();
            Lines();
            Tick(u"Check3"_qs);
            QVERIFY(!Ticked(u"Check4"_qs));
            desk_->Choose(u"Combo3"_qs, u"COM7"_qs);
            QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
            // The manual key, and what opens it when its release goes elsewhere.
            QTest::keyPress(desk_->Find(u"Corresponsal"_qs), Qt::Key_Down);
            desk_->Advance(10);
            QVERIFY(desk_->Find(u"Image1"_qs)->isVisible());
            QTest::keyRelease(desk_->Find(u"Corresponsal"_qs), Qt::Key_Down);
            QCOMPARE(Lines(), u"close ttyS1, open ttyUSB2, ttyUSB2 DTR 1, ttyUSB2 DTR 0"_qs);
            desk_->Advance(10);
            QVERIFY(!desk_->Find(u"Image1"_qs)->isVisible());
            QTest::keyPress(desk_->Find(u"Corresponsal"_qs), Qt::Key_Down);
            QEvent away(QEvent::WindowDeactivate);
            QCoreApplication::sendEvent(desk_->Front(), &away);
            QVERIFY(Lines().endsWith(u"DTR 0"));
            QTest::keyRelease(desk_->Find(u"Corresponsal"_qs), Qt::Key_Down);
            desk_->ports.refused[u"/dev/ttyS2"_qs] = {u"No hay permiso"_qs};
            desk_->Choose(u"Combo3"_qs, u"COM3"_qs);
            QCOMPARE(desk_->Text(u"EstadoPuerto"_qs), u"sin puerto"_qs);
            QCOMPARE(desk_->Find(u"Combo3"_qs)->toolTip(), u"No hay permiso"_qs);
            QCOMPARE(Press(Qt::Key_F6), u"AGN"_qs);
            desk_->Choose(u"Combo3"_qs, u"COM2"_qs);
            desk_->ports.gone << u"/dev/ttyS1"_qs;
            Press(Qt::Key_F6);
        });
        desk_->Advance(10);
        QCOMPARE(desk_->Told().filter(u"El puerto COM2 dejó de responder"_qs).size(), 1);
        QVERIFY(desk_->Content(u"varCW.cfg"_qs) == "COM2\r\n 1 \r\n");
        QVERIFY(Lines().endsWith(u"close ttyS1"));
    }

    void MacroEditor()
    {
        InCw([&] {
            const auto edit = [&](const std::function<void()> &act) {
                desk_->InModal([&] { desk_->Click(u"Command5"_qs); }, act);
            };
            desk_->Press(Qt::Key_PageDown);
            edit([&] {
                QCOMPARE(desk_->Text(u"Text1_0"_qs), u"CQ #MISD# #MISD# >>TEST<<"_qs);
                QCOMPARE(desk_->Texts({u"Label2_6"_qs, u"Label3_6"_qs}), u"Subir velocidad 4ppm:|<"_qs);
                desk_->Fill(u"Text1_5"_qs, u"QRZ"_qs);
                desk_->Click(u"Command1"_qs);
            });
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel 21 ppm"_qs); // the window goes on as it was
            QCOMPARE(Press(Qt::Key_F6), u"QRZ"_qs);
            edit([&] {
                desk_->Fill(u"Text1_5"_qs, u"X"_qs);
                desk_->Click(u"Command2"_qs);
            });
            QCOMPARE(Press(Qt::Key_F6), u"QRZ"_qs);
            // A file that cannot be written keeps the editor open with what was typed.
            desk_->unwritable << u"macros_concurso_3.cfg"_qs;
            edit([&] {
                desk_->Click(u"Command3"_qs);
                QVERIFY(desk_->Front()->objectName() == u"Form20" && desk_->Told().size() == 1);
                desk_->unwritable.clear();
                desk_->Click(u"Command3"_qs);
            });
            QCOMPARE(Press(Qt::Key_F6), u"AGN"_qs);
            QVERIFY(desk_->Content(u"macros_concurso_3.cfg"_qs).contains("macro6=AGN\r\n"));
            // Esc takes the whole window up anew, but for the port of a text that is going out.
            desk_->Press(Qt::Key_F1);
            desk_->Advance(50);
            Lines();
            edit([&] { desk_->Press(Qt::Key_Escape); });
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel 20 ppm"_qs);
            QCOMPARE(Sent(), u"CQ LU9ZZZ LU9ZZZ >>TEST<<"_qs);
            QVERIFY(!Lines().contains(u"open"));
            edit([&] { desk_->Press(Qt::Key_Escape); });
            QCOMPARE(Lines(), u"close ttyS0, open ttyS0"_qs);
        });
    }

    void KeyboardWindow()
    {
        InCw([&] {
            desk_->Press(Qt::Key_PageDown);
            const auto open = [&](const std::function<void()> &act) {
                desk_->InModal([&] { desk_->Press(Qt::Key_F9); }, act);
            };
            open([&] {
                desk_->Press(Qt::Key_Return); // an empty text
                desk_->Type(u"qsl>"_qs);
                desk_->Press(Qt::Key_Return);
                desk_->Advance(300);
                desk_->Press(Qt::Key_Return); // again, from the start, behind the character in hand
                desk_->Advance(10'000);
                QCOMPARE(desk_->Find<QPlainTextEdit>(u"Text1"_qs)->toPlainText(), u"qsl>"_qs);
                desk_->Press(Qt::Key_Return);
                desk_->Press(Qt::Key_Escape);
            });
            QCOMPARE(Sent(), u"Q"_qs); // the character in hand, no more
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel=25 ppm"_qs);
            QCOMPARE(Press(Qt::Key_F6), u"AGN"_qs);
            open([&] { desk_->Front()->close(); });
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel 20 ppm"_qs);
        });
    }

    // The recorded CQ of the other modes: every way out of it opens the line.
    void RecordedCq()
    {
        desk_->Furnish();
        desk_->Configure(u"ArcAudio="_qs, u"/cq.mp3"_qs);
        desk_->Configure(u"Puerto  ="_qs, u"COM1"_qs);
        desk_->Write(u"varCW.cfg"_qs, "COM2\r\n 1 \r\n");
        desk_->Start();
        const auto play = [&] {
            desk_->Press(Qt::Key_F1);
            if (!desk_->player.Taken().isEmpty())
                desk_->player.Opens();
            return Lines();
        };
        desk_->InContest(u"CONDOR"_qs, [&] {
            Lines();
            QCOMPARE(play(), u"ttyS0 DTR 1"_qs);
            desk_->player.Ends();
            QCOMPARE(Lines(), u"ttyS0 DTR 0"_qs);
            const std::function<void()> ways[] = {[&] { desk_->Press(Qt::Key_Escape); },
                [&] { desk_->Choose(u"Combo1"_qs, u"FM"_qs); },
                [&] {
                    desk_->Choose(u"Combo1"_qs, u"CW"_qs);
                    QCOMPARE(Lines(), QString()); // the CQ goes on
                    desk_->Press(Qt::Key_Escape);
                }};
            for (const auto &way : ways) {
                QCOMPARE(play(), u"ttyS0 DTR 1"_qs);
                way();
                QCOMPARE(Lines(), u"ttyS0 DTR 0"_qs);
            }
            desk_->player.Taken();
            desk_->Press(Qt::Key_F1); // in CW it is a message
            QVERIFY(desk_->player.Taken().isEmpty() && Sending());
            Sent();
            desk_->Choose(u"Combo1"_qs, u"SSB"_qs);
            Lines();
            play();
        });
        QVERIFY(Lines().contains(u"ttyS0 DTR 0"));
        // The CQ of the main window keeps its line in the contest, and the keyer lets its port alone meanwhile.
        QCOMPARE(play(), u"ttyS0 DTR 1"_qs);
        desk_->InContest(u"CONDOR"_qs, [&] {
            QCOMPARE(desk_->Text(u"EstadoPuerto"_qs), u"sin puerto"_qs);
            desk_->Choose(u"Combo1"_qs, u"CW"_qs);
            Lines();
            desk_->Choose(u"Combo3"_qs, u"COM5"_qs);
            QCOMPARE(desk_->Text(u"Combo3"_qs) + Lines(), u"COM2"_qs);
        });
        desk_->Press(Qt::Key_Escape);
        QVERIFY(Lines().endsWith(u"ttyS0 DTR 0"));
    }

    void TrialInTheSettings()
    {
        desk_->Write(u"varCW.cfg"_qs, "COM3\r\n 0 \r\n");
        desk_->Furnish();
        desk_->Start();
        desk_->InModal([&] { desk_->Menu("conf"); },
            [&] {
                Lines();
                desk_->InModal([&] { desk_->Click(u"ProbarManipulador"_qs); },
                    [&] {
                        desk_->ports.refused[u"/dev/ttyS2"_qs] = {u"No hay permiso"_qs};
                        desk_->Click(u"probar"_qs);
                        QCOMPARE(desk_->Texts({u"resultado"_qs, u"consejo"_qs}), u"|No hay permiso"_qs);
                        desk_->ports.refused.clear();
                        desk_->Fill(u"texto"_qs, u"e"_qs);
                        desk_->Click(u"probar"_qs);
                        QVERIFY(!desk_->Find(u"probar"_qs)->isEnabled());
                        desk_->Advance(500);
                        QCOMPARE(Lines(), u"open ttyS2, ttyS2 RTS 1, ttyS2 RTS 0, close ttyS2"_qs);
                        QCOMPARE(desk_->Texts({u"resultado"_qs, u"consejo"_qs}),
                            u"Flancos: 2     Error medio: 0,00 ms     Error mayor: 0,00 ms|La manipulación es buena."_qs);
                        desk_->ports.gone << u"/dev/ttyS2"_qs;
                        desk_->Fill(u"texto"_qs, u"eeeeee"_qs);
                        desk_->Click(u"probar"_qs);
                        desk_->Advance(100);
                        desk_->Press(Qt::Key_Escape); // stops the trial, not the window
                        desk_->Advance(500);
                        QVERIFY(desk_->Text(u"consejo"_qs).contains(u"dejó de responder"));
                        desk_->Press(Qt::Key_Escape);
                    });
                desk_->Click(u"Command1"_qs);
            });
    }

    // Leaving in the middle of a text: the character ends, then the port goes.
    void LeavingStops()
    {
        InCw([&] {
            Tick(u"ESM"_qs);
            desk_->Press(Qt::Key_F1);
            desk_->Advance(100);
        });
        Lines();
        desk_->Advance(3000);
        QVERIFY(Lines().endsWith(u"DTR 0, close ttyS0"));
    }
};

TORDILLO_TEST(TestForm4Keyer)
#include "TestForm4Keyer.moc"
