// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QHeaderView>
#include <QListWidget>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <QTreeView>

// The window that writes the ADIF of all logs.
class TestForm15 : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;
    QWidget *form_ = nullptr;

    void InBackup(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("badif"); },
            [&] {
                form_ = desk_->Front();
                desk_->Advance(0);
                act();
                if (form_->isVisible())
                    form_->close();
            });
    }
    QString Path() const { return desk_->Path(u"todo.adi"_qs); }
    QList<QByteArray> Lines() const { return desk_->Content(u"todo.adi"_qs).replace("\r\n", "\n").split('\n'); }
    void Save()
    {
        desk_->dialogs.files << Path();
        desk_->Click(u"Command1"_qs);
    }
    QString Column(int column) const
    {
        QStringList cells;
        const auto *model = desk_->Find<QTreeView>(u"ListView1"_qs)->model();
        for (int row = 0; row < model->rowCount(); ++row)
            cells << model->index(row, column).data().toString();
        return cells.join(u'|');
    }
    void ClickTitle(int column) const
    {
        QHeaderView *title = desk_->Find<QTreeView>(u"ListView1"_qs)->header();
        QTest::mouseClick(title->viewport(), Qt::LeftButton, {},
            QPoint(title->sectionViewportPosition(column) + 8, title->height() / 2));
    }
    void StoreMany(int count) const
    {
        QVERIFY(
            RawDatabase(desk_->Path(u"base0.mdb"_qs))
                .Run("WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c WHERE n<" + QByteArray::number(count)
                    + ") INSERT INTO Tabla1 (Modo, \"Nombre Log\", MyCall, Estacion, Fecha, Hora, Banda) "
                      "SELECT 'CW', 'Log inicial', 'LU9ZZZ', 'LU'||n, '2025-01-01', time(n, 'unixepoch'), '40m' "
                      "FROM c"));
    }
    static QsoRow Contact(int number, const QString &log)
    {
        QsoRow row = Desk::SampleQso(number);
        row.NombreLog = log;
        return row;
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    void TheLogsAreListed()
    {
        desk_->Furnish(2);
        QsoRow marker;
        marker.NombreLog = u"Vacío"_qs;
        QsoRow nameless = Contact(9, {});
        desk_->Store({marker, Contact(3, u"antártida"_qs), Contact(4, u"Ñandú"_qs), Contact(5, u"Ñandú"_qs), nameless});
        desk_->Start();
        InBackup([&] {
            QCOMPARE(form_->windowTitle(), u"Back Up ..."_qs);
            QCOMPARE(Column(0), u"antártida|Log inicial|Ñandú|Vacío"_qs);
            QCOMPARE(Column(1), u"1|2|2|0"_qs);
            QCOMPARE(desk_->Text(u"Label1"_qs), u"4"_qs);
            QCOMPARE(desk_->Text(u"Label2"_qs), u"5"_qs);
            QCOMPARE(desk_->Find<QListWidget>(u"List1"_qs)->item(1)->text(), u"Log inicial (2 QSOs)"_qs);
            QCOMPARE(desk_->Told(), QStringList());
            ClickTitle(0);
            QCOMPARE(Column(0), u"antártida|Log inicial|Ñandú|Vacío"_qs);
            ClickTitle(0);
            QCOMPARE(Column(0), u"Vacío|Ñandú|Log inicial|antártida"_qs);
            ClickTitle(1); // turns the direction only
            QCOMPARE(Column(0), u"Vacío|Ñandú|Log inicial|antártida"_qs);
            ClickTitle(0);
            QCOMPARE(Column(0), u"Vacío|Ñandú|Log inicial|antártida"_qs);
            desk_->Press(Qt::Key_Escape);
            QVERIFY(!form_->isVisible());
        });
    }

    void AllLogsAreWritten()
    {
        desk_->Furnish(2);
        QsoRow satellite = Contact(3, u"Campo"_qs), silent = Contact(4, u"Campo"_qs);
        satellite.Nombre_Sat = u"AO-7"_qs;
        satellite.IOTA = u"AR-0001"_qs;
        satellite.LdA = u"2"_qs;
        satellite.Modo = u"Echo IP"_qs;
        silent.MyCall.clear();
        desk_->Store({satellite, silent});
        desk_->Start();
        InBackup([&] {
            Save();
            const QList<RecordingDialogs::Shown> shown = desk_->dialogs.shown;
            QCOMPARE(shown[0].text, u"Exportar a ADIF ..."_qs);
            QCOMPARE(shown[0].detail, QString(u"ADIF (*.adi)|" + desk_->Path(u"x"_qs).chopped(2) + u'|'));
            QCOMPARE(desk_->Told().mid(1), QStringList{QString(u'!' + Path() + u"\nGuardado!\n\nDesea verlo?")});
            QVERIFY(shown[1].preset == Dialogs::Button::No);
            QVERIFY(!form_->isVisible());
        });
        const QList<QByteArray> lines = Lines();
        QCOMPARE(lines.size(), 5 + 3 + 2);
        QCOMPARE(lines.first(5).join('|'),
            QByteArray("<PROGRAMID:17>Tordillo Compacto|<PROGRAMVERSION:6>2.1.34|<ADIF_VER:4>3.04|"
                       "<CREATED_TIMESTAMP:15>20261124 211500|<EOH>"));
        QVERIFY(lines[5].startsWith("<STATION_CALLSIGN:6>LU9ZZZ<CALL:4>CX1A<MODE:3>SSB<BAND:3>40m<FREQ:5>7.090"
                                    "<QSO_DATE:8>20260101<TIME_ON:4>0001"));
        QVERIFY(lines[6].endsWith("<LOG_NAME:11>Log inicial<EOR>"));
        QVERIFY(lines[7].contains("<MODE:7>Echo IP<BAND:3>20m") && lines[7].contains("<SAT_NAME:4>AO-7"));
        QVERIFY(lines[7].endsWith("<IOTA_REF:7>AR-0001<QSL_RCVD:1>Y<LOG_NAME:5>Campo<EOR>"));
        QCOMPARE(lines[8] + '|' + lines[9], QByteArray("<EOF>|"));
    }

    void TheNameOfTheFile()
    {
        desk_->Furnish(1);
        desk_->Start();
        const QString question = u"?El archivo \n"_qs + Path() + u"\nya existe!\n\nsobregraba?"_qs;
        InBackup([&] {
            desk_->dialogs.files << std::nullopt;
            desk_->Click(u"Command1"_qs);
            QCOMPARE(desk_->Told().size(), 1); // a cancel ends in silence
            desk_->Write(u"todo.adi"_qs, "viejo");
            Save();
            QVERIFY(desk_->dialogs.shown.last().preset == Dialogs::Button::No);
            QCOMPARE(desk_->Told().mid(1), QStringList{question});
            QCOMPARE(desk_->Content(u"todo.adi"_qs), QByteArray("viejo"));
            QVERIFY(form_->isVisible());
            desk_->dialogs.answers << true << false;
            desk_->dialogs.files << desk_->Path(u"todo"_qs); // without an ending
            desk_->Click(u"Command1"_qs);
            QCOMPARE(desk_->Told()[1], question);
            QCOMPARE(Lines().size(), 8);
        });
    }

    void MoreThanAnImportTakes_data()
    {
        QTest::addColumn<int>("count");
        QTest::newRow("10,000") << 10000;
        QTest::newRow("10,001") << 10001;
    }
    void MoreThanAnImportTakes()
    {
        QFETCH(int, count);
        desk_->Furnish();
        StoreMany(count);
        desk_->Start();
        InBackup([&] {
            QStringList warning;
            if (count > 10000)
                warning << u"!El ADIF tiene mas de 10.000 QSOs!\nNo podrá ser importado a Tordillo Compact, si para\n"
                           "algún otro logger. Haga BackUp de la base."_qs;
            QCOMPARE(desk_->Told(), warning);
            Save();
            QCOMPARE(Lines().size(), count + 7);
        });
        if (count > 10000)
            return;
        QVERIFY(RawDatabase(desk_->Path(u"base0.mdb"_qs)).Run("DELETE FROM Tabla1 WHERE Modo<>''"));
        desk_->InModal([&] { desk_->Menu("iadif"); },
            [&] {
                desk_->dialogs.files << Path();
                desk_->Click(u"Command1"_qs);
                QCOMPARE(desk_->Text(u"Label9"_qs), u"10000"_qs);
                desk_->Front()->close();
            });
    }

    // --- What goes wrong

    void AFullDiskIsTold()
    {
        desk_->Furnish(300);
        desk_->Start();
        InBackup([&] {
            desk_->room = 40000;
            Save();
            QCOMPARE(desk_->Told().mid(1),
                QStringList{QString(u"XEl ADIF no está completo.\n\nNo se pudo terminar de escribir el archivo\n"
                    + Path() + u"\nNo space left on device")});
            QCOMPARE(desk_->Content(u"todo.adi"_qs).size(), 40000); // what fitted stays
            QVERIFY(form_->isVisible() && desk_->Find(u"Command1"_qs)->isEnabled());
            desk_->room.reset();
            desk_->dialogs.answers << true;
            Save();
            QCOMPARE(Lines().size(), 307);
        });
    }

    void AFileThatCannotBeMade()
    {
        desk_->Furnish(1);
        desk_->Start();
        InBackup([&] {
            desk_->unwritable << u"todo.adi"_qs;
            Save();
            QCOMPARE(desk_->Told().mid(1),
                QStringList{QString(u"XEl ADIF no se pudo crear.\n\nNo se puede escribir el archivo\n" + Path())});
            QVERIFY(form_->isVisible());
        });
    }

    void ADatabaseThatFails()
    {
        desk_->Furnish();
        StoreMany(5000);
        desk_->Start();
        InBackup([&] {
            FaultVfs::Instance().FailReads(1, FaultVfs::forever);
            Save();
            const QStringList told = desk_->Told().mid(1);
            Desk::HealDisk();
            QCOMPARE(told.size(), 1);
            QVERIFY2(
                told.first().startsWith(u"XEl ADIF no está completo.\n\nEl disco falló"), qPrintable(told.first()));
            QVERIFY(!Lines().contains("<EOF>"));
        });
    }

    void StoppedByTheOperator_data()
    {
        QTest::addColumn<bool>("close");
        QTest::newRow("Esc") << false;
        QTest::newRow("closing") << true;
    }
    void StoppedByTheOperator()
    {
        QFETCH(bool, close);
        desk_->Furnish();
        StoreMany(20000);
        desk_->Start();
        InBackup([&] {
            desk_->Told();
            QTimer operatorHand;
            connect(&operatorHand, &QTimer::timeout, &operatorHand, [&] {
                if (desk_->Find<QProgressBar>(u"ProgressBar1"_qs)->value() == 0)
                    return;
                operatorHand.stop();
                if (close)
                    form_->close();
                else
                    desk_->Press(Qt::Key_Escape);
            });
            operatorHand.start(0);
            Save();
            QVERIFY(!operatorHand.isActive());
            QCOMPARE(desk_->Told().mid(1), QStringList{u"XEl ADIF no está completo.\n\nFue detenido."_qs});
            QCOMPARE(form_->isVisible(), !close);
            const auto lines = Lines().size();
            QVERIFY2(lines > 500 && lines < 20000, qPrintable(QString::number(lines)));
        });
    }

    // --- There and back

    void ABackupComesInAgain()
    {
        desk_->Furnish();
        QList<QsoRow> rows;
        for (int number = 1; number <= 60; ++number) {
            QsoRow row = Contact(number, number % 3 ? u"Log inicial"_qs : u"Campo"_qs);
            row.Estacion = u"LU%1%2"_qs.arg(number % 10).arg(QChar(u'A' + number % 26)) + u"AB";
            row.Argento = number % 26 == 0 ? u"Capital"_qs : QString();
            row.Obs = u" <CALL:3>XXX %1 ñandú <EOR> \n %2"_qs.arg(number).arg(QString(number, u'.'));
            row.MiGrid = u"GF05AB"_qs;
            row.SuGrid = number % 2 ? u"FF57"_qs : QString();
            row.Nombre_Sat = number % 5 ? QString() : u"AO-%1"_qs.arg(number);
            row.SOTA = number % 7 ? QString() : u"LUR/C-%1"_qs.arg(number);
            row.MYSOTA = number % 4 ? QString() : u"LUR/D-%1"_qs.arg(number);
            row.POTA = number % 6 ? QString() : u"AR-%1"_qs.arg(number);
            row.Modo = QStringList{u"SSB"_qs, u"CW"_qs, u"DVoice"_qs, u"Echo IP"_qs, u"DV IP"_qs}[number % 5];
            rows << row;
        }
        desk_->Store(rows);
        desk_->Start();
        InBackup([&] { Save(); });
        desk_->dialogs.inputs << u"Nuevo, vuelto"_qs;
        desk_->Menu("nuevo");
        desk_->InModal([&] { desk_->Menu("iadif"); },
            [&] {
                desk_->dialogs.files << Path();
                desk_->Click(u"Command1"_qs);
                QCOMPARE(desk_->Text(u"Label4"_qs), u"Tordillo Compacto"_qs);
                QCOMPARE(desk_->Text(u"Label9"_qs), u"60"_qs);
                desk_->Click(u"Command3"_qs);
            });
        QList<QsoRow> back;
        for (const QsoRow &row : desk_->Rows())
            if (row.NombreLog == u"Nuevo, vuelto")
                back.prepend(row); // they came in newest first
        QCOMPARE(back.size(), rows.size());
        for (qsizetype i = 0; i < rows.size(); ++i)
            for (const QsoColumns::Column &column : QsoColumns::all) {
                // Not carried by the file: the log, the state of the service, and the province, which the call tells.
                if (QList<QString QsoRow::*>{&QsoRow::NombreLog, &QsoRow::LdA, &QsoRow::Argento}.contains(column.field))
                    continue;
                QVERIFY2(back[i].*column.field == rows[i].*column.field,
                    qPrintable(u"%1 %2: %3"_qs.arg(i).arg(QString::fromLatin1(column.sql), back[i].*column.field)));
            }
    }
};

TORDILLO_TEST(TestForm15)
#include "TestForm15.moc"
