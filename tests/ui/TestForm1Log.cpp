// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QLineEdit>
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
