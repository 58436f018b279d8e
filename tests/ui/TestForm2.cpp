// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>

// The settings: bound live, saved by both ways out, and by no other.
class TestForm2 : public DeskTest {
    Q_OBJECT

    void InSettings(const std::function<void()> &act)
    {
        InModal([&] { Menu("conf"); }, act);
    }
    QString Saved(const QByteArray &key) const
    {
        for (const QByteArray &line : Content("config.ini").split('\r'))
            if (line.trimmed().startsWith(key))
                return QString::fromLatin1(line.trimmed().mid(9));
        return u"(no such line)"_qs;
    }

private Q_SLOTS:
    void init()
    {
        DeskTest::init();
        Begin();
    }
    void EveryControlIsBoundAndSurvivesTheFile()
    {
        Configuration expected;
        const QString audio = Path(QString(u"audio/"_qs + QString(300, u'a') + u".mp3"_qs));
        dialogs.files = {audio};
        InSettings([&] {
            using C = Configuration;
            // What is typed in small letters; calls and grid come out in capitals, the rest stays.
            const std::tuple<Words, QString C::*, QString> fields[] = {{"Text1", &C::Estacion, u"CX1AA/P"_qs},
                {"Text2", &C::Operador, u"CX2AA"_qs}, {"Text3", &C::DiferUTC, u"-5"_qs},
                {"Text4", &C::GridLoca, u"GF15XX"_qs}, {"user_lda", &C::UserLdA, u"clave ñ 1"_qs},
                {"pass_lda", &C::PassLdA, u"clave ñ 2"_qs}, {"Text5", &C::HAMQuser, u"clave ñ 3"_qs},
                {"Text6", &C::HAMQpass, u"clave ñ 4"_qs}, {"Text8", &C::LDAQuser, u"clave ñ 5"_qs},
                {"Text7", &C::LDAQpass, u"clave ñ 6"_qs}, {"Text9", &C::eQSLuser, u"clave ñ 7"_qs},
                {"Text10", &C::eQSLpass, u"clave ñ 8"_qs}};
            for (const auto &[control, field, value] : fields) {
                Fill(control, value.toLower());
                expected.*field = value;
            }
            Choose("Combo1", "200");
            Choose("Combo2", "500");
            Click("Check1");
            Click("panta");
            Click("RTS");
            Click("Command5");
            QCOMPARE(Text("Label6"), audio);
            Click("Command2"); // Cancelar undoes nothing
        });
        expected.TAntes = u"200"_qs;
        expected.TDespues = u"500"_qs;
        expected.BuscaE = expected.Pantalla = expected.PinPTT = true;
        expected.ArcAudio = audio;
        expected.LogenUso = u"Log inicial"_qs;
        expected.LDAQ_web = OpenLogbook().configuration.LDAQ_web;
        QCOMPARE(dialogs.shown.value(0).text, u"Abrir Archivo de Audio ..."_qs);
        const QString log = expected.LogenUso;
        QCOMPARE(ConfigLines(OpenLogbook().configuration, log), ConfigLines(expected, log));
        ApplyWindowTheme(Theme::Light);
        Start();
        QCOMPARE(ConfigLines(OpenLogbook().configuration, log), ConfigLines(expected, log));
        QCOMPARE(CurrentTheme(), Theme::Dark);
    }

    void WhatIsTypedHoldsAtOnceButTheCaptionsWaitForTheSaving()
    {
        QCOMPARE(OnMain("Hora"), u"00:15"_qs);
        InSettings([&] {
            Fill("Text3", "-5");
            Fill("Text1", "cx1aa");
            Fill("Text4", "gf15xx");
            Advance(1000);
            QCOMPARE(Focus(), u"Text4"_qs);
            QCOMPARE(OnMain("Hora"), u"02:15"_qs);
            QCOMPARE(OnMain("Label2"), u"LU9ZZZ"_qs);
            Click("Command1");
        });
        QCOMPARE(Texts("Label2 Label3 Label8"), u"CX1AA|LU1AAA|GF15XX"_qs);
        QCOMPARE(Saved("Estacion="), u"CX1AA"_qs);
        QCOMPARE(Focus(), u"Corresponsal"_qs);
    }

    void BadCallsKeepTheWindowOpen()
    {
        const std::tuple<Words, Words, QString, QByteArray> cases[] = {
            {"Text1", {}, u"!La Señal Distintiva de la Estación es obligatiria!"_qs, "Estacion="},
            {"Text2", "123", u"X123 no es una señal distintiva!"_qs, "Operador="}};
        for (const auto &[control, bad, said, key] : cases) {
            const QByteArray before = Content("config.ini");
            InSettings([&, &field = control, &typed = bad, &told = said] {
                Fill(field, typed);
                for (const Words way : {"Command1", "Command2", "Enter"}) {
                    Find("Text9")->setFocus();
                    if (way == u"Enter")
                        Hold(Qt::Key_Return, 10);
                    else
                        Click(way);
                    QCOMPARE(Said(), told);
                    QVERIFY(Front()->isVisible());
                    QCOMPARE(Focus(), field);
                }
                QCOMPARE(Content("config.ini"), before);
                Fill(field, "LU3CCC");
                Press(Qt::Key_Return); // Enter saves, from any field
            });
            QCOMPARE(Said(), QString());
            QCOMPARE(Saved(key), u"LU3CCC"_qs);
        }
    }

    void EachOpeningReadsTheFileAnew()
    {
        Configure("Operador=", "LU2BBB");
        Configure("MySOTA__=", "LUR/C-001");
        InSettings([&] {
            QCOMPARE(Text("Text2"), u"LU2BBB"_qs);
            Click("Command2");
        });
        QCOMPARE(OnMain("MYSOTA"), u"LUR/C-001"_qs);
    }

    void TheOwnGridIsWholeOrEmpty()
    {
        InSettings([&] {
            QApplication::clipboard()->setText(u"g1f05"_qs);
            Fill("Text4", {});
            Press(Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(Text("Text4"), u"GF05"_qs); // the "1" does not fit its place
            Press(Qt::Key_Tab);
            QCOMPARE(Said() + Focus(), u"!Grilla incorrecta!Text4"_qs);
            Fill("Text4", {});
            Press(Qt::Key_Tab);
            QCOMPARE(Said(), QString());
            Click("Command1");
        });
        QCOMPARE(Saved("GridLoca="), QString());
    }

    void PasswordsShowWhileTheEyeIsHeld()
    {
        InSettings([&] {
            const std::pair<Words, Words> eyes[] = {
                {"Command3", "pass_lda"}, {"Image1", "Text6"}, {"Image2", "Text7"}, {"Image3", "Text10"}};
            for (const auto &[eye, field] : eyes) {
                auto *line = Find<QLineEdit>(field);
                line->setText(u"abc"_qs);
                const QString dots = line->displayText();
                QVERIFY(!dots.contains(u'a'));
                QTest::mousePress(Find(eye), Qt::LeftButton);
                QCOMPARE(line->displayText(), u"abc"_qs);
                QTest::mouseRelease(Find(eye), Qt::LeftButton);
                QCOMPARE(line->displayText(), dots);
            }
            QTest::mousePress(Find("Image1"), Qt::LeftButton);
            Press(Qt::Key_Return); // the window goes away with the eye held
        });
        InSettings([&] {
            QVERIFY(!Find<QLineEdit>("Text6")->displayText().contains(u'a'));
            Click("Command1");
        });
    }

    void OnlyTheTwoButtonsLeaveIt()
    {
        InSettings([&] {
            Front()->close();
            Press(Qt::Key_Escape);
            QVERIFY(Front()->isVisible());
            QCOMPARE(Front()->objectName(), u"Form2"_qs);
            Click("Command1");
        });
        QVERIFY(!ended);
    }

    void OneOfTheTwoLinesIsAlwaysTicked()
    {
        InSettings([&] {
            const auto ticked = [&] { return Ticked("RTS") * 10 + Ticked("DTR"); };
            QList<int> states{ticked()};
            for (const Words line : {"RTS", "RTS", "DTR", "DTR"}) {
                Click(line);
                states << ticked();
            }
            QCOMPARE(states, QList<int>({1, 10, 1, 10, 1}));
            Click("Command1");
        });
        QCOMPARE(Saved("PinPTT  ="), u"0"_qs);
    }

    void AFileThatCannotBeWrittenIsToldAndTheSettingsHoldForThisRun()
    {
        const QByteArray before = Content("config.ini");
        InSettings([&] {
            Fill("Text3", "-5");
            unwritable = QStringList{u"config.ini"_qs};
            Click("Command1");
        });
        QCOMPARE(dialogs.shown.size(), 1);
        const QString told = Said();
        QVERIFY(told.startsWith(u'X') && told.contains(Path("config.ini")));
        QCOMPARE(Content("config.ini"), before);
        Advance(1000);
        QCOMPARE(OnMain("Hora"), u"02:15"_qs);
    }

    void SavingStartsTheOneShotTimerCancellingStopsIt()
    {
        QSignalSpy clicked(Main().findChild<QPushButton *>(u"Command9"_qs), &QPushButton::clicked);
        Advance(60000);
        QCOMPARE(clicked.count(), 1); // of the start
        InSettings([&] { Click("Command1"); });
        Advance(60000);
        QCOMPARE(clicked.count(), 2);
        InSettings([&] { Click("Command1"); });
        InSettings([&] { Click("Command2"); });
        Advance(60000);
        QCOMPARE(clicked.count(), 2);
    }
};

TORDILLO_TEST(TestForm2)
#include "TestForm2.moc"
