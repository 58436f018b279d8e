// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QTest>
#include <QTreeView>

// The window that edits one contact, opened from the list and by F5.
class TestForm5 : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    void Start(int qsos)
    {
        desk_->Furnish(qsos);
        desk_->Start();
    }
    RawDatabase Raw() const { return RawDatabase(desk_->Path(u"base0.mdb"_qs)); }
    void Edit(int row, const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->DoubleClick(u"ListView2"_qs, row); }, act);
    }
    void ByKey(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Press(Qt::Key_F5); }, act);
    }
    void Save() const { desk_->Click(u"Command1"_qs); }
    QString Texts(const QStringList &names) const
    {
        QStringList texts;
        for (const QString &name : names)
            texts << desk_->Text(name);
        return texts.join(u'|');
    }
    QString OnMain(const QString &name) const
    {
        return desk_->Main().findChild<QWidget *>(name)->property("text").toString();
    }
    // The call in a row of the main window's list.
    QString Listed(int row) const
    {
        const auto *list = desk_->Main().findChild<QTreeView *>(u"ListView2"_qs);
        return list->model()->index(row, 2).data().toString();
    }
    QsoRow Row(qint64 id) const
    {
        for (const QsoRow &row : desk_->Rows())
            if (row.id == id)
                return row;
        return {};
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    void AForeignRowIsShownAndSavedUntouched()
    {
        desk_->Furnish(1);
        QVERIFY(Raw().Run("UPDATE Tabla1 SET Modo='ft8', Banda='20M', MyCall='lu9zzz', Estacion='lu1abc/w/p', "
                          "Fecha='24-11-2026', Hora='9:05:59', RSE='+05', RSR='-12', Obs=' Ñandú'||char(10)||'ñ  ', "
                          "Operador='lu1aaa ', Frecuencia='14,0740055', MiGrid='gf05ab12cd', SuGrid='fe46', LdA=' 2', "
                          "Nombre_Sat=' SO-50', SOTA='lud/da-001', IOTA='ar-1 ', POTA='ar-2', MYSOTA='  lud/2'"));
        desk_->Start();
        QsoRow expected = Row(2);
        Edit(0, [&] {
            QCOMPARE(desk_->Front()->windowTitle(), u"Edición de QSO #2"_qs);
            QCOMPARE(Texts({u"Text4"_qs, u"Text5"_qs, u"Combo2"_qs, u"Label20"_qs}), u"24/11/2026|09:05|ft8|P2P"_qs);
            for (int i = 0; i < 30; ++i) // through all fields and back to the first
                desk_->Press(Qt::Key_Tab);
            Save();
        });
        QCOMPARE(desk_->Told(), QStringList());
        expected.LdA.clear();
        expected.Argento = u"0"_qs;
        for (const QsoColumns::Column &column : QsoColumns::all)
            QCOMPARE(Row(2).*column.field, expected.*column.field);
    }

    void EachControlWritesItsColumn()
    {
        Start(1);
        struct Change {
            QString control, typed;
            QString QsoRow::*column;
            QString stored;
        };
        using R = QsoRow;
        const Change changes[] = {{u"Text1"_qs, u"lu8-aa"_qs, &R::MyCall, u"LU8AA"_qs},
            {u"Text2"_qs, u"lu2abc"_qs, &R::Estacion, u"LU2ABC"_qs},
            {u"Text3"_qs, u"lu7a"_qs, &R::Operador, u"LU7A"_qs},
            {u"Text4"_qs, u"01/02/2027"_qs, &R::Fecha, u"2027-02-01"_qs},
            {u"Text5"_qs, u"23:59"_qs, &R::Hora, u"23:59:00"_qs}, {u"Text6"_qs, u"x"_qs, &R::RSE, u"x"_qs},
            {u"Text7"_qs, u"5"_qs, &R::RSR, u"5"_qs}, {u"Text8"_qs, u"d'or"_qs, &R::Obs, u"dor"_qs},
            {u"Text9"_qs, u"1a"_qs, &R::Frecuencia, u"7.001"_qs}, {u"Combo2"_qs, u"AM"_qs, &R::Modo, u"AM"_qs},
            {u"Text10"_qs, u"gf15cd"_qs, &R::MiGrid, u"GF15CD"_qs}, {u"Text11"_qs, u"fe46"_qs, &R::SuGrid, u"FE46"_qs},
            {u"SOTA"_qs, u" s1 "_qs, &R::SOTA, u"S1"_qs}, {u"POTA"_qs, u"p1"_qs, &R::POTA, u"P1"_qs},
            {u"MYSOTA"_qs, u"s2"_qs, &R::MYSOTA, u"S2"_qs}, {u"IOTA"_qs, u"p2"_qs, &R::IOTA, u"P2"_qs}};
        QsoRow expected = Row(2);
        expected.LdA.clear();
        expected.Argento.clear();
        for (const Change &change : changes) {
            Edit(0, [&] {
                desk_->Fill(change.control, change.typed);
                Save();
            });
            expected.*change.column = change.stored;
            if (change.column == &R::Estacion)
                expected.Argento = u"Capital"_qs;
            QVERIFY2(Row(2) == expected, qPrintable(change.control));
        }
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(Listed(0), u"LU2ABC"_qs);
    }

    void SavingIsRefused()
    {
        Start(1);
        struct Case {
            QString control, typed, told, focus;
        };
        const Case cases[] = {{u"Combo2"_qs, u"Sat"_qs, u"XDebe agregar el nombre del Satélite"_qs, u"Text12"_qs},
            {u"Text2"_qs, u"lu1aaa"_qs, u"XQSO con el Operador???"_qs, u"Text2"_qs},
            {u"Text4"_qs, u"31/02/2026"_qs, u"!Error Fecha!\nFormato: DD/MM/AAAA"_qs, u"Text4"_qs},
            {u"Text11"_qs, u"GF0"_qs, u"!Grilla incorrecta!"_qs, u"Text11"_qs}};
        const QsoRow before = Row(2);
        for (const Case &one : cases) {
            Edit(0, [&] {
                desk_->Fill(one.control, one.typed);
                Save();
                QCOMPARE(desk_->Told(), QStringList({one.told}));
                QCOMPARE(desk_->Focus(), one.focus);
                QVERIFY(desk_->Find(one.focus)->isVisible());
                desk_->Press(Qt::Key_Escape);
            });
            QVERIFY(Row(2) == before);
        }
    }

    // --- F5

    void F5ShowsLittleAndWritesWhatTheFieldsHold()
    {
        Start(3);
        QVERIFY(Raw().Run("UPDATE Tabla1 SET SuGrid='FE46', Hora='00:03:41', Modo='ft8' WHERE id=4"));
        QsoRow expected = Row(4);
        ByKey([&] {
            QCOMPARE(desk_->Front()->windowTitle(), u"Edición de QSO #4"_qs); // the newest
            QCOMPARE(Texts({u"Text2"_qs, u"Text9"_qs, u"Label11"_qs, u"Text11"_qs}), u"CX3A|||"_qs);
            Save();
        });
        expected.Frecuencia = u"."_qs;
        for (QString QsoRow::*emptied : {&QsoRow::Banda, &QsoRow::SuGrid, &QsoRow::LdA, &QsoRow::Argento})
            (expected.*emptied).clear();
        QVERIFY(Row(4) == expected);
        // Afterwards the fields hold what the last contact opened from the list had.
        Edit(2, [&] {
            desk_->Fill(u"Text11"_qs, u"GF11"_qs);
            desk_->Press(Qt::Key_Escape);
        });
        ByKey([&] {
            desk_->Fill(u"Text2"_qs, u"CX9Z"_qs);
            Save();
        });
        expected.Estacion = u"CX9Z"_qs;
        expected.Frecuencia = u"7.090"_qs;
        expected.Banda = u"40m"_qs;
        expected.SuGrid = u"GF11"_qs;
        QVERIFY(Row(4) == expected);
        QCOMPARE(Listed(0), u"CX9Z"_qs); // the list that opened the window last is refreshed
        QCOMPARE(desk_->Told(), QStringList());
    }

    void F5WithoutContactsIsTold()
    {
        Start(0);
        desk_->Press(Qt::Key_F5);
        QCOMPARE(desk_->Told(), QStringList({u"!No hay QSOs para Editar!"_qs}));
    }

    // --- Deleting, and what others do meanwhile

    void DeletingAsksFirst()
    {
        Start(21);
        const QString question = u"?Elimina el QSO #%1?\nLos datos no se podrán recuperar!"_qs;
        Edit(0, [&] {
            desk_->Click(u"Command2"_qs);
            QCOMPARE(desk_->dialogs.shown.last().preset, Dialogs::Button::No);
            QCOMPARE(desk_->Told(), QStringList({question.arg(22)}));
            desk_->Press(Qt::Key_Escape);
        });
        QCOMPARE(desk_->Rows().size(), 21);
        desk_->Press(Qt::Key_End);
        Edit(0, [&] {
            desk_->dialogs.answers = QList<bool>{true};
            desk_->Click(u"Command2"_qs);
            QCOMPARE(desk_->Told(), QStringList({question.arg(2)}));
        });
        QVERIFY(Row(2).id == 0 && desk_->Rows().size() == 20);
        QCOMPARE(OnMain(u"Label6"_qs), u"Log: Log inicial, con 20 QSOs"_qs);
        QCOMPARE(Listed(0), u"CX21A"_qs); // the only one of its page is gone: the page before is shown
    }

    void ARowThatIsGoneIsTold()
    {
        Start(2);
        Edit(0, [&] {
            QVERIFY(Raw().Run("DELETE FROM Tabla1 WHERE id=3"));
            desk_->Fill(u"Text8"_qs, u"mine"_qs);
            Save();
        });
        QCOMPARE(desk_->Told(),
            QStringList({u"XEl QSO #3 ya no está en el log: otro programa lo borró. No fue guardado."_qs}));
        QCOMPARE(Listed(0), u"CX1A"_qs);
        QCOMPARE(desk_->Rows().size(), 1);
    }

    void WhatCannotBeSavedStaysInTheWindow()
    {
        Start(1);
        Edit(0, [&] {
            desk_->Fill(u"Text8"_qs, u"mine"_qs);
            FaultVfs::Instance().PretendLocked(1000000, false);
            Save();
            Desk::HealDisk();
            const QStringList told = desk_->Told();
            QCOMPARE(told.size(), 1);
            QVERIFY(told.first().startsWith(u"XEl QSO no fue guardado."_qs));
            QVERIFY(desk_->Front()->isVisible() && desk_->Text(u"Text8"_qs) == u"mine");
            QCOMPARE(Row(2).Obs, QString());
            Save();
        });
        QCOMPARE(Row(2).Obs, u"mine"_qs);
        QCOMPARE(desk_->Told(), QStringList());
    }
};

TORDILLO_TEST(TestForm5)
#include "TestForm5.moc"
