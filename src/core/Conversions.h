// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>
#include <optional>

// How texts become numbers, dates and times, and back. The rules are those of the platform that the log files
// come from, so that a value reads the same here as it was meant there; they live in this one place.
namespace Conversions {

// The number at the head of `text`: blanks and tabs are passed over anywhere, then sign, digits, one point and an
// exponent ("E" or "D") are taken as far as they make sense. "70cm" is 70, " 1 5 " is 15, "-3.5x" is -3.5.
// Anything without a number at its head, the empty text included, is 0. A comma ends the number.
double LeadingNumber(QStringView text);

// The same, rounded half to even and limited to the range of int.
int LeadingInteger(QStringView text);

// Rounds half to even: 0.5 is 0, 1.5 is 2, -2.5 is -2.
qint64 RoundHalfEven(double value);

// Years below 100 by the platform's window: 0 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999. Others stay.
int FourDigitYear(int year);

// What counts as a date: three numbers separated by "/", "-" or ".", day first ("1/2/26", "01/02/2026") or year first
// when the first number has four digits ("2026-02-01"). A second number above 12 with a first of at most 12 is read
// month first ("02/25/2026"). Outer blanks do not matter. Nothing for everything else, impossible days included.
std::optional<QDate> ParseDate(QStringView text);

// What counts as a time: "h:m" or "h:m:s", each of one or two digits and in range. Outer blanks do not matter.
std::optional<QTime> ParseTime(QStringView text);

// "dd/mm/yyyy", "hh:mm" and "hh:mm:ss": what the windows show.
QString DateText(QDate date);
QString TimeText(QTime time);
QString LongTimeText(QTime time);

// "yyyy-mm-dd" and "hh:mm:ss": what the columns Fecha and Hora of the general log hold, so that they sort in time
// order as text. A text that is no date or time gives the empty text.
QString StoredDate(QStringView shown);
QString StoredTime(QStringView shown);

// Back from the stored to the shown form: "dd/mm/yyyy" and "hh:mm". A text in neither form comes back as it is,
// with "-" and blanks of a date turned into "/", so that damaged foreign rows still show what they hold.
QString ShownDate(QStringView stored);
QString ShownTime(QStringView stored);

// Minutes from `from` to `to`, counted by the minute boundaries between them: 10:00:59 to 10:01:00 is 1.
qint64 MinutesBetween(const QDateTime &from, const QDateTime &to);

// Appends one blank for each count from the text's length up to `width`, both included: a text that fits comes out
// `width` + 1 long, a longer one still gets one blank.
QString PadRight(QStringView text, int width);

// Puts "0" in front until the text has `width` characters; a longer text stays.
QString PadZeros(QStringView text, int width);

} // namespace Conversions
