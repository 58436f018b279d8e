// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/Satellites.h"

#include "core/Conversions.h"

#include <algorithm>

const QStringList &DefaultSatellites()
{
    // Most rows end in the blank that stands for "no tone".
    static const QStringList rows{u"AO-7;70cm;2m;SSB;100.4"_qs, u"AO-73;70cm;2m;SSB; "_qs, u"XW-2A;70cm;2m;SSB; "_qs,
        u"XW-2B;70cm;2m;SSB; "_qs, u"XW-2C;70cm;2m;SSB; "_qs, u"XW-2D;70cm;2m;SSB; "_qs, u"XW-2F;70cm;2m;SSB; "_qs,
        u"CAS-4A;70cm;2m;SSB; "_qs, u"CAS-4B;70cm;2m;SSB; "_qs, u"LILACSAT-2;2m;70cm;SSB;"_qs,
        u"FO-29;2m;70cm;SSB; "_qs, u"SO-50;2m;70cm;FM;67.0"_qs, u"AO-85;70cm;2m;FM;67.0"_qs,
        u"IO-86;2m;70cm;FM;88.5"_qs, u"AO-91;70cm;2m;FM;67.0"_qs, u"AO-92;70cm;2m;FM;67.0"_qs};
    return rows;
}

QList<SatelliteRow> ReadSatellites(const QStringList &lines)
{
    QList<SatelliteRow> catalogue;
    QString tone, uplinkFrequency;
    for (const QString &line : lines) {
        if (line.count(u';') < 4)
            continue;
        SatelliteRow row{line.section(u';', 0, 0), line.section(u';', 1, 1), line.section(u';', 2, 2),
            line.section(u';', 3, 3), line.section(u';', 4), {}, {}};
        if (row.rest.contains(u';')) {
            tone = row.rest.section(u';', 0, 0);
            uplinkFrequency = row.rest.section(u';', 1);
        }
        row.tone = tone;
        row.uplinkFrequency = uplinkFrequency;
        catalogue << row;
    }
    return catalogue;
}

const SatelliteRow *FindSatellite(const QList<SatelliteRow> &catalogue, QStringView name)
{
    const auto found =
        std::find_if(catalogue.begin(), catalogue.end(), [name](const SatelliteRow &s) { return s.name == name; });
    return found == catalogue.end() ? nullptr : &*found;
}

std::optional<SatelliteLabels> LastRowLabels(const QList<SatelliteRow> &catalogue)
{
    if (catalogue.isEmpty())
        return std::nullopt;
    const SatelliteRow &last = catalogue.last();
    return SatelliteLabels{
        u"Subida:" + last.uplinkBand, u"Bajada:" + last.downlinkBand, u"Modo:" + last.mode, u"SubTono:" + last.rest};
}

SatelliteLabels ClickLabels(const SatelliteRow &satellite)
{
    return {u"Subida: " + satellite.uplinkBand + u" " + satellite.uplinkFrequency, u"Bajada: " + satellite.downlinkBand,
        u"Modo: " + satellite.mode, u"SubTono: " + satellite.tone};
}

UplinkFrequency ApplyUplink(QStringView subida)
{
    const QString uplink = subida.toString().remove(u"Subida: "_qs);
    const qsizetype blank = uplink.indexOf(u' ');
    const QString frequency = blank < 0 ? QString() : uplink.mid(blank + 1, 7);
    if (!frequency.left(3).trimmed().isEmpty())
        return {frequency.left(3), frequency.right(3)};
    const double band = Conversions::LeadingNumber(uplink);
    if (band == 70)
        return {u"435"_qs, u"550"_qs};
    if (band == 2)
        return {u"145"_qs, u"550"_qs};
    return {};
}
