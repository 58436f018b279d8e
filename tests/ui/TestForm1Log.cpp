// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QTest>
#include <QTreeView>

// The log list of the main window, and the list of contacts with one call.
class TestForm1Log : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    void Start(int qsos)
    {
        desk_->Furnish(qsos);
        desk_->Start();
    }
    QTreeView *List() const { return desk_->Find<QTreeView>(u"ListView2"_qs); }
    QString Cell(int row, int column) const { return List()->model()->index(row, column).data().toString(); }
    // The calls from top to bottom, by their numbers.
    QStringList Calls() const
    {
        QStringList calls;
        for (int row = 0; row < List()->model()->rowCount(); ++row)
            calls << Cell(row, 2).mid(2).chopped(1);
        return calls;
    }
    // "page of pages, rows first-last, enabled buttons".
    QString State() const
    {
        QString buttons;
        for (const QString &name : {u"anterior"_qs, u"menos"_qs, u"mas"_qs, u"ultima"_qs})
            buttons += desk_->Find(name)->isEnabled() ? u'+' : u'-';
        const QStringList calls = Calls();
        return u"%1 de %2, %3 a %4, %5"_qs.arg(desk_->Text(u"txt_pagina"_qs), desk_->Text(u"txt_total"_qs),
            calls.value(0), calls.value(calls.size() - 1), buttons);
    }
    void ClickTitle(int column)
    {
        QHeaderView *header = List()->header();
        const QPoint place(header->sectionViewportPosition(column) + 8, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }
    QStringList CallLines(const QString &call)
    {
        QStringList lines;
        desk_->Fill(u"Corresponsal"_qs, call);
        desk_->InModal([&] { desk_->Press(Qt::Key_X, Qt::ControlModifier); },
            [&] {
                lines << desk_->Front()->objectName() << desk_->Front()->windowTitle();
                const auto *model = desk_->Find<QListView>(u"List1"_qs)->model();
                for (int row = 0; row < model->rowCount(); ++row)
                    lines << model->index(row, 0).data().toString();
                desk_->Press(Qt::Key_Escape);
            });
        return lines;
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    void TheNewestContactsStandOnTop()
    {
        desk_->Furnish(2);
        QsoRow full = Desk::SampleQso(3);
        full.Frecuencia = u"14,250"_qs;
        full.Obs = u"Año nuevo"_qs;
        full.MiGrid = u"GF05AB"_qs;
        full.SuGrid = u"GF15"_qs;
        full.LdA = u" 2 "_qs;
        full.Nombre_Sat = u" SO-50"_qs;
        full.SOTA = u"S1 "_qs;
        full.IOTA = u"P1 "_qs;
        full.POTA = u"P2 "_qs;
        full.MYSOTA = u"S2 "_qs;
        desk_->Store({full});
        desk_->Start();
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
        QCOMPARE(Calls(), QStringList({u"3"_qs, u"2"_qs, u"1"_qs}));
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 3 QSOs"_qs);
    }

    void LogsOfEveryLengthOpen_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last"); // after End
        QTest::newRow("empty") << 0 << u"1 de 1,  a , ----"_qs << u"1 de 1,  a , ----"_qs;
        QTest::newRow("one") << 1 << u"1 de 1, 1 a 1, ----"_qs << u"1 de 1, 1 a 1, ----"_qs;
        QTest::newRow("a page") << 20 << u"1 de 1, 20 a 1, ----"_qs << u"1 de 1, 20 a 1, ----"_qs;
        QTest::newRow("a page and one") << 21 << u"1 de 2, 21 a 2, --++"_qs << u"2 de 2, 1 a 1, ++--"_qs;
        QTest::newRow("more than End can reach")
            << 20021 << u"1 de 1002, 20021 a 20002, --++"_qs << u"1 de 1002, 20021 a 20002, --++"_qs;
    }
    void LogsOfEveryLengthOpen()
    {
        QFETCH(int, count);
        Start(count);
        QTEST(State(), "first");
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con %1 QSOs"_qs.arg(count));
        desk_->Press(Qt::Key_End);
        QTEST(State(), "last");
        QCOMPARE(desk_->Told(), QStringList());
    }

    void KeysAndButtonsTurnThePages()
    {
        Start(45);
        const QStringList pages{u"1 de 3, 45 a 26, --++"_qs, u"2 de 3, 25 a 6, ++++"_qs, u"3 de 3, 5 a 1, ++--"_qs};
        struct Step {
            int key;
            QString button;
            int page; // from 0
        };
        const Step steps[] = {{Qt::Key_PageDown, u"mas"_qs, 1}, {Qt::Key_PageDown, u"mas"_qs, 2},
            {Qt::Key_PageUp, u"menos"_qs, 1}, {Qt::Key_End, u"ultima"_qs, 2}, {Qt::Key_Home, u"anterior"_qs, 0},
            {Qt::Key_End, u"ultima"_qs, 2}, {Qt::Key_PageUp, u"menos"_qs, 1}, {Qt::Key_Home, u"anterior"_qs, 0}};
        QCOMPARE(State(), pages[0]);
        for (const Step &step : steps) {
            desk_->Find(u"Obs"_qs)->setFocus();
            desk_->Press(step.key);
            QCOMPARE(State(), pages[step.page]);
            QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        }
        for (const Step &step : steps) {
            desk_->Click(step.button);
            QCOMPARE(State(), pages[step.page]);
            QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        }
        desk_->Press(Qt::Key_PageDown);
        desk_->Contact(u"CX1AA"_qs); // is seen at once, whatever page was shown
        QCOMPARE(State(), u"1 de 3, 1A a 27, --++"_qs);
    }

    void PagingKeysNeverMoveTheCaret()
    {
        Start(1); // all four are off
        desk_->Fill(u"Obs"_qs, u"antena"_qs);
        auto *remarks = desk_->Find<QLineEdit>(u"Obs"_qs);
        remarks->setCursorPosition(3);
        for (const int key : {Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown})
            for (const auto modifiers : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier})
                desk_->Press(key, modifiers);
        QCOMPARE(remarks->cursorPosition(), 3);
        QCOMPARE(remarks->selectedText(), QString());
        QCOMPARE(desk_->Focus(), u"Obs"_qs);
    }

    void IrGoesToAPageByItsNumber()
    {
        Start(45);
        const auto go = [&](const QString &typed) {
            desk_->Fill(u"Text3"_qs, typed);
            desk_->Click(u"Command8"_qs);
            return QString(desk_->Text(u"Text3"_qs) + u": "_qs + State());
        };
        QCOMPARE(go(u"x3"_qs), u"3: 3 de 3, 5 a 1, ++--"_qs);
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        QCOMPARE(go(u"2"_qs), u"2: 2 de 3, 25 a 6, ++++"_qs);
        QCOMPARE(go(u"99999999999999999999"_qs), u"3: 3 de 3, 5 a 1, ++--"_qs);
        QCOMPARE(go(u"0"_qs), u"1: 1 de 3, 45 a 26, --++"_qs);
        QCOMPARE(go({}), u"1: 1 de 3, 45 a 26, --++"_qs);
    }

    void ATitleSortsThePageOnly()
    {
        desk_->Furnish(45);
        desk_->Start();
        const QStringList byDate = Calls();
        const auto sorted = [&](int column) {
            ClickTitle(column);
            QStringList cells;
            for (int row = 0; row < 20; ++row)
                cells << Cell(row, column);
            return cells;
        };
        QStringList expected = sorted(2);
        QVERIFY(std::is_sorted(expected.begin(), expected.end()));
        expected = sorted(2);
        QVERIFY(std::is_sorted(expected.rbegin(), expected.rend()));
        expected = sorted(5); // the direction turns over at each click, whatever the column
        QVERIFY(std::is_sorted(expected.begin(), expected.end()));
        QStringList shown = Calls(), page = byDate;
        shown.sort();
        page.sort();
        QCOMPARE(shown, page);
        desk_->Click(u"Command11"_qs);
        QCOMPARE(Calls(), byDate);
        desk_->Press(Qt::Key_PageDown);
        QCOMPARE(State(), u"2 de 3, 25 a 6, ++++"_qs);
    }

    void APageThatCannotBeReadIsToldAndTheOldOneStays()
    {
        Start(45);
        QVERIFY(QFile::rename(desk_->Path(u"base0.mdb"_qs), desk_->Path(u"otra"_qs)));
        desk_->Press(Qt::Key_PageDown);
        const QStringList told = desk_->Told();
        QCOMPARE(told.size(), 1);
        QVERIFY(told.first().contains(desk_->Path(u"base0.mdb"_qs)));
        QVERIFY(QFile::rename(desk_->Path(u"otra"_qs), desk_->Path(u"base0.mdb"_qs)));
        QCOMPARE(State(), u"1 de 3, 45 a 26, --++"_qs);
        desk_->Press(Qt::Key_PageDown);
        QCOMPARE(State(), u"2 de 3, 25 a 6, ++++"_qs);
    }

    void CountersThatAnotherToolSpoiltAreFoundOut()
    {
        desk_->Furnish(3);
        QVERIFY(RawDatabase(desk_->Path(u"base0.mdb"_qs)).Run("UPDATE Contadores SET QSOs=99"));
        desk_->Start();
        QCOMPARE(State(), u"1 de 1, 3 a 1, ----"_qs);
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 3 QSOs"_qs);
    }

    void ALongLogNameDoesNotWidenTheWindow()
    {
        desk_->Furnish();
        desk_->Start();
        const int width = desk_->Main().minimumSizeHint().width();
        desk_->Configure(u"LogenUso="_qs, QString(100, u'W'));
        desk_->Start();
        QVERIFY(desk_->Text(u"Label6"_qs).contains(QString(100, u'W')));
        QCOMPARE(desk_->Main().minimumSizeHint().width(), width);
    }

    // --- Ctrl+X

    void CtrlXListsTheContactsWithTheCall()
    {
        desk_->Furnish();
        const auto with = [](const QString &call, const QString &date, const QString &log) {
            QsoRow row = Desk::SampleQso(1);
            row.Estacion = call;
            row.Fecha = date;
            row.NombreLog = log;
            return row;
        };
        const QString log = u"Log inicial"_qs;
        desk_->Store({with(u"CX1AA"_qs, u"2026-05-01"_qs, log), with(u"CX1AA/LU1ABCDEFGHIJ"_qs, u"2025-12-31"_qs, log),
            with(u"CX1AB"_qs, u"2026-05-01"_qs, log), with(u"CX1AA"_qs, u"2026-05-01"_qs, u"Otro"_qs)});
        desk_->Start();
        QCOMPARE(CallLines(u"CX1AA"_qs),
            QStringList(
                {u"Form17"_qs, u"CX1AA"_qs, u"MiCall           SuCall           Banda  Modo   Fecha    Hora   "_qs,
                    u"LU9ZZZ          |CX1AA/LU1ABCDEFGHIJ |40m   |SSB   |31/12/2025 |00:01:00 "_qs,
                    u"LU9ZZZ          |CX1AA           |40m   |SSB   |01/05/2026 |00:01:00 "_qs}));
        QCOMPARE(desk_->Text(u"Corresponsal"_qs), u"CX1AA"_qs);
        QCOMPARE(CallLines(u"CX1?A"_qs).size(), 5); // a doubtful character finds both
        QCOMPARE(desk_->Told(), QStringList());
        QVERIFY(!desk_->ended);
    }

    void CtrlXNeedsFourCharactersAndSaysWhenThereIsNothing()
    {
        Start(2);
        desk_->Fill(u"Corresponsal"_qs, u"CX1"_qs);
        auto *call = desk_->Find<QLineEdit>(u"Corresponsal"_qs);
        call->selectAll();
        desk_->Press(Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(call->text(), u"CX1"_qs); // and it does not cut
        desk_->Fill(u"Corresponsal"_qs, u"CX99A"_qs);
        desk_->Press(Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(desk_->Told(), QStringList({u"!Sin QSOs con CX99A"_qs}));
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        desk_->Click(u"Command7"_qs);
        QCOMPARE(desk_->Told(), QStringList({u"!Sin QSOs con CX99A"_qs}));
    }
};

TORDILLO_TEST(TestForm1Log)
#include "TestForm1Log.moc"
