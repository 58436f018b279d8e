// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include <QTreeView>

// The window that edits one contact, opened from the list and by F5.
class TestForm5 : public DeskTest {
    Q_OBJECT

    void Edit(int row, const std::function<void()> &act)
    {
        InModal([&] { DoubleClick("ListView2", row); }, act);
    }
    void ByKey(const std::function<void()> &act)
    {
        InModal([&] { Press(Qt::Key_F5); }, act);
    }
    void Save() const { Click("Command1"); }
    // The call in a row of the main window's list.
    QString Listed(int row) const
    {
        const auto *list = Main().findChild<QTreeView *>(u"ListView2"_qs);
        return list->model()->index(row, 2).data().toString();
    }
    QsoRow Row(qint64 id) const
    {
        for (const QsoRow &row : Rows())
            if (row.id == id)
                return row;
        return {};
    }

private Q_SLOTS:
    void AForeignRowIsShownAndSavedUntouched()
    {
        Furnish(1);
        Sql("UPDATE Tabla1 SET Modo='ft8', Banda='20M', MyCall='lu9zzz', Estacion='lu1abc/w/p', "
            "Fecha='24-11-2026', Hora='9:05:59', RSE='+05', RSR='-12', Obs=' Ñandú'||char(10)||'ñ  ', "
            "Operador='lu1aaa ', Frecuencia='14,0740055', MiGrid='gf05ab12cd', SuGrid='fe46', LdA=' 2', "
            "Nombre_Sat=' SO-50', SOTA='lud/da-001', IOTA='ar-1 ', POTA='ar-2', MYSOTA='  lud/2'");
        Start();
        QsoRow expected = Row(2);
        Edit(0, [&] {
            QCOMPARE(Front()->windowTitle(), u"Edición de QSO #2"_qs);
            QCOMPARE(Texts("Text4 Text5 Combo2 Label20"), u"24/11/2026|09:05|ft8|P2P"_qs);
            for (int i = 0; i < 30; ++i) // through all fields and back to the first
                Press(Qt::Key_Tab);
            Save();
        });
        QCOMPARE(Said(), QString());
        expected.LdA.clear();
        expected.Argento = u"0"_qs;
        for (const QsoColumns::Column &column : QsoColumns::all)
            QCOMPARE(Row(2).*column.field, expected.*column.field);
    }

    void EachControlWritesItsColumn()
    {
        Begin(1);
        // The control, what is typed, and what the column holds then; Combo2 is the mode.
        const std::tuple<Words, Words, QString> changes[] = {{"Text1", "lu8-aa", u"MyCall=LU8AA"_qs},
            {"Text2", "lu2abc", u"Estacion=LU2ABC;Argento=Capital"_qs}, {"Text3", "lu7a", u"Operador=LU7A"_qs},
            {"Text4", "01/02/2027", u"Fecha=2027-02-01"_qs}, {"Text5", "23:59", u"Hora=23:59:00"_qs},
            {"Text6", "x", u"RSE=x"_qs}, {"Text7", "5", u"RSR=5"_qs}, {"Text8", "d'or", u"Obs=dor"_qs},
            {"Text9", "1a", u"Frecuencia=7.001"_qs}, {"Combo2", "AM", u"Modo=AM"_qs},
            {"Text10", "gf15cd", u"MiGrid=GF15CD"_qs}, {"Text11", "fe46", u"SuGrid=FE46"_qs},
            {"SOTA", " s1 ", u"SOTA=S1"_qs}, {"POTA", "p1", u"POTA=P1"_qs}, {"MYSOTA", "s2", u"MYSOTA=S2"_qs},
            {"IOTA", "p2", u"IOTA=P2"_qs}};
        QsoRow expected = Row(2);
        expected.LdA.clear();
        expected.Argento.clear();
        for (const auto &[control, typed, columns] : changes) {
            Edit(0, [&, &name = control, &text = typed] {
                Fill(name, text);
                Save();
            });
            expected = RowOf(columns, expected);
            QVERIFY2(Row(2) == expected, qPrintable(control));
        }
        QCOMPARE(Said(), QString());
        QCOMPARE(Listed(0), u"LU2ABC"_qs);
    }

    void SavingIsRefused()
    {
        Begin(1);
        struct Case {
            Words control, typed, told, focus;
        };
        const Case cases[] = {{"Combo2", "Sat", "XDebe agregar el nombre del Satélite", "Text12"},
            {"Text2", "lu1aaa", "XQSO con el Operador???", "Text2"},
            {"Text4", "31/02/2026", "!Error Fecha!\nFormato: DD/MM/AAAA", "Text4"},
            {"Text11", "GF0", "!Grilla incorrecta!", "Text11"}, {"Combo2", {}, "!Falta el Modo!", "Combo2"}};
        const QsoRow before = Row(2);
        for (const Case &one : cases) {
            Edit(0, [&] {
                Fill(one.control, one.typed);
                Save();
                QCOMPARE(Told(), QStringList({one.told}));
                QCOMPARE(Focus(), one.focus);
                QVERIFY(Find(one.focus)->isVisible());
                Press(Qt::Key_Escape);
            });
            QVERIFY(Row(2) == before);
        }
        Edit(0, [&] {
            Put("Text12", "ao-7");
            Put("Text7", " ");
            Save();
            QCOMPARE(Said() + Text("Text12") + Focus(), u"!Reporte incorrecto!AO-7Text7"_qs);
            Press(Qt::Key_Escape);
        });
        Edit(0, [&] {
            Choose("mhz", "3"); // out of the band with 090, and with 400, but it may be saved
            QCOMPARE(Told().size(), 1);
            Fill("Text9", "400");
            Save();
            QCOMPARE(Told().size(), 1);
            QCOMPARE(Focus(), u"Text9"_qs);
            Save();
        });
        QCOMPARE(Row(2).Banda + Row(2).Frecuencia, u"80m3.400"_qs);
    }

    void F5ShowsLittleAndWritesWhatTheFieldsHold()
    {
        Begin(3);
        Sql("UPDATE Tabla1 SET SuGrid='FE46', Hora='00:03:41', Modo='ft8' WHERE id=4");
        QsoRow expected = Row(4);
        ByKey([&] {
            QCOMPARE(Front()->windowTitle(), u"Edición de QSO #4"_qs); // the newest
            QCOMPARE(Texts("Text2 Text9 Label11 Text11"), u"CX3A|||"_qs);
            Save();
        });
        expected.Frecuencia = u"."_qs;
        for (QString QsoRow::*emptied : {&QsoRow::Banda, &QsoRow::SuGrid, &QsoRow::LdA, &QsoRow::Argento})
            (expected.*emptied).clear();
        QVERIFY(Row(4) == expected);
        // Afterwards the fields hold what the last contact opened from the list had.
        Edit(2, [&] {
            Fill("Text11", "GF11");
            Press(Qt::Key_Escape);
        });
        ByKey([&] {
            Fill("Text2", "CX9Z");
            Save();
        });
        expected.Estacion = u"CX9Z"_qs;
        expected.Frecuencia = u"7.090"_qs;
        expected.Banda = u"40m"_qs;
        expected.SuGrid = u"GF11"_qs;
        QVERIFY(Row(4) == expected);
        QCOMPARE(Listed(0), u"CX9Z"_qs); // the list that opened the window last is refreshed
        QCOMPARE(Said(), QString());
    }

    void F5WithoutContactsIsTold()
    {
        Begin(0);
        Press(Qt::Key_F5);
        QCOMPARE(Said(), u"!No hay QSOs para Editar!"_qs);
    }

    void DeletingAsksFirst()
    {
        Begin(21);
        const QString question = u"?Elimina el QSO #%1?\nLos datos no se podrán recuperar!"_qs;
        Edit(0, [&] {
            Click("Command2");
            QCOMPARE(dialogs.shown.last().preset, Dialogs::Button::No);
            QCOMPARE(Told(), QStringList({question.arg(22)}));
            Press(Qt::Key_Escape);
        });
        QCOMPARE(Rows().size(), 21);
        Press(Qt::Key_End);
        Edit(0, [&] {
            dialogs.answers << true;
            Click("Command2");
            QCOMPARE(Told(), QStringList({question.arg(2)}));
        });
        QVERIFY(Row(2).id == 0 && Rows().size() == 20);
        QCOMPARE(OnMain("Label6"), u"Log: Log inicial, con 20 QSOs"_qs);
        QCOMPARE(Listed(0), u"CX21A"_qs); // the only one of its page is gone: the page before is shown
        // By key the window still serves the search that opened it last; the main list must follow all the same.
        InWindow("eadif", [&] { InModal([&] { DoubleClick("ListView2", 0); }, [&] { Press(Qt::Key_Escape); }); });
        ByKey([&] {
            dialogs.answers << true;
            Click("Command2");
        });
        QCOMPARE(Listed(0), u"CX20A"_qs);
    }

    void ARowThatIsGoneIsTold()
    {
        Begin(2);
        Edit(0, [&] {
            Sql("DELETE FROM Tabla1 WHERE id=3");
            Fill("Text8", "mine");
            Save();
        });
        QCOMPARE(
            Told(), QStringList({u"XEl QSO #3 ya no está en el log: otro programa lo borró. No fue guardado."_qs}));
        QCOMPARE(Listed(0), u"CX1A"_qs);
        QCOMPARE(Rows().size(), 1);
    }

    void WhatCannotBeSavedStaysInTheWindow()
    {
        Begin(1);
        Edit(0, [&] {
            Fill("Text8", "mine");
            for (const Trouble &trouble : Troubles()) {
                trouble.begin();
                Save();
                EndTrouble();
                const QString told = Said();
                QVERIFY2(
                    told.startsWith(u"XEl QSO no fue guardado."_qs) && told.contains(trouble.said), qPrintable(told));
                QVERIFY(Front()->isVisible() && Text("Text8") == u"mine");
                QCOMPARE(Row(2).Obs, QString());
            }
            Save();
        });
        QCOMPARE(Row(2).Obs, u"mine"_qs);
        QCOMPARE(Said(), QString());
    }
};

TORDILLO_TEST(TestForm5)
#include "TestForm5.moc"
