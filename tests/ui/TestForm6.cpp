// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QTest>
#include <QTimer>
#include <QTreeView>

// The search window over the open log.
class TestForm6 : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    void InSearch(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("eadif"); },
            [&] {
                desk_->Advance(0); // the list is filled when the window stands
                act();
                desk_->Front()->close();
            });
    }
    QTreeView *List() const { return desk_->Find<QTreeView>(u"ListView2"_qs); }
    QString Column(int column) const
    {
        QStringList cells;
        for (int row = 0; row < List()->model()->rowCount(); ++row)
            cells << List()->model()->index(row, column).data().toString();
        return cells.join(u' ');
    }
    void ClickTitle(int column) const
    {
        QHeaderView *header = List()->header();
        const QPoint place(header->sectionViewportPosition(column) + 8, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }
    QString Enabled(const QStringList &names) const
    {
        QString enabled;
        for (const QString &name : names)
            enabled += desk_->Find(name)->isEnabled() ? u'+' : u'-';
        return enabled;
    }
    void StoreMany(int count) const
    {
        QVERIFY(
            RawDatabase(desk_->Path(u"base0.mdb"_qs))
                .Run("WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c WHERE n<" + QByteArray::number(count)
                    + ") INSERT INTO Tabla1 (Modo, \"Nombre Log\", Estacion, Fecha, Hora) "
                      "SELECT 'CW', 'Log inicial', 'LU'||n, '2025-01-01', time(n, 'unixepoch') FROM c"));
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    void TheWholeLogIsListedFirst()
    {
        desk_->Furnish(3);
        desk_->Start();
        InSearch([&] {
            QCOMPARE(desk_->Front()->windowTitle(), u"Exportar ..."_qs);
            QCOMPARE(Column(0) + u' ' + Column(2), u"1 2 3 CX3A CX2A CX1A"_qs);
            QCOMPARE(desk_->Text(u"Label6"_qs), u"3"_qs);
            QCOMPARE(desk_->Text(u"Label7"_qs),
                u"SELECT * FROM Tabla1 WHERE [Modo]<>'' and [Nombre Log]='Log inicial' "
                "ORDER BY [Fecha] DESC, [Hora] DESC"_qs);
        });
    }

    void EveryControlFilters()
    {
        desk_->Furnish(3);
        QsoRow park = Desk::SampleQso(4), summit = Desk::SampleQso(5);
        park.Operador = u"LU7A"_qs;
        park.IOTA = park.POTA = u"AR-1"_qs;
        summit.MyCall = u"LU8AAA"_qs;
        summit.Obs = u"un Ñandú"_qs;
        summit.SOTA = summit.MYSOTA = u"LUD/DA-001"_qs;
        summit.Nombre_Sat = u"AO-7"_qs;
        park.Fecha = summit.Fecha = u"2026-01-02"_qs;
        desk_->Store({park, summit});
        desk_->Start();
        struct Filter {
            QString control, typed, found; // nothing typed: the control is clicked
        };
        const Filter filters[] = {{u"Text1"_qs, u"02/01/2026"_qs, u"CX5A CX4A"_qs},
            {u"Text2"_qs, u"01/01/2026x"_qs, u"CX3A CX2A CX1A"_qs}, {u"Text3"_qs, u"lu8-*"_qs, u"CX5A"_qs},
            {u"Text4"_qs, u"lu7?"_qs, u"CX4A"_qs}, {u"Text6"_qs, u"cw"_qs, u"CX4A CX2A"_qs},
            {u"Text7"_qs, u"20m"_qs, u"CX3A"_qs}, {u"Text8"_qs, u"ñandú"_qs, u"CX5A"_qs}, {u"POTA"_qs, {}, u"CX4A"_qs},
            {u"IOTA"_qs, {}, u"CX4A"_qs}, {u"SOTA"_qs, {}, u"CX5A"_qs}, {u"MYSOTA"_qs, {}, u"CX5A"_qs},
            {u"Check1"_qs, {}, u"CX5A"_qs}, {u"Check2"_qs, {}, {}}};
        InSearch([&] {
            for (const auto &[control, typed, found] : filters) {
                if (typed.isEmpty())
                    desk_->Click(control);
                else
                    desk_->Fill(control, typed);
                desk_->Press(Qt::Key_Return);
                QVERIFY2(Column(2) == found, qPrintable(control));
                desk_->Click(u"Command4"_qs);
                QCOMPARE(Column(0), u"1 2 3 4 5"_qs);
            }
        });
        QCOMPARE(desk_->Told(), QStringList());
    }

    void OptionsActUnderTheirTick()
    {
        desk_->Furnish(1);
        QList<QsoRow> rows;
        for (int state = 0; state < 3; ++state) {
            rows << Desk::SampleQso(state + 2);
            rows.last().Estacion = u"LU%1ABC"_qs.arg(state + 1);
            rows.last().LdA = QString::number(state);
        }
        desk_->Store(rows);
        desk_->Start();
        const QStringList options{u"Option1"_qs, u"Option2"_qs, u"Option3"_qs, u"Option4"_qs};
        InSearch([&] {
            QCOMPARE(Enabled(options), u"----"_qs);
            QVERIFY(!desk_->Find(u"Image1"_qs)->isVisible());
            desk_->Click(u"Check2"_qs);
            QCOMPARE(Enabled(options), u"++++"_qs);
            QVERIFY(desk_->Find(u"Image1"_qs)->isVisible());
            const QStringList found{u"LU1ABC"_qs, u"LU2ABC"_qs, u"LU2ABC"_qs, u"LU3ABC LU2ABC LU1ABC"_qs};
            for (int i = 0; i < options.size(); ++i) {
                desk_->Find<QAbstractButton>(options[i])->click();
                desk_->Press(Qt::Key_Return);
                QCOMPARE(Column(2), found[i]);
            }
        });
    }

    void BadDatesAndBands()
    {
        desk_->Furnish(2);
        desk_->Start();
        InSearch([&] {
            for (const QString &date : {u"Text1"_qs, u"Text2"_qs}) {
                desk_->Fill(date, u"31/02/2026"_qs);
                desk_->Press(Qt::Key_Return);
                QCOMPARE(desk_->Told(), QStringList({u"!31/02/2026\nformato de fecha no válido!"_qs}));
                QCOMPARE(desk_->Focus(), date);
                QCOMPARE(desk_->Text(u"Label6"_qs) + Enabled({u"Command1"_qs, u"Command3"_qs}), u"0-+"_qs);
                desk_->Press(Qt::Key_Tab);
                QCoreApplication::processEvents();
                QCOMPARE(desk_->Told(), QStringList({u"!Error en el formato de fecha!"_qs}));
                desk_->Fill(date, {});
            }
        });
    }

    void ARowIsEditedAndDeletedInItsPlace()
    {
        desk_->Furnish(4);
        desk_->Start();
        InSearch([&] {
            ClickTitle(2);
            desk_->InModal([&] { desk_->DoubleClick(u"ListView2"_qs, 1); },
                [&] {
                    QCOMPARE(desk_->Text(u"Text2"_qs), u"CX2A"_qs);
                    desk_->Fill(u"Text2"_qs, u"zz9"_qs);
                    desk_->Click(u"Command1"_qs);
                });
            QCOMPARE(Column(2), u"CX1A ZZ9 CX3A CX4A"_qs);
            desk_->dialogs.answers = QList<bool>{true};
            desk_->InModal([&] { desk_->DoubleClick(u"ListView2"_qs, 2); }, [&] { desk_->Click(u"Command2"_qs); });
            QCOMPARE(Column(2) + u' ' + Column(0) + desk_->Text(u"Label6"_qs), u"CX1A ZZ9 CX4A 4 3 13"_qs);
            QVERIFY(RawDatabase(desk_->Path(u"base0.mdb"_qs)).Run("DELETE FROM Tabla1 WHERE Estacion='CX4A'"));
            QCOMPARE(desk_->Told().size(), 1); // the question
            desk_->DoubleClick(u"ListView2"_qs, 2);
            QCOMPARE(desk_->Told(), QStringList({u"!El QSO ya no está en el log: otro programa lo borró."_qs}));
            QCOMPARE(Column(2), u"CX1A ZZ9"_qs);
        });
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 2 QSOs"_qs); // read again at the closing
    }

    // --- A long fill

    void TheWindowLivesWhileItFills()
    {
        desk_->Furnish(1);
        StoreMany(60000);
        desk_->Start();
        desk_->InModal([&] { desk_->Menu("eadif"); },
            [&] {
                QString during;
                QTimer::singleShot(0, desk_->Front(), [&] {
                    during = desk_->Text(u"Label6"_qs)
                        + Enabled({u"Command1"_qs, u"Command3"_qs, u"Command4"_qs, u"Command6"_qs, u"Command8"_qs})
                        + (desk_->Find(u"Label13"_qs)->isVisible() ? u"+" : u"-")
                        + (desk_->Find(u"ProgressBar2"_qs)->isVisible() ? u"+" : u"-");
                    desk_->Type(u"cx1a"_qs);
                    desk_->Press(Qt::Key_Return); // is busy
                    desk_->Press(Qt::Key_Escape);
                });
                desk_->Advance(0);
                QCOMPARE(during, u"?-----++"_qs);
                const int shown = desk_->Text(u"Label6"_qs).toInt();
                QVERIFY2(shown > 0 && shown < 60001, qPrintable(desk_->Text(u"Label6"_qs)));
                QCOMPARE(List()->model()->rowCount(), shown);
                QCOMPARE(desk_->Text(u"Text5"_qs), u"CX1A"_qs); // no key was lost
                desk_->Press(Qt::Key_Return);
                QCOMPARE(Column(2), u"CX1A"_qs);
                desk_->Front()->close();
            });
        InSearch([&] { QCOMPARE(desk_->Text(u"Label6"_qs), u"60001"_qs); });
        QCOMPARE(desk_->Told(), QStringList());
    }

    void ADatabaseThatFailsIsToldOnce()
    {
        desk_->Furnish(3);
        desk_->Start();
        InSearch([&] {
            QVERIFY(QFile::rename(desk_->Path(u"base0.mdb"_qs), desk_->Path(u"x"_qs)));
            desk_->Press(Qt::Key_Return);
            QCOMPARE(desk_->Told().size(), 1);
            QCOMPARE(desk_->Text(u"Label6"_qs), u"0"_qs);
            QVERIFY(QFile::rename(desk_->Path(u"x"_qs), desk_->Path(u"base0.mdb"_qs)));
            desk_->Press(Qt::Key_Return);
            QCOMPARE(Column(2), u"CX3A CX2A CX1A"_qs);
        });
        QCOMPARE(desk_->Told(), QStringList());
    }
};

TORDILLO_TEST(TestForm6)
#include "TestForm6.moc"
