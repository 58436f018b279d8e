// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

// The menu "Archivo" and the copy of the database, over several logs.
class TestLogCommands : public DeskTest {
    Q_OBJECT

    void AddQsos(const QString &log, int count) const
    {
        QList<QsoRow> rows;
        for (int i = 1; i <= count; ++i)
            rows << RowOf(u"NombreLog="_qs + log, SampleQso(i));
        Store(rows);
    }
    QString Caption() const { return Text("Label6"); }
    bool Configured(const QByteArray &log) const
    {
        return Content("config.ini").contains(QByteArray("LogenUso=" + log + "\r\n"));
    }
    QStringList New(const QStringList &answers)
    {
        dialogs.inputs.clear();
        for (const QString &answer : answers)
            dialogs.inputs << answer;
        Menu("nuevo");
        return Told();
    }
    QString Logs() const
    {
        return Value("SELECT group_concat(\"Nombre Log\", '|') FROM (SELECT DISTINCT \"Nombre Log\" FROM Tabla1)");
    }
    QStringList Copies() const { return QDir(Path({})).entryList({u"base0_*"_qs}, QDir::Files, QDir::Name); }

private Q_SLOTS:
    void init()
    {
        DeskTest::init();
        Furnish(2);
    }
    void ALogIsOpened()
    {
        AddQsos(u"Ñandú (2) 100%"_qs, 25);
        AddQsos(u"abc"_qs, 1);
        Start();
        const auto open = [&](const std::function<void()> &act) {
            InWindow("alog", act);
            Find("Corresponsal")->setFocus();
        };
        open([&] {
            QCOMPARE(form->windowTitle(), u"Abrir Log ..."_qs);
            QCOMPARE(Cells("List1", 0), u"abc (1 QSOs)|Log inicial (2 QSOs)|Ñandú (2) 100% (25 QSOs)"_qs);
            Press(Qt::Key_Escape);
            QVERIFY(!form->isVisible());
        });
        QCOMPARE(Caption(), u"Log: Log inicial, con 2 QSOs"_qs);
        open([&] { ClickRow("List1", 2); });
        QCOMPARE(Caption(), u"Log: Ñandú (2) 100%, con 25 QSOs"_qs);
        QVERIFY(Configured("\xd1"
                           "and\xfa (2) 100%"));
        QCOMPARE(Text("Frame1"), u"Ñandú (2) 100%"_qs);
        open([&] {
            QCOMPARE(Find<QAbstractItemView>("List1")->currentIndex().row(), 2); // the open one
            Press(Qt::Key_Home);
            Press(Qt::Key_Return);
        });
        QCOMPARE(Texts("Label6 txt_pagina"), u"Log: abc, con 1 QSOs|1"_qs);
        Start();
        QCOMPARE(Caption(), u"Log: abc, con 1 QSOs"_qs);
        QCOMPARE(Said(), QString());
    }

    void ALogIsCreated()
    {
        Start();
        const QString prompt = u"-Ingrese el nombre del nuevo Log"_qs;
        QCOMPARE(New({}), QStringList({prompt})); // cancelled
        QCOMPARE(New({u"'"_qs}), QStringList({prompt}));
        QCOMPARE(Logs(), u"Log inicial"_qs);
        QCOMPARE(New({u"LOG 'INICIAL"_qs, u"d'Año, (x) \"%\""_qs}),
            QStringList({prompt, u"!El log LOG INICIAL ya existe!"_qs, prompt}));
        QCOMPARE(Caption(), u"Log: dAño, (x) \"%\", con 0 QSOs"_qs);
        QVERIFY(Configured("dA\xf1o, (x) \"%\""));
        QCOMPARE(New({u"DAÑO, (X) \"%\""_qs}).value(1), u"!El log DAÑO, (X) \"%\" ya existe!"_qs);
        Contact("CX1AA");
        Start();
        QCOMPARE(Caption(), u"Log: dAño, (x) \"%\", con 1 QSOs"_qs);
        // A name that config.ini would not give back is none, whatever is wrong with it.
        for (const QString &name : {QString(101, u'ñ'), QString(300, u'a'), u"Łódź"_qs, u"mi Estacion="_qs}) {
            const QStringList told = New({name});
            QCOMPARE(told.size(), 3);
            QVERIFY2(told[1].startsWith(u"!El nombre del log puede tener hasta 100 letras"_qs), qPrintable(told[1]));
        }
        QCOMPARE(New({QString(100, u'ñ')}), QStringList({prompt}));
        QCOMPARE(Logs(), QString(u"dAño, (x) \"%\"|Log inicial|" + QString(100, u'ñ')));
    }

    void ALogOfAnyNameIsFoundAgain()
    {
        for (const QString &name : {QString(300, u'ñ'), u"Łódź"_qs, u" x "_qs}) {
            init();
            AddQsos(name, 3); // brought by another program
            Start();
            InWindow("alog", [&] {
                auto *list = Find<QAbstractItemView>("List1");
                const auto rows = Cells("List1", 0).split(u'|');
                list->setCurrentIndex(list->model()->index(int(rows.indexOf(name + u" (3 QSOs)")), 0));
                Press(Qt::Key_Return);
            });
            const QString caption = u"Log: %1, con 3 QSOs"_qs.arg(name);
            QCOMPARE(Caption(), caption);
            Start();
            QCOMPARE(Caption(), caption);
            Contact("CX1AA");
            QCOMPARE(Rows().last().NombreLog, name);
            QCOMPARE(Said(), QString());
        }
    }

    void TheOpenLogIsDeleted()
    {
        AddQsos(u"zz"_qs, 1);
        Start();
        const auto remove = [&](bool yes) {
            dialogs.answers << yes;
            Menu("borralog");
            return Told();
        };
        const QString question = u"?Esta seguro de borrar %1\nlos QSOs no podrán recuperarse!"_qs;
        QCOMPARE(remove(false), QStringList({question.arg(u"Log inicial"_qs)}));
        QCOMPARE(Logs(), u"Log inicial|zz"_qs);
        QCOMPARE(remove(true), QStringList({question.arg(u"Log inicial"_qs)}));
        QCOMPARE(Logs() + Caption(), u"zzLog: zz, con 1 QSOs"_qs);
        QVERIFY(Configured("zz"));
        QCOMPARE(remove(true), QStringList({question.arg(u"zz"_qs)}));
        QCOMPARE(Logs() + Caption(), u"Log: Base 1, con 0 QSOs"_qs);
        QVERIFY(Configured("Base 1"));
        Start();
        Contact("CX1AA");
        QCOMPARE(Logs() + Caption(), u"Base 1Log: Base 1, con 1 QSOs"_qs);
    }

    void WhatTheDatabaseRefusesIsToldAndLeavesTheLogOpen()
    {
        Start();
        FaultVfs::Instance().FailSyncs(1, FaultVfs::forever);
        QCOMPARE(New({u"otro"_qs}).size(), 2);
        dialogs.answers << true;
        Menu("borralog");
        QCOMPARE(Told().size(), 2);
        Desk::HealDisk();
        QCOMPARE(Logs() + Caption(), u"Log inicialLog: Log inicial, con 2 QSOs"_qs);
        QVERIFY(Configured("Log inicial"));
    }

    void ACopyADay()
    {
        Start();
        const auto backup = [&] {
            Menu("badeda");
            return Told();
        };
        QCOMPARE(backup(), QStringList({u"i%1 creada!"_qs.arg(Path("base0_24_11_26.mdb"))}));
        clock.now = clock.now.addDays(1);
        QCOMPARE(backup().size(), 1);
        QCOMPARE(Copies(), QStringList({u"base0_24_11_26.mdb"_qs, u"base0_25_11_26.mdb"_qs}));
        const QByteArray before = Content(Copies().last());
        FaultVfs::Instance().SetRoom(0);
        const QStringList told = backup();
        Desk::HealDisk();
        QCOMPARE(told.size(), 2);
        QVERIFY2(told.first().startsWith(u"XLa copia NO se hizo; la que hubiera de antes sigue en su lugar."_qs)
                && told.first().contains(u"No queda lugar"_qs),
            qPrintable(told.first()));
        QCOMPARE(Copies().size(), 2);
        QVERIFY(Content(Copies().last()) == before);
    }
};

TORDILLO_TEST(TestLogCommands)
#include "TestLogCommands.moc"
