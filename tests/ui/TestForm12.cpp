// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QAbstractButton>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTest>
#include <QTimer>

namespace {

QByteArray Field(const char *tag, const QByteArray &value)
{
    return QByteArray("<") + tag + ':' + QByteArray::number(value.size()) + '>' + value;
}

QByteArray Line(const QByteArray &call, const QByteArray &time, const QByteArray &more = {})
{
    return Field("CALL", call) + Field("QSO_DATE", "20260101") + Field("TIME_ON", time) + Field("BAND", "40m")
        + Field("MODE", "SSB") + Field("STATION_CALLSIGN", "LU9ZZZ") + more + "<EOR>\r\n";
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
class TestForm12 : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;
    QWidget *form_ = nullptr;

    void Start(int qsos = 0)
    {
        desk_->Furnish(qsos);
        desk_->Start();
    }
    // Opens the window, and closes it afterwards where `act` has not.
    void InImport(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("iadif"); },
            [&] {
                form_ = desk_->Front();
                act();
                if (form_->isVisible())
                    form_->close();
            });
    }
    void Open(const QByteArray &content, const QString &name = u"contactos.adi"_qs)
    {
        desk_->Write(name, content);
        desk_->dialogs.files << desk_->Path(name);
        desk_->Click(u"Command1"_qs);
    }
    QString Shown(const QStringList &labels) const
    {
        QStringList texts;
        for (const QString &label : labels)
            texts << desk_->Text(label);
        return texts.join(u'|');
    }
    QStringList Listed() const
    {
        QStringList texts;
        const auto *list = form_->findChild<QListWidget *>(u"List2"_qs);
        for (int row = 0; row < list->count(); ++row)
            texts << list->item(row)->text();
        return texts;
    }
    bool IsEnabled(const QString &button) const { return desk_->Find(button)->isEnabled(); }
    int Staged() const
    {
        return RawDatabase(desk_->Path(u"base0.mdb"_qs)).Value("SELECT count(*) FROM Tabla3").toInt();
    }
    QString Calls() const
    {
        QStringList calls;
        for (const QsoRow &row : desk_->Rows())
            calls << row.Estacion;
        calls.sort();
        return calls.join(u' ');
    }
    QString Detail() const
    {
        QString text;
        desk_->InModal([&] { desk_->Click(u"Detalle"_qs); },
            [&] {
                text = desk_->Find<QPlainTextEdit>(u"texto"_qs)->toPlainText();
                desk_->Press(Qt::Key_Escape);
            });
        return text;
    }
    // Does `act` once, as soon as the step that shows `activity` has come to `value`.
    std::unique_ptr<QObject> When(const QString &activity, int value, const std::function<void()> &act)
    {
        auto context = std::make_unique<QObject>();
        auto done = std::make_shared<bool>(false);
        connect(desk_->Find<QProgressBar>(u"ProgressBar1"_qs), &QProgressBar::valueChanged, context.get(),
            [=, this](int now) {
                if (*done || now < value || desk_->Text(u"Label8"_qs) != activity)
                    return;
                *done = true;
                act();
            });
        return context;
    }
    static int Asked(const QStringList &told) { return int(told.count(u"?Cancela el proceso?"_qs)); }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    // --- The two steps

    void AFileIsOpenedAndLoaded()
    {
        Start();
        InImport([&] {
            QCOMPARE(desk_->Front()->windowTitle(), u"Importar ADIF ..."_qs);
            QTRY_COMPARE(desk_->Focus(), u"Command1"_qs);
            QVERIFY(!IsEnabled(u"Command3"_qs) && !IsEnabled(u"Detalle"_qs));
            Open(header + Line("LU1ABC", "2115", "<DXCC:3>100") + Line("CX2DE", "2118").replace("LU9ZZZ", "LU8YYY"));
            const RecordingDialogs::Shown dialog = desk_->dialogs.shown.takeFirst();
            QCOMPARE(dialog.text, u"Abrir Archivo de ADIF ..."_qs);
            QCOMPARE(dialog.detail,
                QString(u"ADIF (*.adi *.adif *.ADI *.ADIF);;Todos (*)|" + desk_->Path(u"x"_qs).chopped(2)));
            QCOMPARE(desk_->Told(), QStringList());
            QCOMPARE(Shown({u"Label2"_qs, u"Label3"_qs, u"Label4"_qs, u"Label5"_qs, u"Label6"_qs, u"Label7"_qs,
                         u"Label8"_qs, u"Label9"_qs, u"Label10"_qs}),
                QString(u"contactos.adi|" + desk_->Path(u"contactos.adi"_qs) + u"|OtroLibro|4|2|LU9ZZZ LU8YYY ||2|0"));
            QCOMPARE(Listed(), QStringList());
            QCOMPARE(desk_->Find<QProgressBar>(u"ProgressBar1"_qs)->value(), 0);
            QCOMPARE(Staged(), 2);
            QCOMPARE(Calls(), QString());
            QVERIFY(IsEnabled(u"Command1"_qs) && IsEnabled(u"Command3"_qs));
            QVERIFY(desk_->Content(u"modificado_211500"_qs).startsWith("<CALL:6>LU1ABC"));

            desk_->Click(u"Command3"_qs);
            QCOMPARE(desk_->Told(), QStringList());
        });
        QCOMPARE(Calls(), u"CX2DE LU1ABC"_qs);
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 2 QSOs"_qs);
        QCOMPARE(desk_->Text(u"Label4"_qs), u"3"_qs); // the last one that came in
        QCOMPARE(Staged(), 2);
    }

    void WhatIsWrongIsCountedAndListed()
    {
        Start();
        InImport([&] {
            Open(header + Line("LU1ABC", "2115") + Line("LU2ABC", "2115").replace("20260101", "20261301")
                + Line("LU3ABC", "2515").replace("<BAND:3>40m", "<BAND:0>")
                + Line("LU4ABC", "2115", Field("COMMENT", QByteArray(101, 'x')) + "<APP_X:1>a<app_x:1>b<EOF:1>z")
                + Line("", "2115") + "<CALL:6>LU5ABC<QSO_DATE:8>20260101");
            QCOMPARE(Listed(),
                (QStringList{u"> 1 error(es) Fecha"_qs, u"> 1 error(es) QTR"_qs, u"> 1 error(es) Banda/Frec."_qs,
                    u"> 1 error(es) ADIF."_qs}));
            QCOMPARE(Shown({u"Label6"_qs, u"Label9"_qs, u"Label10"_qs}), u"5|2|0"_qs);
            QCOMPARE(Detail(),
                u"Línea 8: El último registro no termina en <EOR>: no se tomó.\n"
                "Línea 4, LU2ABC: descartado, fecha no válida\n"
                "Línea 5, LU3ABC: descartado, sin banda ni frecuencia; hora no válida\n"
                "Línea 6, LU4ABC: COMMENT se cortó a 100 caracteres.\n"
                "Línea 7, sin señal: descartado, falta la señal, la fecha o la hora\n\n"
                "Campos del archivo que el log no guarda:\n"
                "  APP_X: 2 veces\n  EOF: 1 veces\n"_qs);
            Open(Lines(1), u"otro.adi"_qs);
            QCOMPARE(Listed(), QStringList());
            QVERIFY(!IsEnabled(u"Detalle"_qs));
        });
    }

    void TheSameFileAgain()
    {
        Start(4); // CX1A to CX4A; the odd ones in SSB on 40 m but the third
        InImport([&] {
            Open(Lines(6));
            QCOMPARE(Shown({u"Label6"_qs, u"Label9"_qs, u"Label10"_qs}), u"6|5|1"_qs);
            desk_->dialogs.answers << true;
            desk_->Click(u"Command3"_qs);
            const RecordingDialogs::Shown dialog = desk_->dialogs.shown.last();
            QVERIFY(dialog.preset == Dialogs::Button::No);
            QCOMPARE(desk_->Told().last(),
                u"?de 6 QSOs hay 1 DUPlLICADOS\n\nLos desea Reemplazar?\n\nNota:\n"
                "Se consideran DUPLICADOS los QSOs en un entorno de 10 minutos"_qs);
        });
        QList<QsoRow> rows = desk_->Rows();
        QCOMPARE(rows.size(), 9);
        QCOMPARE(rows[0].id, 2); // behind the marker of the log
        QCOMPARE(rows[0].LdA, u"0"_qs);
        QCOMPARE(rows[0].Operador, QString());
    }

    // --- Files that are not taken

    void AnOpenDialogThatIsCancelled()
    {
        Start();
        InImport([&] {
            Open(Lines(3));
            desk_->dialogs.files << std::nullopt;
            desk_->Click(u"Command1"_qs);
            QCOMPARE(Staged(), 0); // emptied before the file is chosen
            QCOMPARE(Shown({u"Label2"_qs, u"Label3"_qs, u"Label6"_qs, u"Label9"_qs}), u"|||"_qs);
            QVERIFY(IsEnabled(u"Command1"_qs) && !IsEnabled(u"Command3"_qs));
        });
    }

    void FilesWithoutContacts()
    {
        Start();
        InImport([&] {
            Open("Hola\r\n<CALL:6>LU1ABC\r\n<BAND:3>20m\r\n");
            QCOMPARE(desk_->Told().last(), u"!El Archivo contactos.adi no tiene QSOss!"_qs);
            QCOMPARE(Shown({u"Label6"_qs, u"Label8"_qs}), u"0|"_qs);
            Open(Lines(1).repeated(10001));
            QCOMPARE(desk_->Told().last(),
                QString(u"XEl archivo:\n" + desk_->Path(u"contactos.adi"_qs) + u"\ntiene mas de 10.000 QSOs!"));
            QVERIFY(IsEnabled(u"Command1"_qs) && !IsEnabled(u"Command3"_qs));
            QCOMPARE(Staged(), 0);
        });
    }

    void AFileWithoutAStation()
    {
        for (const QString &station : {QString(), u"LU1ZZ"_qs}) {
            desk_ = std::make_unique<Desk>();
            Start();
            InImport([&] {
                desk_->dialogs.answers << true;
                desk_->dialogs.inputs << (station.isEmpty() ? std::nullopt : std::optional(u" lu1zz "_qs));
                Open(Lines(1).replace("<STATION_CALLSIGN:6>LU9ZZZ", ""));
                QCOMPARE(desk_->dialogs.shown[2].title, u"SD"_qs);
                QStringList expected{
                    u"?El Archivo contactos.adi no tiene el campo <STATION_CALLSIGN:\nContinua con la carga?"_qs,
                    u"-Ingrese su Señal Distintiva"_qs};
                if (station.isEmpty())
                    expected << u"!sin Señal Distintiva se anula la carga de contactos.adi !"_qs;
                QCOMPARE(desk_->Told().mid(1), expected);
                QCOMPARE(Staged(), station.isEmpty() ? 0 : 1);
                QCOMPARE(IsEnabled(u"Command3"_qs), !station.isEmpty());
                QCOMPARE(Listed(), station.isEmpty() ? QStringList() : QStringList{u"<STATION_CALLSIGN:LU1ZZ"_qs});
                if (!station.isEmpty())
                    desk_->Click(u"Command3"_qs);
            });
            if (!station.isEmpty())
                QCOMPARE(desk_->Rows().first().MyCall, station);
        }
    }

    // --- Esc and closing

    void AnIdleEscIsForgotten()
    {
        Start();
        InImport([&] {
            desk_->Press(Qt::Key_Escape);
            QVERIFY(desk_->Front()->isVisible() && desk_->Front()->objectName() == u"Form12");
            Open(Lines(3));
            QCOMPARE(Asked(desk_->Told()), 0);
            QCOMPARE(Staged(), 3);
            desk_->Press(Qt::Key_Escape);
            desk_->Front()->close(); // asked, and not closed: No is the preset
            QVERIFY(desk_->Front()->objectName() == u"Form12");
            QCOMPARE(Asked(desk_->Told()), 1);
            desk_->Front()->close();
            QCOMPARE(Asked(desk_->Told()), 0);
        });
    }

    void ClosingWhileAFileIsRepaired()
    {
        Start();
        InImport([&] {
            QTimer operatorHand;
            connect(&operatorHand, &QTimer::timeout, &operatorHand, [&] {
                if (!desk_->Text(u"Label8"_qs).startsWith(u"Lineas ... "))
                    return;
                operatorHand.stop();
                form_->close();
            });
            operatorHand.start(0);
            desk_->dialogs.answers << true;
            Open(Lines(9000) + QByteArray("\r\n").repeated(300000));
            QVERIFY(!operatorHand.isActive());
            QCOMPARE(desk_->Told().mid(1), QStringList{u"?Cancela el proceso?"_qs}); // and no word of a failure
            QVERIFY(!form_->isVisible());
            QCOMPARE(Staged(), 0);
        });
        InImport([&] { QVERIFY(IsEnabled(u"Command1"_qs) && !IsEnabled(u"Command3"_qs)); });
    }

    void ClosingWhileTheLogIsLoaded()
    {
        Start();
        InImport([&] {
            Open(Lines(300));
            desk_->dialogs.answers << false << true;
            const auto refused = When(u"Cargando ..."_qs, 49, [&] { desk_->Press(Qt::Key_Escape); });
            const auto closed = When(u"Cargando ..."_qs, 99, [&] { form_->close(); });
            desk_->Click(u"Command3"_qs);
            QCOMPARE(Asked(desk_->Told()), 2);
            QVERIFY(!form_->isVisible());
        });
        const auto loaded = desk_->Rows().size();
        QVERIFY2(loaded == 99 || loaded == 100, qPrintable(QString::number(loaded)));
    }

    // --- What goes wrong

    void ADatabaseThatFails()
    {
        Start(1);
        InImport([&] {
            Open(Lines(100));
            desk_->Told();
            desk_->dialogs.answers << true << true;
            FaultVfs::Instance().SetRoom(0);
            desk_->Click(u"Command3"_qs);
            const QString told = desk_->Told().last();
            QVERIFY2(told.startsWith(u"XLos QSOs no fueron cargados: el log quedó como estaba.\n\n"), qPrintable(told));
            QVERIFY2(told.contains(u"No queda lugar en el disco"_qs) && told.contains(desk_->Path(u"base0.mdb"_qs)),
                qPrintable(told));
            Desk::HealDisk();
            QCOMPARE(Calls(), u"CX1A"_qs);
            QCOMPARE(desk_->Rows().first().LdA, u"1"_qs);
            desk_->Click(u"Command3"_qs); // what was staged is still there
        });
        QCOMPARE(desk_->Rows().size(), 100);
        QCOMPARE(desk_->Rows().first().LdA, u"0"_qs);
    }

    void AFolderThatCannotBeWritten()
    {
        Start();
        QVERIFY(QDir(desk_->Path(QString())).mkdir(u"disco"_qs));
        InImport([&] {
            desk_->unwritable << desk_->Path(u"disco/contactos.adi_211500"_qs);
            Open(Lines(2).replace("\r\n", "\n"), u"disco/contactos.adi"_qs);
            QCOMPARE(desk_->Told().size(), 1);
            QVERIFY(desk_->Has(u"contactos.adi_211500"_qs)); // in our own folder
            QCOMPARE(Shown({u"Label3"_qs, u"Label6"_qs}), QString(desk_->Path(u"disco/contactos.adi"_qs) + u"|2"));

            desk_->unwritable << u"modificado_211500"_qs;
            Open(Lines(2), u"disco/contactos.adi"_qs);
            QCOMPARE(desk_->Told().last(),
                QString(u"XNo se puede escribir el archivo\n" + desk_->Path(u"modificado_211500"_qs)));
            QVERIFY(IsEnabled(u"Command1"_qs) && !IsEnabled(u"Command3"_qs));
        });
    }

    // --- The phone program

    void SummitsOrParks()
    {
        Start();
        InImport([&] {
            const auto ticks = [&] {
                return QString((desk_->Find<QAbstractButton>(u"Check1"_qs)->isChecked() ? u"S"_qs : u"-"_qs)
                    + (desk_->Find<QAbstractButton>(u"Check2"_qs)->isChecked() ? u"P"_qs : u"-"_qs));
            };
            const QStringList message{u"iNo puede ser SOTA y POTA simultaneamente!"_qs};
            desk_->Click(u"Check1"_qs);
            QCOMPARE(ticks(), u"S-"_qs);
            QCOMPARE(desk_->Told(), QStringList());
            desk_->Click(u"Check2"_qs);
            QCOMPARE(ticks(), u"-P"_qs);
            QCOMPARE(desk_->Told(), message);
            Open(header + Line("LU1ABC", "2115", "<NAME:7>ar-0001<COMMENT:7>ar-0002"));
            desk_->Click(u"Command3"_qs);
        });
        const QsoRow row = desk_->Rows().first();
        QCOMPARE((QStringList{row.SOTA, row.MYSOTA, row.POTA, row.IOTA, row.Obs}.join(u'|')),
            u"||AR-0001|AR-0002|ar-0002"_qs);
    }
};

TORDILLO_TEST(TestForm12)
#include "TestForm12.moc"
