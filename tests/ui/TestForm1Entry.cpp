// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QPushButton>

// The operator at the main window: from the keys to the stored row.
class TestForm1Entry : public DeskTest {
    Q_OBJECT

private Q_SLOTS:
    void AContactIsTypedWithTheKeyboardAlone()
    {
        Begin();
        QCOMPARE(Focus(), u"Corresponsal"_qs);
        Type("lu1abc");
        Press(Qt::Key_Return);
        Type("57"); // over the selected report
        Press(Qt::Key_Return);
        Type("58");
        Press(Qt::Key_Enter);
        QCOMPARE(Focus(), u"Text1"_qs);
        Type("710");
        QCOMPARE(Focus(), u"Obs"_qs); // three digits move on to the remarks
        Type("Día de O'Higgins");
        Press(Qt::Key_Return);

        QCOMPARE(Said(), QString());
        QCOMPARE(Rows().size(), 1);
        QCOMPARE(Shown(Rows().first()),
            u"Modo=SSB;Banda=80m;MyCall=LU9ZZZ;Estacion=LU1ABC;Fecha=2026-11-25;Hora=00:15:00;RSE=57;RSR=58;"
            "Obs=Día de O'Higgins;Operador=LU1AAA;NombreLog=Log inicial;Frecuencia=3.710;MiGrid=GF05AB;LdA=1;"
            "Argento=Capital"_qs);
        QCOMPARE(Text("Label6"), u"Log: Log inicial, con 1 QSOs"_qs);
        QCOMPARE(Focus(), u"Corresponsal"_qs);
        QCOMPARE(Texts("Corresponsal Obs RSE RSR Text1"), u"||57|58|710"_qs);
    }

    void EnterWalksTheFields()
    {
        for (const bool both : {false, true}) { // by the clock; by hand and over a satellite
            init();
            Begin();
            if (both) {
                Click("Check1");
                Click("Check2");
                Choose("Combo3", "SO-50");
            }
            QCOMPARE(Focus(), u"Corresponsal"_qs);
            Type("CX1AA");
            const QHash<QString, QString> selected{{u"Fecha"_qs, u"24"_qs}, {u"Hora"_qs, u"15"_qs},
                {u"RSE"_qs, u"59"_qs}, {u"RSR"_qs, u"59"_qs}, {u"Text1"_qs, u"650"_qs}};
            const QString fields = both ? u"Fecha Hora RSE RSR Text2 Obs"_qs : u"RSE RSR Text1 Text2 Obs"_qs;
            for (const QString &field : fields.split(u' ')) {
                Press(Qt::Key_Return);
                QCOMPARE(Focus(), field);
                QCOMPARE(Find<QLineEdit>(field)->selectedText(), selected.value(field));
                QVERIFY(Rows().isEmpty());
            }
            Press(Qt::Key_Return);
            QCOMPARE(Rows().size(), 1);
            QCOMPARE(Focus(), u"Corresponsal"_qs);
            QCOMPARE(LastStored(&QsoRow::Nombre_Sat), both ? u"SO-50"_qs : QString());
            QCOMPARE(Said(), QString());
        }
    }

    void TheSatelliteDictatesModeAndFrequencyUntilItIsLeft()
    {
        Write("servicios.ini", "[servicios]\r\npases=https://pases.test\r\n");
        Begin();
        Fill("Text1", "710");
        QVERIFY(!Find("Frame2")->isVisible());
        Click("Check2");
        QVERIFY(Find("Frame2")->isVisible());
        // None was ever chosen: the catalogue's last row stands in the labels, but it gives no frequency.
        QCOMPARE(Texts("mhz Text1"), u"3|"_qs);
        const auto stored = [&] {
            const QsoRow row = Rows().last();
            return QStringList{row.Nombre_Sat, row.Modo, row.Frecuencia, row.Banda}.join(u'|');
        };
        Put("Combo3", "VIEJO-1"); // the catalogue has lost it, and no click has put a blank behind "Modo:"
        Contact("CX0AA");
        QCOMPARE(stored(), u"VIEJO-1|Modo:FM|3.|80m"_qs);
        Choose("Combo3", "SO-50");
        QCOMPARE(Enabled("Combo1 mhz Text1"), u"---"_qs);
        Click("Command15");
        QCOMPARE(launcher->opened.join(u'|') + Focus(), u"https://pases.testCorresponsal"_qs);
        Contact("CX1AA");
        QCOMPARE(stored(), u"SO-50|FM|145.550|2m"_qs);
        Click("Check2");
        QCOMPARE(Focus(), u"Corresponsal"_qs);
        Contact("CX2AA");
        QCOMPARE(stored(), u"|SSB|3.710|80m"_qs);
    }

    void EnterRefuses()
    {
        struct Case {
            Words field, value, from, told, focus; // what is put where, and the field that has the focus
        };
        const Words call = "!Falta el Corresponsal!", rsr = "!Reporte Recibido no válido!";
        std::vector<Case> cases{{"RSR", "69", "Obs", rsr, "RSR"}, {"RSE", "5", "Corresponsal", rsr, "RSR"},
            {"Combo1", "CW", "Obs", rsr, "RSR"}, {"RSE", "50", "Obs", "!Reporte Enviado no válido!", "RSE"},
            {"Check2", {}, "Obs", "!Elija un satélite!", "Combo3"},
            {"Corresponsal", "LU9ZZZ", "Corresponsal", "XQSO con la propia estación???", "Corresponsal"}};
        for (const char *from : {"Corresponsal", "RSE", "RSR", "Text1", "Text2", "Obs"})
            cases.push_back({"Corresponsal", {}, from, call, "Corresponsal"});
        for (const Case &one : cases) {
            init();
            Begin();
            Find(one.from)->setFocus();
            Put("Corresponsal", "CX1AA");
            if (one.field == u"Check2")
                Click("Check2");
            else
                Put(one.field, one.value);
            if (one.value == u"5")
                Put("RSR", "5"); // the received one is told before the sent one
            Find(one.from)->setFocus();
            Told();
            Press(Qt::Key_Return);
            QCOMPARE(Said(), one.told);
            QCOMPARE(Focus(), one.focus);
            QVERIFY(Rows().isEmpty());
        }
    }

    void TheButtonStoresWhatEnterRefuses()
    {
        Begin();
        Type("LU9ZZZ");
        Click("Command2");
        QCOMPARE(Said(), QString());
        QCOMPARE(LastStored(&QsoRow::Estacion), u"LU9ZZZ"_qs);
        QCOMPARE(Focus(), u"Corresponsal"_qs);
    }

    void AContactWithoutAModeIsNotStoredOutOfSight()
    {
        Begin();
        Type("CX1AA");
        Put("Combo1", {});
        Click("Command2");
        QCOMPARE(Said(), u"!Falta el Modo!"_qs);
        QCOMPARE(Focus(), u"Combo1"_qs);
        Type("AM");
        Click("Command2");
        QCOMPARE(Said(), QString());
        QCOMPARE(LastStored(&QsoRow::Modo), u"AM"_qs);
    }

    void AHeldEnterTakesOneStepAndStoresNothingMore()
    {
        Begin();
        Type("CX1AA");
        Hold(Qt::Key_Return, 30);
        QCOMPARE(Focus(), u"RSE"_qs);
        Find("Obs")->setFocus();
        Hold(Qt::Key_Return, 30);
        QCOMPARE(Rows().size(), 1);
        QCOMPARE(Said(), QString());
        QCOMPARE(Focus(), u"Corresponsal"_qs);
    }

    void AFieldLeftBadKeepsTheFocusAndSaysWhy()
    {
        struct Case {
            Words field, typed, told, then; // what the field holds afterwards
        };
        const Case cases[] = {{"Corresponsal", "ABC", "!ABC NO Parece ser una Señal distintiva Válida!", "ABC"},
            {"RSE", "99", "!el Reporte 99 no es válido!", "59"}, {"Text2", "GF05A", "!Grilla incorrecta!", "GF05A"}};
        for (const Case &one : cases) {
            init();
            Begin();
            Click("Check1");
            Put("Corresponsal", "CX1AA");
            Fill(one.field, one.typed);
            Press(Qt::Key_Tab);
            QCOMPARE(dialogs.shown.value(0).owner, &Main());
            QCOMPARE(Said(), one.told);
            QCOMPARE(Focus(), one.field);
            QCOMPARE(Text(one.field), one.then);

            // The click on the button that leaves the field does not store past it either.
            Fill(one.field, one.typed);
            Click("Command2");
            QCOMPARE(Said(), one.told);
            QCOMPARE(Focus(), one.field);
            QVERIFY(Rows().isEmpty());
        }
    }

    void KeysThatDoNotBelongDoNothing()
    {
        Begin();
        Click("Check1");
        Click("Check4");
        const std::tuple<Words, Words, Words> fields[] = {{"Corresponsal", "lu1-a,ñb c/p?", "LU1ABC/P?"},
            {"Fecha", "1-2.a/3", "12/3"}, {"Hora", "1.2h:3", "12:3"}, {"Text1", "1,a2", "12"},
            {"Text2", "g1f/0a5xx", "GF05XX"}, {"Obs", "año: 5/9, O'H", "año: 5/9, O'H"},
            {"SOTA", "lur/c-001", "LUR/C-001"}, {"POTA_IN", "ar-ñ1", "AR-Ñ1"}, {"MYSOTA", "lu a", "LU A"}};
        for (const auto &[field, typed, text] : fields) {
            const QString before = Text(field);
            Fill(field, typed);
            QCOMPARE(Text(field), text);
            Put(field, before);
        }
    }

    void FieldsAreCompletedWhenTheyAreLeft()
    {
        Begin();
        Click("Check1");
        Fill("Fecha", "05/03/");
        Fill("Hora", "9:5");
        Fill("Text1", "7");
        Put("mhz", "7");
        Find("Obs")->setFocus();
        QCOMPARE(Texts("Fecha Hora Text1 Label7"), u"05/03/2000|09:05|007|40m"_qs);
        QCOMPARE(Said(), QString());
    }

    void ReportsFollowTheMode()
    {
        Begin();
        Choose("Combo1", "CW");
        QCOMPARE(Focus(), u"Corresponsal"_qs);
        QCOMPARE(Texts("RSE RSR"), u"599|599"_qs);
        Fill("RSE", "509"); // in CW a bad report is put back to one that is bad again
        Press(Qt::Key_Tab);
        QCOMPARE(Said() + Text("RSE"), u"!el Reporte 509 no es válido!59"_qs);
        Press(Qt::Key_Tab);
        QCOMPARE(Said(), u"!el Reporte 59 no es válido!"_qs);
        Choose("Combo1", "DVoice");
        QCOMPARE(Texts("RSE RSR"), u"59|59"_qs);
    }

    void AChoiceOfMegahertzSetsTheBand()
    {
        Begin();
        Choose("mhz", "10");
        QCOMPARE(Text("Label7") + Said() + Focus(), u"30m!10.650 KHz\n\nFuera de banda!Corresponsal"_qs);
        Put("Text1", {});
        Choose("mhz", "14");
        QCOMPARE(Text("Label7") + Focus(), u"30mmhz"_qs);
        Choose("Combo2", "2m"); // the list of bands only sends the focus away
        QCOMPARE(Text("Label7") + Focus(), u"30mCorresponsal"_qs);
    }

    void TheCountryIsShown()
    {
        Write("dxcc.txt", "LU;x;Argentina\r\nsin separador\r\n CX;;Uruguay \r\n");
        Begin();
        Type("CX1AA");
        QCOMPARE(Text("Label18"), QString());
        Press(Qt::Key_Tab);
        QCOMPARE(Text("Label18"), u"Uruguay"_qs);
        Fill("Corresponsal", {});
        QCOMPARE(Text("Label18") + Enabled("Command7"), u"-"_qs);
        Configure("BuscaE  =", "1"); // while the call is typed
        Start();
        const std::pair<Words, QString> calls[] = {
            {"LU", {}}, {"LU1", u"Argentina"_qs}, {"LU1M", u"Mendoza"_qs}, {"ZZ9", u"Argentina"_qs}};
        for (const auto &[call, country] : calls) {
            Fill("Corresponsal", call);
            QCOMPARE(Text("Label18"), country);
        }
    }

    void AGridInOnePieceIsLookedAtCharacterByCharacter()
    {
        Begin();
        Fill("Text2", "GF05AB");
        Contact("CX1AA"); // empties it
        QApplication::clipboard()->setText(u"99999A"_qs);
        Find("Text2")->setFocus();
        Press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(Text("Text2"), u"A"_qs);
    }

    void CtrlWWipesCallAndGridOnly()
    {
        Begin();
        Fill("Text2", "GF05");
        Fill("Corresponsal", "ABC"); // bad, but it is gone before it is left
        Put("Obs", "antena");
        Press(Qt::Key_W, Qt::ControlModifier);
        QCOMPARE(Texts("Corresponsal Text2 Obs") + Focus() + Said(), u"||antenaCorresponsal"_qs);
    }

    void OutOfBandIsSaidOnceForAValue()
    {
        Begin();
        const QString warning = u"!3.490 KHz\n\nFuera de banda!"_qs;
        Fill("Text1", "490");
        QCOMPARE(Said(), warning);
        QCOMPARE(Focus(), u"Text1"_qs);
        QCOMPARE(Text("Label7"), u"80m"_qs);
        Press(Qt::Key_Tab);
        QCOMPARE(Said(), QString());
        QCOMPARE(Focus(), u"Text2"_qs);
        Fill("Text1", "500");
        QCOMPARE(Said(), QString());
        Fill("Text1", "490");
        QCOMPARE(Said(), warning);
        Contact("CX1AA");
        QCOMPARE(LastStored(&QsoRow::Frecuencia), u"3.490"_qs);
    }

    void AClickIntoAFieldSelectsLikeEnter()
    {
        Begin();
        const std::pair<Words, Words> fields[] = {
            {"Fecha", "25"}, {"Hora", "15"}, {"RSE", "59"}, {"RSR", "59"}, {"Text1", "650"}, {"Obs", {}}};
        for (const auto &[field, selected] : fields)
            for (const Words &expected : {selected, Words()}) { // the second click sets the caret
                Click(field);
                QCOMPARE(Find<QLineEdit>(field)->selectedText(), expected);
            }
    }

    void ATypedChoiceThatIsLeftIsNoClick()
    {
        Begin();
        Find("RSR")->setFocus();
        for (const QString &field : {u"mhz"_qs, u"Text1"_qs}) {
            Press(Qt::Key_Tab);
            QCOMPARE(Focus(), field);
        }
        Fill("mhz", "14");
        Press(Qt::Key_Tab);
        QCOMPARE(Focus(), u"Text1"_qs);
        QCOMPARE(Text("Label7"), u"80m"_qs);
        Press(Qt::Key_Tab); // leaving the kilohertz sets the band
        QCOMPARE(Text("Label7"), u"20m"_qs);
        Fill("Combo1", "CW");
        Press(Qt::Key_Tab);
        QCOMPARE(Focus(), u"Combo2"_qs);
        QCOMPARE(Text("RSE"), u"59"_qs);
    }
};

TORDILLO_TEST(TestForm1Entry)
#include "TestForm1Entry.moc"
