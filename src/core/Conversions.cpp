// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Conversions.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>

namespace Conversions {

namespace {

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }

// Numbers of one to four digits; -1 for anything else.
int SmallNumber(QStringView text)
{
    if (text.isEmpty() || text.size() > 4 || !std::all_of(text.begin(), text.end(), IsDigit))
        return -1;
    return text.toInt();
}

} // namespace

double LeadingNumber(QStringView text)
{
    QString number;
    bool point = false, exponent = false, digits = false;
    for (const QChar c : text) {
        if (c == u' ' || c == u'\t' || c == u'\n' || c == u'\r')
            continue;
        if (IsDigit(c)) {
            digits = true;
        } else if (c == u'+' || c == u'-') {
            if (!number.isEmpty() && !number.endsWith(u'e'))
                break;
        } else if (c == u'.' && !point && !exponent) {
            point = true;
        } else if (digits && !exponent && (c.toLower() == u'e' || c.toLower() == u'd')) {
            exponent = true;
            number += u'e';
            continue;
        } else {
            break;
        }
        number += c;
    }
    // An exponent without digits is no exponent: "12e" and "12e+" are 12.
    while (!number.isEmpty() && !IsDigit(number.back()) && number.back() != u'.')
        number.chop(1);
    return digits ? number.toDouble() : 0.0;
}

int LeadingInteger(QStringView text)
{
    const double value = LeadingNumber(text);
    if (value >= std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (value <= std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return static_cast<int>(RoundHalfEven(value));
}

qint64 RoundHalfEven(double value)
{
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest != 0.5)
        return std::llround(value);
    return static_cast<qint64>(std::fmod(below, 2.0) == 0.0 ? below : below + 1.0);
}

int FourDigitYear(int year)
{
    if (year < 0 || year > 99)
        return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<QDate> ParseDate(QStringView text)
{
    QString even = text.trimmed().toString();
    even.replace(u'-', u'/').replace(u'.', u'/');
    const QStringList parts = even.split(u'/');
    if (parts.size() != 3)
        return std::nullopt;
    const int a = SmallNumber(parts[0]), b = SmallNumber(parts[1]), c = SmallNumber(parts[2]);
    if (a < 0 || b < 0 || c < 0)
        return std::nullopt;
    QDate date;
    if (parts[0].size() == 4)
        date = QDate(a, b, c);
    else if (b > 12 && a <= 12)
        date = QDate(FourDigitYear(c), a, b);
    else
        date = QDate(FourDigitYear(c), b, a);
    return date.isValid() && date.year() >= 100 ? std::optional(date) : std::nullopt;
}

std::optional<QTime> ParseTime(QStringView text)
{
    const QList<QStringView> parts = text.trimmed().split(u':');
    if (parts.size() < 2 || parts.size() > 3)
        return std::nullopt;
    int numbers[3] = {0, 0, 0};
    for (qsizetype i = 0; i < parts.size(); ++i) {
        numbers[i] = parts[i].size() > 2 ? -1 : SmallNumber(parts[i]);
        if (numbers[i] < 0)
            return std::nullopt;
    }
    const QTime time(numbers[0], numbers[1], numbers[2]);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

QString DateText(QDate date) { return date.toString(u"dd/MM/yyyy"); }

QString TimeText(QTime time) { return time.toString(u"hh:mm"); }

QString LongTimeText(QTime time) { return time.toString(u"hh:mm:ss"); }

QString StoredDate(QStringView shown)
{
    const auto date = ParseDate(shown);
    return date ? date->toString(u"yyyy-MM-dd") : QString();
}

QString StoredTime(QStringView shown)
{
    const auto time = ParseTime(shown);
    return time ? LongTimeText(*time) : QString();
}

QString ShownDate(QStringView stored)
{
    if (const auto date = ParseDate(stored))
        return DateText(*date);
    return stored.toString().replace(u'-', u'/').replace(u' ', u'/');
}

QString ShownTime(QStringView stored)
{
    const auto time = ParseTime(stored);
    return time ? TimeText(*time) : stored.toString();
}

qint64 MinutesBetween(const QDateTime &from, const QDateTime &to)
{
    const auto minute = [](const QDateTime &at) {
        return std::floor(static_cast<double>(at.toMSecsSinceEpoch()) / 60000.0);
    };
    return static_cast<qint64>(minute(to) - minute(from));
}

QString PadRight(QStringView text, int width)
{
    QString padded = text.toString();
    const qsizetype length = padded.size();
    padded += QString(std::max<qsizetype>(1, width - length + 1), u' ');
    return padded;
}

QString PadZeros(QStringView text, int width) { return text.toString().rightJustified(width, u'0'); }

} // namespace Conversions
