// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/ContestEdit.h"
#include "contest/Macros.h"
#include "keyer/CwSettings.h"
#include "support/Fixtures.h"

// What the contest windows check and keep without the database.
class TestContestFiles : public LogbookTest {
    Q_OBJECT

private Q_SLOTS:
    void EditedFields()
    {
        const auto frequency = ContestEdit::CheckFrequency;
        QCOMPARE(frequency(QString()), u"Ingrese la frecuencia en KHZ!"_qs);
        for (const QString &good :
            {u"1800"_qs, u"7300"_qs, u"14350"_qs, u"29700"_qs, u"54000"_qs, u"148000"_qs, u"6650"_qs, u"2999"_qs})
            QCOMPARE(frequency(good), QString());
        for (const QString &bad :
            {u"1799"_qs, u"4001"_qs, u"13999"_qs, u"148001"_qs, u"5999"_qs, u"3000"_qs, u"99999999999999999999"_qs})
            QCOMPARE(frequency(bad), bad + u" KHz NO ES BANDA DE CONCURSO!"_qs);
        const auto date = ContestEdit::CheckDate;
        QCOMPARE(date(u"20240229"_qs), QString());
        for (const QString &bad : {u"2026112"_qs, u"2026/1/4"_qs, u"2026112٤"_qs})
            QCOMPARE(date(bad), u"Error en la fecha, formato DDMMAAAA!"_qs);
        QCOMPARE(date(u"20261332"_qs), u"Error en la fecha, día 32!"_qs);
        QCOMPARE(date(u"20260001"_qs), u"Error en la fecha, mes 00!"_qs);
        QCOMPARE(date(u"20260229"_qs), u"Error en la fecha, día 29!"_qs);
        const auto time = ContestEdit::CheckTime;
        QCOMPARE(time(u"2359"_qs), QString());
        QCOMPARE(time(u"23:5"_qs), u"Error en la HORA, formato HHMM!"_qs);
        for (const QString &bad : {u"2360"_qs, u"2400"_qs})
            QCOMPARE(time(bad), u"Error en la HORA %1!"_qs.arg(bad));
    }

    void KeyerSettings()
    {
        QVERIFY((ReadCwSettings(*logbook_) == CwSettings{u"COM1"_qs, true})); // no file
        const std::tuple<QByteArray, QString, bool> contents[] = {{"COM2\r\n2\r\n", u"COM2"_qs, false},
            {"COM20", u"COM20"_qs, false}, {"COM21\r\n1", u"COM1"_qs, true},
            {QByteArray("\0\xff\x81\r\r\r", 6), u"COM1"_qs, false}};
        for (const auto &[content, port, dtr] : contents) {
            Put(u"varCW.cfg"_qs, content);
            QVERIFY((ReadCwSettings(*logbook_) == CwSettings{port, dtr}));
            QVERIFY(SaveKeyerSettings(*logbook_, {port, dtr}));
            QCOMPARE(Content(u"varCW.cfg"_qs), port.toLatin1() + (dtr ? "\r\n 1 \r\n" : "\r\n 0 \r\n"));
            QVERIFY((ReadCwSettings(*logbook_) == CwSettings{port, dtr}));
        }
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
        Put(file, "macro7=QRZ?\r\nMacro1=x\r\n macro3=GRACIAS macro3=\xd1\r\nmacro8=no\r\nmacro6=\r\n");
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

    void ButtonsFollowTheFields()
    {
        QCOMPARE(MacroCaptions(u"LU9ZZZ"_qs, u"LU1ABC"_qs, QString())[4], u"F5-LU1ABC"_qs);
        const auto captions = MacroCaptions(u"LU9ZZZ"_qs, u"LU1ABC"_qs, u"7"_qs);
        QCOMPARE(QStringList(captions.begin(), captions.end()).join(u','),
            u"F1-CQ,F2-Serie,F3-TU,F4-LU9ZZZ,F5-SuCall,F6-AGN?,F7- NR?"_qs);
    }
};

TORDILLO_TEST(TestContestFiles)
#include "TestContestFiles.moc"
