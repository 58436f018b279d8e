// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzzing.h"
#include "logging/CountryByScan.h"
#include "logging/DxccTable.h"
#include "logging/Provinces.h"
#include "logging/SatelliteEdit.h"
#include "logging/Satellites.h"

#include <algorithm>

// Any bytes at all are read as the table of prefixes and as the satellite catalogue: lines of fields between ";".

namespace {

// What is searched for: the prefix of a row, a call with it, and a beginning of it.
QStringList CallsOf(const QStringList &rows)
{
    constexpr qsizetype mostRows = 4, longestCall = 24;
    QStringList calls{u"LU1ABC/X"_qs};
    for (const QString &row : rows.mid(0, mostRows)) {
        const QString prefix = row.section(u';', 0, 0).left(longestCall);
        calls << prefix << prefix + u"1ABC/W" << prefix.chopped(prefix.isEmpty() ? 0 : 1);
    }
    return calls;
}

void CheckPrefixes(const QStringList &lines)
{
    DxccTable table;
    QStringList rows;
    for (const QString &line : lines)
        if (table.AddLine(line) != DxccTable::LineUse::NoSeparator) {
            rows << line;
            while (rows.last().startsWith(u' '))
                rows.last().remove(0, 1);
            while (rows.last().endsWith(u' '))
                rows.last().chop(1);
        }
    Require(table.Size() == rows.size(), "rows are counted");
    for (const QString &call : CallsOf(rows)) {
        QString cut = call, scanned = call;
        const QString country = table.CountryOfCall(cut);
        Require(country == CountryByScan(rows, scanned) && country == table.CountryOf(call), "the longest prefix");
        Require(cut == scanned, "what is left of the call");
        Require(!table.CountryLabel(call).isEmpty() && country.size() <= 100, "the country that is shown");
        const QString province = ArgentineProvince(call);
        Require(province.isEmpty() || province == u"0" || ProvinceNames().contains(province), "provinces");
    }
}

void CheckSatellite(const SatelliteRow &row, const QList<SatelliteRow> &catalogue)
{
    const SatelliteRow *found = FindSatellite(catalogue, row.name);
    Require(found && found->name == row.name, "a satellite by its name");
    if (row.rest.contains(u';'))
        Require(row.tone + u';' + row.uplinkFrequency == row.rest, "tone and frequency");
    const SatelliteLabels labels = ClickLabels(row);
    const UplinkFrequency uplink = ApplyUplink(labels.subida);
    Require(uplink.megahertz.size() <= 3 && uplink.kilohertz.size() <= 3, "the frequency of a satellite");
}

void CheckCatalogue(const QStringList &lines)
{
    const QList<SatelliteRow> catalogue = ReadSatellites(lines);
    Require(catalogue.size()
            == std::count_if(lines.begin(), lines.end(), [](const QString &line) { return line.count(u';') >= 4; }),
        "lines that are used");
    Require(LastRowLabels(catalogue).has_value() != catalogue.isEmpty(), "the last row");
    for (const SatelliteRow &row : catalogue.mid(0, 20))
        CheckSatellite(row, catalogue);
}

void CheckEditor(const QStringList &lines)
{
    const QStringList shown = SatelliteEdit::ShownLines(lines);
    Require(shown.size() == lines.size() && SatelliteEdit::ShownLines(shown) == shown, "lines that are shown");
    for (const QString &line : lines.mid(0, 20)) {
        const SatelliteEdit::Fields fields = SatelliteEdit::Parse(line);
        const QString made = SatelliteEdit::Line(fields);
        Require(
            made.count(u';') == 5 && SatelliteEdit::Line(SatelliteEdit::Parse(made)) == made, "a line of the editor");
        const QList<SatelliteRow> read = ReadSatellites({made});
        Require(read.size() == 1 && read.first().name == fields.name && read.first().mode == fields.mode,
            "what the editor writes is read");
        if (!SatelliteEdit::RefuseAdding(fields, lines))
            Require(fields.frequency.isEmpty() || fields.frequency.contains(u'.'), "what the editor takes");
        static_cast<void>(SatelliteEdit::CheckFrequency(fields.uplinkBand, fields.frequency));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    MemoryFolder folder;
    folder.File(u"tabla.txt"_qs) = BytesOf(data, size);
    const QStringList lines = folder.Lines(u"tabla.txt"_qs);
    CheckPrefixes(lines);
    CheckCatalogue(lines);
    CheckEditor(lines);
    return 0;
}
