// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Logbook.h"
#include "stats/QslCard.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestQslCard : public QObject {
    Q_OBJECT

    class Files : public FileSystem {
    public:
        QString secret; // a file that may not be read
        std::unique_ptr<QIODevice> OpenForReading(const QString &path) const override
        {
            return path.endsWith(secret) ? nullptr : FileSystem::OpenForReading(path);
        }
    };

    static QString Design(const FileSystem &files, const QString &folder, const QString &call)
    {
        const QslDesign design = FindQslDesign(files, folder, call);
        return QFileInfo(design.path.value_or(u"-"_qs)).fileName() + u' ' + QString::number(design.unreadable.size());
    }

private Q_SLOTS:
    void TheFirstDesignForTheCallIsTaken()
    {
        const QTemporaryDir folder;
        Files files;
        files.secret = u"nothing"_qs;
        QCOMPARE(Design(files, folder.path(), u"LU9ZZZ"_qs), u"- 0"_qs); // not even the folder
        QVERIFY(QDir(folder.path()).mkpath(u"MisQSLs"_qs));
        const auto write = [&](const QString &name, const QByteArray &content) {
            QVERIFY(files.Replace(folder.filePath(u"MisQSLs/"_qs + name), content, FileSystem::Sync::No));
        };
        write(u"a.qsl"_qs, "Fondo=playa.jpg\r\n");
        write(u"b.QSL"_qs, "Fondo=1\r\nSuCall=LU9ZZZ\r\n");
        write(u"C.qsl"_qs, "SuCall=LU9ZZZ\r\nSuCall=LU1AAA\r\n");
        write(u"d.qsl"_qs, "  LU2SuCall=AÑ\r\nSuCall=LU3CC ");
        write(u"e.txt"_qs, "SuCall=LU4D\r\n");
        QCOMPARE(Design(files, folder.path(), u"LU9ZZZ"_qs), u"b.QSL 0"_qs);
        QCOMPARE(Design(files, folder.path(), u"LU1AAA"_qs), u"C.qsl 0"_qs);
        for (const QString &none : {u"lu9zzz"_qs, u"LU3CC"_qs, u"LU4D"_qs, QString()})
            QCOMPARE(Design(files, folder.path(), none), u"- 0"_qs);
        files.secret = u"b.QSL"_qs;
        QCOMPARE(Design(files, folder.path(), u"LU9ZZZ"_qs), u"C.qsl 1"_qs);
        QCOMPARE(Design(files, folder.path(), u"LU3CC"_qs), u"- 1"_qs);
    }

    void TheFolderIsTheOperatorsChoice()
    {
        const QTemporaryDir folder;
        FileSystem files;
        const SystemClock clock;
        const Logbook logbook(folder.path(), files, clock);
#ifdef Q_OS_WIN
        const QString preset = u"C:/Bagual"_qs;
#else
        const QString preset = QDir::homePath() + u"/Bagual";
#endif
        QCOMPARE(QslFolder(logbook), preset);
        const std::pair<QByteArray, QString> cases[] = {{"", preset}, {"editor=x", preset}, {"bagual=", preset},
            {"bagual=" + QDir::rootPath().toUtf8() + "otra/qsl", QDir::rootPath() + u"otra/qsl"},
            {"bagual=qsl", folder.path() + u"/qsl"}, {"Bagual=./a/../mi qsl/", folder.path() + u"/mi qsl"}};
        for (const auto &[line, expected] : cases) {
            QVERIFY(files.Replace(
                folder.filePath(u"programas.ini"_qs), "[programas]\r\n" + line + "\r\n", FileSystem::Sync::No));
            QCOMPARE(QslFolder(logbook), expected);
        }
    }

    void WhatTheProgramIsToldAndWritesFor()
    {
        const QslCard card{u"LU9ZZZ"_qs, u"LU1ABC/W"_qs, u"24/11/2026"_qs, u"21:15"_qs, u"SSB"_qs, u"40m"_qs, u"59"_qs,
            {}, u"Juan, 73"_qs};
        QCOMPARE(QslArgument(card),
            u"Bagua$de=LU9ZZZ$para=LU1ABC/W$fecha=24/11/2026$hora=21:15$modo=SSB$banda=40m$reporte=59$sat=$nota=Juan, "
            "73"_qs);
        QslCard bySatellite = card;
        bySatellite.satellite = u"so-50"_qs;
        QVERIFY(QslArgument(bySatellite).contains(u"$sat=SO-50$nota="));
        QCOMPARE(QslPictureShown(card), u"LU1ABC/W_24112026.jpg"_qs);
        QCOMPARE(QslPictureFile(u"/b"_qs, card), u"/b/Salida/LU1ABC_W_24112026.jpg"_qs);
    }
};

TORDILLO_TEST(TestQslCard)
#include "TestQslCard.moc"
