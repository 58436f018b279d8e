// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ContestDesk.h"
#include "support/TestRegistry.h"

#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTest>

// The windows around the contest: its list, the edit window, files out and in, the transfer, the analysis.
class TestContestWindows : public QObject {
    Q_OBJECT

    std::unique_ptr<ContestDesk> desk_;

    void In(const QString &contest, const std::function<void()> &act) { desk_->InContest(contest, act); }
    // Contacts with LU1ABC and PY2AA in SSB on 80m, serials 1 and 2 out, 7 and 8 in.
    void WorkTwo() const
    {
        desk_->Work(u"LU1ABC"_qs, u"7"_qs);
        desk_->Work(u"PY2AA"_qs, u"8"_qs);
    }
    // What was told, with the folder taken out of it.
    QStringList Told() const
    {
        QStringList told = desk_->Told();
        told.replaceInStrings(desk_->Path(u"x"_qs).chopped(1), QString());
        return told;
    }
    // Opens the menu of a contest in the list and takes its entry.
    void TakeMenu(int row) const
    {
        auto *list = desk_->Find<QAbstractItemView>(u"ListView1"_qs);
        QTimer::singleShot(0, list, [] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu);
            QCOMPARE(menu->actions().first()->text(), u"Borrar CONDOR"_qs);
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        Q_EMIT list->customContextMenuRequested(list->visualRect(list->model()->index(row, 1)).center());
    }

private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<ContestDesk>();
        desk_->Furnish();
        desk_->Write(u"programas.ini"_qs, "[programas]\r\neditor=true\r\n");
        desk_->Write(u"dxcc.txt"_qs, "LU;Argentina\r\nPY;Brasil\r\n");
        desk_->Start();
    }
    void cleanup() { desk_.reset(); }

    void ContestsAreMadeAndDeleted()
    {
        const auto create = [&] {
            QCOMPARE(desk_->Column(u"ListView1"_qs, 1), (QStringList{u"ANDES"_qs, u"CONDOR"_qs}));
            QCOMPARE(desk_->Column(u"ListView1"_qs, 2), (QStringList{u"Fija"_qs, u"Incremental"_qs}));
            desk_->Click(u"Command1"_qs);
            QCOMPARE(desk_->Focus(), u"Text1"_qs);
            desk_->Type(u"con'dor"_qs);
            desk_->Press(Qt::Key_Return);
            QCOMPARE(desk_->Told(),
                QStringList{u"!Ya existe un concurso creado con el nombre CONDOR\n\nElija otro nombre!"_qs});
            QVERIFY(desk_->Front()->isVisible());
            desk_->Fill(u"Text1"_qs, u"puna"_qs);
            desk_->Find<QRadioButton>(u"Option2"_qs)->click();
            desk_->Click(u"Command1"_qs);
        };
        desk_->InContest(create, [&] {
            QCOMPARE(desk_->Texts({u"Label2"_qs, u"Label3"_qs, u"RSE"_qs, u"Label4"_qs}), u"PUNA|Fija||"_qs);
            QCOMPARE(desk_->OnMain(u"Label4"_qs), u"3"_qs); // its first row, behind those of the other two
        });
        In(u"CONDOR"_qs, [&] { WorkTwo(); });
        desk_->Told();
        desk_->InModal([&] { desk_->Menu("cabro"); },
            [&] {
                QCOMPARE(desk_->Column(u"ListView1"_qs, 3), (QStringList{u"0"_qs, u"2"_qs, u"0"_qs}));
                TakeMenu(1); // No is the preset
                QCOMPARE(
                    desk_->Told(), QStringList{u"?Elimina el concursoCONDOR?\n\nLos datos no se podrán recuperar!"_qs});
                QCOMPARE(desk_->Calls(u"CONDOR"_qs).size(), 2);
                desk_->dialogs.answers << true;
                TakeMenu(1);
                QCOMPARE(desk_->Column(u"ListView1"_qs, 1), (QStringList{u"ANDES"_qs, u"PUNA"_qs}));
                desk_->Press(Qt::Key_Escape);
            });
        QVERIFY(desk_->Calls(u"CONDOR"_qs).isEmpty());
        QCOMPARE(desk_->Front()->objectName(), u"Form1"_qs);
    }

    void EditingTheLastContact()
    {
        In(u"CONDOR"_qs, [&] {
            desk_->Press(Qt::Key_F12); // nothing there
            QCOMPARE(desk_->Front()->objectName(), u"Form4"_qs);
            WorkTwo();
            desk_->InModal([&] { desk_->Press(Qt::Key_F12); },
                [&] {
                    QVERIFY(desk_->Front()->windowTitle().startsWith(u"Edición de Registro #"));
                    QCOMPARE(desk_->Texts({u"Text2"_qs, u"Text3"_qs, u"Text6"_qs, u"Label3"_qs, u"Label11"_qs}),
                        u"PY2AA|3650|2|CONDOR|0"_qs);
                    const std::tuple<QString, QString, QString> refused[] = {
                        {u"Text3"_qs, u"4500"_qs, u"!4500 KHz NO ES BANDA DE CONCURSO!"_qs},
                        {u"Text3"_qs, QString(), u"!Ingrese la frecuencia en KHZ!"_qs},
                        {u"Text4"_qs, u"20261301"_qs, u"!Error en la fecha, mes 13!"_qs},
                        {u"Text4"_qs, u"2026"_qs, u"!Error en la fecha, formato DDMMAAAA!"_qs},
                        {u"Text5"_qs, u"2460"_qs, u"!Error en la HORA 2460!"_qs}};
                    for (const auto &[field, typed, message] : refused) {
                        const QString before = desk_->Text(field);
                        desk_->Fill(field, typed);
                        desk_->Press(Qt::Key_Tab);
                        QCoreApplication::processEvents();
                        QCOMPARE(desk_->Told(), QStringList{message});
                        QCOMPARE(desk_->Focus(), field);
                        desk_->Press(Qt::Key_Return); // Enter does not slip past it
                        QCOMPARE(desk_->Told(), QStringList{message});
                        QVERIFY(desk_->Front()->objectName() == u"Form7");
                        desk_->Fill(field, before);
                    }
                    desk_->Fill(u"Text2"_qs, u"py2'bb"_qs);
                    desk_->Fill(u"Text7"_qs, u"o'h-1 /a"_qs);
                    desk_->Choose(u"Combo2"_qs, u"FM"_qs);
                    desk_->Press(Qt::Key_Return);
                });
            QCOMPARE(desk_->Column(u"ListView2"_qs, 9), (QStringList{u"PY2BB"_qs, u"LU1ABC"_qs}));
            QCOMPARE(desk_->Text(u"RSE"_qs), u"3"_qs);
        });
        QCOMPARE(desk_->Calls(u"CONDOR"_qs), (QStringList{u"LU1ABC SSB 80m 1 7"_qs, u"PY2BB FM 80m 2 OH-1 /A"_qs}));
    }

    void DeletingAContact()
    {
        In(u"CONDOR"_qs, [&] {
            WorkTwo();
            for (const bool yes : {false, true})
                desk_->InModal([&] { desk_->DoubleClick(u"ListView2"_qs, 1); },
                    [&] {
                        QCOMPARE(desk_->Texts({u"Text2"_qs, u"Label11"_qs}), u"LU1ABC|1"_qs);
                        desk_->dialogs.answers = {yes};
                        desk_->Click(u"Command2"_qs);
                        QCOMPARE(desk_->Told(), QStringList{u"?Elimina el QSO con LU1ABC?"_qs});
                    });
            QCOMPARE(desk_->Column(u"ListView2"_qs, 9), QStringList{u"PY2AA"_qs});
            QCOMPARE(desk_->Texts({u"Label9"_qs, u"RSE"_qs}), u"1 QSOs |3"_qs);
        });
    }

    void AFileComesInAndGoesToTheGeneralLog()
    {
        In(u"CONDOR"_qs, [&] {
            desk_->Click(u"Command4"_qs);
            QCOMPARE(desk_->Told(),
                QStringList{u"iel log de concurso CONDOR no tiene QSOs para pasar al log Base Log inicial"_qs});
            desk_->Work(u"CX9AA"_qs, u"5"_qs);
            desk_->Write(u"ft8.log"_qs,
                "qso:  7074 ft8 2026-11-24 2115 lu9zzz 599 001 lu1abc 599 012\r\n"
                "QSO: 14074 FT8 2026-11-24 2116 LU9ZZZ 002 PY2AA 013\r\n");
            for (const QString &told : {QString(), u"iNo se agregaron 2 QSOs por estar repetidos en ft8.log"_qs}) {
                desk_->dialogs.files = {desk_->Path(u"ft8.log"_qs)};
                desk_->Click(u"IMP_C_FT8"_qs);
                if (!told.isEmpty())
                    QCOMPARE(desk_->dialogs.shown.last().title, u"Tordillo te informa"_qs);
                QCOMPARE(Told().mid(1).join(u'|'), told);
                QCOMPARE(desk_->Texts({u"Label9"_qs, u"lcontrol"_qs}), u"3 QSOs|3"_qs);
            }
            QCOMPARE(desk_->Column(u"ListView2"_qs, 9), (QStringList{u"PY2AA"_qs, u"LU1ABC"_qs, u"CX9AA"_qs}));
            for (const int copied : {3, 0}) {
                desk_->dialogs.answers = {true};
                desk_->Click(u"Command4"_qs);
                QVERIFY(desk_->dialogs.shown.first().preset == Dialogs::Button::No);
                QCOMPARE(desk_->Told(),
                    (QStringList{u"?Pasa el log de concurso CONDOR con 3 QSOs\nal log base Log inicial?"_qs,
                        u"iTransferencia:\nCopiados: %1\nDuplicados: %2"_qs.arg(copied).arg(3 - copied)}));
                QCOMPARE(desk_->OnMain(u"Label4"_qs), QString::number(desk_->Rows().last().id)); // for F5
            }
        });
        QCOMPARE(desk_->Calls(u"CONDOR"_qs),
            (QStringList{u"CX9AA SSB 80m 1 5"_qs, u"LU1ABC DG 40m 001 012"_qs, u"PY2AA DG 20m 002 013"_qs}));
        QCOMPARE(desk_->Rows().last().Obs, u"Concurso CONDOR"_qs);
    }

    void ACabrilloFile()
    {
        In(u"CONDOR"_qs, [&] {
            desk_->Click(u"Command1"_qs);
            QCOMPARE(desk_->Told(), QStringList{u"!No hay ningún QSO para exportar a Cabrillo!"_qs});
            WorkTwo();
            desk_->Write(u"a.log"_qs, "viejo");
            desk_->InModal([&] { desk_->Click(u"Command1"_qs); },
                [&] {
                    QCOMPARE(desk_->Front()->windowTitle(), u"Encabezado de CONDOR con 2 QSO(s)"_qs);
                    QVERIFY(!desk_->Find(u"Text9"_qs)->isEnabled());
                    desk_->Choose(u"Combo1"_qs, u"MULTI-OP"_qs);
                    QVERIFY(desk_->Find(u"Text9"_qs)->isEnabled());
                    desk_->Click(u"Command1"_qs);
                    QCOMPARE(desk_->Told(), QStringList{u"!Falta su Señal Distintiva!"_qs});
                    QCOMPARE(desk_->Focus(), u"Text1"_qs);
                    desk_->Type(u"lu8yyy"_qs); // not the call of the contacts
                    desk_->Click(u"Command1"_qs);
                    QCOMPARE(desk_->Told(), QStringList{u"!Falta su Nombre!"_qs});
                    QCOMPARE(desk_->Focus(), u"Text2"_qs);
                    desk_->Type(u"Ana"_qs);
                    desk_->dialogs.files = {desk_->Path(u"a.log"_qs), desk_->Path(u"b"_qs)};
                    desk_->dialogs.answers = {false, false};
                    desk_->Click(u"Command1"_qs);
                });
            const QStringList told = Told();
            QCOMPARE(told.size(), 5);
            QCOMPARE(told[1], u"?El archivo \na.log\nya existe!\n\nsobregraba?"_qs);
            QCOMPARE(told[2], told[0]); // No: another name is asked for
            QVERIFY2(told[3].startsWith(u"!El archivo no coincide con el concurso.") && told[3].contains(u"LU8YYY"),
                qPrintable(told[3]));
            QCOMPARE(told[4], u"!b.log\nGuardado!\n\nDesea verlo?"_qs);
        });
        QCOMPARE(desk_->Content(u"a.log"_qs), QByteArray("viejo"));
        QCOMPARE(desk_->Content(u"datos.cbr"_qs), QByteArray("Ana\r\n\r\n\r\n\r\n\r\n"));
        const QByteArray file = desk_->Content(u"b.log"_qs);
        QVERIFY2(file.startsWith("START-OF-LOG: 3.0\r\nCALLSIGN: LU8YYY\r\nCONTEST: CONDOR\r\n"), file.constData());
        QVERIFY2(file.endsWith("END-OF-LOG:\r\n") && file.count("QSO:") == 2, file.constData());
        In(u"CONDOR"_qs, [&] { // the true call: no box of the check
            desk_->InModal([&] { desk_->Click(u"Command1"_qs); },
                [&] {
                    QCOMPARE(desk_->Text(u"Text2"_qs), u"Ana"_qs);
                    desk_->Fill(u"Text1"_qs, u"LU9ZZZ"_qs);
                    desk_->dialogs.files = {desk_->Path(u"c.log"_qs)};
                    desk_->Told();
                    desk_->Write(u"programas.ini"_qs, "[programas]\r\neditor=no_hay_tal_editor\r\n");
                    desk_->dialogs.answers = {true};
                    desk_->Click(u"Command1"_qs);
                });
            QCOMPARE(Told().mid(1),
                (QStringList{u"!c.log\nGuardado!\n\nDesea verlo?"_qs,
                    u"!No se encontró un programa para ver el archivo\nc.log"_qs}));
        });
    }
};

TORDILLO_TEST(TestContestWindows)
#include "TestContestWindows.moc"
