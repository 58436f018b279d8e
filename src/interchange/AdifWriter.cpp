// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/AdifWriter.h"

#include "core/CodePage.h"
#include "core/Conversions.h"
#include "core/Logbook.h"

namespace AdifWriter {

namespace {

constexpr char lineEnd[] = "\r\n";

void Field(QByteArray &record, const char *tag, const QString &value)
{
    const QByteArray bytes = CodePage::FromText(value);
    record += '<';
    record += tag;
    record += ':';
    record += QByteArray::number(bytes.size());
    record += '>';
    record += bytes;
}

// Only whether there is anything is asked of the trimmed text; what is written is the text as it stands.
void FieldIfAny(QByteArray &record, const char *tag, const QString &value)
{
    if (!value.trimmed().isEmpty())
        Field(record, tag, value);
}

QString CompactDate(const QString &date)
{
    const auto parsed = Conversions::ParseDate(date);
    return parsed ? parsed->toString(u"yyyyMMdd") : QString();
}

QString CompactTime(const QString &time) { return Conversions::ShownTime(time).remove(u':'); }

// The modes that have no name of their own in ADIF.
void ModeGroup(QByteArray &record, const QString &mode)
{
    if (mode == u"Echo")
        record += "<MODE:2>FM<PROP_MODE:3>ECH";
    else if (mode == u"Echo IP")
        record += "<MODE:3>VOI<PROP_MODE:3>ECH";
    else if (mode == u"DV IP")
        record += "<MODE:12>DIGITALVOICE<PROP_MODE:8>INTERNET";
    else if (mode == u"DVoice")
        record += "<MODE:12>DIGITALVOICE";
    // A call or station that spells the tag stands for the mode, as it always has.
    else if (!record.contains("<MODE:"))
        Field(record, "MODE", mode);
}

} // namespace

QByteArray Header(const QDateTime &localNow)
{
    QByteArray header;
    Field(header, "PROGRAMID", u"Tordillo Compacto"_qs);
    header += lineEnd;
    Field(header, "PROGRAMVERSION", Logbook::AppVersion);
    header += lineEnd;
    header += "<ADIF_VER:4>3.04";
    header += lineEnd;
    Field(header, "CREATED_TIMESTAMP", localNow.toString(u"yyyyMMdd hhmmss"));
    header += lineEnd;
    return header + "<EOH>" + lineEnd;
}

QByteArray SearchRecord(const QStringList &subItems, bool remarksAsQslMessage)
{
    const auto item = [&](int number) { return subItems.value(number); };
    QByteArray record;
    record.reserve(512);
    Field(record, "STATION_CALLSIGN", item(10));
    Field(record, "CALL", item(2));
    ModeGroup(record, item(5));
    Field(record, "BAND", item(3));
    Field(record, "FREQ", item(4));
    Field(record, "QSO_DATE", CompactDate(item(8)));
    Field(record, "TIME_ON", item(9).remove(u':'));
    Field(record, "RST_SENT", item(6));
    Field(record, "RST_RCVD", item(7));
    if (!item(16).isEmpty()) {
        record += "<PROP_MODE:3>SAT";
        Field(record, "SAT_NAME", item(16));
        record += item(3) == u"2m" ? "<BAND_RX:4>70cm" : "<BAND_RX:2>2m";
    }
    FieldIfAny(record, "OPERATOR", item(11));
    FieldIfAny(record, "COMMENT", item(12));
    if (remarksAsQslMessage && !item(12).isEmpty())
        Field(record, "QSLMSG", item(12));
    FieldIfAny(record, "MY_GRIDSQUARE", item(13));
    FieldIfAny(record, "GRIDSQUARE", item(14));
    FieldIfAny(record, "SOTA_REF", item(18));
    FieldIfAny(record, "SIG_INFO", item(20));
    FieldIfAny(record, "MY_SOTA_REF", item(21));
    FieldIfAny(record, "MY_SIG_INFO", item(19));
    return record + "<EOR>" + lineEnd;
}

QByteArray BackupRecord(const QsoRow &row)
{
    QByteArray record;
    record.reserve(512);
    Field(record, "STATION_CALLSIGN", row.MyCall);
    Field(record, "CALL", row.Estacion);
    Field(record, "MODE", row.Modo);
    Field(record, "BAND", row.Banda);
    Field(record, "FREQ", QString(row.Frecuencia).replace(u',', u'.'));
    Field(record, "QSO_DATE", CompactDate(row.Fecha));
    Field(record, "TIME_ON", CompactTime(row.Hora));
    Field(record, "RST_SENT", row.RSE);
    Field(record, "RST_RCVD", row.RSR);
    if (!row.Nombre_Sat.isEmpty()) {
        record += "<PROP_MODE:3>SAT";
        Field(record, "SAT_NAME", row.Nombre_Sat);
    }
    FieldIfAny(record, "OPERATOR", row.Operador);
    FieldIfAny(record, "COMMENT", row.Obs);
    FieldIfAny(record, "MY_GRIDSQUARE", row.MiGrid);
    FieldIfAny(record, "SOTA_REF", row.SOTA.trimmed());
    FieldIfAny(record, "SIG_INFO", row.POTA.trimmed());
    FieldIfAny(record, "IOTA_REF", row.IOTA.trimmed());
    FieldIfAny(record, "MY_SOTA_REF", row.MYSOTA.trimmed());
    FieldIfAny(record, "GRIDSQUARE", row.SuGrid);
    if (const QString state = row.LdA.trimmed(); !state.isEmpty()) {
        const double number = Conversions::LeadingNumber(state);
        record += number == 0 ? "<QSL_RCVD:1>N" : number == 2 ? "<QSL_RCVD:1>Y" : "";
    }
    Field(record, "LOG_NAME", row.NombreLog);
    return record + "<EOR>" + lineEnd;
}

QByteArray End() { return QByteArray("<EOF>") + lineEnd; }

Result<void> Write(QIODevice &device, const QByteArray &bytes, const QString &path)
{
    for (qint64 written = 0; written < bytes.size();) {
        const qint64 taken = device.write(bytes.constData() + written, bytes.size() - written);
        if (taken <= 0)
            return Failure{u"No se pudo terminar de escribir el archivo\n%1\n%2"_qs.arg(path, device.errorString()),
                Failure::Kind::Full};
        written += taken;
    }
    return {};
}

} // namespace AdifWriter
