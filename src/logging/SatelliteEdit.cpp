// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/SatelliteEdit.h"

#include "core/Conversions.h"

#include <algorithm>

namespace SatelliteEdit {

namespace {

const QString formatOf23cm = u"En 23 cm, el formato de la frecuencia es:\n\nMMMM.KKK"_qs;

bool Outside(QStringView digits, double from, double to)
{
    const double value = Conversions::LeadingNumber(digits);
    return value < from || value > to;
}

} // namespace

const QStringList &Bands()
{
    static const QStringList bands{u"2m"_qs, u"70cm"_qs, u"23cm"_qs};
    return bands;
}

const QStringList &Modes()
{
    static const QStringList modes{u"FM"_qs, u"SSB"_qs};
    return modes;
}

QString Line(const Fields &fields)
{
    const auto orBlank = [](const QString &text) { return text.isEmpty() ? u" "_qs : text; };
    return QStringList{fields.name, fields.uplinkBand, fields.downlinkBand, fields.mode, orBlank(fields.tone),
        orBlank(fields.frequency)}
        .join(u';');
}

Fields Parse(const QString &line)
{
    const QStringList parts = line.split(u';');
    return {parts.value(0), parts.value(1), parts.value(2), parts.value(3), parts.value(4).trimmed(),
        parts.value(5).trimmed()};
}

QStringList ShownLines(const QStringList &lines)
{
    QStringList shown = lines;
    for (QString &line : shown)
        if (line.endsWith(u';'))
            line += u' ';
    return shown;
}

std::optional<Refusal> RefuseAdding(const Fields &fields, const QStringList &lines)
{
    const QString name = fields.name.toUpper();
    if (name.trimmed().isEmpty())
        return Refusal{u"Falta el nombre del Satélite!"_qs, Refusal::Field::Name};
    if (fields.uplinkBand == fields.downlinkBand)
        return Refusal{u"Banda de Subida igual a la de Bajada ?"_qs, Refusal::Field::DownlinkBand};
    const bool wrongLength = fields.uplinkBand == u"23cm" && fields.frequency.size() != 8;
    if (!fields.frequency.isEmpty() && (!fields.frequency.contains(u'.') || wrongLength))
        return Refusal{formatOf23cm, Refusal::Field::Frequency};
    const bool known =
        std::any_of(lines.begin(), lines.end(), [&](const QString &line) { return line.section(u';', 0, 0) == name; });
    if (known)
        return Refusal{u"el satélite "_qs + name + u" ya está en la lista!"_qs, Refusal::Field::None};
    return std::nullopt;
}

int FrequencyLength(const QString &band) { return band == u"23cm" ? 8 : 7; }

QString CheckFrequency(const QString &band, const QString &text)
{
    if (text.isEmpty())
        return {};
    if (text.size() != FrequencyLength(band) || !text.contains(u'.'))
        return band == u"23cm" ? formatOf23cm : u"El formato de la frecuencia es:\n\nMMM.KKK"_qs;
    const QString head = u"La frecuencia es "_qs + text + u'\n';
    if (band == u"2m" && Outside(text.left(3), 144, 148))
        return head + u"No es de la banda de 2m!"_qs;
    if (band == u"70cm" && Outside(text.left(3), 430, 440))
        return head + u"No es de la banda de 70m!"_qs;
    if (band == u"23cm" && Outside(text.left(4), 1267, 1268))
        return head + u"No es de la banda de satélites en 23cm!\ndebe estar en 1267MHz"_qs;
    return {};
}

} // namespace SatelliteEdit
