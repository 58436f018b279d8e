// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// The satellite catalogue: its rows, what the entry window shows of them, and the frequency that a satellite sets.
// Reading and writing the file is the caller's; lines go in, values come out.

// The rows of a catalogue that does not exist yet, ready to be written.
const QStringList &DefaultSatellites();

// One row, "name;uplink band;downlink band;mode;tone;uplink frequency". The last field may be missing, with its ";".
struct SatelliteRow {
    QString name;
    QString uplinkBand;
    QString downlinkBand;
    QString mode;
    QString rest; // all behind the fourth ";", as it stands
    // Behind the fourth ";", cut at the fifth. A row without a fifth ";" has the tone and the frequency of the last row
    // above it that had one, and empty texts when there is none.
    QString tone;
    QString uplinkFrequency;
};

// Reads the lines in order. A line with fewer than four ";" is no satellite; the editor shows it all the same.
QList<SatelliteRow> ReadSatellites(const QStringList &lines);

// The first satellite of that name, exactly as written; null when there is none. Valid as long as the list.
const SatelliteRow *FindSatellite(const QList<SatelliteRow> &catalogue, QStringView name);

// The captions of the four labels of the satellite entry.
struct SatelliteLabels {
    QString subida;
    QString bajada;
    QString modo;
    QString subtono;
};

// After loading they show the last row, without a blank behind the word ("Subida:2m"); nothing for an empty catalogue,
// where they stay.
std::optional<SatelliteLabels> LastRowLabels(const QList<SatelliteRow> &catalogue);

// After the choice of a satellite: with a blank, and the uplink frequency behind the band ("Subida: 70cm 435.100").
SatelliteLabels ClickLabels(const SatelliteRow &satellite);

// The frequency that the caption of the uplink label gives. Seven characters of it are read, three in front and three
// at the end, so "1267.100" gives "126" and ".10", which the operator corrects. Without a frequency 70 cm gives 435.550
// and 2 m 145.550; other bands, and a caption that no choice has set yet ("Subida:70cm"), give two empty parts.
struct UplinkFrequency {
    QString megahertz;
    QString kilohertz;
};
UplinkFrequency ApplyUplink(QStringView subida);
