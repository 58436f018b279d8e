// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "core/QsoTable.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QTest>

// The menu "Archivo" and the copy of the database, over several logs.
class TestLogCommands : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    void AddQsos(const QString &log, int count) const
    {
        QList<QsoRow> rows;
        for (int i = 1; i <= count; ++i) {
            rows << Desk::SampleQso(i);
            rows.last().NombreLog = log;
        }
        desk_->Store(rows);
    }
    QString Caption() const { return desk_->Text(u"Label6"_qs); }
    bool Configured(const QByteArray &log) const
    {
        return desk_->Content(u"config.ini"_qs).contains(QByteArray("LogenUso=" + log + "\r\n"));
    }
    QStringList New(const QStringList &answers) const
    {
        desk_->dialogs.inputs.clear();
        for (const QString &answer : answers)
            desk_->dialogs.inputs << answer;
        desk_->Menu("nuevo");
        return desk_->Told();
    }
    QString Logs() const
    {
        return RawDatabase(desk_->Path(u"base0.mdb"_qs))
            .Value("SELECT group_concat(\"Nombre Log\", '|') FROM (SELECT DISTINCT \"Nombre Log\" FROM Tabla1)");
    }
    QStringList Copies() const { return QDir(desk_->Path({})).entryList({u"base0_*"_qs}, QDir::Files, QDir::Name); }

private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        desk_->Furnish(2);
    }
    void cleanup() { desk_.reset(); }

    void ALogIsOpened()
    {
        AddQsos(u"Ñandú (2) 100%"_qs, 25);
        AddQsos(u"abc"_qs, 1);
        desk_->Start();
        const auto open = [&](const std::function<void(QListWidget *)> &act) {
            desk_->InModal([&] { desk_->Menu("alog"); }, [&] { act(desk_->Find<QListWidget>(u"List1"_qs)); });
            desk_->Find(u"Corresponsal"_qs)->setFocus();
        };
        open([&](QListWidget *list) {
            QCOMPARE(desk_->Front()->windowTitle(), u"Abrir Log ..."_qs);
            QStringList texts;
            for (int row = 0; row < list->count(); ++row)
                texts << list->item(row)->text();
            QCOMPARE(texts.join(u'|'), u"abc (1 QSOs)|Log inicial (2 QSOs)|Ñandú (2) 100% (25 QSOs)"_qs);
            desk_->Press(Qt::Key_Escape);
        });
        QCOMPARE(Caption(), u"Log: Log inicial, con 2 QSOs"_qs);
        open([&](QListWidget *list) {
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(2)).center());
        });
        QCOMPARE(Caption(), u"Log: Ñandú (2) 100%, con 25 QSOs"_qs);
        QVERIFY(Configured("\xd1"
                           "and\xfa (2) 100%"));
        QCOMPARE(desk_->Text(u"Frame1"_qs), u"Ñandú (2) 100%"_qs);
        open([&](QListWidget *list) {
            QCOMPARE(list->currentRow(), 2); // the open one
            desk_->Press(Qt::Key_Home);
            desk_->Press(Qt::Key_Return);
        });
        QCOMPARE(Caption() + desk_->Text(u"txt_pagina"_qs), u"Log: abc, con 1 QSOs1"_qs);
        desk_->Start();
        QCOMPARE(Caption(), u"Log: abc, con 1 QSOs"_qs);
        QCOMPARE(desk_->Told(), QStringList());
    }

    void ALogIsCreated()
    {
        desk_->Start();
        const QString prompt = u"-Ingrese el nombre del nuevo Log"_qs;
        QCOMPARE(New({}), QStringList({prompt})); // cancelled
        QCOMPARE(New({u"'"_qs}), QStringList({prompt}));
        QCOMPARE(Logs(), u"Log inicial"_qs);
        QCOMPARE(New({u"LOG 'INICIAL"_qs, u"d'Año, (x) \"%\""_qs}),
            QStringList({prompt, u"!El log LOG INICIAL ya existe!"_qs, prompt}));
        QCOMPARE(Caption(), u"Log: dAño, (x) \"%\", con 0 QSOs"_qs);
        QVERIFY(Configured("dA\xf1o, (x) \"%\""));
        QCOMPARE(New({u"DAÑO, (X) \"%\""_qs}).value(1), u"!El log DAÑO, (X) \"%\" ya existe!"_qs);
        desk_->Contact(u"CX1AA"_qs);
        desk_->Start();
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

    void TheOpenLogIsDeleted()
    {
        AddQsos(u"zz"_qs, 1);
        desk_->Start();
        const auto remove = [&](bool yes) {
            desk_->dialogs.answers = QList<bool>{yes};
            desk_->Menu("borralog");
            return desk_->Told();
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
        desk_->Start();
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(Logs() + Caption(), u"Base 1Log: Base 1, con 1 QSOs"_qs);
    }

    void WhatTheDatabaseRefusesIsToldAndLeavesTheLogOpen()
    {
        desk_->Start();
        FaultVfs::Instance().FailSyncs(1, FaultVfs::forever);
        QCOMPARE(New({u"otro"_qs}).size(), 2);
        desk_->dialogs.answers = QList<bool>{true};
        desk_->Menu("borralog");
        QCOMPARE(desk_->Told().size(), 2);
        Desk::HealDisk();
        QCOMPARE(Logs() + Caption(), u"Log inicialLog: Log inicial, con 2 QSOs"_qs);
        QVERIFY(Configured("Log inicial"));
    }

    // --- The copy of the day

    void ACopyADay()
    {
        desk_->Start();
        const auto backup = [&] {
            desk_->Menu("badeda");
            return desk_->Told();
        };
        QCOMPARE(backup(), QStringList({u"i%1 creada!"_qs.arg(desk_->Path(u"base0_24_11_26.mdb"_qs))}));
        desk_->clock.now = desk_->clock.now.addDays(1);
        QCOMPARE(backup().size(), 1);
        QCOMPARE(Copies(), QStringList({u"base0_24_11_26.mdb"_qs, u"base0_25_11_26.mdb"_qs}));
        const QByteArray before = desk_->Content(Copies().last());
        FaultVfs::Instance().SetRoom(0);
        const QStringList told = backup();
        Desk::HealDisk();
        QCOMPARE(told.size(), 2);
        QVERIFY2(told.first().startsWith(u"XLa copia NO se hizo; la que hubiera de antes sigue en su lugar."_qs)
                && told.first().contains(u"No queda lugar"_qs),
            qPrintable(told.first()));
        QCOMPARE(Copies().size(), 2);
        QVERIFY(desk_->Content(Copies().last()) == before);
    }
};

TORDILLO_TEST(TestLogCommands)
#include "TestLogCommands.moc"
