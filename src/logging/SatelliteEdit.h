// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// The rules of the satellite editor. Lines are those of the catalogue file.
namespace SatelliteEdit {

const QStringList &Bands(); // "2m", "70cm", "23cm"
const QStringList &Modes(); // "FM", "SSB"

struct Fields {
    QString name, uplinkBand, downlinkBand, mode, tone, frequency;
};

// A line for these fields: an empty tone or frequency becomes a blank, so that the line keeps its separators.
QString Line(const Fields &fields);
// The fields of a line; a missing field is empty, a lone blank too.
Fields Parse(const QString &line);

// The list as the editor shows it: a line without a tone gets a blank behind its separator.
QStringList ShownLines(const QStringList &lines);

struct Refusal {
    enum class Field { Name, DownlinkBand, Frequency, None };
    QString message;
    Field field = Field::None;
};
// What keeps a new satellite from being added to these lines; the name is compared in upper case.
std::optional<Refusal> RefuseAdding(const Fields &fields, const QStringList &lines);

// How many characters a frequency of this uplink band has.
int FrequencyLength(const QString &band);
// The check when a frequency field is left; empty when all is well, or when the field is.
QString CheckFrequency(const QString &band, const QString &text);

} // namespace SatelliteEdit
