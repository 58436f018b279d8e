// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// The province of an Argentine station, as its callsign tells it. A suffix is the part of the call behind the digit
// ("AB" in "LU1ABC") or behind the slash ("W" in "LU1ABC/W"); its first letter, for "G" and "X" the first two, names
// the province.

// The 25 names in the order of their letters, which is the order in which the statistics show them: "Capital",
// "Buenos Aires", ... "Neuquén", "Antártida".
const QStringList &ProvinceNames();

// The suffix of a call with an Argentine prefix (AY, AZ, L1 to L9, LO to LW, in either case); nothing for any other
// call. Calls in L skip digits behind the third character and give at most two characters: "LU10ABC" is "AB", "LW5D"
// is "D", "LU1" the empty text, "LU123" "23". Calls in AY and AZ give up to ten characters as they stand: "AY1ABC" is
// "ABC". The result is in upper case.
std::optional<QString> ArgentineSuffix(QStringView call);

// The province of a suffix in upper case; the empty text when its first character is no letter of the table. A lone
// "G" is "Chaco", a lone "X" "Tierra del Fuego". The result shares its text with ProvinceNames().
QString ProvinceOfSuffix(QStringView suffix);

// The value of the column Argento: the province of the call, or the empty text for a foreign station and for an
// Argentine one whose suffix names no province.
// - One slash: the part before it decides whether the call is Argentine, the part behind it names the province
//   ("LU1ABC/W" is "Chubut"); behind "MM" and "MA" there is none.
// - Two slashes: the text "0", which is not empty and equals no province.
// - None, or three and more: the whole call is read.
QString ArgentineProvince(QStringView call);
