// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

// What is known of the amateur bands. Bands are the texts of the column Banda, "160m" to "23cm"; frequencies are texts
// in megahertz with one point and three digits of kilohertz, "14.250". Numbers are read at the head of a text.
namespace BandPlan {

// The lists of the entry window, in the order shown: whole megahertz, bands, modes.
const QStringList &EntryMegahertz();
const QStringList &EntryBands();
const QStringList &EntryModes();

// The two windows that compose a frequency of two fields name the band of 1267 MHz differently, "23cm" in the entry
// window and "23m" in the edit window. Logs hold both, so neither may be changed into the other.
enum class FieldsOf { EntryWindow, EditWindow };

struct FieldBand {
    QString band; // empty when the megahertz value is none of the plan's
    bool outOfBand = false; // outside the limits of 80, 30 or 12 m; the QSO may be stored all the same
    QString message; // what the operator reads then, else empty
};

// The band of the fields megahertz and kilohertz. The megahertz value must equal a number of the plan: "14v" is 20 m,
// "14.2" is nothing. Limits: 80 m from 500 kHz, 30 m up to 250, 12 m from 890; other bands have none.
FieldBand BandOfFields(QStringView megahertz, QStringView kilohertz, FieldsOf window);

// The kilohertz field as it is left: filled with zeros in front to three digits, "" is "000". A longer text stays.
QString PadKilohertz(QStringView text);

// The band of a frequency in megahertz that comes from outside, by ranges with both edges inside: "14" to "15" is
// "20m". Between the ranges, and in 1.25 m and 23 cm, which have none, the empty text.
QString BandOfFrequency(QStringView text);

// A usual frequency of a band that comes without one: "20m" gives "14.100". The number at the head of the band is the
// key. The empty text for a band that is not listed, "1.25m" and "23cm" among them.
QString DefaultFrequencyOfBand(QStringView band);

// The band of a frequency as the log service writes it, "14.250.0". A text that holds an "m" is a band already and
// comes back as it stands; one that fits no pattern gives the empty text (60 m, 29 MHz and all above 149 MHz do).
QString BandOfDottedFrequency(QStringView text);

} // namespace BandPlan
