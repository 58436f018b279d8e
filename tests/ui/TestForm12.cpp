// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include <QPlainTextEdit>
#include <QProgressBar>

namespace {

QByteArray Line(const QByteArray &call, const QByteArray &time, const QByteArray &more = {})
{
    return "<CALL:" + QByteArray::number(call.size()) + '>' + call + "<QSO_DATE:8>20260101<TIME_ON:4>" + time
        + "<BAND:3>40m<MODE:3>SSB<STATION_CALLSIGN:6>LU9ZZZ" + more + "<EOR>\r\n";
}

// So many contacts, one a minute, from 1/1/2026 00:01 on, as those that the desk is furnished with.
QByteArray Lines(int count)
{
    QByteArray lines;
    for (int i = 1; i <= count; ++i) {
        const QDateTime moment = QDateTime(QDate(2026, 1, 1), QTime(0, 0)).addSecs(60 * i);
        lines += Line("CX" + QByteArray::number(i) + "A", moment.toString(u"hhmm").toLatin1())
                     .replace("20260101", moment.toString(u"yyyyMMdd").toLatin1());
    }
    return lines;
}

const QByteArray header = "<PROGRAMID:9>OtroLibro\r\n<EOH>\r\n";

} // namespace

// The import window: a file is opened, looked at, and loaded into the open log.
class TestForm12 : public DeskTest {
    Q_OBJECT

    void InImport(const std::function<void()> &act) { InWindow("iadif", act); }
    void Open(const QByteArray &content, const Words &name = "contactos.adi")
    {
        Write(name, content);
        dialogs.files << Path(name);
        Click("Command1");
    }
    // What the two steps allow now: a file to be opened, and what was staged to be loaded.
    QString Steps() const { return Enabled("Command1 Command3"); }
    int Staged() const { return Value("SELECT count(*) FROM Tabla3").toInt(); }
    QString Calls() const { return Column(Rows(), &QsoRow::Estacion); }
    QString Detail() const
    {
        QString text;
        InModal([&] { Click("Detalle"); },
            [&] {
                text = Find<QPlainTextEdit>("texto")->toPlainText();
                Press(Qt::Key_Escape);
            });
        return text;
    }
    // Does `act` once, as soon as the loading has come to `value`.
    std::unique_ptr<QTimer> Loaded(int value, const std::function<void()> &act) const
    {
        auto context = std::make_unique<QTimer>();
        const auto *bar = Find<QProgressBar>("ProgressBar1");
        connect(bar, &QProgressBar::valueChanged, context.get(), [=, this, done = false](int now) mutable {
            if (done || now < value || Text("Label8") != u"Cargando ...")
                return;
            done = true;
            act();
        });
        return context;
    }
    int Asked() { return int(Told().count(u"?Cancela el proceso?"_qs)); }

private Q_SLOTS:
    void AFileIsOpenedAndLoaded()
    {
        Begin();
        InImport([&] {
            QCOMPARE(form->windowTitle(), u"Importar ADIF ..."_qs);
            QTRY_COMPARE(Focus(), u"Command1"_qs);
            QCOMPARE(Enabled("Command1 Command3 Detalle"), u"+--"_qs);
            Open(header + Line("LU1ABC", "2115", "<DXCC:3>100") + Line("CX2DE", "2118").replace("LU9ZZZ", "LU8YYY"));
            const RecordingDialogs::Shown dialog = dialogs.shown.takeFirst();
            QCOMPARE(dialog.text, u"Abrir Archivo de ADIF ..."_qs);
            QCOMPARE(dialog.detail, u"ADIF (*.adi *.adif *.ADI *.ADIF);;Todos (*)|"_qs + Path("x").chopped(2));
            QCOMPARE(Said(), QString());
            QCOMPARE(Texts("Label2 Label3 Label4 Label5 Label6 Label7 Label8 Label9 Label10"),
                QString(u"contactos.adi|" + Path("contactos.adi") + u"|OtroLibro|4|2|LU9ZZZ LU8YYY ||2|0"));
            QCOMPARE(Cells("List2", 0), QString());
            QCOMPARE(Find<QProgressBar>("ProgressBar1")->value(), 0);
            QCOMPARE(Staged(), 2);
            QCOMPARE(Calls(), QString());
            QCOMPARE(Steps(), u"++"_qs);
            QVERIFY(Content("modificado_211500").startsWith("<CALL:6>LU1ABC"));
        });
        InImport([&] { // what is staged waits
            QCOMPARE(Texts("Label2 Label6"), u"contactos.adi|2"_qs);
            Click("Command3");
            QCOMPARE(Said(), QString());
        });
        QCOMPARE(Calls(), u"CX2DE LU1ABC"_qs);
        QCOMPARE(Text("Label6"), u"Log: Log inicial, con 2 QSOs"_qs);
        QCOMPARE(Text("Label4"), u"3"_qs); // the last one that came in
        QCOMPARE(Staged(), 2);
    }

    void WhatIsWrongIsCountedAndListed()
    {
        Begin();
        InImport([&] {
            Open(header + Line("LU1ABC", "2115") + Line("LU2ABC", "2115").replace("20260101", "20261301")
                + Line("LU3ABC", "2515").replace("<BAND:3>40m", "<BAND:0>")
                + Line("LU4ABC", "2115", "<COMMENT:101>" + QByteArray(101, 'x') + "<APP_X:1>a<app_x:1>b<EOF:1>z")
                + Line("", "2115") + "<CALL:6>LU5ABC<QSO_DATE:8>20260101");
            QCOMPARE(Cells("List2", 0),
                u"> 1 error(es) Fecha|> 1 error(es) QTR|> 1 error(es) Banda/Frec.|> 1 error(es) ADIF."_qs);
            QCOMPARE(Texts("Label6 Label9 Label10"), u"5|2|0"_qs);
            QCOMPARE(Detail(),
                u"Línea 8: El último registro no termina en <EOR>: no se tomó.\n"
                "Línea 4, LU2ABC: descartado, fecha no válida\n"
                "Línea 5, LU3ABC: descartado, sin banda ni frecuencia; hora no válida\n"
                "Línea 6, LU4ABC: COMMENT se cortó a 100 caracteres.\n"
                "Línea 7, sin señal: descartado, falta la señal, la fecha o la hora\n\n"
                "Campos del archivo que el log no guarda:\n"
                "  APP_X: 2 veces\n  EOF: 1 veces\n"_qs);
            Open(Lines(1), "otro.adi");
            QCOMPARE(Cells("List2", 0) + Enabled("Detalle"), u"-"_qs);
        });
    }

    void TheSameFileAgain()
    {
        for (const bool replace : {false, true}) {
            init();
            Begin(4); // CX1A to CX4A; the odd ones in SSB on 40 m but the third
            InImport([&] {
                Open(Lines(6));
                QCOMPARE(Texts("Label6 Label9 Label10"), u"6|5|1"_qs);
                dialogs.answers << replace;
                Click("Command3");
                QVERIFY(dialogs.shown.last().preset == Dialogs::Button::No);
                QCOMPARE(Told().last(),
                    u"?de 6 QSOs hay 1 DUPlLICADOS\n\nLos desea Reemplazar?\n\nNota:\n"
                    "Se consideran DUPLICADOS los QSOs en un entorno de 10 minutos"_qs);
            });
            QCOMPARE(Rows().size(), 9);
            const QsoRow row = Rows().first();
            QCOMPARE(row.id, 2); // behind the marker of the log
            QCOMPARE(QString(row.LdA + row.Operador), replace ? u"0"_qs : u"1LU1AAA"_qs);
        }
    }

    void AnOpenDialogThatIsCancelled()
    {
        Begin();
        InImport([&] {
            Open(Lines(3));
            dialogs.files << std::nullopt;
            Click("Command1");
            QCOMPARE(Staged(), 0); // emptied before the file is chosen
            QCOMPARE(Texts("Label2 Label3 Label6 Label9") + Steps(), u"|||+-"_qs);
        });
    }

    void FilesWithTooFewAndTooManyContacts()
    {
        Begin();
        InImport([&] {
            Open("Hola\r\n<CALL:6>LU1ABC\r\n<BAND:3>20m\r\n");
            QCOMPARE(Told().last(), u"!El Archivo contactos.adi no tiene QSOss!"_qs);
            QCOMPARE(Texts("Label6 Label8"), u"0|"_qs);
            Open(Lines(1).repeated(10001));
            QCOMPARE(
                Told().last(), QString(u"XEl archivo:\n" + Path("contactos.adi") + u"\ntiene mas de 10.000 QSOs!"));
            QCOMPARE(Steps(), u"+-"_qs);
            QCOMPARE(Staged(), 0);
            Open(Lines(1).repeated(10000));
            QCOMPARE(Told().size(), 1);
            QCOMPARE(Texts("Label6 Label9"), u"10000|10000"_qs);
            Click("Command3");
        });
        QCOMPARE(Text("Label6"), u"Log: Log inicial, con 10000 QSOs"_qs);
    }

    void AFileWithoutAStation()
    {
        const QString question =
            u"?El Archivo contactos.adi no tiene el campo <STATION_CALLSIGN:\nContinua con la carga?"_qs;
        const QString prompt = question + u"|-Ingrese su Señal Distintiva";
        const QString refusal = prompt + u"|!sin Señal Distintiva se anula la carga de contactos.adi !";
        // Whether to go on, the answer (null: cancelled), what was said, and the station of the contact that comes in.
        const std::tuple<bool, QString, QString, QString> cases[] = {{false, {}, question, {}},
            {true, u"  "_qs, refusal, {}}, {true, {}, refusal, {}}, {true, u" lu1zz "_qs, prompt, u"LU1ZZ"_qs}};
        for (const auto &[goOn, answer, said, station] : cases) {
            init();
            Begin();
            InImport([&, &go = goOn, &typed = answer, &told = said, &call = station] {
                dialogs.answers << go;
                dialogs.inputs << (typed.isNull() ? std::nullopt : std::optional(typed));
                Open(Lines(1).replace("<STATION_CALLSIGN:6>LU9ZZZ", ""));
                if (go)
                    QCOMPARE(dialogs.shown[2].title, u"SD"_qs);
                QCOMPARE(Told().mid(1).join(u'|'), told);
                QCOMPARE(Staged(), call.isEmpty() ? 0 : 1);
                QCOMPARE(Steps(), call.isEmpty() ? u"+-"_qs : u"++"_qs);
                QCOMPARE(Cells("List2", 0), call.isEmpty() ? QString() : u"<STATION_CALLSIGN:LU1ZZ"_qs);
                if (!call.isEmpty())
                    Click("Command3");
            });
            QCOMPARE(Column(Rows(), &QsoRow::MyCall), station);
        }
    }

    void AnIdleEscIsForgotten()
    {
        Begin();
        InImport([&] {
            Press(Qt::Key_Escape);
            QVERIFY(form->isVisible());
            Open(Lines(3));
            QCOMPARE(Asked(), 0);
            QCOMPARE(Staged(), 3);
            Press(Qt::Key_Escape);
            form->close(); // asked, and not closed: No is the preset
            QVERIFY(form->isVisible());
            QCOMPARE(Asked(), 1);
            form->close();
            QCOMPARE(Asked(), 0);
        });
    }

    void EscAndClosingWhileAFileIsOpened()
    {
        // The key comes in with the other events of a long work.
        for (const bool close : {false, true})
            for (const bool cancel : {false, true}) {
                init();
                Begin();
                InImport([&] {
                    dialogs.answers << cancel;
                    const auto hand = Hand([&] { return Text("Label9").toInt() > 0; },
                        [&] { close ? static_cast<void>(form->close()) : Press(Qt::Key_Escape); });
                    Open("<CALL:4>CX0A<EOR>\r\n" + Lines(2000));
                    QVERIFY(!hand->isActive());
                    QCOMPARE(Asked(), 1);
                    QCOMPARE(form->isVisible(), !cancel);
                    QCOMPARE(form->findChild<QAbstractItemView *>(u"List2"_qs)->model()->rowCount(), cancel ? 0 : 2);
                    QVERIFY(cancel ? Staged() > 0 && Staged() < 2000 : Staged() == 2000);
                });
                QCOMPARE(Calls(), QString());
            }
    }

    void ClosingWhileAFileIsRepaired()
    {
        Begin();
        InImport([&] {
            const auto hand = Hand([&] { return Text("Label8").startsWith(u"Lineas ... "); }, [&] { form->close(); });
            dialogs.answers << true;
            Open(Lines(9000) + QByteArray("\r\n").repeated(300000));
            QVERIFY(!hand->isActive());
            QCOMPARE(Told().mid(1).join(u'|'), u"?Cancela el proceso?"_qs); // and no word of a failure
            QVERIFY(!form->isVisible());
            QCOMPARE(Staged(), 0);
        });
        InImport([&] { QCOMPARE(Steps(), u"+-"_qs); });
    }

    void StoppedWhileTheLogIsLoaded()
    {
        Begin();
        InImport([&] {
            Open(Lines(300));
            dialogs.answers << false << true;
            const auto refused = Loaded(49, [&] { Press(Qt::Key_Escape); });
            const auto closed = Loaded(99, [&] { form->close(); });
            Click("Command3");
            QCOMPARE(Asked(), 2);
            QVERIFY(!form->isVisible());
        });
        const QList<QsoRow> rows = Rows();
        QVERIFY2(rows.size() == 99 || rows.size() == 100, qPrintable(QString::number(rows.size())));
        QCOMPARE(rows.first().Estacion, u"CX300A"_qs); // the newest come first
    }

    void ADatabaseThatFails()
    {
        for (size_t which = 0; which < Troubles().size(); ++which) {
            init();
            Begin(1);
            const Trouble trouble = Troubles()[which];
            InImport([&] {
                Open(Lines(100));
                dialogs.answers << true << true;
                trouble.begin();
                Click("Command3");
                const QString told = Told().last();
                EndTrouble();
                QVERIFY2(told.contains(trouble.said) && told.contains(Path("base0.mdb")), qPrintable(told));
                if (which + 1 < Troubles().size()) // the last one does not come to the loading
                    QVERIFY(told.startsWith(u"XLos QSOs no fueron cargados: el log quedó como estaba.\n\n"_qs));
                QCOMPARE(Calls(), u"CX1A"_qs);
                QCOMPARE(Rows().first().LdA, u"1"_qs);
                Click("Command3"); // what was staged is still there
            });
            QCOMPARE(Rows().size(), 100);
            QCOMPARE(Rows().first().LdA, u"0"_qs);
            InImport([&] {
                trouble.begin();
                Open(Lines(100));
                EndTrouble();
                QVERIFY(Said().contains(trouble.said));
                QCOMPARE(Steps(), u"+-"_qs);
            });
        }
    }

    void AFolderThatCannotBeWritten()
    {
        Begin();
        QVERIFY(QDir(Path({})).mkdir(u"disco"_qs));
        InImport([&] {
            unwritable << Path("disco/contactos.adi_211500");
            Open(Lines(2).replace("\r\n", "\n"), "disco/contactos.adi");
            QCOMPARE(Told().size(), 1);
            QVERIFY(Content("contactos.adi_211500").startsWith("<CALL:4>CX1A")); // in our own folder
            QCOMPARE(Texts("Label3 Label6"), QString(Path("disco/contactos.adi") + u"|2"));

            unwritable << u"modificado_211500"_qs;
            Open(Lines(2), "disco/contactos.adi");
            QCOMPARE(Told().last(), QString(u"XNo se puede escribir el archivo\n" + Path("modificado_211500")));
            QCOMPARE(Steps(), u"+-"_qs);
        });
    }

    // Fields of the phone program.
    void SummitsOrParks()
    {
        Begin();
        InImport([&] {
            const auto ticks = [&] { return Ticked("Check1") * 10 + Ticked("Check2"); };
            Click("Check1");
            QCOMPARE(ticks(), 10);
            QCOMPARE(Said(), QString());
            Click("Check2");
            QCOMPARE(ticks(), 1);
            QCOMPARE(Said(), u"iNo puede ser SOTA y POTA simultaneamente!"_qs);
            Open(header + Line("LU1ABC", "2115", "<NAME:7>ar-0001<COMMENT:7>ar-0002"));
            Click("Command3");
        });
        const QsoRow row = Rows().first();
        QCOMPARE((QStringList{row.SOTA, row.MYSOTA, row.POTA, row.IOTA, row.Obs}.join(u'|')),
            u"||AR-0001|AR-0002|ar-0002"_qs);
    }
};

TORDILLO_TEST(TestForm12)
#include "TestForm12.moc"
