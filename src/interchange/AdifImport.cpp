// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/AdifImport.h"

#include "core/Conversions.h"
#include "interchange/AdifRecord.h"
#include "logging/BandPlan.h"

#include <optional>

namespace AdifImport {

namespace {

bool IsDigitalVoice(const QString &mode)
{
    static const QStringList modes{u"DIGITALVOICE"_qs, u"C4FM"_qs, u"DMR"_qs, u"VOI"_qs, u"DSTAR"_qs, u"FREEDV"_qs};
    return modes.contains(mode);
}

bool TakesShortReport(const QString &mode)
{
    static const QStringList modes{u"DVoice"_qs, u"DATA"_qs, u"FM"_qs, u"SSB"_qs, u"LSB"_qs, u"USB"_qs};
    return modes.contains(mode);
}

// What the columns of the log hold at most.
struct Width {
    QString QsoRow::*column;
    int characters;
    const char16_t *name;
};
constexpr Width widths[] = {{&QsoRow::Modo, 7, u"MODE"}, {&QsoRow::Banda, 9, u"BAND"},
    {&QsoRow::MyCall, 20, u"STATION_CALLSIGN"}, {&QsoRow::Estacion, 20, u"CALL"}, {&QsoRow::RSE, 3, u"RST_SENT"},
    {&QsoRow::RSR, 3, u"RST_RCVD"}, {&QsoRow::Obs, 100, u"COMMENT"}, {&QsoRow::Operador, 50, u"OPERATOR"},
    {&QsoRow::Frecuencia, 10, u"FREQ"}, {&QsoRow::MiGrid, 6, u"MY_GRIDSQUARE"}, {&QsoRow::SuGrid, 6, u"GRIDSQUARE"}};

// "20261124" becomes "24/11/2026", by position.
QString SlashedDate(const QString &date)
{
    return date.isEmpty() ? QString() : QString(date.mid(6, 2) + u'/' + date.mid(4, 2) + u'/' + date.left(4));
}

QString ColonTime(const QString &time)
{
    return time.isEmpty() ? QString() : QString(time.left(2) + u':' + time.mid(2, 2));
}

struct Plain {
    AdifTag tag;
    QString QsoRow::*column;
};
constexpr Plain plainFields[] = {{AdifTag::MySigInfo, &QsoRow::IOTA}, {AdifTag::SotaRef, &QsoRow::SOTA},
    {AdifTag::MySotaRef, &QsoRow::MYSOTA}, {AdifTag::SigInfo, &QsoRow::POTA}, {AdifTag::Gridsquare, &QsoRow::SuGrid},
    {AdifTag::MyGridsquare, &QsoRow::MiGrid}, {AdifTag::StationCallsign, &QsoRow::MyCall},
    {AdifTag::Call, &QsoRow::Estacion}, {AdifTag::Band, &QsoRow::Banda}, {AdifTag::Freq, &QsoRow::Frecuencia},
    {AdifTag::RstSent, &QsoRow::RSE}, {AdifTag::RstRcvd, &QsoRow::RSR}, {AdifTag::Operator, &QsoRow::Operador},
    {AdifTag::Mode, &QsoRow::Modo}, {AdifTag::Comment, &QsoRow::Obs}, {AdifTag::SatName, &QsoRow::Nombre_Sat}};

void ReadFields(const AdifRecord &record, const Settings &settings, QsoRow &row)
{
    for (const Plain &field : plainFields)
        row.*field.column = record.Value(field.tag);
    if (settings.fromLda)
        row.LdA = record.Value(AdifTag::QslRcvd);
    row.Fecha = SlashedDate(record.Value(AdifTag::QsoDate));
    row.Hora = ColonTime(record.Value(AdifTag::TimeOn));
    const bool name = record.Has(AdifTag::Name), comment = record.Has(AdifTag::Comment);
    if (name && settings.sotaFields)
        row.SOTA = record.Value(AdifTag::Name).toUpper();
    if (name && settings.potaFields)
        row.POTA = record.Value(AdifTag::Name).toUpper();
    if (comment && settings.sotaFields)
        row.MYSOTA = row.Obs.toUpper();
    if (comment && settings.potaFields)
        row.IOTA = row.Obs.toUpper();
    if (IsDigitalVoice(row.Modo))
        row.Modo = u"DVoice"_qs;
    if (settings.fromLda && row.Modo.toUpper() == u"SAT")
        row.Modo = u"FM"_qs;
}

void FillIn(Contact &contact, const QString &propagation)
{
    QsoRow &row = contact.row;
    if (row.Banda.isEmpty() && row.Frecuencia.isEmpty())
        contact.troubles << Trouble::BandAndFrequency;
    else if (row.Frecuencia.isEmpty())
        row.Frecuencia = BandPlan::DefaultFrequencyOfBand(row.Banda);
    else if (row.Banda.isEmpty())
        row.Banda = BandPlan::BandOfFrequency(row.Frecuencia);
    if (row.Modo.toUpper() == u"SAT") {
        row.Modo = u"FM"_qs;
        if (propagation.toUpper() == u"SAT" && row.Nombre_Sat.isEmpty())
            row.Nombre_Sat = u"Via Satelite"_qs;
    }
    const QString report = TakesShortReport(row.Modo) ? u"59"_qs : u"599"_qs;
    for (QString *field : {&row.RSE, &row.RSR})
        if (field->isEmpty())
            *field = report;
    if (row.LdA == u"Y")
        row.LdA = u"2"_qs;
    else if (row.LdA == u"N")
        row.LdA = u"1"_qs;
}

void CutToWidths(Contact &contact)
{
    for (const Width &width : widths) {
        QString &value = contact.row.*width.column;
        if (value.size() <= width.characters)
            continue;
        value.truncate(width.characters - (value[width.characters - 1].isHighSurrogate() ? 1 : 0));
        contact.changes << u"%1 se cortó a %2 caracteres."_qs.arg(QString::fromUtf16(width.name)).arg(width.characters);
    }
}

// The checks that decide whether the record is taken at all; the first that fails is told.
std::optional<Trouble> ReasonToDrop(const QsoRow &row)
{
    // Day and month are told by their places here: a month of 13 is not a day.
    const auto date = Conversions::ParseDate(row.Fecha);
    if (!date || date->month() != row.Fecha.section(u'/', 1, 1).toInt())
        return Trouble::Date;
    if (!Conversions::ParseTime(row.Hora))
        return Trouble::Time;
    return std::nullopt;
}

Contact Drop(Contact contact, Trouble trouble)
{
    contact.dropped = true;
    contact.troubles << trouble;
    return contact;
}

} // namespace

QStringList TroubleLines(const QMap<Trouble, int> &troubles)
{
    static const QMap<Trouble, QString> texts{{Trouble::Date, u" error(es) Fecha"_qs},
        {Trouble::Time, u" error(es) QTR"_qs}, {Trouble::Reports, u" error(es) RT(S)"_qs},
        {Trouble::BandAndFrequency, u" error(es) Banda/Frec."_qs}, {Trouble::Incomplete, u" error(es) ADIF."_qs}};
    QStringList lines;
    for (auto text = texts.begin(); text != texts.end(); ++text)
        if (const int count = troubles.value(text.key()))
            lines << u"> "_qs + QString::number(count) + text.value();
    return lines;
}

Contact ParseRecord(QByteArrayView bytes, const Settings &settings)
{
    const AdifRecord record(bytes);
    Contact contact;
    QsoRow &row = contact.row;
    ReadFields(record, settings, row);
    const QString propagation = record.Value(AdifTag::PropMode);
    FillIn(contact, propagation);
    if (!settings.typedStation.isEmpty())
        row.MyCall = settings.typedStation;
    if (row.Estacion.isEmpty() || row.Fecha.isEmpty() || row.Hora.isEmpty())
        return Drop(std::move(contact), Trouble::Incomplete);
    if (propagation == u"SAT" && row.Modo.isEmpty()) {
        row.Modo = u"FM"_qs;
        if (row.Nombre_Sat.isEmpty())
            row.Nombre_Sat = u"Satélite"_qs;
    }
    CutToWidths(contact);
    if (row.Modo.isEmpty())
        contact.changes << u"sin modo, no se verá en las listas"_qs;
    if (const auto trouble = ReasonToDrop(row))
        return Drop(std::move(contact), *trouble);
    return contact;
}

} // namespace AdifImport
