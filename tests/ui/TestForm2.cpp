// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"
#include "ui/Theme.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

// The settings: bound live, saved by both ways out, and by no other.
class TestForm2 : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    void InSettings(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("conf"); }, act);
    }
    QString Saved(const QByteArray &key) const
    {
        for (const QByteArray &line : desk_->Content(u"config.ini"_qs).split('\r'))
            if (line.trimmed().startsWith(key))
                return QString::fromLatin1(line.trimmed().mid(9));
        return u"(no such line)"_qs;
    }
    QString OnMain(const QString &name) const
    {
        return desk_->Main().findChild<QWidget *>(name)->property("text").toString();
    }

private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        desk_->Furnish();
        desk_->Start();
    }
    void cleanup() { desk_.reset(); }

    void EveryControlIsBoundAndSurvivesTheFile()
    {
        Configuration expected;
        const QString audio = desk_->Path(QString(u"audio/"_qs + QString(300, u'a') + u".mp3"_qs));
        desk_->dialogs.files = {audio};
        InSettings([&] {
            const QHash<QString, QString Configuration::*> fields{{u"Text1"_qs, &Configuration::Estacion},
                {u"Text2"_qs, &Configuration::Operador}, {u"Text3"_qs, &Configuration::DiferUTC},
                {u"Text4"_qs, &Configuration::GridLoca}, {u"user_lda"_qs, &Configuration::UserLdA},
                {u"pass_lda"_qs, &Configuration::PassLdA}, {u"Text5"_qs, &Configuration::HAMQuser},
                {u"Text6"_qs, &Configuration::HAMQpass}, {u"Text8"_qs, &Configuration::LDAQuser},
                {u"Text7"_qs, &Configuration::LDAQpass}, {u"Text9"_qs, &Configuration::eQSLuser},
                {u"Text10"_qs, &Configuration::eQSLpass}};
            const QHash<QString, QString> values{{u"Text1"_qs, u"CX1AA/P"_qs}, {u"Text2"_qs, u"CX2AA"_qs},
                {u"Text3"_qs, u"-5"_qs}, {u"Text4"_qs, u"GF15XX"_qs}};
            for (auto field = fields.begin(); field != fields.end(); ++field) {
                const QString value = values.value(field.key(), QString(u"clave ñ de "_qs + field.key()));
                desk_->Fill(field.key(), value.toLower());
                expected.*field.value() = values.contains(field.key()) ? value : value.toLower();
            }
            desk_->Choose(u"Combo1"_qs, u"200"_qs);
            desk_->Choose(u"Combo2"_qs, u"500"_qs);
            desk_->Click(u"Check1"_qs);
            desk_->Click(u"panta"_qs);
            desk_->Click(u"RTS"_qs);
            desk_->Click(u"Command5"_qs);
            QCOMPARE(desk_->Text(u"Label6"_qs), audio);
            desk_->Click(u"Command2"_qs); // Cancelar undoes nothing
        });
        expected.TAntes = u"200"_qs;
        expected.TDespues = u"500"_qs;
        expected.BuscaE = expected.Pantalla = expected.PinPTT = true;
        expected.ArcAudio = audio;
        expected.LogenUso = u"Log inicial"_qs;
        expected.LDAQ_web = desk_->OpenLogbook().configuration.LDAQ_web;
        QCOMPARE(desk_->dialogs.shown.value(0).text, u"Abrir Archivo de Audio ..."_qs);
        const QString log = expected.LogenUso;
        QCOMPARE(ConfigLines(desk_->OpenLogbook().configuration, log), ConfigLines(expected, log));
        ApplyWindowTheme(Theme::Light);
        desk_->Start();
        QCOMPARE(ConfigLines(desk_->OpenLogbook().configuration, log), ConfigLines(expected, log));
        QCOMPARE(CurrentTheme(), Theme::Dark);
    }

    void WhatIsTypedHoldsAtOnceButTheCaptionsWaitForTheSaving()
    {
        QCOMPARE(OnMain(u"Hora"_qs), u"00:15"_qs);
        InSettings([&] {
            desk_->Fill(u"Text3"_qs, u"-5"_qs);
            desk_->Fill(u"Text1"_qs, u"cx1aa"_qs);
            desk_->Fill(u"Text4"_qs, u"gf15xx"_qs);
            desk_->Advance(1000);
            QCOMPARE(desk_->Focus(), u"Text4"_qs);
            QCOMPARE(OnMain(u"Hora"_qs), u"02:15"_qs);
            QCOMPARE(OnMain(u"Label2"_qs), u"LU9ZZZ"_qs);
            desk_->Click(u"Command1"_qs);
        });
        const QStringList captions{OnMain(u"Label2"_qs), OnMain(u"Label3"_qs), OnMain(u"Label8"_qs)};
        QCOMPARE(captions, QStringList({u"CX1AA"_qs, u"LU1AAA"_qs, u"GF15XX"_qs}));
        QCOMPARE(Saved("Estacion="), u"CX1AA"_qs);
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
    }

    void BadCallsKeepTheWindowOpen_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("told");
        QTest::newRow("no station") << u"Text1"_qs << QString()
                                    << u"!La Señal Distintiva de la Estación es obligatiria!"_qs;
        QTest::newRow("operator") << u"Text2"_qs << u"123"_qs << u"X123 no es una señal distintiva!"_qs;
    }
    void BadCallsKeepTheWindowOpen()
    {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, told);
        const QByteArray before = desk_->Content(u"config.ini"_qs);
        InSettings([&] {
            desk_->Fill(field, typed);
            for (const QString &way : {u"Command1"_qs, u"Command2"_qs, u"Enter"_qs}) {
                desk_->Find(u"Text9"_qs)->setFocus();
                if (way == u"Enter")
                    desk_->Hold(Qt::Key_Return, 10);
                else
                    desk_->Click(way);
                QCOMPARE(desk_->Told(), QStringList({told}));
                QVERIFY(desk_->Front()->isVisible());
                QCOMPARE(desk_->Focus(), field);
            }
            QCOMPARE(desk_->Content(u"config.ini"_qs), before);
            desk_->Fill(field, u"LU3CCC"_qs);
            desk_->Press(Qt::Key_Return); // Enter saves, from any field
        });
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(Saved(field == u"Text1" ? "Estacion=" : "Operador="), u"LU3CCC"_qs);
    }

    void OnlyTheTwoButtonsLeaveIt()
    {
        InSettings([&] {
            desk_->Front()->close();
            desk_->Press(Qt::Key_Escape);
            QVERIFY(desk_->Front()->isVisible());
            QCOMPARE(desk_->Front()->objectName(), u"Form2"_qs);
            desk_->Click(u"Command1"_qs);
        });
        QVERIFY(!desk_->ended);
    }

    void OneOfTheTwoLinesIsAlwaysTicked()
    {
        InSettings([&] {
            const auto ticked = [&] {
                QStringList names;
                for (const QString &line : {u"RTS"_qs, u"DTR"_qs})
                    if (desk_->Find<QCheckBox>(line)->isChecked())
                        names << line;
                return names.join(u'+');
            };
            QStringList states{ticked()};
            for (const QString &line : {u"RTS"_qs, u"RTS"_qs, u"DTR"_qs, u"DTR"_qs}) {
                desk_->Click(line);
                states << ticked();
            }
            QCOMPARE(states, QStringList({u"DTR"_qs, u"RTS"_qs, u"DTR"_qs, u"RTS"_qs, u"DTR"_qs}));
            desk_->Click(u"Command1"_qs);
        });
        QCOMPARE(Saved("PinPTT  ="), u"0"_qs);
    }

    void AFileThatCannotBeWrittenIsToldAndTheSettingsHoldForThisRun()
    {
        const QByteArray before = desk_->Content(u"config.ini"_qs);
        InSettings([&] {
            desk_->Fill(u"Text3"_qs, u"-5"_qs);
            desk_->unwritable = QStringList{u"config.ini"_qs};
            desk_->Click(u"Command1"_qs);
        });
        const QStringList told = desk_->Told();
        QCOMPARE(told.size(), 1);
        QVERIFY(told.first().startsWith(u'X') && told.first().contains(desk_->Path(u"config.ini"_qs)));
        QCOMPARE(desk_->Content(u"config.ini"_qs), before);
        desk_->Advance(1000);
        QCOMPARE(OnMain(u"Hora"_qs), u"02:15"_qs);
    }

    void SavingStartsTheOneShotTimerCancellingStopsIt()
    {
        QSignalSpy clicked(desk_->Main().findChild<QPushButton *>(u"Command9"_qs), &QPushButton::clicked);
        desk_->Advance(60000);
        QCOMPARE(clicked.count(), 1); // of the start
        InSettings([&] { desk_->Click(u"Command1"_qs); });
        desk_->Advance(60000);
        QCOMPARE(clicked.count(), 2);
        InSettings([&] { desk_->Click(u"Command1"_qs); });
        InSettings([&] { desk_->Click(u"Command2"_qs); });
        desk_->Advance(60000);
        QCOMPARE(clicked.count(), 2);
    }
};

TORDILLO_TEST(TestForm2)
#include "TestForm2.moc"
