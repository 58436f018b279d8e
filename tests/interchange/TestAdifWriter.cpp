// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Reading.h"
#include "interchange/AdifWriter.h"
#include "support/FailingDevice.h"
#include "support/Fixtures.h"

namespace {

// Sub-items 0 to 21 of a row of the search list.
QStringList SubItems()
{
    return u"1|77|LU1ABC|20m|14.250|SSB|59|57|24/11/2026|21:15|LU9ZZZ|||||1||Capital||||"_qs.split(u'|');
}

const QByteArray plain = "<STATION_CALLSIGN:6>LU9ZZZ<CALL:6>LU1ABC<MODE:3>SSB<BAND:3>20m<FREQ:6>14.250"
                         "<QSO_DATE:8>20261124<TIME_ON:4>2115<RST_SENT:2>59<RST_RCVD:2>57";

QsoRow Row()
{
    return RowOf(u"Modo=SSB;Banda=20m;MyCall=LU9ZZZ;Estacion=LU1ABC;Fecha=2026-11-24;Hora=21:15:59;RSE=59;RSR=57;"
                 "NombreLog=Año 1;Frecuencia=14,250"_qs);
}

const QByteArray logName = "<LOG_NAME:5>A\xF1o 1<EOR>\r\n";

} // namespace

class TestAdifWriter : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void TheHeader()
    {
        QCOMPARE(AdifWriter::Header(QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5))),
            QByteArray("<PROGRAMID:17>Tordillo Compacto\r\n<PROGRAMVERSION:6>2.1.34\r\n<ADIF_VER:4>3.04\r\n"
                       "<CREATED_TIMESTAMP:15>20260102 030405\r\n<EOH>\r\n"));
        QCOMPARE(AdifWriter::End(), QByteArray("<EOF>\r\n"));
    }

    void ASearchRecord()
    {
        // Sub-items by their number, whether the remarks are the message, and what stands behind the plain fields.
        const std::tuple<QString, bool, QByteArray> rows[] = {{u""_qs, false, ""},
            {u"11=LU1AAA;12=hola;13=FF57;14=GF05;16=AO-7;18=a/1;19=AR-1;20=AR-2;21=b/2"_qs, true,
                "<PROP_MODE:3>SAT<SAT_NAME:4>AO-7<BAND_RX:2>2m<OPERATOR:6>LU1AAA<COMMENT:4>hola<QSLMSG:4>hola"
                "<MY_GRIDSQUARE:4>FF57<GRIDSQUARE:4>GF05<SOTA_REF:3>a/1<SIG_INFO:4>AR-2<MY_SOTA_REF:3>b/2"
                "<MY_SIG_INFO:4>AR-1"},
            {u"12=  a "_qs, false, "<COMMENT:4>  a "}, {u"11= ;12=   ;13= ;14= ;18= ;19= ;20= ;21= "_qs, false, ""},
            {u"12=   "_qs, true, "<QSLMSG:3>   "}, {u""_qs, true, ""}, {u"12=hola"_qs, false, "<COMMENT:4>hola"},
            {u"16=  "_qs, false, "<PROP_MODE:3>SAT<SAT_NAME:2>  <BAND_RX:2>2m"},
            {u"12=ñandú €"_qs, false,
                "<COMMENT:7>\xF1"
                "and\xFA \x80"},
            {u"12=Ω 日"_qs, false, "<COMMENT:3>? ?"}};
        for (const auto &[changes, message, more] : rows) {
            QStringList items = SubItems();
            for (const QString &change : changes.split(u';', Qt::SkipEmptyParts))
                items[change.section(u'=', 0, 0).toInt()] = change.section(u'=', 1);
            QCOMPARE(AdifWriter::SearchRecord(items, message), plain + more + "<EOR>\r\n");
        }
    }

    void ModesOfASearchRecord()
    {
        const std::pair<const char *, QByteArray> modes[] = {{"Echo", "<MODE:2>FM<PROP_MODE:3>ECH"},
            {"Echo IP", "<MODE:3>VOI<PROP_MODE:3>ECH"}, {"DV IP", "<MODE:12>DIGITALVOICE<PROP_MODE:8>INTERNET"},
            {"DVoice", "<MODE:12>DIGITALVOICE"}, {"echo", "<MODE:4>echo"}, {"", "<MODE:0>"}};
        for (const auto &[mode, group] : modes) {
            QStringList items = SubItems();
            items[5] = QString::fromLatin1(mode);
            QCOMPARE(
                AdifWriter::SearchRecord(items, false), QByteArray(plain).replace("<MODE:3>SSB", group) + "<EOR>\r\n");
            // The modes of old logs stay as they are in a backup.
            QsoRow row = Row();
            row.Modo = items[5];
            QCOMPARE(
                AdifWriter::BackupRecord(row), QByteArray(plain).replace("<MODE:3>SSB", Field("MODE", mode)) + logName);
        }
    }

    void OddSearchRecords()
    {
        QStringList items = SubItems();
        items[16] = u"SO-50"_qs;
        for (const auto &[band, receive] : {std::pair{u"2m", "<BAND_RX:4>70cm"}, {u"70cm", "<BAND_RX:2>2m"},
                 {u"2M", "<BAND_RX:2>2m"}, {u"", "<BAND_RX:2>2m"}}) {
            items[3] = QString::fromUtf16(band);
            const QByteArray end = QByteArray("<PROP_MODE:3>SAT<SAT_NAME:5>SO-50") + receive + "<EOR>\r\n";
            QVERIFY(AdifWriter::SearchRecord(items, false).endsWith(end));
        }
        items[10].clear(); // an old row without a station
        items[8] = u"ayer"_qs;
        const QByteArray record = AdifWriter::SearchRecord(items, false);
        QVERIFY(record.startsWith("<STATION_CALLSIGN:0><CALL:6>LU1ABC"));
        QVERIFY(record.contains("<QSO_DATE:0><TIME_ON:4>2115"));
    }

    void ABackupRecord()
    {
        const std::pair<QString, QByteArray> rows[] = {
            {u"Nombre_Sat=AO-7;Operador=LU1AAA;Obs=hola;MiGrid=FF57;SOTA= a/1 ;POTA= AR-2 ;IOTA= AR-1 ;MYSOTA= b/2 ;"
             u"SuGrid=GF05;LdA= 2 "_qs,
                "<PROP_MODE:3>SAT<SAT_NAME:4>AO-7<OPERATOR:6>LU1AAA<COMMENT:4>hola<MY_GRIDSQUARE:4>FF57<SOTA_REF:3>a/1"
                "<SIG_INFO:4>AR-2<IOTA_REF:4>AR-1<MY_SOTA_REF:3>b/2<GRIDSQUARE:4>GF05<QSL_RCVD:1>Y"},
            {u"Operador= ;Obs= ;MiGrid= ;SuGrid= ;SOTA= ;POTA= ;IOTA= ;MYSOTA= ;LdA= "_qs, ""},
            {u"LdA=0"_qs, "<QSL_RCVD:1>N"}, {u"LdA=1"_qs, ""}, {u"LdA=2.0"_qs, "<QSL_RCVD:1>Y"}};
        for (const auto &[changes, more] : rows)
            QCOMPARE(AdifWriter::BackupRecord(RowOf(changes, Row())), plain + more + logName);
    }

    void ADiskThatTakesPartOfARecord()
    {
        QByteArray written;
        QBuffer file(&written);
        FailingDevice disk(file, 10, FailingDevice::Trouble::DiskFull);
        QVERIFY(disk.open(QIODevice::WriteOnly));
        const Result<void> result = AdifWriter::Write(disk, "0123456789abc", u"/a.adi"_qs);
        QVERIFY(!result);
        QCOMPARE(
            result.failure().text, u"No se pudo terminar de escribir el archivo\n/a.adi\nNo space left on device"_qs);
        QCOMPARE(written, QByteArray("0123456789"));

        FailingDevice shorter(file, 15, FailingDevice::Trouble::CutShort);
        QVERIFY(shorter.open(QIODevice::WriteOnly));
        QVERIFY(AdifWriter::Write(shorter, "0123456789", u"/a.adi"_qs));
        QVERIFY(!AdifWriter::Write(shorter, "0123456789", u"/a.adi"_qs));
        QCOMPARE(written, QByteArray("0123456789012345678901234").left(25));
    }

    // What is written is read again as the same contact.
    void WrittenAndReadAgain()
    {
        QsoRow row =
            RowOf(u"Obs=a<b>c <EOR> ñ\n fin;Operador=LU1AAA;MiGrid=FF57AB;SuGrid=GF05;SOTA=LUR/C-001;POTA=AR-0001;"
                  "MYSOTA=LUR/C-002;Nombre_Sat=AO-7"_qs,
                Row());
        const QByteArray file = AdifWriter::Header(QDateTime(QDate(2026, 1, 1), QTime(0, 0)))
            + AdifWriter::BackupRecord(row) + AdifWriter::End();
        const Reading reading = ReadAdif(file);
        QCOMPARE(reading.repaired.program, u"Tordillo Compacto"_qs);
        QCOMPARE(reading.contacts.size(), 1);
        // Contacts go into the log that is open.
        row = RowOf(u"Fecha=24/11/2026;Hora=21:15;Frecuencia=14.250;NombreLog="_qs, row);
        QVERIFY(reading.contacts.first().row == row);

        QStringList items = SubItems();
        for (const QString &mode : {u"DVoice"_qs, u"DV IP"_qs, u"Echo IP"_qs}) {
            items[5] = mode;
            QCOMPARE(AdifImport::ParseRecord(AdifWriter::SearchRecord(items, false), {}).row.Modo, u"DVoice"_qs);
        }
    }
};

TORDILLO_TEST(TestAdifWriter)
#include "TestAdifWriter.moc"
