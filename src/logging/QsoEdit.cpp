// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/QsoEdit.h"

#include "core/Conversions.h"
#include "core/QsoTable.h"
#include "logging/BandPlan.h"
#include "logging/Provinces.h"

namespace QsoEdit {

namespace {

QStringList With(QStringList modes, const QString &mode)
{
    if (!modes.contains(mode))
        modes << mode;
    return modes;
}

struct PlainColumn {
    QString EditFields::*shown;
    QString QsoRow::*column;
};

// Columns that hold just what their field shows.
constexpr PlainColumn plainColumns[] = {{&EditFields::mode, &QsoRow::Modo}, {&EditFields::band, &QsoRow::Banda},
    {&EditFields::station, &QsoRow::MyCall}, {&EditFields::call, &QsoRow::Estacion},
    {&EditFields::date, &QsoRow::Fecha}, {&EditFields::time, &QsoRow::Hora}, {&EditFields::reportSent, &QsoRow::RSE},
    {&EditFields::reportReceived, &QsoRow::RSR}, {&EditFields::remarks, &QsoRow::Obs},
    {&EditFields::operatorCall, &QsoRow::Operador}, {&EditFields::ownGrid, &QsoRow::MiGrid},
    {&EditFields::grid, &QsoRow::SuGrid}, {&EditFields::satellite, &QsoRow::Nombre_Sat},
    {&EditFields::SOTA, &QsoRow::SOTA}, {&EditFields::IOTA, &QsoRow::IOTA}, {&EditFields::POTA, &QsoRow::POTA},
    {&EditFields::MYSOTA, &QsoRow::MYSOTA}};

// The fields in the form in which they are saved.
EditFields Tidied(EditFields fields)
{
    fields.satellite = fields.satellite.toUpper();
    for (QString EditFields::*reference :
        {&EditFields::SOTA, &EditFields::POTA, &EditFields::MYSOTA, &EditFields::IOTA})
        fields.*reference = (fields.*reference).trimmed();
    fields.remarks.remove(u'\'');
    if (const auto date = Conversions::ParseDate(fields.date))
        fields.date = Conversions::DateText(*date);
    return fields;
}

} // namespace

EditFields FromRow(const QsoRow &row)
{
    EditFields fields;
    fields.id = row.id;
    fields.station = row.MyCall;
    fields.call = row.Estacion;
    fields.operatorCall = row.Operador;
    fields.date = Conversions::ShownDate(row.Fecha);
    fields.time = Conversions::ShownTime(row.Hora);
    fields.reportSent = row.RSE;
    fields.reportReceived = row.RSR;
    fields.remarks = row.Obs;
    const QString frequency = QString(row.Frecuencia).replace(u',', u'.');
    const qsizetype point = frequency.indexOf(u'.');
    fields.mhz = point < 0 ? frequency : frequency.left(point);
    fields.khz = point < 0 ? QString() : frequency.mid(point + 1, 4);
    fields.band = row.Banda;
    fields.mode = row.Modo;
    fields.ownGrid = row.MiGrid;
    fields.grid = row.SuGrid;
    fields.satellite = row.Nombre_Sat.trimmed();
    fields.SOTA = row.SOTA.trimmed();
    fields.POTA = row.POTA.trimmed();
    fields.MYSOTA = row.MYSOTA.trimmed();
    fields.IOTA = row.IOTA.trimmed();
    fields.lda = row.LdA;
    return fields;
}

QStringList ModesForList(const QString &mode)
{
    return With({u"SSB"_qs, u"CW"_qs, u"FM"_qs, u"AM"_qs, u"DVoice"_qs, u"DV IP"_qs, u"Echo"_qs, u"Echo IP"_qs}, mode);
}

QStringList ModesForKey(const QString &mode) { return With({u"SSB"_qs, u"FM"_qs, u"CW"_qs, u"Sat"_qs}, mode); }

QString Uploaded(const QString &lda) { return Conversions::LeadingInteger(lda) >= 1 ? u"SI"_qs : u"NO"_qs; }

QString Confirmed(const QString &lda) { return Conversions::LeadingInteger(lda) >= 2 ? u"SI"_qs : u"NO"_qs; }

std::optional<Refusal> RefuseSave(const EditFields &fields)
{
    using Field = Refusal::Field;
    if (fields.mode == u"Sat" && fields.satellite.trimmed().isEmpty())
        return Refusal{u"Debe agregar el nombre del Satélite"_qs, true, Field::Satellite};
    if (fields.call == fields.station)
        return Refusal{u"QSO con la propia estación???"_qs, true, Field::Call};
    if (fields.call == fields.operatorCall)
        return Refusal{u"QSO con el Operador???"_qs, true, Field::Call};
    if (fields.reportSent.trimmed().isEmpty())
        return Refusal{u"Reporte incorrecto!"_qs, false, Field::ReportSent};
    if (fields.reportReceived.trimmed().isEmpty())
        return Refusal{u"Reporte incorrecto!"_qs, false, Field::ReportReceived};
    // A row without a mode is the marker of a log: no list would ever show the contact again.
    if (fields.mode.isEmpty())
        return Refusal{u"Falta el Modo!"_qs, false, Field::Mode};
    return std::nullopt;
}

QString CheckDate(const QString &text)
{
    const bool shaped = text.size() == 10 && text[2] == u'/' && text[5] == u'/';
    return shaped && Conversions::ParseDate(text) ? QString() : u"Error Fecha!\nFormato: DD/MM/AAAA"_qs;
}

QString CheckTime(const QString &text)
{
    if (text.size() != 5 || text[2] != u':')
        return u"Error Hora!\nFormato: HH:MM"_qs;
    if (Conversions::LeadingNumber(text.left(2)) > 23)
        return u"Error Hora!\nMayor de 23."_qs;
    if (Conversions::LeadingNumber(text.mid(3)) > 59)
        return u"Error Minutos!\nMayor de 59."_qs;
    // Four digits are left to look for: "1?:30" has the shape of a time but is none.
    return Conversions::ParseTime(text) ? QString() : u"Error Hora!\nFormato: HH:MM"_qs;
}

Result<bool> UpdateQso(LogStore &store, const EditFields &fields, const EditFields &shown)
{
    const EditFields tidied = Tidied(fields);
    QsoTable::Changes changes;
    for (const PlainColumn &column : plainColumns)
        if (fields.*column.shown != shown.*column.shown || tidied.*column.shown != fields.*column.shown)
            changes.append({column.column, tidied.*column.shown});
    if (fields.mhz != shown.mhz || fields.khz != shown.khz)
        changes.append({&QsoRow::Frecuencia, QString(tidied.mhz + u'.' + tidied.khz)});
    // This window names the band of 1267 MHz in its own way, touched or not.
    if (fields.band == shown.band && Conversions::LeadingNumber(tidied.mhz) == 1267)
        changes.append(
            {&QsoRow::Banda, BandPlan::BandOfFields(tidied.mhz, tidied.khz, BandPlan::FieldsOf::EditWindow).band});
    changes.append({&QsoRow::Argento, ArgentineProvince(tidied.call)});
    changes.append({&QsoRow::LdA, QString()});
    return store.Write([&](Session &session) { return QsoTable::Update(session, tidied.id, changes); });
}

Result<bool> DeleteQso(LogStore &store, qint64 id)
{
    return store.Write([&](Session &session) { return QsoTable::Delete(session, id); });
}

Result<std::optional<QsoRow>> FindQso(LogStore &store, const QString &logName, std::optional<qint64> id)
{
    return store.Read([&](Session &session) -> std::optional<QsoRow> {
        const QString condition = id
            ? u"id=? AND \"Nombre Log\"=? AND Modo<>''"_qs
            : u"\"Nombre Log\"=? AND Modo<>'' ORDER BY Fecha DESC, Hora DESC, id DESC LIMIT 1"_qs;
        Query query = session.Prepare(u"SELECT " + QsoColumns::SelectList() + u" FROM Tabla1 WHERE " + condition);
        if (id)
            query.Bind(1, *id).Bind(2, logName);
        else
            query.Bind(1, logName);
        return query.Next() ? std::optional(query.Row()) : std::nullopt;
    });
}

} // namespace QsoEdit
