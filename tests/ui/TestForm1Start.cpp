// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QMenu>
#include <QRandomGenerator>
#include <QTest>
#include <QTreeView>

// How the program comes up, over good, missing and damaged files, and how it ends.
class TestForm1Start : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    void FirstRun(const std::function<void()> &act)
    {
        QVERIFY(desk_->Load());
        desk_->Show();
        desk_->InModal([&] { desk_->Advance(900); }, act);
    }
    bool ArchivoEnabled() const { return desk_->Main().findChild<QMenu *>(u"archivo"_qs)->isEnabled(); }
    int RowsShown() const { return desk_->Find<QTreeView>(u"ListView2"_qs)->model()->rowCount(); }
    // Mode, frequency, band.
    QString Tuned() const
    {
        return desk_->Text(u"Combo1"_qs) + u' ' + desk_->Text(u"mhz"_qs) + u'.' + desk_->Text(u"Text1"_qs) + u' '
            + desk_->Text(u"Label7"_qs);
    }
    void AnswerAndLeave(bool byFrame, bool yes)
    {
        desk_->dialogs.answers = QList<bool>{yes};
        if (byFrame)
            desk_->Main().close();
        else
            desk_->Menu("salir");
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    // --- The first run

    void SavingTheFirstRunMakesConfigurationAndLog()
    {
        FirstRun([&] {
            desk_->Type(u"lu1abc"_qs);
            desk_->Press(Qt::Key_Return);
        });
        QVERIFY(!desk_->ended);
        QVERIFY(ArchivoEnabled());
        QCOMPARE(desk_->Content(u"config.ini"_qs).count("\r\n"), 25);
        for (const char *line : {"Estacion=LU1ABC\r\n", "LogenUso=Log inicial\r\n", "Puerto  =\r\n"})
            QVERIFY2(desk_->Content(u"config.ini"_qs).contains(line), line);
        QCOMPARE(RawDatabase(desk_->Path(u"base0.mdb"_qs))
                     .Value("SELECT group_concat(\"Nombre Log\"||coalesce(Modo,'')) FROM Tabla1"),
            u"Log inicial"_qs);
        QCOMPARE(desk_->Text(u"Frame1"_qs), u"Log inicial"_qs);
        QCOMPARE(RowsShown(), 0);
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(desk_->Rows().size(), 1);
        desk_->Start();
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 1 QSOs"_qs);
        QCOMPARE(desk_->Text(u"Label2"_qs), u"LU1ABC"_qs);
        QCOMPARE(desk_->Told(), QStringList());
    }

    void SavingTheFirstRunKeepsADatabaseThatIsThere()
    {
        desk_->Furnish(3);
        QVERIFY(QFile::remove(desk_->Path(u"config.ini"_qs)));
        const QByteArray before = desk_->Content(u"base0.mdb"_qs);
        FirstRun([&] {
            desk_->Type(u"LU1ABC"_qs);
            desk_->Click(u"Command1"_qs);
        });
        QCOMPARE(desk_->Rows().size(), 3);
        QVERIFY(desk_->Content(u"base0.mdb"_qs) == before);
        QCOMPARE(RowsShown(), 0); // until a log is opened or the program started again
        desk_->Start();
        QCOMPARE(RowsShown(), 3);
    }

    void AFirstRunThatCannotBeSavedCanBeTriedAgain()
    {
        FirstRun([&] {
            desk_->Type(u"LU1ABC"_qs);
            FaultVfs::Instance().SetRoom(0);
            desk_->Press(Qt::Key_Return);
            const QStringList told = desk_->Told();
            QCOMPARE(told.size(), 1);
            QVERIFY2(told.first().contains(u"No queda lugar"_qs), qPrintable(told.first()));
            QVERIFY(!desk_->Has(u"config.ini"_qs) && !desk_->Has(u"base0.mdb"_qs));
            QVERIFY(desk_->Front()->isVisible());
            Desk::HealDisk();
            desk_->Press(Qt::Key_Return);
        });
        QVERIFY(desk_->Has(u"config.ini"_qs) && desk_->Has(u"base0.mdb"_qs));
    }

    // --- The order of the start

    void TheWindowComesFirstAndTheLogOnce()
    {
        desk_->Furnish(21);
        QVERIFY(desk_->Load());
        QCOMPARE(desk_->Content(u"debug.txt"_qs), QByteArray("1\r\n2\r\n3\r\n4\r\n"));
        desk_->Show();
        QCOMPARE(desk_->Main().windowTitle(), QString(u"Tordillo Compact V"_qs + Logbook::AppVersion));
        QCOMPARE(Tuned(), u"SSB 3.650 80m"_qs);
        QVERIFY(!ArchivoEnabled());
        desk_->Advance(899);
        QCOMPARE(RowsShown(), 0);
        desk_->Advance(1);
        QCOMPARE(RowsShown(), 20);
        QVERIFY(ArchivoEnabled());
        desk_->Main().hide();
        desk_->Show();
        desk_->Advance(60000);
        QCOMPARE(desk_->marks, QStringList({u"timer2"_qs, u"page-shown"_qs}));
    }

    void AnOperatorQuickerThanTheStartLosesNothing()
    {
        desk_->Furnish();
        const QByteArray before = desk_->Content(u"config.ini"_qs);
        QVERIFY(desk_->Load());
        desk_->Show();
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(desk_->Rows().value(0).NombreLog, u"Log inicial"_qs);
        QCOMPARE(desk_->Rows().value(0).MyCall, u"LU9ZZZ"_qs);
        QVERIFY(desk_->Load());
        desk_->Show();
        AnswerAndLeave(true, true);
        QVERIFY(desk_->ended == 0);
        QCOMPARE(desk_->Content(u"config.ini"_qs), before);
    }

    // --- The ends

    void TheTwoWaysOutAreNotAlike_data()
    {
        QTest::addColumn<bool>("byFrame");
        QTest::addColumn<bool>("yes");
        QTest::newRow("frame, no") << true << false;
        QTest::newRow("frame, yes") << true << true;
        QTest::newRow("menu, no") << false << false;
        QTest::newRow("menu, yes") << false << true;
    }
    void TheTwoWaysOutAreNotAlike()
    {
        QFETCH(bool, byFrame);
        QFETCH(bool, yes);
        desk_->Furnish();
        desk_->Start();
        desk_->Click(u"Check3"_qs);
        desk_->Click(u"Check4"_qs);
        desk_->Fill(u"MYSOTA"_qs, u"lur/c-001"_qs);
        desk_->Fill(u"MY_POTA"_qs, u"ar-0001"_qs);
        AnswerAndLeave(byFrame, yes);
        QCOMPARE(desk_->dialogs.shown.value(0).preset, Dialogs::Button::No);
        QCOMPARE(desk_->Told(), QStringList({u"?Sale de Tordillo Compacto?"_qs}));
        QVERIFY(desk_->ended.has_value() == yes);
        QCOMPARE(desk_->Has(u"memModo.cfg"_qs), yes);
        const bool saved = byFrame && yes;
        for (const char *line : {"NoBorrar=1", "Activac_=1", "MySOTA__=LUR/C-001", "MyPOTA__=AR-0001"})
            QCOMPARE(desk_->Content(u"config.ini"_qs).contains(line), saved);
        if (!yes)
            QVERIFY(desk_->Main().isVisible());

        desk_->Start();
        QCOMPARE(desk_->Find<QCheckBox>(u"Check3"_qs)->isChecked(), saved);
        QCOMPARE(desk_->Find(u"activador"_qs)->isVisible(), saved);
        QCOMPARE(desk_->Text(u"MYSOTA"_qs), saved ? u"LUR/C-001"_qs : QString());
    }

    void TheFieldsComeBackAfterARestart()
    {
        desk_->Furnish();
        desk_->Start();
        desk_->Choose(u"Combo1"_qs, u"CW"_qs);
        desk_->Choose(u"mhz"_qs, u"14"_qs);
        desk_->Fill(u"Text1"_qs, u"025"_qs);
        desk_->Click(u"Check1"_qs);
        desk_->Contact(u"CX1AA"_qs);
        AnswerAndLeave(false, true);
        desk_->Start();
        QCOMPARE(Tuned(), u"CW 14.025 20m"_qs);
        QCOMPARE(desk_->Text(u"RSE"_qs) + desk_->Text(u"RSR"_qs), u"599599"_qs);
        QVERIFY(desk_->Find<QCheckBox>(u"Check1"_qs)->isChecked());
        QCOMPARE(desk_->Text(u"Label11"_qs) + desk_->Text(u"Hora"_qs), u"LU21:15"_qs);
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
    }

    // --- Damaged files

    void DamagedFilesCostOnlyThemselves_data()
    {
        QTest::addColumn<QByteArray>("content");
        QByteArray random(64 << 10, Qt::Uninitialized);
        QRandomGenerator generator(2026);
        for (char &byte : random)
            byte = char(generator.bounded(256));
        QTest::newRow("random bytes") << random;
        QTest::newRow("a line without end") << QByteArray("\0", 1);
    }
    void DamagedFilesCostOnlyThemselves()
    {
        QFETCH(QByteArray, content);
        desk_->Furnish(3);
        for (const QString &name : {u"mem.ini"_qs, u"memModo.cfg"_qs, u"memMhz.cfg"_qs, u"memKhz.cfg"_qs,
                 u"memqSat.cfg"_qs, u"memsat.ini"_qs, u"satelites.txt"_qs, u"dxcc.txt"_qs}) {
            desk_->Write(name, content);
            if (content.size() == 1)
                QVERIFY(QFile::resize(desk_->Path(name), name.endsWith(u".txt") ? 100 << 20 : 20 << 20));
        }
        QElapsedTimer timer;
        timer.start();
        desk_->Start();
        QVERIFY2(timer.elapsed() < 10000, "the start took too long");
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(RowsShown(), 3);
        QVERIFY(desk_->Text(u"mhz"_qs).size() <= 40 && desk_->Text(u"Combo1"_qs).size() <= 40);
        QVERIFY(desk_->Main().minimumSizeHint().width() <= 1366);
        desk_->Put(u"Corresponsal"_qs, u"CX1AA"_qs);
        desk_->Click(u"Command2"_qs);
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(desk_->Rows().value(3).MyCall, u"LU9ZZZ"_qs);
    }

    void ADamagedConfigurationStillStoresInALogThatIsFound_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("station");
        QTest::newRow("no log") << QByteArray("Estacion=LU9ZZZ\r\nbasura\r\n") << u"LU9ZZZ"_qs;
        QTest::newRow("empty") << QByteArray() << QString();
    }
    void ADamagedConfigurationStillStoresInALogThatIsFound()
    {
        QFETCH(QByteArray, content);
        desk_->Furnish(3);
        desk_->Write(u"config.ini"_qs, content);
        if (content.size() == 1)
            QVERIFY(QFile::resize(desk_->Path(u"config.ini"_qs), 100 << 20));
        desk_->Start();
        QCOMPARE(desk_->Told(), QStringList());
        QTEST(desk_->Text(u"Label2"_qs), "station");
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(desk_->Rows().value(3).NombreLog, u"Log inicial"_qs);
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 4 QSOs"_qs);
        QCOMPARE(desk_->Text(u"Frame1"_qs), u"Log inicial"_qs);
    }

    // --- The database at the start

    void ADatabaseThatCannotBeUsedEndsTheStartUntouched_data()
    {
        QTest::addColumn<bool>("config");
        QTest::addColumn<QByteArray>("content"); // null: no file
        QTest::addColumn<QString>("said");
        const QByteArray text = QByteArray("una carta cualquiera\r\n").repeated(100);
        QTest::newRow("missing") << true << QByteArray() << u"No se encuentra la base de datos"_qs;
        QTest::newRow("foreign") << true << text << u"no es una base de datos de Tordillo Compact"_qs;
        QTest::newRow("foreign, first run") << false << text << u"no es una base de datos de Tordillo Compact"_qs;
        QTest::newRow("empty") << true << QByteArray("") << u"vacío"_qs;
        QTest::newRow("damaged") << true << QByteArray("SQLite format 3\0", 16).leftJustified(8192, 'x')
                                 << u"dañada"_qs;
    }
    void ADatabaseThatCannotBeUsedEndsTheStartUntouched()
    {
        QFETCH(bool, config);
        QFETCH(QByteArray, content);
        QFETCH(QString, said);
        if (config)
            desk_->Write(u"config.ini"_qs, "Estacion=LU9ZZZ\r\nLogenUso=Log inicial\r\n");
        if (!content.isNull())
            desk_->Write(u"base0.mdb"_qs, content);
        QVERIFY(!desk_->Load());
        const QStringList told = desk_->Told();
        QCOMPARE(told.size(), 1);
        for (const QString &part : {u"X"_qs, said, desk_->Path(u"base0.mdb"_qs)})
            QVERIFY2(told.first().contains(part), qPrintable(told.first()));
        QCOMPARE(desk_->Has(u"base0.mdb"_qs), !content.isNull());
        QVERIFY(desk_->Content(u"base0.mdb"_qs) == content);
    }

    void ALockedDatabaseIsToldAndWaitedFor()
    {
        desk_->Furnish(3);
        {
            RawDatabase other(desk_->Path(u"base0.mdb"_qs));
            QVERIFY(other.Run("BEGIN EXCLUSIVE"));
            QVERIFY(desk_->Load());
            const QStringList told = desk_->Told();
            QCOMPARE(told.size(), 1);
            QVERIFY2(told.first().contains(u"en uso por otro programa"_qs), qPrintable(told.first()));
        }
        desk_->Show();
        desk_->Advance(1000);
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(RowsShown(), 3);
    }
};

TORDILLO_TEST(TestForm1Start)
#include "TestForm1Start.moc"
