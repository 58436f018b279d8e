// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/CodePage.h"
#include "core/TextFile.h"
#include "support/Fixtures.h"

#include <QRandomGenerator>

namespace {

Configuration Full()
{
    using C = Configuration;
    Configuration c;
    const std::pair<QString C::*, const char16_t *> texts[] = {{&C::Estacion, u"LU9ZZZ"}, {&C::Operador, u"LU1AAA"},
        {&C::DiferUTC, u"-3"}, {&C::LogenUso, u"Log inicial"}, {&C::GridLoca, u"GF05AB"},
        {&C::UserLdA, u"lu@ejemplo.ar"}, {&C::PassLdA, u"clara"}, {&C::MySOTA, u"LUD/DA-001"}, {&C::MyPOTA, u"AR-0001"},
        {&C::HAMQuser, u"ham"}, {&C::HAMQpass, u"Contraseña"}, {&C::LDAQ_web, u"https://lda.example"},
        {&C::LDAQuser, u"lda"}, {&C::LDAQpass, u"~~~"}, {&C::eQSLuser, u"eqsl"}, {&C::eQSLpass, u"x y=z"},
        {&C::ArcAudio, u"C:\\audio\\llamada.mp3"}, {&C::Puerto, u"COM3"}, {&C::TAntes, u"100"}, {&C::TDespues, u"200"}};
    for (const auto &[field, text] : texts)
        c.*field = QString::fromUtf16(text);
    c.NoBorrar = c.Pantalla = c.Activac = c.PinPTT = c.BuscaE = true;
    return c;
}

Configuration Read(const QStringList &lines, Configuration from = {})
{
    ReadConfigLines(lines, from);
    return from;
}

} // namespace

class TestConfiguration : public LogbookTest {
    Q_OBJECT

    QString Config() const { return logbook_->PathOf(u"config.ini"_qs); }

private Q_SLOTS:
    void TheFileHasItsTwentyFiveLines()
    {
        Configuration c = Full();
        c.Estacion = u"lu9zzz"_qs;
        c.Operador = u"lu1aaa/p"_qs;
        const QStringList lines = ConfigLines(c, u"Otro"_qs);
        QStringList keys;
        for (const QString &line : lines)
            keys << line.left(9);
        QCOMPARE(keys.join(u'|'),
            u"Estacion=|Operador=|DiferUTC=|LogenUso=|GridLoca=|UserLdA_=|PassLdA_=|NoBorrar=|Pantalla=|MySOTA__=|"
            "MyPOTA__=|Activac_=|HAMQuser=|HAMQpass=|LDAQ_web=|LDAQuser=|LDAQpass=|eQSLuser=|eQSLpass=|ArcAudio=|"
            "Puerto  =|PinPTT  =|TAntes  =|TDespues=|BuscaE  ="_qs);
        QCOMPARE((QStringList{lines[0], lines[1], lines[3], lines[6], lines[21]}.join(u'|')),
            u"Estacion=LU9ZZZ|Operador=LU1AAA/P|LogenUso=Otro|PassLdA_=clara|PinPTT  =1"_qs);
        QVERIFY(!lines[13].contains(c.HAMQpass) && !lines[16].contains(c.LDAQpass) && !lines[18].contains(c.eQSLpass));
        QVERIFY(Read(ConfigLines(Full(), u"Log inicial"_qs)) == Full());
        QVERIFY(Read(ConfigLines({}, {})) == Configuration());
    }

    void WhatALineDoes()
    {
        // Each line, and what the same keys hold after it is read over a full configuration.
        const std::pair<QString, QString> rows[] = {{u"Activac_=0"_qs, u"Activac_=1"_qs},
            {u"Puerto  ="_qs, u"Puerto  =COM3"_qs}, {u"TAntes  ="_qs, u"TAntes  =100"_qs},
            {u"TDespues="_qs, u"TDespues=200"_qs}, {u"GridLoca="_qs, u"GridLoca="_qs},
            {u"NoBorrar=0"_qs, u"NoBorrar=0"_qs}, {u"PinPTT  =2"_qs, u"PinPTT  =0"_qs},
            {u"BuscaE  =si"_qs, u"BuscaE  =0"_qs}, {u"Puerto=COM9"_qs, u"Puerto  =COM3"_qs}, // no such key
            {u"estacion=LU1XX"_qs, u"Estacion=LU9ZZZ"_qs}, {u"corto GridLoca="_qs, u"GridLoca=dLoca="_qs},
            {u"; GridLoca=XX99"_qs, u"GridLoca=a=XX99"_qs}, // anywhere, but the value from the tenth character on
            {u"MySOTA__=MyPOTA__=a"_qs, u"MySOTA__=MyPOTA__=a|MyPOTA__=MyPOTA__=a"_qs}};
        for (const auto &[line, result] : rows) {
            const QStringList lines = ConfigLines(Read({line}, Full()), Full().LogenUso);
            for (const QString &expected : result.split(u'|'))
                QVERIFY2(lines.contains(expected), qPrintable(lines.join(u'\n')));
        }
        QVERIFY(Read({u"Activac_=1"_qs}).Activac); // ticks, and never clears
    }
    void ScramblingOfAllCodes()
    {
        QCOMPARE(ScrambleText(u"12345678\u00C8"_qs, passwordKey, 0).back(), u'6'); // 200 + 109 passes 255: 54
        QCOMPARE(ScrambleText(u"123456786"_qs, passwordKey, -1).back(), u'\u00C8');
        QCOMPARE(ScrambleText(u"ABC"_qs, u"\u0001"_qs, 0), u"BCD"_qs);
        for (int code = 0; code < 256; ++code) {
            // Ten of them, so that every character of the key has its turn and the first one a second.
            const QString text(10, CodePage::CharacterOf(static_cast<unsigned char>(code)));
            const QString scrambled = ScrambleText(text, passwordKey, 0);
            QCOMPARE(scrambled[9], scrambled[0]);
            // The wrap at 255 makes the last code the same as the first.
            QCOMPARE(ScrambleText(scrambled, passwordKey, -1), code == 255 ? QString(10, QChar(0)) : text);
        }
        // A sum of exactly 255 stays, a difference of 0 gives 0.
        QCOMPARE(ScrambleText(QString(QChar(255 - 'Z')), passwordKey, 0), u"ÿ"_qs);
        QCOMPARE(ScrambleText(u"Z"_qs, passwordKey, -1), QString(QChar(0)));
        for (const int direction : {1, 2, -2})
            QCOMPARE(ScrambleText(u"abc"_qs, passwordKey, direction), QString());
    }

    void DamagedFilesCostOnlyThemselves()
    {
        QRandomGenerator random(7);
        const Configuration before = Full();
        for (int round = 0; round < 50; ++round) {
            QByteArray bytes;
            for (int i = 0; i < 5000; ++i)
                bytes += static_cast<char>(random.bounded(256));
            QVERIFY(
                files_.Replace(Config(), QByteArray(bytes + "\r\nGridLoca=FF99\r\n" + bytes), FileSystem::Sync::No));
            logbook_->configuration = before;
            QVERIFY(!LoadConfig(*logbook_));
            QCOMPARE(logbook_->captions.grid, u"FF99"_qs);
            QCOMPARE(logbook_->configuration.Estacion, before.Estacion);
        }
    }

    void TheFirstSaveOpensTheFirstLog()
    {
        logbook_->configuration.Estacion = u"lu9zzz"_qs;
        QVERIFY(SaveConfig(*logbook_, true));
        QVERIFY(HasConfig(*logbook_));
        QCOMPARE(QString(logbook_->LogInUse + logbook_->captions.log + logbook_->captions.station),
            u"Log inicialLog inicialLU9ZZZ"_qs);
        RawDatabase raw(logbook_->Store().Path());
        QCOMPARE(raw.Value("SELECT group_concat(\"Nombre Log\") FROM Tabla1"), u"Log inicial"_qs);
        QVERIFY(SaveConfig(*logbook_, false));
        QCOMPARE(raw.Value("SELECT count(*) FROM Tabla1"), u"1"_qs);

        Logbook second(folder_->path(), files_, clock_);
        QVERIFY(LoadConfig(second));
        QCOMPARE(second.LogInUse, u"Log inicial"_qs);
        QCOMPARE(second.configuration.Estacion, u"LU9ZZZ"_qs);
    }

    void ALostOrForeignDatabaseStopsTheFirstSave()
    {
        QCOMPARE(SaveConfig(*logbook_, false).failure().kind, Failure::Kind::Missing);
        QVERIFY(!logbook_->Store().Exists());
        QVERIFY(files_.Replace(
            logbook_->Store().Path(), QByteArray("\0\1\0\0Standard Jet DB\0", 20), FileSystem::Sync::No));
        QCOMPARE(SaveConfig(*logbook_, true).failure().kind, Failure::Kind::Foreign);
        QVERIFY(!HasConfig(*logbook_));
        QCOMPARE(logbook_->LogInUse, QString());
    }

    void LongValuesAreCut()
    {
        const QString tooLong(2000, u'x');
        const Configuration c = Read({QString(u"UserLdA_=" + tooLong), QString(u"ArcAudio=" + tooLong)});
        QCOMPARE(c.UserLdA.size(), 100);
        QCOMPARE(c.ArcAudio.size(), 1000);
    }

    void LoadingSetsLogAndCaptions()
    {
        QVERIFY(!HasConfig(*logbook_));
        QVERIFY(!LoadConfig(*logbook_));
        QVERIFY(!logbook_->configuration.LDAQ_web.isEmpty());
        QCOMPARE(logbook_->LogInUse, QString());
        QVERIFY(TextFile::WriteLines(files_, Config(),
            {u"Estacion=lu9zzz"_qs, u"LogenUso=Año"_qs, u"Pantalla=0"_qs, u"LDAQ_web=http://a.b"_qs},
            FileSystem::Sync::No));
        QVERIFY(HasConfig(*logbook_));
        QVERIFY(LoadConfig(*logbook_));
        QCOMPARE(logbook_->LogInUse, u"Año"_qs);
        QCOMPARE(logbook_->captions.station, u"LU9ZZZ"_qs);
        QCOMPARE(logbook_->captions.log, u"Año"_qs);
        QCOMPARE(logbook_->configuration.LDAQ_web, u"http://a.b"_qs);
        logbook_->LogInUse = u"Otro"_qs;
        QVERIFY(TextFile::WriteLines(files_, Config(), {u"GridLoca=FF99"_qs}, FileSystem::Sync::No));
        QVERIFY(!LoadConfig(*logbook_));
        QCOMPARE(logbook_->LogInUse, u"Otro"_qs); // the file does not tell it
        QCOMPARE(logbook_->captions.station, u"LU9ZZZ"_qs);
    }

    // It holds passwords, the one of LdA as it was typed.
    void OnlyTheOwnerReadsTheFile()
    {
        QFile file(Config());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.setPermissions(QFile::Permissions(0x6666)));
        file.close();
        for (int round = 0; round < 2; ++round) {
            QVERIFY(SaveConfig(*logbook_, true));
            const QFile::Permissions others =
                QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
            QCOMPARE(QFile::permissions(Config()) & others, QFile::Permissions());
            QVERIFY(QFile::permissions(Config()) & QFile::ReadOwner);
            QVERIFY(QFile::setPermissions(Config(), QFile::Permissions(0x6666)));
            LoadConfig(*logbook_); // it may come from an earlier version
            QCOMPARE(QFile::permissions(Config()) & others, QFile::Permissions());
            QVERIFY(QFile::remove(Config())); // and without an older file too
        }
    }
};

TORDILLO_TEST(TestConfiguration)
#include "TestConfiguration.moc"
