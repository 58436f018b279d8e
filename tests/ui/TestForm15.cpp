// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include <QProgressBar>

// The window that writes the ADIF of all logs.
class TestForm15 : public DeskTest {
    Q_OBJECT

    void InBackup(const std::function<void()> &act) { InWindow("badif", act); }
    QString Target() const { return Path("todo.adi"); }
    QList<QByteArray> Lines() const { return Content("todo.adi").replace("\r\n", "\n").split('\n'); }
    void Save(const QString &path)
    {
        dialogs.files << (path.isNull() ? std::nullopt : std::optional(path));
        Click("Command1");
    }

private Q_SLOTS:
    void TheLogsAreListed()
    {
        Furnish(2);
        const auto inLog = [](int number, const QString &log) {
            return RowOf(u"NombreLog="_qs + log, SampleQso(number));
        };
        Store({RowOf(u"NombreLog=Vacío"_qs), inLog(3, u"antártida"_qs), inLog(4, u"Ñandú"_qs), inLog(5, u"Ñandú"_qs),
            inLog(9, {})});
        Start();
        InBackup([&] {
            QCOMPARE(form->windowTitle(), u"Back Up ..."_qs);
            const QString upward = u"antártida|Log inicial|Ñandú|Vacío"_qs,
                          downward = u"Vacío|Ñandú|Log inicial|antártida"_qs;
            QCOMPARE(Cells("ListView1", 0), upward);
            QCOMPARE(Cells("ListView1", 1), u"1|2|2|0"_qs);
            QCOMPARE(Texts("Label1 Label2"), u"4|5"_qs);
            QCOMPARE(Cells("List1", 0).section(u'|', 1, 1), u"Log inicial (2 QSOs)"_qs);
            QCOMPARE(Said(), QString());
            ClickTitle("ListView1", 0);
            QCOMPARE(Cells("ListView1", 0), upward);
            ClickTitle("ListView1", 0);
            QCOMPARE(Cells("ListView1", 0), downward);
            ClickTitle("ListView1", 1); // turns the direction only
            QCOMPARE(Cells("ListView1", 0), downward);
            ClickTitle("ListView1", 0);
            QCOMPARE(Cells("ListView1", 0), downward);
            Press(Qt::Key_Escape);
            QVERIFY(!form->isVisible());
        });
    }

    void AllLogsAreWritten()
    {
        Begin(2);
        InBackup([&] {
            Save(Target());
            const QList<RecordingDialogs::Shown> shown = dialogs.shown;
            QCOMPARE(shown[0].detail, QString(u"ADIF (*.adi)|" + Path("x").chopped(2) + u'|'));
            QVERIFY(shown[1].preset == Dialogs::Button::No);
            QCOMPARE(Said(), QString(u"-Exportar a ADIF ...|!" + Target() + u"\nGuardado!\n\nDesea verlo?"));
            QVERIFY(!form->isVisible());
        });
        QCOMPARE(Lines().size(), 5 + 2 + 2);
        QVERIFY(Lines()[6].startsWith("<STATION_CALLSIGN:6>LU9ZZZ<CALL:4>CX2A"));
        QVERIFY(Lines()[6].endsWith("<LOG_NAME:11>Log inicial<EOR>"));
        QCOMPARE(Lines().mid(7).join('|'), QByteArray("<EOF>|"));
    }

    void TheNameOfTheFile()
    {
        Begin(1);
        const QString question = u"?El archivo \n"_qs + Target() + u"\nya existe!\n\nsobregraba?"_qs;
        InBackup([&] {
            Save({});
            QCOMPARE(Told().size(), 1); // a cancel ends in silence
            Write("todo.adi", "viejo");
            Save(Target());
            QVERIFY(dialogs.shown.last().preset == Dialogs::Button::No);
            QCOMPARE(Told().mid(1), QStringList{question});
            QCOMPARE(Content("todo.adi"), QByteArray("viejo"));
            QVERIFY(form->isVisible());
            unwritable << u"todo.adi"_qs;
            dialogs.answers << true;
            Save(Target());
            QCOMPARE(
                Told().last(), QString(u"XEl ADIF no se pudo crear.\n\nNo se puede escribir el archivo\n" + Target()));
            QVERIFY(form->isVisible());
            unwritable.clear();
            dialogs.answers << true << false;
            Save(Path("todo")); // without an ending
            QCOMPARE(Told()[1], question);
            QCOMPARE(Lines().size(), 8);
        });
    }

    void MoreThanAnImportTakes()
    {
        Furnish();
        StoreMany(10000);
        Start();
        InBackup([&] { QCOMPARE(Said(), QString()); });
        Contact("CX1AA");
        InBackup([&] {
            QCOMPARE(Said(),
                u"!El ADIF tiene mas de 10.000 QSOs!\nNo podrá ser importado a Tordillo Compact, si para\n"
                "algún otro logger. Haga BackUp de la base."_qs);
            Save(Target());
            QCOMPARE(Lines().size(), 10008);
        });
    }

    void AFullDiskIsTold()
    {
        Begin(300);
        InBackup([&] {
            room = 40000;
            Save(Target());
            QCOMPARE(Told().last(),
                QString(u"XEl ADIF no está completo.\n\nNo se pudo terminar de escribir el archivo\n" + Target()
                    + u"\nNo space left on device"));
            QCOMPARE(Content("todo.adi").size(), 40000); // what fitted stays
            QVERIFY(form->isVisible() && Find("Command1")->isEnabled());
            room.reset();
            dialogs.answers << true;
            Save(Target());
            QCOMPARE(Lines().size(), 307);
        });
    }

    void ADatabaseThatFails()
    {
        Furnish();
        StoreMany(5000);
        Start();
        InBackup([&] {
            FaultVfs::Instance().FailReads(1, FaultVfs::forever);
            Save(Target());
            const QStringList told = Told().mid(1);
            HealDisk();
            QCOMPARE(told.size(), 1);
            QVERIFY2(
                told.first().startsWith(u"XEl ADIF no está completo.\n\nEl disco falló"), qPrintable(told.first()));
            QVERIFY(!Lines().contains("<EOF>"));
        });
    }

    void StoppedByTheOperator()
    {
        for (const bool close : {false, true}) {
            init();
            Furnish();
            StoreMany(20000);
            Start();
            InBackup([&] {
                Told();
                const auto hand = Hand([&] { return Find<QProgressBar>("ProgressBar1")->value() > 0; },
                    [&] { close ? static_cast<void>(form->close()) : Press(Qt::Key_Escape); });
                Save(Target());
                QVERIFY(!hand->isActive());
                QCOMPARE(Told().mid(1), QStringList{u"XEl ADIF no está completo.\n\nFue detenido."_qs});
                QCOMPARE(form->isVisible(), !close);
                const auto lines = Lines().size();
                QVERIFY2(lines > 500 && lines < 20000, qPrintable(QString::number(lines)));
                if (close)
                    return;
                Save({});
                QCOMPARE(Find<QProgressBar>("ProgressBar1")->value(), 0);
            });
        }
    }

    void ABackupComesInAgain()
    {
        Furnish();
        const QsoRow row = RowOf(u"Obs= <CALL:3>XXX ñandú <EOR> \n.;MiGrid=GF05AB;SuGrid=FF57;Nombre_Sat=AO-7;"
                                 "SOTA=LUR/C-1;MYSOTA=LUR/D-1;POTA=AR-1;Modo=Echo IP;NombreLog=Campo"_qs,
            SampleQso(1));
        Store({row});
        Start();
        InBackup([&] { Save(Target()); });
        InWindow("iadif", [&] {
            Save(Target());
            QCOMPARE(Texts("Label4 Label9"), u"Tordillo Compacto|1"_qs);
            Click("Command3");
        });
        QCOMPARE(Shown(Rows().last()),
            Shown(RowOf(u"NombreLog=Log inicial;LdA=0;Argento="_qs, row))); // what the file does not carry
    }
};

TORDILLO_TEST(TestForm15)
#include "TestForm15.moc"
