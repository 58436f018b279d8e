// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

// Date and time of an entry, between local time and UTC. The station's offset from UTC comes as the operator wrote it,
// in hours: "-3", "-3.5" or "-3,5"; a text that is no number is 0. Local times are taken as the wall clock shows them,
// without any rule of the machine's own time zone.
namespace EntryTime {

struct DateAndTime {
    QString fecha; // "dd/mm/yyyy"
    QString hora; // "hh:mm" in the fields, "hh:mm:ss" in a row
};

// What the fields show while the clock runs: the local time, cut to the minute, as UTC.
DateAndTime ClockFields(const QDateTime &localNow, QStringView utcOffset);

// What they show when the operator asked for local time.
DateAndTime LocalFields(const QDateTime &localNow);

// Date and time of the row, from the fields at the moment of entry. They are corrected to UTC only where `zoneCaption`
// is visible and says "LU"; in all other cases they hold UTC already. Nothing when the fields cannot be read.
std::optional<DateAndTime> CorrectedAtEntry(
    QStringView fecha, QStringView hora, bool zoneVisible, QStringView zoneCaption, QStringView utcOffset);

} // namespace EntryTime
