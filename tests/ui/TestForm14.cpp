// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/LocalServer.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"
#include "ui/ProvinceModel.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QListWidget>
#include <QTest>
#include <QTimer>
#include <QTreeView>

// The provinces of a log or of a search, and the QSL card of a contact.
class TestForm14 : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    void StoreProvinces(const QList<QStringList> &qsos) const // call, band, LdA, grid, satellite
    {
        QList<QsoRow> rows;
        for (const QStringList &qso : qsos) {
            rows << Desk::SampleQso(int(rows.size()) + 50);
            rows.last().Estacion = qso.value(0);
            rows.last().Argento = qso.value(0).startsWith(u"lu", Qt::CaseInsensitive) ? u"Chaco"_qs : QString();
            rows.last().Banda = qso.value(1);
            rows.last().LdA = qso.value(2);
            rows.last().SuGrid = qso.value(3);
            rows.last().Nombre_Sat = qso.value(4);
        }
        desk_->Store(rows);
    }
    QTreeView *List(const QString &name) const { return desk_->Find<QTreeView>(name); }
    QStringList Names() const
    {
        QStringList names;
        const QAbstractItemModel *model = List(u"ListView2"_qs)->model();
        for (int row = 0; row < model->rowCount(); ++row)
            names << model->index(row, ProvinceModel::Province).data().toString();
        return names;
    }
    QString Row(int row, int role = Qt::DisplayRole) const
    {
        QStringList cells;
        const QAbstractItemModel *model = List(u"ListView2"_qs)->model();
        for (int column = 0; column < model->columnCount(); ++column)
            cells << model->index(row, column).data(role).toString();
        return cells.join(u',');
    }
    QStringList Items(const QString &name) const
    {
        QStringList items;
        const auto *list = desk_->Find<QListWidget>(name);
        for (int row = 0; row < list->count(); ++row)
            items << list->item(row)->text();
        return items;
    }
    void ClickTitle(int column) const
    {
        QHeaderView *header = List(u"ListView2"_qs)->header();
        const QPoint place(header->sectionViewportPosition(column) + 8, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }

    void TheLogByProvinceAndBand()
    {
        desk_->Furnish(0);
        StoreProvinces({{u"lu1ga"_qs, u"20m"_qs, {}, u"GF05AB"_qs}, {u"LU2GA"_qs, u"20m"_qs, u"2"_qs, u"GF05AB"_qs},
            {u"LU3GA"_qs, u"70cm"_qs, u"1"_qs, {}, u"SO-50"_qs}, {u"CX1AA"_qs, u"40m"_qs, u"2"_qs, u"GF15"_qs},
            {u"LU4GA"_qs, u"20m"_qs, u"2"_qs, u"FF78"_qs}, {u"LU5GA"_qs, u"20m"_qs, u"2"_qs, u"GF10"_qs}});
        desk_->Start();
        const QString caption = desk_->Text(u"Label6"_qs);
        desk_->InModal([&] { desk_->Menu("parg"); },
            [&] {
                QCOMPARE(desk_->Front()->windowTitle(), u"Argentina en LdA"_qs);
                QCOMPARE(Names().size(), 26);
                QCOMPARE(Row(3), u"4,,Chaco,,,,,,,,,,,,"_qs);
                QCOMPARE(Row(3, ProvinceModel::StateRole), u"-1,-1,2,-1,-1,-1,-1,-1,2,-1,-1,-1,-1,-1,1"_qs);
                QVERIFY(Row(3, Qt::ToolTipRole).contains(u"Chaco, 20m: Confirmado"));
                QCOMPARE(Row(25), u",,Confirmados/Trabajados,0/0,0/0,0/0,0/0,0/0,1/1,0/0,0/0,0/0,0/0,0/0,0/1"_qs);
                QCOMPARE(Items(u"List1"_qs) + Items(u"List2"_qs),
                    (QStringList{u"FF78"_qs, u"GF05"_qs, u"GF10"_qs, u"GF05"_qs}));
                QCOMPARE(desk_->Text(u"Frame2"_qs) + desk_->Text(u"Frame3"_qs), u"Confirmadas (3)Trabajadas (1)"_qs);
                QCOMPARE(desk_->Text(u"resumen"_qs), u"1 confirmada y 1 trabajada, de 25 provincias"_qs);
                const QAbstractItemModel *qsos = List(u"ListView1"_qs)->model();
                QCOMPARE(qsos->rowCount(), 5);
                QCOMPARE(qsos->columnCount(), 18);
                QCOMPARE(qsos->index(0, 2).data().toString(), u"LU1GA"_qs);
                ClickTitle(ProvinceModel::Province);
                QCOMPARE(Names().first() + Names()[24] + Names()[25], u"AntártidaTucumánConfirmados/Trabajados"_qs);
                ClickTitle(8); // 20m
                QCOMPARE(Names().first() + Names()[25], u"ChacoConfirmados/Trabajados"_qs);
                desk_->Press(Qt::Key_Escape);
            });
        QCOMPARE(desk_->Text(u"Label6"_qs), caption);
        QVERIFY(desk_->Find(u"ListView2"_qs)->isVisible());
        QCOMPARE(desk_->Told(), QStringList());
    }

    void AForeignLogLeavesTheTableEmpty()
    {
        desk_->Furnish(0);
        StoreProvinces({{u"CX1AA"_qs, u"20m"_qs, u"2"_qs, u"GF15"_qs}, {u"W1AW"_qs, u"40m"_qs, {}, u"FN31"_qs}});
        desk_->Start();
        desk_->InWindow("parg", [&] {
            QCOMPARE(Names().size(), 26);
            for (int row = 0; row < 25; ++row)
                QCOMPARE(Row(row, ProvinceModel::StateRole).count(u"-1"_qs), 15);
            QCOMPARE(Row(25).count(u"0/0"_qs), 12);
            QCOMPARE(desk_->Texts("Frame2 Frame3"), u"Confirmadas (0)|Trabajadas (0)"_qs);
            QCOMPARE(Items(u"List1"_qs) + Items(u"List2"_qs), QStringList());
            QCOMPARE(List(u"ListView1"_qs)->model()->rowCount(), 0);
        });
        QCOMPARE(desk_->Said(), QString());
    }

    void ASearchCountsWhatItListsAndAnEmptyLogIsTold()
    {
        desk_->Furnish(0);
        desk_->Start();
        desk_->Menu("parg");
        QCOMPARE(desk_->Told(), QStringList{u"!No hay QSOs para mostrar!"_qs});
        StoreProvinces({{u"LU1GA"_qs, u"20m"_qs, u"2"_qs}, {u"LU2GA"_qs, u"40m"_qs, u"1"_qs}});
        desk_->Main().LoadLogPage(1);
        const auto closing = [&](const QString &source, const QString &totals) {
            QCOMPARE(desk_->Text("origen"), source);
            QCOMPARE(Row(25).section(u',', 6, 8), totals);
            desk_->Press(Qt::Key_Escape);
        };
        // The window goes over the main window and over the search in turn.
        for (int turn = 0; turn < 2; ++turn) {
            desk_->InModal([&] { desk_->Menu("parg"); }, [&] { closing(u"Log: Log inicial"_qs, u"0/1,0/0,1/1"_qs); });
            desk_->InWindow("eadif", [&] {
                desk_->Fill("Text7", "40m");
                desk_->Press(Qt::Key_Return);
                desk_->InModal([&] { desk_->Click("Command5"); },
                    [&] {
                        QCOMPARE(desk_->Front()->parentWidget(), desk_->form);
                        closing(u"QSOs de la búsqueda en Log inicial"_qs, u"0/1,0/0,0/0"_qs);
                    });
                desk_->Fill("Text7", "6m");
                desk_->Press(Qt::Key_Return);
                desk_->Click("Command5");
                QCOMPARE(desk_->Said(), u"!No hay QSOs para mostrar!"_qs);
            });
        }
    }

    void EscStopsTheReading()
    {
        desk_->Furnish(1);
        QVERIFY(RawDatabase(desk_->Path(u"base0.mdb"_qs))
                    .Run("WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c WHERE n<60000) INSERT INTO "
                         "Tabla1 (Modo, \"Nombre Log\", Estacion, Argento, Banda, Fecha, Hora) SELECT 'CW', "
                         "'Log inicial', 'LU'||n, 'Chaco', '20m', '2025-01-01', time(n, 'unixepoch') FROM c"));
        desk_->Start();
        QString during;
        QTimer::singleShot(0, &desk_->Main(), [&] {
            during = desk_->Text(u"Label6"_qs) + (desk_->Find(u"ListView2"_qs)->isVisible() ? u"+" : u"-")
                + (desk_->Find(u"ProgressBar1"_qs)->isVisible() ? u"+" : u"-");
            desk_->Press(Qt::Key_Escape);
        });
        desk_->Menu("parg");
        QCOMPARE(during, u"Procesando ...-+"_qs);
        QCOMPARE(desk_->Front(), &desk_->Main());
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 60001 QSOs"_qs);
        desk_->TakeBase();
        desk_->Menu("parg");
        const QString said = desk_->Said();
        QVERIFY2(said.startsWith(u"XNo se encuentra la base de datos"_qs) && !said.contains(u'|'), qPrintable(said));
    }

    void TheSiteIsOpenedByKeyOrByDoubleClick()
    {
        desk_->Furnish(1);
        desk_->Write(u"servicios.ini"_qs, "[servicios]\r\nlda_sitio=https://lda.test/inicio\r\n");
        desk_->Start();
        desk_->InModal([&] { desk_->Menu("parg"); },
            [&] {
                desk_->Advance(0);
                QTest::mouseDClick(desk_->Find(u"Image4"_qs), Qt::LeftButton);
                desk_->Find(u"Image4"_qs)->setFocus();
                desk_->launcher->works = false;
                desk_->Press(Qt::Key_Space);
                desk_->Front()->close();
            });
        QCOMPARE(desk_->launcher->opened, QStringList(2, u"https://lda.test/inicio"_qs));
        QCOMPARE(desk_->Told(), QStringList{u"!No se pudo abrir el navegador con:\nhttps://lda.test/inicio"_qs});
    }

    void MembersComeFromTheService()
    {
        LocalServer server;
        desk_->Furnish(1);
        desk_->Write(u"servicios.ini"_qs, "[servicios]\r\nlda=" + server.Base().toUtf8() + "\r\n");
        desk_->Start();
        const QString none = u"!La respuesta de LdA no trae ningún miembro."_qs;
        const QString dead = u"!No parace haber conexión con internet!"_qs;
        struct Case {
            LocalServer::Answer answer;
            QStringList shown, told;
        };
        const QByteArray member = "LU1ABC nomo:Jos\xc3\xa9 Paz ultimar:24/11/2026";
        const Case cases[] = {
            {QByteArray("<html><body>" + member + "</body></html>"), {u"LU1ABC José Paz>24/11/2026"_qs}, {}},
            {{member, 500}, {}, {none}}, {"<h1>Mantenimiento</h1>", {}, {none}},
            {LocalServer::Manner::Hangup, {}, {dead}}, {LocalServer::Manner::Silent, {}, {dead}}};
        desk_->InModal([&] { desk_->Menu("parg"); },
            [&] {
                for (const Case &that : cases) {
                    server.Always(that.answer);
                    const auto asked = server.requests.size();
                    desk_->Click(u"Command1"_qs);
                    QVERIFY(!desk_->Find(u"Command1"_qs)->isEnabled());
                    QVERIFY(desk_->Find(u"Frame5"_qs)->isVisible());
                    QVERIFY(QTest::qWaitFor([&] { return server.requests.size() > asked; }));
                    if (that.answer.manner == LocalServer::Manner::Silent) {
                        desk_->Advance(14000);
                        QCOMPARE(desk_->Text(u"consulta"_qs), u"Consultando LdA ... 14 s"_qs);
                        desk_->Advance(1000);
                    }
                    QVERIFY(QTest::qWaitFor([&] { return desk_->Find(u"Command1"_qs)->isEnabled(); }));
                    QCOMPARE(Items(u"List3"_qs), that.shown);
                    QCOMPARE(desk_->Find<QListWidget>("List3")->currentRow(), int(that.shown.size()) - 1);
                    QCOMPARE(desk_->Told(), that.told);
                    QVERIFY(desk_->Find(u"Frame5"_qs)->isVisible());
                }
                QCOMPARE(server.requests.first().target, QByteArray("/php/tordillo55.php?"));
                for (const QString &table : {u"ListView2"_qs, u"ListView1"_qs}) {
                    desk_->Find<QCheckBox>("Check1")->setChecked(table == u"ListView1");
                    desk_->Click("Command1");
                    desk_->Click("Command2"); // away, and nobody asks any more
                    QVERIFY(!desk_->Find("Frame5")->isVisible());
                    QCOMPARE(desk_->Enabled("Command1") + desk_->Focus(), QString(u'+' + table));
                    desk_->Advance(20000);
                    QCOMPARE(desk_->Told(), QStringList());
                }
                desk_->Click("Command1");
                desk_->Press(Qt::Key_Escape); // takes the request with it
            });
        desk_->Advance(20000);
        QCOMPARE(desk_->Told(), QStringList());
    }

    void ACardIsDrawnAndShown()
    {
        desk_->Furnish(0);
        desk_->Store({RowOf(u"Fecha=2026-11-24;Hora=21:15:00;RSE=57;RSR=48;Modo=FM;Banda=20m;Frecuencia=14.200;"
                            "Obs=Juan, 73 ñ;Nombre_Sat=so-50"_qs,
            Desk::SampleQso(1))});
        desk_->Write("programas.ini", "[programas]\r\nbagual=qsl\r\n");
        desk_->Start();
        desk_->InModal([&] { desk_->DoubleClick("ListView2", 0); },
            [&] {
                const auto draw = [&] {
                    desk_->Click(u"Command4"_qs);
                    return desk_->Told().join(u'|');
                };
                QCOMPARE(draw(), u"!No se encuentra programa Bagual"_qs);
                QVERIFY(QDir(desk_->Path({})).mkpath(u"qsl/MisQSLs"_qs));
                desk_->Write(u"qsl/Bagual.exe"_qs, "x");
                QCOMPARE(draw(), u"!El programa Bagual no tiene Diseño de QSL para LU9ZZZ"_qs);
                desk_->Write(u"qsl/MisQSLs/a.qsl"_qs, "SuCall=LU9ZZZ\r\n");
                QCOMPARE(desk_->launcher->started, QStringList());
                desk_->Fill(u"Text2"_qs, u"LU1ABC/W"_qs);
                const QString question = u"?QSL LU1ABC/W_24112026.jpg guardada en C:/Bagual/Salida/\n\nDesea verla?"_qs;
                desk_->dialogs.answers = {false, true};
                QCOMPARE(draw() + u'|' + draw(), question + u'|' + question);
                QCOMPARE(desk_->launcher->opened,
                    QStringList{u"file://"_qs + desk_->Path("qsl/Salida/LU1ABC_W_24112026.jpg")});
                QCOMPARE(desk_->launcher->started.last(),
                    QString(desk_->Path("qsl/Bagual.exe")
                        + u" Bagua$de=LU9ZZZ$para=LU1ABC/W$fecha=24/11/2026$hora=21:15$modo=FM$banda=20m$reporte=57"
                          "$sat=SO-50$nota=Juan, 73 ñ"));
                desk_->launcher->works = false;
                QCOMPARE(draw(),
                    QString(u"XNo se pudo iniciar el programa Bagual:\n"_qs + desk_->Path(u"qsl/Bagual.exe"_qs)));
                desk_->Front()->close();
            });
    }
};

TORDILLO_TEST(TestForm14)
#include "TestForm14.moc"
