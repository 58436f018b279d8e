// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QMenu>
#include <QRandomGenerator>
#include <QTreeView>

// How the program comes up, over good, missing and damaged files, and how it ends.
class TestForm1Start : public DeskTest {
    Q_OBJECT

    void FirstRun(const std::function<void()> &act)
    {
        QVERIFY(Load());
        Show();
        InModal([&] { Advance(900); }, act);
    }
    bool ArchivoEnabled() const { return Main().findChild<QMenu *>(u"archivo"_qs)->isEnabled(); }
    int RowsShown() const { return Find<QTreeView>("ListView2")->model()->rowCount(); }
    QString Tuned() const { return Texts("Combo1 mhz Text1 Label7"); }
    void AnswerAndLeave(bool byFrame, bool yes)
    {
        dialogs.answers = QList<bool>{yes};
        if (byFrame)
            Main().close();
        else
            Menu("salir");
    }

private Q_SLOTS:
    void SavingTheFirstRunMakesConfigurationAndLog()
    {
        FirstRun([&] {
            Type("lu1abc");
            Press(Qt::Key_Return);
        });
        QVERIFY(!ended);
        QVERIFY(ArchivoEnabled());
        QCOMPARE(Content("config.ini").count("\r\n"), 25);
        for (const char *line : {"Estacion=LU1ABC\r\n", "LogenUso=Log inicial\r\n", "Puerto  =\r\n"})
            QVERIFY2(Content("config.ini").contains(line), line);
        QCOMPARE(Value("SELECT group_concat(\"Nombre Log\"||coalesce(Modo,'')) FROM Tabla1"), u"Log inicial"_qs);
        QCOMPARE(Text("Frame1"), u"Log inicial"_qs);
        QCOMPARE(RowsShown(), 0);
        Contact("CX1AA");
        QCOMPARE(Rows().size(), 1);
        Start();
        QCOMPARE(Text("Label6"), u"Log: Log inicial, con 1 QSOs"_qs);
        QCOMPARE(Text("Label2"), u"LU1ABC"_qs);
        QCOMPARE(Said(), QString());
    }

    void SavingTheFirstRunKeepsADatabaseThatIsThere()
    {
        Furnish(3);
        QVERIFY(QFile::remove(Path("config.ini")));
        const QByteArray before = Content("base0.mdb");
        FirstRun([&] {
            Type("LU1ABC");
            Click("Command1");
        });
        QCOMPARE(Rows().size(), 3);
        QVERIFY(Content("base0.mdb") == before);
        QCOMPARE(RowsShown(), 0); // until a log is opened or the program started again
        Start();
        QCOMPARE(RowsShown(), 3);
    }

    void AFirstRunThatCannotBeSavedCanBeTriedAgain()
    {
        FirstRun([&] {
            Type("LU1ABC");
            FaultVfs::Instance().SetRoom(0);
            Press(Qt::Key_Return);
            QCOMPARE(dialogs.shown.size(), 1);
            QVERIFY(Said().contains(u"No queda lugar"_qs));
            QVERIFY(!Has("config.ini") && !Has("base0.mdb"));
            QVERIFY(Front()->isVisible());
            HealDisk();
            Press(Qt::Key_Return);
        });
        QVERIFY(Has("config.ini") && Has("base0.mdb"));
    }

    void CancellingTheFirstRunLeavesNothing()
    {
        FirstRun([&] {
            Type("lu1abc");
            QCOMPARE(Front()->objectName() + Text("Text1"), u"Form2LU1ABC"_qs);
            Click("Command2");
        });
        QVERIFY(ended == 0 && !Has("config.ini") && !Has("base0.mdb"));
        QCOMPARE(Said(), QString());
    }

    void TheWindowComesFirstAndTheLogOnce()
    {
        Furnish(21);
        QVERIFY(Load());
        QCOMPARE(Content("debug.txt"), QByteArray("1\r\n2\r\n3\r\n4\r\n"));
        Show();
        QCOMPARE(Main().windowTitle(), QString(u"Tordillo Compact V"_qs + Logbook::AppVersion));
        QCOMPARE(Tuned(), u"SSB|3|650|80m"_qs);
        QVERIFY(!ArchivoEnabled());
        Advance(899);
        QCOMPARE(RowsShown(), 0);
        Advance(1);
        QCOMPARE(RowsShown(), 20);
        QVERIFY(ArchivoEnabled());
        Main().hide();
        Show();
        Advance(60000);
        QCOMPARE(marks, QStringList({u"timer2"_qs, u"page-shown"_qs}));
    }

    void AnOperatorQuickerThanTheStartLosesNothing()
    {
        Furnish();
        const QByteArray before = Content("config.ini");
        QVERIFY(Load());
        Show();
        Contact("CX1AA");
        QCOMPARE(Rows().value(0).NombreLog, u"Log inicial"_qs);
        QCOMPARE(Rows().value(0).MyCall, u"LU9ZZZ"_qs);
        QVERIFY(Load());
        Show();
        AnswerAndLeave(true, true);
        QVERIFY(ended == 0);
        QCOMPARE(Content("config.ini"), before);
    }

    void TheTwoWaysOutAreNotAlike()
    {
        for (int way = 0; way < 4; ++way) {
            const bool byFrame = way / 2, yes = way % 2;
            init();
            Begin();
            Click("Check3");
            Click("Check4");
            Fill("MYSOTA", "lur/c-001");
            Fill("MY_POTA", "ar-0001");
            AnswerAndLeave(byFrame, yes);
            QCOMPARE(dialogs.shown.value(0).preset, Dialogs::Button::No);
            QCOMPARE(Said(), u"?Sale de Tordillo Compacto?"_qs);
            QVERIFY(ended.has_value() == yes);
            QCOMPARE(Has("memModo.cfg"), yes);
            const bool saved = byFrame && yes;
            for (const char *line : {"NoBorrar=1", "Activac_=1", "MySOTA__=LUR/C-001", "MyPOTA__=AR-0001"})
                QCOMPARE(Content("config.ini").contains(line), saved);
            if (!yes)
                QVERIFY(Main().isVisible());

            Start();
            QCOMPARE(Ticked("Check3"), saved);
            QCOMPARE(Find("activador")->isVisible(), saved);
            QCOMPARE(Text("MYSOTA"), saved ? u"LUR/C-001"_qs : QString());
        }
    }

    void TheFieldsComeBackAfterARestart()
    {
        Begin();
        Choose("Combo1", "CW");
        Choose("mhz", "14");
        Fill("Text1", "025");
        Click("Check1");
        Contact("CX1AA");
        AnswerAndLeave(false, true);
        Start();
        QCOMPARE(Tuned(), u"CW|14|025|20m"_qs);
        QCOMPARE(Text("RSE") + Text("RSR"), u"599599"_qs);
        QVERIFY(Ticked("Check1"));
        QCOMPARE(Text("Label11") + Text("Hora"), u"LU21:15"_qs);
        QCOMPARE(Focus(), u"Corresponsal"_qs);
    }

    void MemoriesHaveTheirOrder()
    {
        using Memories = std::vector<std::pair<Words, QByteArray>>;
        const std::pair<Words, QByteArray> last{"mem.ini", "7.100\r\nxx\r\n 0 \r\n\r\n"};
        const std::pair<Memories, QString> cases[] = {{{last}, u"SSB|7|100|xx"_qs},
            {{last, {"memKhz.cfg", "200\r\n"}}, u"SSB|7|200|40m"_qs}, // the last exit wins
            {{last, {"memMhz.cfg", "3\r\n"}}, u"SSB|3|100|80m"_qs}, // out of band, in silence
            {{{"mem.ini", "7100\r\n40m\r\n0\r\n"}}, u"SSB|3||40m"_qs}, {{{"memqSat.cfg", " 1 \r\n"}}, u"SSB|3||80m"_qs},
            {{{"memsat.ini", "FO-29\r\n"}}, u"SSB|3|650|80m"_qs},
            {{{"memsat.ini", "FO-29\r\n"}, {"memqSat.cfg", "1\r\n"}, {"memModo.cfg", "Echo\r\n"}},
                u"Echo|145|550|2m"_qs}};
        for (const auto &[files, tuned] : cases) {
            init();
            Furnish();
            for (const auto &[name, content] : files)
                Write(name, content);
            Start();
            QCOMPARE(Tuned(), tuned);
            QCOMPARE(Said() + Focus(), u"Corresponsal"_qs);
        }
    }

    void ACatalogueIsMadeWhereThereIsNoneAndReadPastBadLines()
    {
        Begin();
        QCOMPARE(Content("satelites.txt").count("\r\n"), 16);
        QCOMPARE(Find<QComboBox>("Combo3")->count(), 16);
        Write("satelites.txt", "basura;x\r\nXX-1;70cm;2m;FM;67.0;435.250\r\n\r\nXX-2;2m;70cm;SSB; \r\n");
        Start();
        QCOMPARE(Find<QComboBox>("Combo3")->count(), 2);
        Click("Check2");
        Choose("Combo3", "XX-1");
        QCOMPARE(Tuned(), u"FM|435|250|70cm"_qs);
        Fill("Combo3", "XX-2"); // typed and left: no click in the list
        Find("Obs")->setFocus();
        QCOMPARE(Tuned() + Focus(), u"FM|435|250|70cmObs"_qs);
    }

    void AnOldDatabaseIsBroughtUpToDate()
    {
        Furnish(1);
        Sql("ALTER TABLE Tabla1 DROP COLUMN SOTA");
        Start();
        Fill("SOTA", "lur/c-001");
        Contact("CX1AA");
        QCOMPARE(Said() + LastStored(&QsoRow::SOTA), u"LUR/C-001"_qs);
    }

    void DamagedFilesCostOnlyThemselves()
    {
        QByteArray random(64 << 10, Qt::Uninitialized);
        QRandomGenerator generator(2026);
        for (char &byte : random)
            byte = char(generator.bounded(256));
        for (const QByteArray &content : {random, QByteArray("\0", 1)}) { // the second made a line without end
            init();
            Furnish(3);
            for (const QString &name : {u"mem.ini"_qs, u"memModo.cfg"_qs, u"memMhz.cfg"_qs, u"memKhz.cfg"_qs,
                     u"memqSat.cfg"_qs, u"memsat.ini"_qs, u"satelites.txt"_qs, u"dxcc.txt"_qs}) {
                Write(name, content);
                if (content.size() == 1)
                    QVERIFY(QFile::resize(Path(name), name.endsWith(u".txt") ? 100 << 20 : 20 << 20));
            }
            QElapsedTimer timer;
            timer.start();
            Start();
            QVERIFY2(timer.elapsed() < 10000, "the start took too long");
            QCOMPARE(Said(), QString());
            QCOMPARE(RowsShown(), 3);
            QVERIFY(Text("mhz").size() <= 40 && Text("Combo1").size() <= 40);
            QVERIFY(Main().minimumSizeHint().width() <= 1366);
            Put("Corresponsal", "CX1AA");
            Click("Command2");
            QCOMPARE(Said(), QString());
            QCOMPARE(Rows().value(3).MyCall, u"LU9ZZZ"_qs);
        }
    }

    void ADamagedConfigurationStillStoresInALogThatIsFound()
    {
        for (const QByteArray content : {"Estacion=LU9ZZZ\r\nbasura\r\n", ""}) {
            init();
            Furnish(3);
            Write("config.ini", content);
            Start();
            QCOMPARE(Said(), QString());
            QCOMPARE(Text("Label2"), content.isEmpty() ? QString() : u"LU9ZZZ"_qs);
            Contact("CX1AA");
            QCOMPARE(Said(), QString());
            QCOMPARE(Rows().value(3).NombreLog, u"Log inicial"_qs);
            QCOMPARE(Text("Label6"), u"Log: Log inicial, con 4 QSOs"_qs);
            QCOMPARE(Text("Frame1"), u"Log inicial"_qs);
        }
    }

    void ADatabaseThatCannotBeUsedEndsTheStartUntouched()
    {
        const QByteArray text = QByteArray("una carta cualquiera\r\n").repeated(100);
        const QString foreign = u"no es una base de datos de Tordillo Compact"_qs;
        // Whether there is a configuration, the content of the database (null: no file), and what is said.
        const std::tuple<bool, QByteArray, QString> cases[] = {
            {true, QByteArray(), u"No se encuentra la base de datos"_qs}, {true, text, foreign}, {false, text, foreign},
            {true, "", u"vacío"_qs},
            {true, QByteArray("SQLite format 3\0", 16).leftJustified(8192, 'x'), u"dañada"_qs}};
        for (const auto &[config, content, said] : cases) {
            init();
            if (config)
                Write("config.ini", "Estacion=LU9ZZZ\r\nLogenUso=Log inicial\r\n");
            if (!content.isNull())
                Write("base0.mdb", content);
            QVERIFY(!Load());
            QCOMPARE(dialogs.shown.size(), 1);
            const QString told = Said();
            for (const QString &part : {u"X"_qs, said, Path("base0.mdb")})
                QVERIFY2(told.contains(part), qPrintable(told));
            QCOMPARE(Has("base0.mdb"), !content.isNull());
            QVERIFY(Content("base0.mdb") == content);
        }
    }

    void ALockedDatabaseIsToldAndWaitedFor()
    {
        Furnish(3);
        {
            RawDatabase other(Path("base0.mdb"));
            QVERIFY(other.Run("BEGIN EXCLUSIVE"));
            QVERIFY(Load());
            QCOMPARE(dialogs.shown.size(), 1);
            QVERIFY(Said().contains(u"en uso por otro programa"_qs));
        }
        Show();
        Advance(1000);
        QCOMPARE(Said(), QString());
        QCOMPARE(RowsShown(), 3);
    }
};

TORDILLO_TEST(TestForm1Start)
#include "TestForm1Start.moc"
