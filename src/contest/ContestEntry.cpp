// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/ContestEntry.h"

#include "contest/ContestLogs.h"
#include "core/Conversions.h"
#include "logging/CallInfo.h"

#include <algorithm>

const QStringList &ContestModes()
{
    static const QStringList modes{u"SSB"_qs, u"FM"_qs, u"CW"_qs, u"DG"_qs};
    return modes;
}

const QStringList &ContestBands()
{
    static const QStringList bands{
        u"160m"_qs, u"80m"_qs, u"40m"_qs, u"20m"_qs, u"15m"_qs, u"10m"_qs, u"6m"_qs, u"2m"_qs};
    return bands;
}

const QStringList &ContestMegahertz()
{
    static const QStringList megahertz{u"1"_qs, u"3"_qs, u"7"_qs, u"14"_qs, u"21"_qs, u"28"_qs, u"6"_qs, u"2"_qs};
    return megahertz;
}

namespace {

struct Needed {
    QString ContestFields::*field;
    const char16_t *message;
    ContestFocus focus;
};
constexpr Needed neededFields[] = {
    {&ContestFields::ownCall, u"Falta su Señal Distintiva!", ContestFocus::OwnCall},
    {&ContestFields::fecha, u"Falta la Fecha!", ContestFocus::Fecha},
    {&ContestFields::hora, u"Falta el QTR!", ContestFocus::Hora},
    {&ContestFields::corresponsal, u"", ContestFocus::Corresponsal},
    {&ContestFields::rse, u"Falta la Serie Enviada", ContestFocus::Rse},
    {&ContestFields::rsr, u"", ContestFocus::Rsr},
};

// The filter of the general log that takes the same characters, and "?" besides.
EntryRules::KeyFilter SimilarTo(ContestFilter filter)
{
    using EntryRules::KeyFilter;
    switch (filter) {
    case ContestFilter::OwnCall:
        return KeyFilter::Callsign;
    case ContestFilter::Date:
        return KeyFilter::Date;
    case ContestFilter::Time:
        return KeyFilter::Time;
    case ContestFilter::Digits:
        return KeyFilter::Digits;
    case ContestFilter::SerieText:
        break;
    }
    return KeyFilter::Grid;
}

// The general log's check with its message set wider.
EntryRules::FieldCheck Widened(EntryRules::FieldCheck check)
{
    check.message.replace(u"\nFormato"_qs, u"\n\nFormato"_qs);
    return check;
}

} // namespace

std::optional<ContestRefusal> CheckContestEntry(const ContestFields &fields)
{
    for (const Needed &needed : neededFields)
        if ((fields.*needed.field).isEmpty())
            return ContestRefusal{QString::fromUtf16(needed.message), needed.focus};
    // Enter can come before a field is left, and with it before the field's own check.
    if (const QString message = CheckContestFecha(fields.fecha).message; !message.isEmpty())
        return ContestRefusal{message, ContestFocus::Fecha};
    if (const QString message = CheckContestHora(fields.hora).message; !message.isEmpty())
        return ContestRefusal{message, ContestFocus::Hora};
    return std::nullopt;
}

QsoRow BuildContestRow(const ContestFields &fields)
{
    QsoRow row;
    row.Modo = fields.mode;
    row.Banda = fields.band;
    row.MyCall = fields.ownCall;
    row.Estacion = fields.corresponsal;
    if (const auto date = Conversions::ParseDate(CheckContestFecha(fields.fecha).text))
        row.Fecha = date->toString(u"yyyyMMdd");
    if (const auto time = Conversions::ParseTime(fields.hora))
        row.Hora = time->toString(u"hhmm");
    row.RSE = fields.rse;
    row.RSR = fields.rsr;
    row.NombreLog = fields.contest;
    row.Frecuencia = QString(fields.mhz + fields.khz).remove(u'.');
    row.LdA = fields.contest;
    row.Nombre_Sat = fields.type;
    return row;
}

QString ContestReport(QStringView mode) { return mode == u"SSB" || mode == u"FM" ? u"59"_qs : u"599"_qs; }

QString NextContestSerial(QStringView last)
{
    return QString::number(static_cast<qint64>(Conversions::LeadingInteger(last)) + 1);
}

QString ContestCountText(qint64 count) { return QString::number(count) + u" QSOs "_qs; }

QString ContestCountAfterStore(QStringView caption) { return NextContestSerial(caption) + u" QSOs"_qs; }

EntryRules::FieldCheck CheckContestFecha(QStringView text) { return Widened(EntryRules::CheckFecha(text)); }

EntryRules::FieldCheck CheckContestHora(QStringView text) { return Widened(EntryRules::CheckHora(text)); }

QString CheckContestOwnCall(QStringView text)
{
    return text.isEmpty() || LooksLikeCallsign(text) ? QString() : DoubtfulCallMessage(text);
}

QString OwnCallWarning(QStringView call, QStringView ownCall)
{
    if (call.trimmed().isEmpty() || call != ownCall)
        return {};
    return u"QSO con " + call + u" ???";
}

std::optional<QString> ContestBandOfMegahertz(QStringView megahertz)
{
    const qsizetype place = ContestMegahertz().indexOf(megahertz);
    // The entries "6" and "2" name bands, not megahertz.
    if (place < 0 || place > 5)
        return std::nullopt;
    return ContestBands().at(place);
}

ContestFilter SentSerieFilter(QStringView type)
{
    return type == SerieType::Incremental ? ContestFilter::Digits : ContestFilter::SerieText;
}

std::optional<QChar> FilterContestKey(QChar key, ContestFilter filter)
{
    if (key == u'?')
        return std::nullopt;
    return EntryRules::FilterKey(key, SimilarTo(filter));
}

QString FilterContestText(QStringView text, ContestFilter filter)
{
    QString passed;
    for (const QChar key : text)
        if (const auto c = FilterContestKey(key, filter))
            passed += *c;
    return passed;
}
