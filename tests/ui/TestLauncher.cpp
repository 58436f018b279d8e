// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestRegistry.h"
#include "ui/Launcher.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// Real programs, scripts that tell what they were given.
class TestLauncher : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void TheArgumentArrivesInOnePieceAsItStands()
    {
#ifdef Q_OS_WIN
        QSKIP("scripts are no programs here");
#endif
        const QTemporaryDir folder(QDir::tempPath() + u"/con blanco XXXXXX");
        const QString program = folder.filePath(u"Bagual.exe"_qs), told = folder.filePath(u"dicho"_qs);
        QFile script(program);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\ncd \"${0%/*}\" && printf '%s|%s' \"$#\" \"$1\" >a && mv a dicho\n");
        script.close();
        Launcher launcher;
        QVERIFY(!launcher.Start(program, u"x"_qs)); // not a program yet
        QVERIFY(!launcher.Start(program + u"x", u"x"_qs));
        QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        for (const QString &remarks : {u"Juan  73 "_qs, u"\"a\" 'b' \\"_qs, u"$HOME;`id`|&*"_qs, u"Ñandú ñ"_qs}) {
            const QString argument = u"Bagua$de=LU9ZZZ$nota="_qs + remarks;
            QVERIFY(launcher.Start(program, argument));
            QVERIFY(QTest::qWaitFor([&] { return QFile::exists(told); }));
            QFile file(told);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QCOMPARE(QString::fromUtf8(file.readAll()), QString(u"1|" + argument));
            QVERIFY(file.remove());
        }
    }
};

TORDILLO_TEST(TestLauncher)
#include "TestLauncher.moc"
