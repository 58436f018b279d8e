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
        QCOMPARE(lines.size(), 5 + 2 + 2);
        QCOMPARE(lines[7] + '|' + lines[8], QByteArray("<EOF>|"));
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

    void MoreThanAnImportTakes()
    {
        desk_->Furnish();
        StoreMany(10001);
        desk_->Start();
        InBackup([&] {
            const QStringList warning{
                u"!El ADIF tiene mas de 10.000 QSOs!\nNo podrá ser importado a Tordillo Compact, si para\n"
                "algún otro logger. Haga BackUp de la base."_qs};
            QCOMPARE(desk_->Told(), warning);
            Save();
            QCOMPARE(Lines().size(), 10008);
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

    void StoppedByTheOperator()
    {
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
                desk_->Press(Qt::Key_Escape);
            });
            operatorHand.start(0);
            Save();
            QVERIFY(!operatorHand.isActive());
            QCOMPARE(desk_->Told().mid(1), QStringList{u"XEl ADIF no está completo.\n\nFue detenido."_qs});
            QVERIFY(form_->isVisible());
            const auto lines = Lines().size();
            QVERIFY2(lines > 500 && lines < 20000, qPrintable(QString::number(lines)));
        });
    }
};

TORDILLO_TEST(TestForm15)
#include "TestForm15.moc"
