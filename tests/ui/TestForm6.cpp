// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include <QHeaderView>
#include <QTreeView>

// The search window over the open log.
class TestForm6 : public DeskTest {
    Q_OBJECT

    void InSearch(const std::function<void()> &act) { InWindow("eadif", act); }
    // A column of the list, by blanks; the calls if none is told.
    QString Listed(int column = 2) const { return Cells("ListView2", column).replace(u'|', u' '); }
    void SortByCall() const { ClickTitle("ListView2", 2); }
    QString Target() const { return Path("salida.adi"); }
    // The file's records, each from its call on.
    QList<QByteArray> Records() const
    {
        QList<QByteArray> records;
        for (const QByteArray &line : Content("salida.adi").split('\n'))
            if (line.contains("<EOR>"))
                records << line.mid(line.indexOf("<CALL:")).trimmed();
        return records;
    }
    void Export(bool remarksAsMessage = false)
    {
        dialogs.answers.prepend(remarksAsMessage);
        dialogs.files << Target();
        Click("Command1");
    }

private Q_SLOTS:
    void TheWholeLogIsListedFirst()
    {
        Begin(3);
        InSearch([&] {
            QCOMPARE(Front()->windowTitle(), u"Exportar ..."_qs);
            QCOMPARE(Listed(0) + u' ' + Listed(), u"1 2 3 CX3A CX2A CX1A"_qs);
            QCOMPARE(Text("Label6"), u"3"_qs);
            QCOMPARE(Text("Label7"),
                u"SELECT * FROM Tabla1 WHERE [Modo]<>'' and [Nombre Log]='Log inicial' "
                "ORDER BY [Fecha] DESC, [Hora] DESC"_qs);
        });
    }

    void EveryControlFilters()
    {
        Furnish(3);
        Store({RowOf(u"Operador=LU7A;IOTA=AR-1;POTA=AR-1;Fecha=2026-01-02"_qs, SampleQso(4)),
            RowOf(u"MyCall=LU8AAA;Obs=un Ñandú;SOTA=LUD/DA-001;MYSOTA=LUD/DA-001;Nombre_Sat=AO-7;Fecha=2026-01-02"_qs,
                SampleQso(5))});
        Start();
        struct Filter {
            Words control, typed, found; // nothing typed: the control is clicked
        };
        const Filter filters[] = {{"Text1", "02/01/2026", "CX5A CX4A"}, {"Text2", "01/01/2026x", "CX3A CX2A CX1A"},
            {"Text3", "lu8-*", "CX5A"}, {"Text4", "lu7?", "CX4A"}, {"Text5", "c-x4 a", "CX4A"},
            {"Text6", "cw", "CX4A CX2A"}, {"S2S", {}, "CX5A"}, {"P2P", {}, "CX4A"}, {"Text7", "20m", "CX3A"},
            {"Text8", "ñandú", "CX5A"}, {"POTA", {}, "CX4A"}, {"IOTA", {}, "CX4A"}, {"SOTA", {}, "CX5A"},
            {"MYSOTA", {}, "CX5A"}, {"Check1", {}, "CX5A"}, {"Check2", {}, {}}};
        InSearch([&] {
            for (const auto &[control, typed, found] : filters) {
                if (typed.isEmpty())
                    Click(control);
                else
                    Fill(control, typed);
                Press(Qt::Key_Return);
                QVERIFY2(Listed() == found, qPrintable(control));
                Click("Command4");
                QCOMPARE(Listed(0), u"1 2 3 4 5"_qs);
            }
        });
        QCOMPARE(Said(), QString());
    }

    void OptionsActUnderTheirTick()
    {
        Furnish(1);
        for (int state = 0; state < 3; ++state)
            Store({RowOf(u"Estacion=LU%1ABC;LdA=%2"_qs.arg(state + 1).arg(state), SampleQso(state + 2))});
        Start();
        const Words options = "Option1 Option2 Option3 Option4";
        InSearch([&] {
            QCOMPARE(Enabled(options), u"----"_qs);
            QVERIFY(!Find("Image1")->isVisible());
            Click("Check2");
            QCOMPARE(Enabled(options), u"++++"_qs);
            QVERIFY(Find("Image1")->isVisible());
            const QStringList found{u"LU1ABC"_qs, u"LU2ABC"_qs, u"LU2ABC"_qs, u"LU3ABC LU2ABC LU1ABC"_qs};
            for (int i = 0; i < found.size(); ++i) {
                Find<QAbstractButton>(options.section(u' ', i, i))->click();
                Press(Qt::Key_Return);
                QCOMPARE(Listed(), found[i]);
            }
        });
    }

    void TheSatelliteBlinksUnderItsTick()
    {
        Begin(1);
        InSearch([&] {
            Click("Check1");
            for (const bool visible : {false, true, false}) {
                Advance(500);
                QCOMPARE(Find("Image2")->isVisible(), visible);
            }
            Click("Check1");
            QVERIFY(Find("Image2")->isVisible());
        });
    }

    void AnEmptyLogIsTold()
    {
        Begin();
        Menu("eadif");
        QCOMPARE(Said(), u"!No Hay QSOs para Buscar!"_qs);
    }

    void TitlesSort()
    {
        Begin(7);
        InSearch([&] {
            SortByCall();
            QCOMPARE(Listed() + Listed(0), u"CX1A CX2A CX3A CX4A CX5A CX6A CX7A7 6 5 4 3 2 1"_qs);
            ClickTitle("ListView2", 5); // the direction turns over at each click
            QCOMPARE(Listed(), u"CX1A CX3A CX5A CX7A CX2A CX4A CX6A"_qs);
            ClickTitle("ListView2", 1); // "ID" sorts by the band
            QCOMPARE(Listed(), u"CX3A CX6A CX1A CX5A CX7A CX2A CX4A"_qs);
            Find("Command8")->setFocus();
            for (const int key : {Qt::Key_Tab, Qt::Key_Right, Qt::Key_Right, Qt::Key_Space}) // by keyboard
                Press(key);
            QCOMPARE(Listed(), u"CX7A CX6A CX5A CX4A CX3A CX2A CX1A"_qs);
            Press(Qt::Key_Down);
            Press(Qt::Key_Down);
            InModal([&] { Press(Qt::Key_E, Qt::ControlModifier); },
                [&] {
                    QCOMPARE(Text("Text2"), u"CX6A"_qs);
                    Front()->close();
                });
        });
    }

    void BadDatesAndBands()
    {
        Begin(2);
        InSearch([&] {
            for (const QString &date : {u"Text1"_qs, u"Text2"_qs}) {
                Fill(date, u"31/02/2026"_qs);
                Press(Qt::Key_Return);
                QCOMPARE(Said(), u"!31/02/2026\nformato de fecha no válido!"_qs);
                QCOMPARE(Focus(), date);
                QCOMPARE(Text("Label6") + Enabled("Command1 Command3"), u"0-+"_qs);
                Press(Qt::Key_Tab);
                QCoreApplication::processEvents();
                QCOMPARE(Said(), u"!Error en el formato de fecha!"_qs);
                Fill(date, {});
            }
        });
    }

    void ARowIsEditedAndDeletedInItsPlace()
    {
        Begin(4);
        InSearch([&] {
            SortByCall();
            InModal([&] { DoubleClick("ListView2", 1); },
                [&] {
                    QCOMPARE(Text("Text2"), u"CX2A"_qs);
                    Fill("Text2", "zz9");
                    Click("Command1");
                });
            QCOMPARE(Listed(), u"CX1A ZZ9 CX3A CX4A"_qs);
            dialogs.answers << true;
            InModal([&] { DoubleClick("ListView2", 2); }, [&] { Click("Command2"); });
            QCOMPARE(Listed() + u' ' + Listed(0) + Text("Label6"), u"CX1A ZZ9 CX4A 4 3 13"_qs);
            Sql("DELETE FROM Tabla1 WHERE Estacion='CX4A'");
            QCOMPARE(Told().size(), 1); // the question
            DoubleClick("ListView2", 2);
            QCOMPARE(Said(), u"!El QSO ya no está en el log: otro programa lo borró."_qs);
            QCOMPARE(Listed(), u"CX1A ZZ9"_qs);
        });
        QCOMPARE(Text("Label6"), u"Log: Log inicial, con 2 QSOs"_qs); // read again at the closing
    }

    void TheWindowLivesWhileItFills()
    {
        Furnish(1);
        StoreMany(60000);
        Start();
        InModal([&] { Menu("eadif"); },
            [&] {
                QString during;
                QTimer::singleShot(0, Front(), [&] {
                    during = Text("Label6") + Enabled("Command1 Command3 Command4 Command6 Command8");
                    QVERIFY(Find("Label13")->isVisible() && Find("ProgressBar2")->isVisible());
                    Type("cx1a");
                    Press(Qt::Key_Return); // is busy
                    Press(Qt::Key_Escape);
                });
                Advance(0);
                QCOMPARE(during, u"?-----"_qs);
                const int shown = Text("Label6").toInt();
                QVERIFY2(shown > 0 && shown < 60001, qPrintable(Text("Label6")));
                QCOMPARE(Find<QTreeView>("ListView2")->model()->rowCount(), shown);
                QCOMPARE(Text("Text5"), u"CX1A"_qs); // no key was lost
                QTimer::singleShot(0, Front(), [&] {
                    during = Focus();
                    Find("Text5")->setFocus(); // where the operator goes he stays
                    Press(Qt::Key_Escape);
                });
                Click("Command3");
                QCOMPARE(during + u' ' + Focus(), u"ListView2 Text5"_qs);
                Press(Qt::Key_Return);
                QCOMPARE(Listed(), u"CX1A"_qs);
                Front()->close();
            });
        InSearch([&] {
            QCOMPARE(Text("Label6"), u"60001"_qs);
            bool sorting = false; // busy, but "Buscando ..." would be wrong
            QTimer::singleShot(
                0, Front(), [&] { sorting = Find("ProgressBar2")->isVisible() && !Find("Label13")->isVisible(); });
            SortByCall();
            QVERIFY(sorting);
        });
        QCOMPARE(Said(), QString());
    }

    void ADatabaseThatFailsIsToldOnce()
    {
        Begin(3);
        InSearch([&] {
            TakeBase();
            Press(Qt::Key_Return);
            QCOMPARE(Told().size(), 1);
            QCOMPARE(Text("Label6"), u"0"_qs);
            BringBase();
            Press(Qt::Key_Return);
            QCOMPARE(Listed(), u"CX3A CX2A CX1A"_qs);
        });
        QCOMPARE(Said(), QString());
    }

    void AButtonKeepsTheFocusOverItsWork()
    {
        Begin(3);
        InSearch([&] {
            Click("Command3");
            QCOMPARE(Focus(), u"Command3"_qs);
            Fill("Text5", "cx");
            Click("Command4");
            QCOMPARE(Focus(), u"Command4"_qs);
            InModal([&] { Click("Command5"); }, [&] { Press(Qt::Key_Escape); });
            QTRY_COMPARE(Focus(), u"Command5"_qs);
        });
    }

    void TheRowsAreWrittenInTheirOrder()
    {
        Furnish(3);
        Store({RowOf(u"Obs=TNX ñ;Frecuencia=7,090;Nombre_Sat= AO-7 "_qs, SampleQso(4)), SampleQso(5)});
        Start();
        InSearch([&] {
            Put("Text7", "40m");
            Press(Qt::Key_Return);
            SortByCall();
            Sql("DELETE FROM Tabla1 WHERE Estacion='CX2A'"); // what went meanwhile is left out
            Export(true);
            const QList<RecordingDialogs::Shown> shown = dialogs.shown;
            QCOMPARE(Said(),
                u"?Desea usar el campo COMMENT como QSLMSG?|-Exportar a ADIF ...|!"_qs + Target()
                    + u"\nGuardado!\n\nDesea verlo?");
            QVERIFY(shown[0].preset == Dialogs::Button::Yes && shown[2].preset == Dialogs::Button::No);
            QCOMPARE(shown[1].detail.section(u'|', 0, 0), u"ADIF (*.adi)"_qs);
            QVERIFY(!form->isVisible());
        });
        QCOMPARE(Records().size(), 3);
        QCOMPARE(Records()[0].first(12) + Records()[2].first(12), QByteArray("<CALL:4>CX1A<CALL:4>CX5A"));
        QCOMPARE(Records()[1],
            QByteArray(
                "<CALL:4>CX4A<MODE:2>CW<BAND:3>40m<FREQ:5>7.090<QSO_DATE:8>20260101<TIME_ON:4>0004<RST_SENT:3>599"
                "<RST_RCVD:3>599<PROP_MODE:3>SAT<SAT_NAME:4>AO-7<BAND_RX:2>2m<OPERATOR:6>LU1AAA"
                "<COMMENT:5>TNX \xF1")
                + "<QSLMSG:5>TNX \xF1<EOR>");
        const QByteArray content = Content("salida.adi");
        QVERIFY(content.startsWith("<PROGRAMID:17>Tordillo Compacto\r\n") && content.endsWith("<EOR>\r\n<EOF>\r\n"));
    }
};

TORDILLO_TEST(TestForm6)
#include "TestForm6.moc"
