// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include <QTreeView>

// The log list of the main window, and the list of contacts with one call.
class TestForm1Log : public DeskTest {
    Q_OBJECT

    QTreeView *List() const { return Find<QTreeView>("ListView2"); }
    // "page of pages, first to last call by their numbers, enabled buttons".
    QString State() const
    {
        const QStringList calls = Cells("ListView2", 2).remove(u"CX"_qs).remove(u"A"_qs).split(u'|');
        return u"%1, %2 a %3, %4"_qs.arg(Texts("txt_pagina txt_total").replace(u"|"_qs, u" de "_qs), calls.first(),
            calls.last(), Enabled("anterior menos mas ultima"));
    }

private Q_SLOTS:
    void TheNewestContactsStandOnTop()
    {
        Furnish(2);
        Store({RowOf(u"Frecuencia=14,250;Obs=Año nuevo;MiGrid=GF05AB;SuGrid=GF15;LdA= 2 ;Nombre_Sat= SO-50;SOTA=S1 ;"
                     "IOTA=P1 ;POTA=P2 ;MYSOTA=S2 "_qs,
            SampleQso(3))});
        Start();
        QStringList titles, cells;
        for (int column = 0; column < 22; ++column) {
            const QModelIndex cell = List()->model()->index(0, column);
            titles << List()->model()->headerData(column, Qt::Horizontal).toString();
            cells << (column == 1 ? u"id"_qs : cell.data().toString());
            QCOMPARE(cell.data(Qt::ForegroundRole).value<QColor>(), QColor(0x004000));
            QCOMPARE(List()->isColumnHidden(column), column < 2);
        }
        QCOMPARE(titles.join(u'|'),
            u"Indice|ID|Estación|Banda|Frec|Modo|RSe|RSr|Fecha|Hora UTC|MiCall|Operador|Observaciones|Mi Grilla|"
            "Su Grilla|LdA|Satélite|Argentina|SOTA|MYPOTA|POTA|MYSOTA"_qs);
        // The column "Argentina" stays empty here.
        QCOMPARE(cells.join(u'|'),
            u"nombre1|id|CX3A|20m|14.250|SSB|59|59|01/01/2026|00:03|LU9ZZZ|LU1AAA|Año nuevo|GF05AB|GF15|2|SO-50||S1|"
            "P1|P2|S2"_qs);
        QCOMPARE(Cells("ListView2", 2), u"CX3A|CX2A|CX1A"_qs);
        QCOMPARE(Text("Label6"), u"Log: Log inicial, con 3 QSOs"_qs);
    }

    void KeysAndButtonsTurnThePages()
    {
        Begin(45);
        const QStringList pages{u"1 de 3, 45 a 26, --++"_qs, u"2 de 3, 25 a 6, ++++"_qs, u"3 de 3, 5 a 1, ++--"_qs};
        const std::tuple<int, Words, int> steps[] = {{Qt::Key_PageDown, "mas", 1}, {Qt::Key_PageDown, "mas", 2},
            {Qt::Key_PageUp, "menos", 1}, {Qt::Key_End, "ultima", 2}, {Qt::Key_Home, "anterior", 0},
            {Qt::Key_End, "ultima", 2}, {Qt::Key_PageUp, "menos", 1}, {Qt::Key_Home, "anterior", 0}};
        QCOMPARE(State(), pages[0]);
        for (const bool byKey : {true, false})
            for (const auto &[key, button, page] : steps) {
                Find("Obs")->setFocus();
                if (byKey)
                    Press(key);
                else
                    Click(button);
                QCOMPARE(State(), pages[page]);
                QCOMPARE(Focus(), u"Corresponsal"_qs);
            }
        Press(Qt::Key_PageDown);
        Contact("CX1AA"); // is seen at once, whatever page was shown
        QCOMPARE(State(), u"1 de 3, 1 a 27, --++"_qs);
    }

    void LogsOfEveryLengthOpen()
    {
        for (const auto &[count, first, last] : {std::tuple{0, u"1 de 1,  a , ----", u"1 de 1,  a , ----"},
                 {20, u"1 de 1, 20 a 1, ----", u"1 de 1, 20 a 1, ----"},
                 {21, u"1 de 2, 21 a 2, --++", u"2 de 2, 1 a 1, ++--"}}) {
            init();
            Furnish(count);
            Sql("UPDATE Contadores SET QSOs=99"); // by another tool
            Start();
            QCOMPARE(State(), QString::fromUtf16(first));
            QCOMPARE(Text("Label6"), u"Log: Log inicial, con %1 QSOs"_qs.arg(count));
            Press(Qt::Key_End);
            QCOMPARE(State(), QString::fromUtf16(last));
        }
    }

    void IrGoesToAPageByItsNumber()
    {
        Begin(45);
        const std::tuple<Words, QString, QString> rows[] = {{"x3", u"3"_qs, u"3 de 3, 5 a 1, ++--"_qs},
            {"2", u"2"_qs, u"2 de 3, 25 a 6, ++++"_qs}, {"99999999999999999999", u"3"_qs, u"3 de 3, 5 a 1, ++--"_qs},
            {"0", u"1"_qs, u"1 de 3, 45 a 26, --++"_qs}, {{}, u"1"_qs, u"1 de 3, 45 a 26, --++"_qs}};
        for (const auto &[typed, number, state] : rows) {
            Fill("Text3", typed);
            Click("Command8");
            QCOMPARE(Text("Text3"), number);
            QCOMPARE(State(), state);
            QCOMPARE(Focus(), u"Corresponsal"_qs);
        }
    }

    void ATitleSortsThePageOnly()
    {
        Begin(45);
        const QString byDate = Cells("ListView2", 2);
        const auto sorted = [&](int column) {
            ClickTitle("ListView2", column);
            return Cells("ListView2", column).split(u'|');
        };
        QStringList cells = sorted(2), page = byDate.split(u'|');
        page.sort();
        QCOMPARE(cells, page);
        cells = sorted(2);
        QVERIFY(std::is_sorted(cells.rbegin(), cells.rend()));
        cells = sorted(5); // the direction turns over at each click, whatever the column
        QVERIFY(std::is_sorted(cells.begin(), cells.end()));
        Click("Command11");
        QCOMPARE(Cells("ListView2", 2), byDate);
        Press(Qt::Key_PageDown);
        QCOMPARE(State(), u"2 de 3, 25 a 6, ++++"_qs);
    }

    void PagingKeysNeverMoveTheCaret()
    {
        Begin(1); // all four are off
        Fill("Obs", "antena");
        auto *remarks = Find<QLineEdit>("Obs");
        remarks->setCursorPosition(3);
        for (const int key : {Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown})
            for (const auto modifiers : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier})
                Press(key, modifiers);
        QCOMPARE(remarks->cursorPosition(), 3);
        QCOMPARE(remarks->selectedText(), QString());
        QCOMPARE(Focus(), u"Obs"_qs);
    }

    void APageThatCannotBeReadIsToldAndTheOldOneStays()
    {
        Begin(45);
        TakeBase();
        Press(Qt::Key_PageDown);
        QCOMPARE(dialogs.shown.size(), 1);
        QVERIFY(Said().contains(Path("base0.mdb")));
        BringBase();
        QCOMPARE(State(), u"1 de 3, 45 a 26, --++"_qs);
        Press(Qt::Key_PageDown);
        QCOMPARE(State(), u"2 de 3, 25 a 6, ++++"_qs);
    }

    void ALongLogNameDoesNotWidenTheWindow()
    {
        Begin();
        const int width = Main().minimumSizeHint().width();
        Configure("LogenUso=", QString(100, u'W'));
        Start();
        QVERIFY(Text("Label6").contains(QString(100, u'W')));
        QCOMPARE(Main().minimumSizeHint().width(), width);
    }

    void CtrlXListsTheContactsWithTheCall()
    {
        Furnish();
        const QString calls[] = {u"Estacion=CX1A;Fecha=2026-05-01"_qs,
            u"Estacion=CX1A/LU1ABCDEFGHIJ;Fecha=2025-12-31"_qs, u"Estacion=CX1B;Fecha=2026-05-01"_qs,
            u"Estacion=CX1A;NombreLog=Otro"_qs};
        for (const QString &call : calls)
            Store({RowOf(call, SampleQso(1))});
        Start();
        const auto lines = [&](const Words &call) {
            QString shown;
            Fill("Corresponsal", call);
            InModal([&] { Press(Qt::Key_X, Qt::ControlModifier); },
                [&] {
                    shown = Front()->objectName() + u'\n' + Front()->windowTitle() + u'\n' + Cells("List1", 0);
                    Press(Qt::Key_Escape);
                });
            return shown;
        };
        QCOMPARE(lines("CX1A"),
            u"Form17\nCX1A\nMiCall           SuCall           Banda  Modo   Fecha    Hora   |"
            "LU9ZZZ          |CX1A/LU1ABCDEFGHIJ |40m   |SSB   |31/12/2025 |00:01:00 |"
            "LU9ZZZ          |CX1A            |40m   |SSB   |01/05/2026 |00:01:00 "_qs);
        QCOMPARE(Text("Corresponsal"), u"CX1A"_qs);
        QCOMPARE(lines("CX?A").count(u"00:01:00"_qs), 2); // a doubtful character finds both
        QCOMPARE(Said(), QString());
    }

    void CtrlXNeedsFourCharactersAndSaysWhenThereIsNothing()
    {
        Begin(2);
        Fill("Corresponsal", "CX1");
        auto *call = Find<QLineEdit>("Corresponsal");
        call->selectAll();
        Press(Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(Said(), QString());
        QCOMPARE(call->text(), u"CX1"_qs); // and it does not cut
        Fill("Corresponsal", "CX99A");
        Press(Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(Said(), u"!Sin QSOs con CX99A"_qs);
        QCOMPARE(Focus(), u"Corresponsal"_qs);
        Click("Command7");
        QCOMPARE(Said(), u"!Sin QSOs con CX99A"_qs);
    }
};

TORDILLO_TEST(TestForm1Log)
#include "TestForm1Log.moc"
