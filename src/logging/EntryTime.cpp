// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/EntryTime.h"

#include "core/Conversions.h"

#include <algorithm>
#include <cmath>

namespace EntryTime {

namespace {

// Far beyond any real offset, and small enough that no date leaves the calendar.
constexpr double mostHours = 1000;

qint64 OffsetSeconds(QStringView utcOffset)
{
    const double hours = Conversions::LeadingNumber(utcOffset.toString().replace(u',', u'.'));
    return std::llround(std::clamp(hours, -mostHours, mostHours) * 3600);
}

// A wall clock has no jumps of summer time: UTC serves as the zone that has none.
QDateTime WallClock(QDate date, QTime time) { return QDateTime(date, time, Qt::UTC); }

DateAndTime Fields(const QDateTime &moment)
{
    return {Conversions::DateText(moment.date()), Conversions::TimeText(moment.time())};
}

} // namespace

DateAndTime ClockFields(const QDateTime &localNow, QStringView utcOffset)
{
    const QTime minute(localNow.time().hour(), localNow.time().minute());
    return Fields(WallClock(localNow.date(), minute).addSecs(-OffsetSeconds(utcOffset)));
}

DateAndTime LocalFields(const QDateTime &localNow) { return Fields(localNow); }

std::optional<DateAndTime> CorrectedAtEntry(
    QStringView fecha, QStringView hora, bool zoneVisible, QStringView zoneCaption, QStringView utcOffset)
{
    const std::optional<QDate> date = Conversions::ParseDate(fecha);
    const std::optional<QTime> time = Conversions::ParseTime(hora);
    if (!date || !time)
        return std::nullopt;
    const bool local = zoneVisible && zoneCaption == u"LU";
    const QDateTime moment = WallClock(*date, *time).addSecs(local ? -OffsetSeconds(utcOffset) : 0);
    return DateAndTime{Conversions::DateText(moment.date()), Conversions::LongTimeText(moment.time())};
}

} // namespace EntryTime
