// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Reading.h"
#include "support/Fixtures.h"

using AdifImport::Contact;
using AdifImport::ParseRecord;
using AdifImport::Trouble;

namespace {

// "CALL=LU1ABC BAND=20m" as a record.
QByteArray RecordOf(const QString &fields)
{
    QByteArray record;
    for (const QString &field : fields.split(u' ', Qt::SkipEmptyParts))
        record += Field(
            field.section(u'=', 0, 0).toLatin1().constData(), field.section(u'=', 1).replace(u'_', u' ').toUtf8());
    return record + "<EOR>";
}

const QString when = u"CALL=LU1ABC QSO_DATE=20261124 TIME_ON=2115 "_qs;

} // namespace

class TestAdifImport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void EveryTagHasItsColumn()
    {
        const Contact contact = ParseRecord(
            RecordOf(u"MY_SIG_INFO=AR-0001 SOTA_REF=LUR/C-001 MY_SOTA_REF=LUR/C-002 SIG_INFO=AR-0002 NAME=Juan "
                     "GRIDSQUARE=GF05 MY_GRIDSQUARE=FF57 QSL_RCVD=Y STATION_CALLSIGN=LU9ZZZ CALL=LU1ABC "
                     "QSO_DATE=20261124 TIME_ON=211559 BAND=20m FREQ=14.250 RST_SENT=59 RST_RCVD=57 OPERATOR=LU1AAA "
                     "MODE=SSB PROP_MODE=SAT QSL_SENT=Y COMMENT=hola_a_todos SAT_NAME=AO-7 LOG_NAME=Otro"_qs),
            {});
        QCOMPARE(Shown(contact.row),
            u"Modo=SSB;Banda=20m;MyCall=LU9ZZZ;Estacion=LU1ABC;Fecha=24/11/2026;Hora=21:15;RSE=59;RSR=57;"
            "Obs=hola a todos;Operador=LU1AAA;Frecuencia=14.250;MiGrid=FF57;SuGrid=GF05;Nombre_Sat=AO-7;"
            "SOTA=LUR/C-001;IOTA=AR-0001;POTA=AR-0002;MYSOTA=LUR/C-002"_qs);
        QVERIFY(!contact.dropped && contact.troubles.isEmpty() && contact.changes.isEmpty());
    }

    void ModeReportAndSatellite()
    {
        // The fields, and mode, reports and satellite of the contact.
        std::vector<std::pair<QString, QString>> rows{{u"MODE=C4fm"_qs, u"C4fm 599 599 "_qs},
            {u"MODE=DATA"_qs, u"DATA 59 59 "_qs}, {u"MODE=ssb"_qs, u"ssb 599 599 "_qs},
            {u"MODE=CW"_qs, u"CW 599 599 "_qs}, {u"MODE=FT8 RST_SENT=-12"_qs, u"FT8 -12 599 "_qs},
            {u"MODE=SSB RST_SENT=5 RST_RCVD=59+20"_qs, u"SSB 5 59+ "_qs}, {u"MODE=SAT"_qs, u"FM 59 59 "_qs},
            {u"MODE=SAT PROP_MODE=SAT SAT_NAME=AO-7"_qs, u"FM 59 59 AO-7"_qs},
            {u"MODE=SAT PROP_MODE=SAT"_qs, u"FM 59 59 Via Satelite"_qs},
            {u"MODE=SSB PROP_MODE=SAT"_qs, u"SSB 59 59 "_qs},
            {u"PROP_MODE=SAT"_qs, u"FM 599 599 Satélite"_qs}, // the reports were decided before the mode
            {u"PROP_MODE=SAT SAT_NAME=AO-7"_qs, u"FM 599 599 AO-7"_qs},
            {u"MODE=OLIVIA8/250"_qs, u"OLIVIA8 599 599 "_qs},
            // From the service: FM already when the satellite's name is asked for.
            {u"MODE=Sat PROP_MODE=SAT LDA="_qs, u"FM 59 59 "_qs}};
        for (const char16_t *voice : {u"DIGITALVOICE", u"C4FM", u"DMR", u"VOI", u"DSTAR", u"FREEDV", u"DVoice"})
            rows.emplace_back(u"MODE="_qs + QString::fromUtf16(voice), u"DVoice 59 59 "_qs);
        for (const auto &[fields, result] : rows) {
            AdifImport::Settings settings;
            settings.fromLda = fields.contains(u"LDA=");
            const QsoRow row = ParseRecord(RecordOf(when + fields), settings).row;
            QCOMPARE((QStringList{row.Modo, row.RSE, row.RSR, row.Nombre_Sat}.join(u' ')), result);
        }
    }

    void BandAndFrequency()
    {
        // Band, frequency, what is stored; one alone tells the other, both are judged by nobody.
        for (const char16_t *text :
            {u"20m/7.090/20m 7.090", u"// ", u"160m//160m 1.820", u"80m//80m 3.600", u"60m//60m 5.100",
                u"40m//40m 7.100", u"30m//30m 10.100", u"20M//20M 14.100", u"17m//17m 18.100", u"15m//15m 21.100",
                u"12m//12m 24.900", u"10m//10m 28.500", u"6m//6m 52.000", u"2m//2m 145.000", u"70cm//70cm 435.100",
                u"23cm//23cm ", u"1.25m//1.25m ", u"/7/40m 7", u"/2/160m 2", u"/30/10m 30", u"/148/2m 148",
                u"/430/70cm 430", u"/2.5/ 2.5", u"/1296/ 1296", u"/abc/ abc", u"/14.074000123/20m 14.0740001"}) {
            const QStringList parts = QString::fromUtf16(text).split(u'/');
            const Contact contact =
                ParseRecord(RecordOf(when + u"MODE=CW BAND=%1 FREQ=%2"_qs.arg(parts[0], parts[1])), {});
            QCOMPARE(QString(contact.row.Banda + u' ' + contact.row.Frecuencia), parts[2]);
            QVERIFY(!contact.dropped);
            QCOMPARE(contact.troubles.contains(Trouble::BandAndFrequency), parts[2] == u" ");
        }
    }

    void DateAndTime()
    {
        const QHash<QString, Trouble> troubles{
            {u"D"_qs, Trouble::Date}, {u"T"_qs, Trouble::Time}, {u"I"_qs, Trouble::Incomplete}};
        // Date, time, and what is stored, or the trouble that drops it; the 13th month is not the 13th of January.
        for (const char16_t *text :
            {u"20261124|211559|24/11/2026 21:15", u"20270229|2115|D", u"20261301|2115|D",
                u"20261113|2115|13/11/2026 21:15", u"2026112|2115|2/11/2026 21:15", u"202611|2115|D",
                u"24/11/2026|2115|D", u"ayer|25|D", u"20261124|21|T", u"20261124|2460|T", u"|2115|I", u"20261124||I"}) {
            const QStringList parts = QString::fromUtf16(text).split(u'|');
            const Contact contact = ParseRecord(
                RecordOf(u"CALL=LU1ABC MODE=CW BAND=20m QSO_DATE=%1 TIME_ON=%2"_qs.arg(parts[0], parts[1])), {});
            QCOMPARE(contact.dropped, troubles.contains(parts[2]));
            if (contact.dropped)
                QCOMPARE(contact.troubles, QList<Trouble>{troubles[parts[2]]});
            else
                QCOMPARE(QString(contact.row.Fecha + u' ' + contact.row.Hora), parts[2]);
        }
    }

    void ARecordMayHaveTwoTroubles()
    {
        const Contact contact = ParseRecord(RecordOf(u"CALL=LU1ABC TIME_ON=2115"_qs), {});
        QVERIFY(contact.dropped);
        QCOMPARE(contact.troubles, (QList{Trouble::BandAndFrequency, Trouble::Incomplete}));
        QCOMPARE(AdifImport::TroubleLines({{Trouble::Incomplete, 1}, {Trouble::Time, 12}, {Trouble::Reports, 2},
                     {Trouble::BandAndFrequency, 10}, {Trouble::Date, 3}}),
            (QStringList{u"> 3 error(es) Fecha"_qs, u"> 12 error(es) QTR"_qs, u"> 2 error(es) RT(S)"_qs,
                u"> 10 error(es) Banda/Frec."_qs, u"> 1 error(es) ADIF."_qs}));
    }

    void StatesAndStationsOfTheSettings()
    {
        AdifImport::Settings settings;
        settings.fromLda = true;
        settings.typedStation = u"LU1ZZ"_qs;
        for (const auto &[told, state] : {std::pair{u"Y", u"2"}, {u"N", u"1"}, {u"R", u"R"}, {u"y", u"y"}, {u"", u""}})
            QCOMPARE(ParseRecord(RecordOf(when + u"QSL_RCVD="_qs + QString::fromUtf16(told)), settings).row.LdA,
                QString::fromUtf16(state));
        QCOMPARE(ParseRecord(RecordOf(when + u"STATION_CALLSIGN=LU9ZZZ"_qs), settings).row.MyCall, u"LU1ZZ"_qs);
    }

    void FieldsOfThePhoneProgram()
    {
        const QString tags = u"SOTA_REF=S MY_SOTA_REF=MS SIG_INFO=P MY_SIG_INFO=MP "_qs;
        const QString both = tags + u"NAME=lur/c-001 COMMENT=Mi_Ref"_qs;
        // The two ticks, the fields, and SOTA, MYSOTA, POTA, IOTA, Obs.
        const std::tuple<bool, bool, QString, QString> rows[] = {{false, false, both, u"S|MS|P|MP|Mi Ref"_qs},
            {true, false, both, u"LUR/C-001|MI REF|P|MP|Mi Ref"_qs},
            {false, true, both, u"S|MS|LUR/C-001|MI REF|Mi Ref"_qs}, {false, true, tags, u"S|MS|P|MP|"_qs},
            {true, false, tags + u"NAME= COMMENT="_qs, u"||P|MP|"_qs}};
        for (const auto &[sota, pota, fields, result] : rows) {
            const QsoRow row = ParseRecord(RecordOf(when + fields), {false, {}, sota, pota}).row;
            QCOMPARE((QStringList{row.SOTA, row.MYSOTA, row.POTA, row.IOTA, row.Obs}.join(u'|')), result);
        }
    }

    void WidthsOfTheColumns()
    {
        const QString text(400, u'X');
        QString fields = when;
        const std::tuple<const char16_t *, QString QsoRow::*, int> widths[] = {{u"MODE", &QsoRow::Modo, 7},
            {u"BAND", &QsoRow::Banda, 9}, {u"STATION_CALLSIGN", &QsoRow::MyCall, 20}, {u"RST_SENT", &QsoRow::RSE, 3},
            {u"RST_RCVD", &QsoRow::RSR, 3}, {u"COMMENT", &QsoRow::Obs, 100}, {u"OPERATOR", &QsoRow::Operador, 50},
            {u"FREQ", &QsoRow::Frecuencia, 10}, {u"MY_GRIDSQUARE", &QsoRow::MiGrid, 6},
            {u"GRIDSQUARE", &QsoRow::SuGrid, 6}, {u"SAT_NAME", &QsoRow::Nombre_Sat, 400},
            {u"SOTA_REF", &QsoRow::SOTA, 400}};
        for (const auto &[tag, column, width] : widths)
            fields += QString::fromUtf16(tag) + u'=' + text + u' ';
        const Contact contact = ParseRecord(RecordOf(fields), {});
        for (const auto &[tag, column, width] : widths) {
            QCOMPARE((contact.row.*column).size(), width);
            const QString change = u"%1 se cortó a %2 caracteres."_qs.arg(QString::fromUtf16(tag)).arg(width);
            QCOMPARE(contact.changes.contains(change), width < 400);
        }
        QCOMPARE(ParseRecord(RecordOf(QString(when).replace(u"LU1ABC"_qs, text)), {}).row.Estacion.size(), 20);
        // Letters count, not bytes, and none is cut in the middle.
        QCOMPARE(ParseRecord(RecordOf(when + u"COMMENT="_qs + QString(150, u'ñ')), {}).row.Obs, QString(100, u'ñ'));
        const QString faces = QString(99, u'x') + u"\U0001F600"_qs;
        QCOMPARE(ParseRecord(RecordOf(when + u"COMMENT="_qs + faces), {}).row.Obs, QString(99, u'x'));
    }

    void WhatTheListsWillNotShowIsTold()
    {
        QCOMPARE(ParseRecord(RecordOf(when + u"BAND=20m"_qs), {}).changes,
            QStringList{u"sin modo, no se verá en las listas"_qs});
        QCOMPARE(ParseRecord(RecordOf(when + u"BAND=20m MODE=CW"_qs), {}).changes, QStringList());
    }
};

TORDILLO_TEST(TestAdifImport)
#include "TestAdifImport.moc"
