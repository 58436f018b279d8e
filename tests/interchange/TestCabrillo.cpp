// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/CabrilloCheck.h"
#include "interchange/CabrilloReader.h"
#include "interchange/CabrilloWriter.h"
#include "support/Fixtures.h"
#include "support/MemoryFiles.h"

namespace {

const QString filePath = u"/concurso.log"_qs, dataPath = u"/datos.cbr"_qs;
const CabrilloReader::Contest contest{u"CQWW"_qs, u"Incremental"_qs, u"XX1AA"_qs};

class FullDisk final : public MemoryFiles {
public:
    Result<void> Replace(const QString &, const QByteArray &, Sync) override
    {
        return Failure{u"No hay lugar"_qs, Failure::Kind::Full};
    }
};

QsoRow Qso(const QString &mode, const QString &band, const QString &call, const QString &hora = u"1203"_qs)
{
    return RowOf(u"Modo=%1;Banda=%2;MyCall=%3;Estacion=%4;Fecha=20240309;Hora=%5;RSE=001;RSR=012;NombreLog=%6;LdA=%6;"
                 "Nombre_Sat=%7"_qs.arg(mode, band, contest.ownCall, call, hora, contest.name, contest.seriesType));
}

QStringList Lines(const QList<QsoRow> &rows)
{
    QStringList lines;
    for (const QsoRow &row : rows)
        lines << QStringList{row.Modo, row.Banda, row.MyCall, row.Estacion, row.Fecha, row.Hora, row.RSE, row.RSR}.join(
            u' ');
    return lines;
}

CabrilloReader::Taken Take(const QStringList &lines, QStringList *reports = nullptr)
{
    return CabrilloReader::TakeLines(lines, filePath, contest, [&](int line, const QString &reason) {
        if (reports)
            *reports << u"%1: %2"_qs.arg(line).arg(reason);
    });
}

QStringList ShownOf(const CabrilloReader::Taken &taken)
{
    QList<QsoRow> rows;
    for (const auto &contact : taken.contacts)
        rows << contact.row;
    return Lines(rows);
}

QString WholeFile(const QString &lines, const QString &callsign = contest.ownCall)
{
    CabrilloWriter::Header header;
    header.callsign = callsign;
    return CabrilloWriter::FileText(CabrilloWriter::HeaderText(header) + lines);
}

// The findings without the lines that they quote.
QStringList Reasons(const QString &fileText, const QList<QsoRow> &rows)
{
    MemoryFiles files;
    if (!CabrilloWriter::WriteFile(files, filePath, fileText))
        return {u"not written"_qs};
    const auto report = CabrilloCheck::CheckFile(files, filePath, rows);
    QStringList reasons;
    for (const auto &finding : report->findings)
        reasons << u"%1: %2"_qs.arg(finding.line).arg(finding.reason);
    return reasons;
}

} // namespace

class TestCabrillo : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void EveryBlankOfALineCounts()
    {
        const std::tuple<QString, QString, QString, QString> lines[] = {
            {u"CW"_qs, u"40m"_qs, u"XX2BB"_qs,
                u"QSO:  7000 CW 2024-03-09 1203 XX1AA         599 001    XX2BB         599 012   "_qs},
            {u"FM"_qs, u"6m"_qs, u"XX2BB"_qs,
                u"QSO: 52000 PH 2024-03-09 1203 XX1AA          59 001    XX2BB          59 012   "_qs},
            {u"SSB"_qs, u"2m"_qs, u"XX2BB"_qs,
                u"QSO:144000 PH 2024-03-09 1203 XX1AA          59 001    XX2BB          59 012   "_qs},
            {u"DG"_qs, u"70cm"_qs, u"XX2BB"_qs,
                u"QSO:  70cm DG 2024-03-09 1203 XX1AA         599 001    XX2BB         599 012   "_qs},
            {u"CW"_qs, u"20m"_qs, u"XX2BBBBBBBBBBB"_qs,
                u"QSO: 14000 CW 2024-03-09 1203 XX1AA         599 001    XX2BBBBBBBBBBB 599 012   "_qs}};
        for (const auto &[mode, band, call, line] : lines)
            QCOMPARE(CabrilloWriter::QsoLine(Qso(mode, band, call)), line);
    }

    void LinesStandOldestFirst()
    {
        QList<QsoRow> rows{QsoRow(), Qso(u"CW"_qs, u"40m"_qs, u"B"_qs, u"1204"_qs),
            Qso(u"CW"_qs, u"40m"_qs, u"C"_qs, u"1204"_qs), Qso(u"CW"_qs, u"40m"_qs, u"A"_qs)};
        for (qsizetype row = 0; row < rows.size(); ++row)
            rows[row].id = row;
        const auto lines = CabrilloWriter::BuildLines(rows, contest.ownCall);
        QVERIFY(!lines.refusal);
        QCOMPARE(lines.text,
            CabrilloWriter::QsoLine(rows[3]) + u"\r\n" + CabrilloWriter::QsoLine(rows[1]) + u"\r\n"
                + CabrilloWriter::QsoLine(rows[2]) + u"\r\n");
        rows[1].MyCall = u"XX9ZZ"_qs;
        const auto refused = CabrilloWriter::BuildLines(rows, contest.ownCall);
        QVERIFY(refused.refusal && refused.refusal->critical && refused.text.isEmpty());
        QCOMPARE(refused.refusal->text, u"Error!\nEn el log distinta Señal Distintiva"_qs);
        const auto none = CabrilloWriter::BuildLines({QsoRow()}, contest.ownCall);
        QVERIFY(none.refusal && !none.refusal->critical);
    }

    void TheFileHasHeaderLinesAndEnd()
    {
        CabrilloWriter::Header header;
        header.callsign = u"XX1AA"_qs;
        header.address2 = u"Pegado\ncon Enter"_qs;
        const QStringList lines = CabrilloWriter::HeaderText(header).split(u"\r\n"_qs);
        QCOMPARE(lines[11], u"ADDRESS: Pegado con Enter"_qs);
        QVERIFY(lines[14].startsWith(u"CREATED-BY: TORDILLO COMPACT "));
        // A text box gives lone LF, and the operator may have taken away the last one.
        QCOMPARE(CabrilloWriter::FileText(u"a\nb\r\nc"_qs), u"a\r\nb\r\nc\r\nEND-OF-LOG:\r\n"_qs);
    }

    void PersonalDataIsRemembered()
    {
        MemoryFiles files;
        CabrilloWriter::Header header, again;
        header.name = u"Ñandú"_qs;
        header.address3 = u"San Juan"_qs;
        QVERIFY(CabrilloWriter::SavePersonalData(files, dataPath, header));
        QCOMPARE(files.content[dataPath],
            QByteArray("\xD1"
                       "and\xFA\r\n\r\n\r\nSan Juan\r\n\r\n"));
        CabrilloWriter::LoadPersonalData(files, dataPath, again);
        QCOMPARE(again.name + again.address3, header.name + header.address3);

        again.callsign = u"XX1AA"_qs;
        files.content[dataPath] = "Uno\r\nDos\nmedio\r\n" + QByteArray(5000, 'x');
        CabrilloWriter::LoadPersonalData(files, dataPath, again);
        QCOMPARE(again.address1, u"Dos medio"_qs);
        QCOMPARE(again.address2.size(), 1000);
        QCOMPARE(again.address3 + again.email, QString());
        CabrilloWriter::LoadPersonalData(files, u"/falta"_qs, again);
        QCOMPARE(again.callsign + again.name + again.email, u"XX1AA"_qs);
        QVERIFY(CabrilloWriter::FirstMissing(again)->field == &CabrilloWriter::Header::name);
    }

    void Words()
    {
        const QString eight = u"|7000|CW|D|T|ME|599|1|YOU|599|2"_qs;
        const std::pair<const char16_t *, QString> lines[] = {
            {u"QSO:  7000 CW D T  ME 599 001   YOU  579 012  ", u"|7000|CW|D|T|ME|599|001|YOU|579|012"_qs},
            {u"QSO: 7000 CW D T ME 599 1 YOU 599 2 0", eight}, {u"QSO: 7000 CW D T ME 1 YOU 2 X", eight},
            {u"X-QSO:\t7000\tCW\tD\tT\tME 1 YOU 2\n", eight}, {u"QSO: 7000 CW D T ME 1 YOU   ", u"*||||||||||"_qs},
            {u"QSO:144000 PH D T ME 59 1 YOU 59 2", u"|PH|D|T|ME|59|599|1|YOU|599|59"_qs}};
        for (const auto &[line, words] : lines) {
            const CabrilloReader::Words split = CabrilloReader::SplitQsoLine(QString::fromUtf16(line));
            QCOMPARE(QStringList(split.begin(), split.end()).join(u'|'), words);
        }
    }

    void BandsModesAndTimesOfLines()
    {
        QStringList reports;
        const auto taken = Take({u"CONTEST: ninguno"_qs, u"qso: 50313 ft8 2024-03-09 1203 xx1aa 1 xx2bb 2"_qs,
                                    u"QSO: 14074 RY 2024-03-09 12:04 XX1AA 1 XX2BB d'or"_qs,
                                    u"QSO: 7030.5 PH 2024/03/09 1205 XX1AA 1 XX2BB 2"_qs,
                                    u"QSO: 70000 SSB 20240309 1206 XX1AA 1 XX2BB 2 X"_qs,
                                    u"QSO: 70000 SSB 00240309 1206 XX1AA 1 XX2BB 2"_qs,
                                    u"X-QSO: 3500 FM 2024-13-09 2561 XX1AA 1 XX2BB 2"_qs},
            &reports);
        QVERIFY(!taken.stop);
        QCOMPARE(taken.qsoLines, 6);
        QCOMPARE(ShownOf(taken),
            (QStringList{u"DG  XX1AA XX2BB 20240309 1203 1 2"_qs, u"DG 20m XX1AA XX2BB 20240309 1204 1 D'OR"_qs,
                u"SSB 20m XX1AA XX2BB 20240309 1205 1 2"_qs, u"SSB 20m XX1AA XX2BB 20240309 1206 1 2"_qs,
                u"SSB 20m XX1AA XX2BB  1206 1 2"_qs, u"DG 80m XX1AA XX2BB   1 2"_qs}));
        QCOMPARE(reports,
            (QStringList{u"2: La frecuencia 50313 no dice la banda: queda sin banda"_qs,
                u"4: La frecuencia 7030.5 no dice la banda: se tomó la anterior, 20m"_qs,
                u"5: La frecuencia 70000 no dice la banda: se tomó la anterior, 20m"_qs,
                u"5: La línea tiene 9 palabras: lo que sobra no se tomó"_qs,
                u"6: La frecuencia 70000 no dice la banda: se tomó la anterior, 20m"_qs,
                u"6: 00240309 no es una fecha"_qs, u"7: 2024-13-09 no es una fecha"_qs, u"7: 2561 no es una hora"_qs}));
        // The test of repeats goes by the file's own date, so that a damaged one is not added again and again.
        QCOMPARE(taken.contacts.last().date, u"20241309"_qs);
        QCOMPARE(taken.contacts.last().line, 7);
        const QsoRow &row = taken.contacts.first().row;
        QCOMPARE(row.NombreLog + row.LdA + row.Nombre_Sat, u"CQWWCQWWIncremental"_qs);
    }

    void WhatStopsAnImport()
    {
        const QString good = CabrilloWriter::QsoLine(Qso(u"CW"_qs, u"40m"_qs, u"XX2BB"_qs));
        const QString columns = u"Al archivo /concurso.log\nle faltan demasiadas columnas!"_qs;
        const std::pair<QString, QString> lines[] = {{u"SOAPBOX: primer QSO: lindo"_qs, columns},
            {u"QSO: 7000 CW D T XX9ZZ 1 XX2BB 2"_qs, u"XX9ZZ no es la SD XX1AA"_qs},
            {CabrilloWriter::QsoLine(Qso(u"CW"_qs, u"2m"_qs, u"XX2BB"_qs)), u"599 no es la SD XX1AA"_qs}};
        for (const auto &[line, text] : lines) {
            const auto taken = Take({good, line, good});
            QCOMPARE(taken.contacts.size(), 1);
            QCOMPARE(taken.qsoLines, 2);
            QVERIFY(taken.stop.has_value());
            QCOMPARE(taken.stop->text, text);
            QCOMPARE(taken.stop->critical, text == columns);
            QCOMPARE(taken.stop->line, 2);
        }
    }

    void ClosingMessages()
    {
        QCOMPARE(CabrilloReader::ClosingMessage(filePath, 0, 0),
            u"No se encontaron QSOs en el archivo /concurso.log\npara incluir!"_qs);
        QCOMPARE(CabrilloReader::ClosingMessage(filePath, 5, 3),
            u"No se agregaron 3 QSOs por estar repetidos en /concurso.log"_qs);
        QVERIFY(!CabrilloReader::ClosingMessage(filePath, 5, 0));
    }

    void FilesWithLoneLineFeeds()
    {
        const QByteArray full(60, 'a'), second(60, 'b'), longRemark = "QSO: a\r\n" + full + second + "\r\n";
        const std::tuple<QByteArray, QByteArray, int> contents[] = {
            {full + '\n' + second, full + "\r\n" + second + "\r\n", 0},
            {"QSO: a\nQSO: b\n", "QSO: a\nQSO: b\n", 0}, // short
            {longRemark, longRemark, 0}, // nothing to split; the file must not shrink to it
            {"QSO: a\r\nqso: b\n" + full + second + "\r\n" + full + '\n' + second + "\r\nQSO: c",
                full + "\r\n" + second + "\r\n", 3}}; // the last long one wins
        for (const auto &[content, after, expected] : contents) {
            MemoryFiles files;
            FullDisk fullDisk;
            files.content[filePath] = fullDisk.content[filePath] = content;
            const auto lost = CabrilloReader::NormalizeCabrilloFile(files, filePath);
            QVERIFY(bool(lost));
            QCOMPARE(*lost, expected);
            QCOMPARE(files.content[filePath], after);
            QCOMPARE(bool(CabrilloReader::NormalizeCabrilloFile(fullDisk, filePath)), after == content);
            QCOMPARE(fullDisk.content[filePath], content);
        }
        MemoryFiles none;
        QVERIFY(!CabrilloReader::NormalizeCabrilloFile(none, u"/falta"_qs));
    }

    void WrittenAndReadBack()
    {
        QList<QsoRow> rows;
        int minute = 1200;
        for (const QString &mode : {u"SSB"_qs, u"CW"_qs, u"DG"_qs})
            for (const QString &band : CabrilloWriter::HeaderChoices().band.items)
                if (band != u"ALL" && band != u"6m" && band != u"2m")
                    rows << Qso(mode, band, u"XX2BB/%1"_qs.arg(rows.size()), QString::number(++minute));
        rows.last().RSR = u"O'HIGGINS"_qs;
        rows << Qso(u"CW"_qs, u"6m"_qs, u"XX2CC"_qs, u"1300"_qs) << Qso(u"FM"_qs, u"20m"_qs, u"XX2DD"_qs, u"1301"_qs);
        MemoryFiles files;
        const auto lines = CabrilloWriter::BuildLines(rows, contest.ownCall);
        QVERIFY(CabrilloWriter::WriteFile(files, filePath, WholeFile(lines.text)));
        // Other systems' line ends must not matter.
        for (const char *lineEnd : {"\r\n", "\r", "\n"}) {
            MemoryFiles other;
            other.content[filePath] = QByteArray(files.content[filePath]).replace("\r\n", lineEnd);
            QCOMPARE(*CabrilloReader::NormalizeCabrilloFile(other, filePath), 0);
            QStringList reports;
            const auto taken = Take(*CabrilloReader::ReadLines(other, filePath), &reports);
            QCOMPARE(reports.size(), 1); // of the band that it cannot tell
            QList<QsoRow> expected = rows;
            expected[18].Banda = u"10m"_qs; // 6 m tells no band: the one before
            expected[19].Modo = u"SSB"_qs; // phone has one name only in the file
            QCOMPARE(ShownOf(taken), Lines(expected));
        }
        QCOMPARE(CabrilloReader::QsoLinesOf(*CabrilloReader::ReadLines(files, filePath)), lines.text);
    }

    void ACheckedFileAgrees()
    {
        QList<QsoRow> rows{QsoRow()};
        for (const QString &band : CabrilloWriter::HeaderChoices().band.items)
            if (band != u"ALL" && band != u"2m")
                rows << Qso(u"CW"_qs, band, u"XX2BB"_qs) << Qso(u"FM"_qs, band, u"XX2BB"_qs);
        const QString text = CabrilloWriter::BuildLines(rows, contest.ownCall).text;
        QCOMPARE(Reasons(WholeFile(text), rows), QStringList());
        // Real kilohertz put in by hand, and lines moved about, are still the same QSOs.
        QStringList lines = QString(text)
                                .replace(u"QSO:  7000"_qs, u"QSO:  7025"_qs)
                                .replace(u"QSO: 52000"_qs, u"QSO:    50"_qs)
                                .split(u"\r\n"_qs, Qt::SkipEmptyParts);
        lines.move(0, 9);
        QCOMPARE(Reasons(WholeFile(lines.join(u"\r\n"_qs)), rows), QStringList());
    }

    void WhatACheckFinds()
    {
        // What the row has otherwise, what the operator changed in the text into what, and the findings.
        const std::tuple<QString, QString, QString, QString> cases[] = {
            {u"Fecha="_qs, {}, {}, u"16: falta la fecha; las columnas están corridas desde «1203»"_qs},
            {u"RSR="_qs, {}, {}, u"16: falta lo recibido"_qs},
            {u"RSR=12 A"_qs, {}, {}, u"16: la línea tiene 12 palabras y debe tener 11"_qs},
            {u"RSR=Ж"_qs, {}, {}, u"16: recibido: ? en el archivo, Ж en el log"_qs},
            {u"Banda=70cm"_qs, {}, {}, u"16: el formato no conoce la banda «70cm»"_qs},
            {u"Modo=RTTY"_qs, {}, {},
                u"16: el formato no conoce el modo RTTY; las columnas están corridas desde «2024-03-09»"_qs},
            {u"Banda=2m"_qs, {}, {}, u"16: la frecuencia está pegada a «QSO:» y la línea se corre una palabra"_qs},
            {u"Estacion=XX2BBBBBBBBBBB"_qs, {}, {}, u"16: las columnas están corridas desde «599»"_qs},
            {{}, u" 7000"_qs, u"14000"_qs, u"16: la frecuencia 14000 no es de la banda 40m del log"_qs},
            {{}, u"XX2BB"_qs, u"XX2BC"_qs, u"16: corresponsal: XX2BC en el archivo, XX2BB en el log"_qs},
            {{}, u"QSO:  7000"_qs, u"QZO:  7000"_qs, u"0: falta en el archivo"_qs},
            {{}, u"END-OF-LOG"_qs,
                u"QSO:  7000 CW 2024-03-10 1203 XX1AA         599 001    XX3CC         599 012\r\nEND-OF-LOG"_qs,
                u"17: ningún QSO del log es el de esta línea"_qs},
            {{}, u"END-OF-LOG:"_qs, {}, u"0: falta el final"_qs},
            {{}, u"END-OF-LOG:"_qs, u"END-OF-LOG:\r\nEND-OF-LOG:"_qs, u"18: el final está repetido"_qs},
            {{}, u"START-OF-LOG:"_qs, u"START:"_qs, u"0: falta el encabezado"_qs},
            {{}, u"END-OF-LOG:"_qs, u"START-OF-LOG: 3.0\r\nEND-OF-LOG:"_qs, u"17: el encabezado está repetido"_qs},
            {{}, u"CALLSIGN: XX1AA"_qs, u"CALLSIGN: XX1AB"_qs, u"2: la señal de los QSOs es XX1AA"_qs}};
        for (const auto &[change, from, to, reasons] : cases) {
            const QsoRow row = RowOf(change, Qso(u"CW"_qs, u"40m"_qs, u"XX2BB"_qs));
            QString text = WholeFile(CabrilloWriter::QsoLine(row) + u"\r\n");
            QVERIFY(text.contains(from));
            if (!from.isEmpty())
                text.replace(from, to);
            QCOMPARE(Reasons(text, {row}).join(u'/'), reasons);
        }
    }

    void TheReportIsShortAndCounts()
    {
        QList<QsoRow> rows;
        for (int number = 0; number < 12; ++number)
            rows << Qso(u"CW"_qs, u"40m"_qs, u"XX2B%1"_qs.arg(number));
        const auto report = CabrilloCheck::Compare({u"START-OF-LOG: 3.0"_qs, u"END-OF-LOG:"_qs}, rows);
        const QString text = report.Text();
        QVERIFY(text.startsWith(u"El log tiene 12 QSO(s) y el archivo 0."));
        QCOMPARE(text.count(u"falta en el archivo"_qs), 10);
        QVERIFY(text.endsWith(u"... y 2 más."));
        QVERIFY(CabrilloCheck::Report().Text().isEmpty());
        QVERIFY(!CabrilloCheck::CheckFile(MemoryFiles(), filePath, rows));
    }
};

TORDILLO_TEST(TestCabrillo)
#include "TestCabrillo.moc"
