// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Reading.h"
#include "interchange/AdifWriter.h"
#include "support/FailingDevice.h"
#include "support/TestRegistry.h"

#include <QTest>

namespace {

// Sub-items 0 to 21 of a row of the search list.
QStringList SubItems()
{
    return {u"1"_qs, u"77"_qs, u"LU1ABC"_qs, u"20m"_qs, u"14.250"_qs, u"SSB"_qs, u"59"_qs, u"57"_qs, u"24/11/2026"_qs,
        u"21:15"_qs, u"LU9ZZZ"_qs, QString(), QString(), QString(), QString(), u"1"_qs, QString(), u"Capital"_qs,
        QString(), QString(), QString(), QString()};
}

const QByteArray plain = "<STATION_CALLSIGN:6>LU9ZZZ<CALL:6>LU1ABC<MODE:3>SSB<BAND:3>20m<FREQ:6>14.250"
                         "<QSO_DATE:8>20261124<TIME_ON:4>2115<RST_SENT:2>59<RST_RCVD:2>57";

QsoRow Row()
{
    QsoRow row;
    row.Modo = u"SSB"_qs;
    row.Banda = u"20m"_qs;
    row.MyCall = u"LU9ZZZ"_qs;
    row.Estacion = u"LU1ABC"_qs;
    row.Fecha = u"2026-11-24"_qs;
    row.Hora = u"21:15:59"_qs;
    row.RSE = u"59"_qs;
    row.RSR = u"57"_qs;
    row.NombreLog = u"Año 1"_qs;
    row.Frecuencia = u"14,250"_qs;
    return row;
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

    void ASearchRecord_data()
    {
        QTest::addColumn<QString>("changes"); // "number=text;..."
        QTest::addColumn<bool>("message");
        QTest::addColumn<QByteArray>("more"); // behind the plain fields
        const auto row = [](const char *name, const char16_t *changes, const QByteArray &more, bool message = false) {
            QTest::newRow(name) << QString::fromUtf16(changes) << message << more;
        };
        row("nothing more", u"", "");
        row("everything, in order", u"11=LU1AAA;12=hola;13=FF57;14=GF05;16=AO-7;18=a/1;19=AR-1;20=AR-2;21=b/2",
            "<PROP_MODE:3>SAT<SAT_NAME:4>AO-7<BAND_RX:2>2m<OPERATOR:6>LU1AAA<COMMENT:4>hola<QSLMSG:4>hola"
            "<MY_GRIDSQUARE:4>FF57<GRIDSQUARE:4>GF05<SOTA_REF:3>a/1<SIG_INFO:4>AR-2<MY_SOTA_REF:3>b/2"
            "<MY_SIG_INFO:4>AR-1",
            true);
        row("untrimmed as it stands", u"12=  a ", "<COMMENT:4>  a ");
        row("blanks only", u"11= ;12=   ;13= ;14= ;18= ;19= ;20= ;21= ", "");
        row("blanks only, message", u"12=   ", "<QSLMSG:3>   ", true);
        row("no remarks, message", u"", "", true);
        row("remarks without message", u"12=hola", "<COMMENT:4>hola");
        row("a satellite of blanks", u"16=  ", "<PROP_MODE:3>SAT<SAT_NAME:2>  <BAND_RX:2>2m");
        row("letters", u"12=ñandú €",
            "<COMMENT:7>\xF1"
            "and\xFA \x80");
        row("outside the code page", u"12=Ω 日", "<COMMENT:3>? ?");
    }
    void ASearchRecord()
    {
        QFETCH(QString, changes);
        QFETCH(bool, message);
        QStringList items = SubItems();
        for (const QString &change : changes.split(u';', Qt::SkipEmptyParts))
            items[change.section(u'=', 0, 0).toInt()] = change.section(u'=', 1);
        QFETCH(QByteArray, more);
        QCOMPARE(AdifWriter::SearchRecord(items, message), plain + more + "<EOR>\r\n");
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

    void ABackupRecord_data()
    {
        QTest::addColumn<QString>("changes"); // "column=text;..."
        QTest::addColumn<QByteArray>("more");
        const auto row = [](const char *name, const char16_t *changes, const QByteArray &more) {
            QTest::newRow(name) << QString::fromUtf16(changes) << more;
        };
        row("everything, in order",
            u"Nombre_Sat=AO-7;Operador=LU1AAA;Obs=hola;MiGrid=FF57;SOTA= a/1 ;POTA= AR-2 ;IOTA= AR-1 ;MYSOTA= b/2 ;"
            u"SuGrid=GF05;LdA= 2 ",
            "<PROP_MODE:3>SAT<SAT_NAME:4>AO-7<OPERATOR:6>LU1AAA<COMMENT:4>hola<MY_GRIDSQUARE:4>FF57<SOTA_REF:3>a/1"
            "<SIG_INFO:4>AR-2<IOTA_REF:4>AR-1<MY_SOTA_REF:3>b/2<GRIDSQUARE:4>GF05<QSL_RCVD:1>Y");
        row("blanks only", u"Operador= ;Obs= ;MiGrid= ;SuGrid= ;SOTA= ;POTA= ;IOTA= ;MYSOTA= ;LdA= ", "");
        row("not sent", u"LdA=0", "<QSL_RCVD:1>N");
        row("sent", u"LdA=1", "");
        row("confirmed", u"LdA=2.0", "<QSL_RCVD:1>Y");
    }
    void ABackupRecord()
    {
        QFETCH(QString, changes);
        QFETCH(QByteArray, more);
        QsoRow row = Row();
        for (const QString &change : changes.split(u';', Qt::SkipEmptyParts))
            for (const QsoColumns::Column &column : QsoColumns::all)
                if (change.section(u'=', 0, 0) == QString::fromLatin1(column.sql))
                    row.*column.field = change.section(u'=', 1);
        QCOMPARE(AdifWriter::BackupRecord(row), plain + more + logName);
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
        QsoRow row = Row();
        row.Obs = u"a<b>c <EOR> ñ\n fin"_qs;
        row.Operador = u"LU1AAA"_qs;
        row.MiGrid = u"FF57AB"_qs;
        row.SuGrid = u"GF05"_qs;
        row.SOTA = u"LUR/C-001"_qs;
        row.POTA = u"AR-0001"_qs;
        row.MYSOTA = u"LUR/C-002"_qs;
        row.Nombre_Sat = u"AO-7"_qs;
        const QByteArray file = AdifWriter::Header(QDateTime(QDate(2026, 1, 1), QTime(0, 0)))
            + AdifWriter::BackupRecord(row) + AdifWriter::End();
        const Reading reading = ReadAdif(file);
        QCOMPARE(reading.repaired.program, u"Tordillo Compacto"_qs);
        QCOMPARE(reading.contacts.size(), 1);
        QsoRow again = reading.contacts.first().row;
        row.Fecha = u"24/11/2026"_qs;
        row.Hora = u"21:15"_qs;
        row.Frecuencia = u"14.250"_qs;
        row.NombreLog.clear(); // contacts go into the log that is open
        QVERIFY(again == row);

        QStringList items = SubItems();
        for (const QString &mode : {u"DVoice"_qs, u"DV IP"_qs, u"Echo IP"_qs}) {
            items[5] = mode;
            QCOMPARE(AdifImport::ParseRecord(AdifWriter::SearchRecord(items, false), {}).row.Modo, u"DVoice"_qs);
        }
    }
};

TORDILLO_TEST(TestAdifWriter)
#include "TestAdifWriter.moc"
