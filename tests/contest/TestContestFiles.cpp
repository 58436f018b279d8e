// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/ContestEdit.h"
#include "contest/CwSettings.h"
#include "contest/Macros.h"
#include "core/Logbook.h"
#include "support/FixedClock.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// What the contest windows check and keep without the database.
class TestContestFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        logbook_ = std::make_unique<Logbook>(folder_->path(), files_, clock_);
    }

    void EditedFields_data()
    {
        using Check = QString (*)(const QString &);
        QTest::addColumn<Check>("check");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        const auto row = [](Check check, const char16_t *text, const QString &message) {
            QTest::newRow(qPrintable(QString::fromUtf16(text))) << check << QString::fromUtf16(text) << message;
        };
        const auto frequency = ContestEdit::CheckFrequency;
        row(frequency, u"", u"Ingrese la frecuencia en KHZ!"_qs);
        for (const char16_t *good : {u"1800", u"2000", u"3500", u"7300", u"14350", u"21450", u"28000", u"29700",
                 u"54000", u"144000", u"148000", u"6650", u"2999"})
            row(frequency, good, QString());
        for (const char16_t *bad : {u"1799", u"3499", u"4001", u"7301", u"13999", u"14351", u"29701", u"148001",
                 u"5999", u"3000", u"0", u"99999999999999999999"})
            row(frequency, bad, QString::fromUtf16(bad) + u" KHz NO ES BANDA DE CONCURSO!"_qs);
        const auto date = ContestEdit::CheckDate;
        row(date, u"20261124", QString());
        row(date, u"20240229", QString());
        for (const char16_t *bad : {u"2026112", u"202611245", u"2026/1/4", u"2026112٤"})
            row(date, bad, u"Error en la fecha, formato DDMMAAAA!"_qs);
        row(date, u"20261332", u"Error en la fecha, día 32!"_qs);
        row(date, u"20261300", u"Error en la fecha, día 00!"_qs);
        row(date, u"20261301", u"Error en la fecha, mes 13!"_qs);
        row(date, u"20260001", u"Error en la fecha, mes 00!"_qs);
        row(date, u"20260229", u"Error en la fecha, día 29!"_qs);
        const auto time = ContestEdit::CheckTime;
        row(time, u"2359", QString());
        row(time, u"235", u"Error en la HORA, formato HHMM!"_qs);
        row(time, u"23:5", u"Error en la HORA, formato HHMM!"_qs);
        row(time, u"2400", u"Error en la HORA 2400!"_qs);
        row(time, u"2360", u"Error en la HORA 2360!"_qs);
    }
    void EditedFields()
    {
        using Check = QString (*)(const QString &);
        QFETCH(Check, check);
        QFETCH(QString, text);
        QTEST(check(text), "message");
    }

    void KeyerSettings_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no file
        QTest::addColumn<QString>("port");
        QTest::addColumn<bool>("dtr");
        QTest::newRow("no file") << QByteArray() << u"COM1"_qs << true;
        QTest::newRow("as written") << QByteArray("COM12\r\n 1 \r\n") << u"COM12"_qs << true;
        QTest::newRow("RTS") << QByteArray("Ninguno\r\n 0 \r\n") << u"Ninguno"_qs << false;
        QTest::newRow("another number") << QByteArray("COM2\r\n2\r\n") << u"COM2"_qs << false;
        QTest::newRow("one line") << QByteArray("COM20") << u"COM20"_qs << false;
        QTest::newRow("no port") << QByteArray("COM21\r\n1") << u"COM1"_qs << true;
        QTest::newRow("damaged") << QByteArray("\0\xff\x81\r\r\r", 6) << u"COM1"_qs << false;
    }
    void KeyerSettings()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, port);
        QFETCH(bool, dtr);
        if (!content.isNull())
            Write(u"varCW.cfg"_qs, content);
        QVERIFY((ReadCwSettings(*logbook_) == CwSettings{port, dtr}));
        QVERIFY(SaveKeyerSettings(*logbook_, {port, dtr}));
        QCOMPARE(Content(u"varCW.cfg"_qs), port.toLatin1() + (dtr ? "\r\n 1 \r\n" : "\r\n 0 \r\n"));
        QVERIFY((ReadCwSettings(*logbook_) == CwSettings{port, dtr}));
    }

    void MacrosAreMergedFromTheirFile()
    {
        const QString file = u"macros_concurso_3.cfg"_qs;
        MacroTexts macros{};
        QVERIFY(LoadMacros(*logbook_, macros));
        QVERIFY(macros == DefaultMacros());
        QCOMPARE(Content(file),
            QByteArray("macro1=CQ #MISD# #MISD# >>TEST<<\r\nmacro2=#SUSD# >>#RST#<< #SERIE# #SERIE#\r\nmacro3=TU\r\n"
                       "macro4=#MISD#\r\nmacro5=#SUSD#\r\nmacro6=AGN\r\nmacro7=NR?\r\n"));
        Write(file, "macro7=QRZ?\r\nMacro1=x\r\n macro3=GRACIAS macro3=\xd1\r\nmacro8=no\r\nmacro6=\r\n");
        macros[0] = u"viejo"_qs;
        QVERIFY(LoadMacros(*logbook_, macros));
        const MacroTexts expected{
            u"viejo"_qs, DefaultMacros()[1], u" GRACIAS Ñ"_qs, u"#MISD#"_qs, u"#SUSD#"_qs, QString(), u"QRZ?"_qs};
        QVERIFY(macros == expected);
        QVERIFY(SaveMacros(*logbook_, expected));
        macros.fill(u"otra"_qs);
        QVERIFY(LoadMacros(*logbook_, macros));
        QVERIFY(macros == expected);
    }

    void ButtonsFollowTheFields_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("rse");
        QTest::addColumn<QString>("fifth");
        QTest::newRow("nothing typed") << QString() << QString() << u"F5-SuCall"_qs;
        QTest::newRow("typed, no serial") << u"LU1ABC"_qs << QString() << u"F5-LU1ABC"_qs;
        QTest::newRow("typed, serial") << u"LU1ABC"_qs << u"7"_qs << u"F5-SuCall"_qs;
    }
    void ButtonsFollowTheFields()
    {
        QFETCH(QString, call);
        QFETCH(QString, rse);
        const auto captions = MacroCaptions(u"LU9ZZZ"_qs, call, rse);
        QTEST(captions[4], "fifth");
        QCOMPARE(QStringList({captions[0], captions[1], captions[2], captions[3], captions[5], captions[6]}).join(u','),
            u"F1-CQ,F2-Serie,F3-TU,F4-LU9ZZZ,F6-AGN?,F7- NR?"_qs);
    }

private:
    void Write(const QString &name, const QByteArray &content)
    {
        QFile file(folder_->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QByteArray Content(const QString &name)
    {
        QFile file(folder_->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    FileSystem files_;
    FixedClock clock_;
    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<Logbook> logbook_;
};

TORDILLO_TEST(TestContestFiles)
#include "TestContestFiles.moc"
