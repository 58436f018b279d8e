// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FieldMemory.h"
#include "support/Fixtures.h"

namespace {

QString Shown(const std::optional<QString> &value) { return value ? QString(u'<' + *value + u'>') : u"-"_qs; }

QString Shown(const std::optional<bool> &value) { return value ? (*value ? u"1"_qs : u"0"_qs) : u"-"_qs; }

} // namespace

class TestFieldMemory : public LogbookTest {
    Q_OBJECT

private Q_SLOTS:
    void MemIni()
    {
        // The values are mhz, khz, band and qtrManual.
        const std::pair<QByteArray, QString> rows[] = {{"14.250\r\n20m\r\n 1 \r\n\r\n", u"<14> <250> <20m> 1"_qs},
            {"1267.1005\r\n23cm\r\n0\r\n", u"<1267> <100> <23cm> 0"_qs}, {"7.0.5\r\n", u"<7> <0.5> - -"_qs},
            {"14250\r\n20m\r\n", u"- - <20m> -"_qs}, {".650\r\n\r\nx", u"<> <650> <> 0"_qs},
            {"7.100\r\n40m\r\n-1", u"<7> <100> <40m> 1"_qs}, {"", u"- - - -"_qs},
            {"7.1\x01\r\n4\x02m\r\n1", u"- - - 1"_qs}};
        for (const auto &[content, values] : rows) {
            Put(u"mem.ini"_qs, content);
            const FieldMemory memory = ReadFieldMemory(*logbook_);
            QCOMPARE((QStringList{Shown(memory.mhz), Shown(memory.khz), Shown(memory.band), Shown(memory.qtrManual)})
                         .join(u' '),
                values);
        }
    }
    void DamagedFilesDoNotFloodTheFields()
    {
        const QByteArray flood = QByteArray(3 << 20, 'x');
        Put(u"mem.ini"_qs, flood + '.' + flood + "\r\n" + flood + "\r\n");
        const FieldMemory memory = ReadFieldMemory(*logbook_);
        QVERIFY(memory.mhz.value_or(QString()).size() <= 40 && memory.khz.value_or(QString()).size() <= 3);
        QVERIFY(memory.band->size() <= 40);
        for (const QString &name :
            {u"memModo.cfg"_qs, u"memMhz.cfg"_qs, u"memKhz.cfg"_qs, u"memqSat.cfg"_qs, u"memsat.ini"_qs})
            Put(name, flood);
        const ExitMemory exit = ReadExitMemory(*logbook_);
        QVERIFY(exit.modo->size() <= 40 && exit.mhz->size() <= 40 && exit.khz->size() <= 40);
        QCOMPARE(exit.viaSatelite, false);
        QVERIFY(ReadSatelliteMemory(*logbook_).size() <= 40);
    }

    void WhatIsMissingOrCouldNotBeTypedTellsNothing()
    {
        QVERIFY(!ReadFieldMemory(*logbook_).present);
        Put(u"memMhz.cfg"_qs, "");
        Put(u"memKhz.cfg"_qs, "\r\n");
        Put(u"memModo.cfg"_qs, "C\x01W\r\n");
        const ExitMemory memory = ReadExitMemory(*logbook_);
        QVERIFY(!memory.modo && !memory.mhz && !memory.viaSatelite);
        QCOMPARE(memory.khz, QString());
        QCOMPARE(ReadSatelliteMemory(*logbook_), QString());
    }

    void WhatIsSavedComesBack()
    {
        QVERIFY(SaveFieldMemory(*logbook_, u"14"_qs, u"250"_qs, u"20m"_qs, true));
        QCOMPARE(Content(u"mem.ini"_qs), QByteArray("14.250\r\n20m\r\n 1 \r\n\r\n"));
        QVERIFY(SaveExitMemory(*logbook_, u"Sat CW"_qs, u"145"_qs, u"990"_qs, true));
        const ExitMemory memory = ReadExitMemory(*logbook_);
        QCOMPARE((QStringList{*memory.modo, *memory.mhz, *memory.khz, Shown(memory.viaSatelite)}).join(u','),
            u"Sat CW,145,990,1"_qs);
        QVERIFY(SaveSatelliteMemory(*logbook_, u"AO-7 Ñ"_qs));
        QCOMPARE(ReadSatelliteMemory(*logbook_), u"AO-7 Ñ"_qs);
    }

    void AFileThatCannotBeWrittenIsToldAndTheOthersAreWritten()
    {
        QVERIFY(QDir(folder_->path()).mkdir(u"memMhz.cfg"_qs));
        const Result<void> saved = SaveExitMemory(*logbook_, u"CW"_qs, u"7"_qs, u"010"_qs, true);
        QVERIFY(!saved);
        QVERIFY(saved.failure().text.contains(u"memMhz.cfg"));
        QCOMPARE(ReadExitMemory(*logbook_).khz, u"010"_qs);
    }
};

TORDILLO_TEST(TestFieldMemory)
#include "TestFieldMemory.moc"
