// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

// Copies that nobody asks for, and what they are good for. The small windows that need little more than to open.
class TestDatabaseCare : public DeskTest {
    Q_OBJECT

    QStringList Copies() const { return QDir(Path("copias")).entryList(QDir::Files, QDir::Name); }
    // A start, and the time that a copy takes.
    void StartAndWait()
    {
        Start();
        clock.now = clock.now.addSecs(60);
        for (int i = 0; i < 60; ++i) {
            Advance(15);
            QTest::qSleep(1);
        }
    }
    void Spoil(qint64 from, qint64 size) const
    {
        QFile file(Path("base0.mdb"));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(from));
        file.write(QByteArray(size, '\0'));
    }

private Q_SLOTS:
    void AStartAfterAChangeTakesACopy()
    {
        Furnish(3);
        Write("base0.mdb.nueva", "of a run that was cut off");
        StartAndWait();
        QVERIFY(!Has("base0.mdb.nueva"));
        QCOMPARE(Copies(), QStringList({u"base0_2026-11-24_211500.mdb"_qs}));
        Contact("CX1AA");
        QCOMPARE(Copies().size(), 1); // not before the next start
        FaultVfs::Instance().SetRoom(0);
        StartAndWait();
        HealDisk();
        QCOMPARE(dialogs.shown.size(), 1);
        QVERIFY(Said().startsWith(u"!La copia de seguridad no se pudo hacer."_qs));
    }

    void ADatabaseInRuinsIsReplacedOnlyWhenAsked()
    {
        const std::function<void()> ruins[] = {[&] { Spoil(4096, QFile(Path("base0.mdb")).size() - 4096); },
            [&] { Spoil(0, 4096); }, [&] { QVERIFY(QFile::resize(Path("base0.mdb"), 0)); },
            [&] { QVERIFY(QFile::remove(Path("base0.mdb"))); }};
        for (const auto &ruin : ruins) {
            init();
            Furnish(3);
            StartAndWait();
            Kill();
            ruin();
            const bool lost = !Has("base0.mdb");
            const QByteArray before = Content("base0.mdb");
            QVERIFY(!Load());
            QVERIFY(Content("base0.mdb") == before && Has("base0.mdb") != lost);
            QCOMPARE(dialogs.shown.size(), 1);
            QCOMPARE(dialogs.shown.first().preset, Dialogs::Button::No);
            const QString told = Said();
            QVERIFY2(
                told.contains(Path("base0.mdb")) && told.contains(Path(u"copias/" + Copies()[0])), qPrintable(told));
            dialogs.answers << true;
            Start();
            QCOMPARE(Text("Label6"), u"Log: Log inicial, con 3 QSOs"_qs);
            const QStringList aside = QDir(Path({})).entryList({u"base0_apartada_*.mdb"_qs}, QDir::Files);
            QCOMPARE(aside.size(), lost ? 0 : 1);
            QCOMPARE(Told().size(), lost ? 1 : 2);
            if (!lost)
                QVERIFY(Content(aside.first()) == before);
            Contact("CX1AA");
            QCOMPARE(Rows().size(), 4);
        }
    }

    void DamageThatTheFirstPageDoesNotMeetIsFoundByTheCopy()
    {
        Furnish(4000);
        StartAndWait();
        Contact("CX1AA");
        Kill();
        const qint64 root = Value("SELECT rootpage FROM sqlite_schema WHERE name='Tabla2_modo'").toLongLong();
        Spoil((root - 1) * 4096, 4096);
        dialogs.answers << true;
        StartAndWait();
        const QStringList told = Told();
        QCOMPARE(told.size(), 2);
        QVERIFY2(told.first().contains(u"dañada"_qs) && told.first().contains(Path("base0.mdb") + u'\n')
                && !told.first().contains(u".nueva"_qs),
            qPrintable(told.first()));
        QCOMPARE(Text("Label6"), u"Log: Log inicial, con 4000 QSOs"_qs);
    }

    void ProfilesAreKeptAndTheVersionIsTold()
    {
        Begin();
        const auto crossed = [&] { return Enabled("Crear1 Cargar1 Crear2 Cargar2 Crear3 Cargar3"); };
        InWindow("ppeerr", [&] {
            QCOMPARE(crossed(), u"+-+-+-"_qs);
            Fill("Perfil1_0", "casa");
            Fill("Perfil1_2", "móvil");
            Click("Crear2"); // each keeps all three
            Press(Qt::Key_Escape);
            QVERIFY(!form->isVisible());
        });
        QCOMPARE(Content("Perfiles.cfg"), QByteArray("Perfil1=CASA\r\nPerfil2=\r\nPerfil3=M\xd3VIL\r\n"));
        InWindow("ppeerr", [&] {
            QCOMPARE(Texts("Perfil1_0 Perfil1_1 Perfil1_2") + crossed(), u"CASA||MÓVIL-++--+"_qs);
            unwritable << u"Perfiles.cfg"_qs;
            Click("Crear2");
            QCOMPARE(Told().size(), 1);
        });
        InWindow("acerca", [&] { QCOMPARE(Text("Label1"), QString(u"Versión " + Logbook::AppVersion)); });
    }
};

TORDILLO_TEST(TestDatabaseCare)
#include "TestDatabaseCare.moc"
