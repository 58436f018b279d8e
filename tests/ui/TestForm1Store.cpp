// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

// What becomes of the fields of the main window: time, the row, what stays, and what a failing disk may not take.
class TestForm1Store : public DeskTest {
    Q_OBJECT

private Q_SLOTS:
    void LocalTimeAndUtcReachTheRow()
    {
        const QDateTime newYearsEve({2026, 12, 31}, {22, 30, 40}), november({2026, 11, 30}, {22, 45});
        const QString typed = u"31/12/2026 23:30"_qs;
        // The local time, the zone that the fields are in (empty: the clock runs), what they show and what is stored.
        const std::tuple<QDateTime, QString, QString, QString> rows[] = {
            {newYearsEve, {}, u"01/01/2027|01:30"_qs, u"2027-01-01 01:30:00"_qs},
            {november, u"LU"_qs, u"30/11/2026|22:45"_qs, u"2027-01-01 02:30:00"_qs},
            {november, u"UTC"_qs, u"01/12/2026|01:45"_qs, u"2026-12-31 23:30:00"_qs}};
        for (const auto &[now, zone, shown, stored] : rows) {
            init();
            clock.now = now;
            Begin();
            if (!zone.isEmpty())
                Click("Check1");
            if (zone == u"UTC")
                Click("Label11");
            QCOMPARE(Texts("Fecha Hora"), shown);
            if (!zone.isEmpty()) {
                Fill("Fecha", typed.section(u' ', 0, 0));
                Fill("Hora", typed.section(u' ', 1));
            }
            Contact("CX1AA");
            QCOMPARE(Said(), QString());
            QCOMPARE(QString(LastStored(&QsoRow::Fecha) + u' ' + LastStored(&QsoRow::Hora)), stored);
        }
    }

    void TimeAndPagesLeaveTheFieldAlone()
    {
        for (const Words field : {"Corresponsal", "Hora", "RSE", "Text1", "Text2", "MYSOTA"}) {
            init();
            Begin(45);
            Click("Check1");
            Click("Check4");
            Fill(field, "12");
            auto *line = Find<QLineEdit>(field);
            line->setText(u"12/"_qs);
            line->setSelection(1, 2);
            clock.now = clock.now.addDays(40);
            Advance(60000);
            Main().LoadLogPage(21);
            Main().SetArchivoMenu(false);
            Main().SetArchivoMenu(true);
            QCoreApplication::processEvents();
            QCOMPARE(Focus(), field);
            QCOMPARE(line->text(), u"12/"_qs);
            QCOMPARE(line->selectedText(), u"2/"_qs);
            QCOMPARE(Said(), QString());
        }
    }

    void TheZoneIsTurnedOverByAClick()
    {
        Begin();
        QVERIFY(!Find("Label11")->isVisible());
        Click("Check1");
        QVERIFY(Find("Label11")->isVisible());
        QVERIFY(Content("mem.ini").contains("\r\n 1 \r\n"));
        clock.now = clock.now.addSecs(60);
        Advance(5000); // the clock stands still
        QCOMPARE(Texts("Label11 Hora"), u"LU|21:15"_qs);
        Click("Label11");
        QCOMPARE(Texts("Label11 Hora") + Focus(), u"UTC|00:16Corresponsal"_qs);
        Click("Label11");
        QCOMPARE(Texts("Label11 Hora"), u"LU|21:16"_qs);
        Click("Check1");
        QVERIFY(!Find("Label11")->isVisible());
        QVERIFY(Content("mem.ini").contains("\r\n 0 \r\n"));
        Advance(1000);
        QCOMPARE(Text("Hora"), u"00:16"_qs);
    }

    void TheClockWritesUnderTheFocus()
    {
        Begin();
        Find("Hora")->setFocus();
        clock.now = clock.now.addSecs(60);
        Advance(1000);
        QCOMPARE(Focus(), u"Hora"_qs);
        QCOMPARE(Text("Hora"), u"00:16"_qs);
        QCOMPARE(Find<QLineEdit>("Hora")->selectedText(), u"16"_qs);
    }

    void TheGridOfAnEarlierContactComesBackUnlessTheCallIsPortable()
    {
        Furnish();
        Store({RowOf(u"Estacion=CX1AA;SuGrid=GF15"_qs, SampleQso(1)),
            RowOf(u"Estacion=CX1AA/P;SuGrid=GF25"_qs, SampleQso(2))});
        Start();
        for (const auto &[call, grid] :
            {std::pair<Words, Words>{"CX1AA", "GF15"}, {"CX1AA/P", {}}, {"CX2AA", {}}, {"CX1AA", "GF15"}}) {
            Put("Text2", {});
            Fill("Corresponsal", call);
            Press(Qt::Key_Tab);
            QCOMPARE(Text("Text2"), grid);
        }
    }

    void NoBorrarKeepsTheRemarks()
    {
        Begin();
        Put("Obs", "antena nueva");
        Click("Check3");
        QCOMPARE(Focus(), u"Corresponsal"_qs);
        Contact("CX1AA");
        QCOMPARE(Text("Obs"), u"antena nueva"_qs);
        Click("Check3");
        Contact("CX2AA");
        QCOMPARE(Text("Obs"), QString());
        QCOMPARE(LastStored(&QsoRow::Obs), u"antena nueva"_qs);
    }

    void TheOwnSummitNeedsAnActivationTheOwnParkDoesNot()
    {
        Begin();
        QVERIFY(!Find("activador")->isVisible());
        Click("Check4");
        QVERIFY(Find("activador")->isVisible());
        for (const QString &field : {u"SOTA"_qs, u"POTA_IN"_qs, u"MYSOTA"_qs, u"MY_POTA"_qs})
            Fill(field, u"lu-"_qs + field.toLower());
        const auto stored = [&] {
            const QsoRow row = Rows().last();
            return QStringList{row.SOTA, row.POTA, row.MYSOTA, row.IOTA}.join(u'|');
        };
        Contact("CX1AA");
        QCOMPARE(stored(), u"LU-SOTA|LU-POTA_IN|LU-MYSOTA|LU-MY_POTA"_qs);
        Click("Check4");
        QVERIFY(!Find("activador")->isVisible());
        Contact("CX2AA");
        QCOMPARE(stored(), u"|||LU-MY_POTA"_qs);
    }

    void AStoreThatFailsKeepsEveryField()
    {
        const Words fields = "Corresponsal Text2 Obs SOTA POTA_IN MYSOTA MY_POTA RSE RSR Text1";
        const QString typed = u"CX1AA|GF05|no perder|LUR/C-001|AR-0001|LUR/C-002|AR-0002|57|56|700"_qs;
        for (size_t which = 0; which < Troubles().size(); ++which) {
            init();
            Begin();
            Click("Check4");
            for (int i = 0; i < 10; ++i)
                Put(fields.section(u' ', i, i), typed.section(u'|', i, i));
            const Trouble trouble = Troubles()[which];
            trouble.begin();
            Find("Obs")->setFocus();
            Press(Qt::Key_Return);
            QCOMPARE(dialogs.shown.size(), 1);
            const QString told = Said();
            for (const QString &part :
                {u"XEl QSO no fue guardado. Sus datos siguen en los campos.\n\n"_qs, trouble.said, Path("base0.mdb")})
                QVERIFY2(told.contains(part), qPrintable(told));
            QCOMPARE(Focus(), u"Corresponsal"_qs);
            QCOMPARE(Texts(fields), typed);

            EndTrouble();
            QCOMPARE(Rows().size(), 0);
            Find("Obs")->setFocus();
            Press(Qt::Key_Return);
            QCOMPARE(Said(), QString());
            QCOMPARE(Rows().size(), 1);
            QCOMPARE(LastStored(&QsoRow::Obs), u"no perder"_qs);
            QCOMPARE(Value("PRAGMA integrity_check"), u"ok"_qs);
        }
    }

    void AnApostropheIsKeptOutOfTheLogNameOnly()
    {
        Furnish();
        Configure("LogenUso=", "D'Or");
        Start();
        Put("Obs", "'; DROP TABLE Tabla1;--");
        Contact("CX1AA");
        QCOMPARE(LastStored(&QsoRow::NombreLog) + LastStored(&QsoRow::Obs), u"DOr'; DROP TABLE Tabla1;--"_qs);
        QCOMPARE(Text("Label6"), u"Log: DOr, con 1 QSOs"_qs);
    }

    void AMemoryThatCannotBeWrittenDoesNotComeBetween()
    {
        Begin();
        unwritable = QStringList{u"mem.ini"_qs, u"memsat.ini"_qs};
        Contact("CX1AA");
        QCOMPARE(Rows().size(), 1);
        QCOMPARE(Said(), QString());
    }
};

TORDILLO_TEST(TestForm1Store)
#include "TestForm1Store.moc"
