// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/BandPlan.h"

#include "core/Conversions.h"

#include <algorithm>
#include <iterator>

using Conversions::LeadingNumber;

namespace BandPlan {

namespace {

struct WholeMegahertz {
    int first, last;
    const char16_t *band;
};
constexpr WholeMegahertz wholeMegahertz[] = {{1, 1, u"160m"}, {3, 3, u"80m"}, {5, 5, u"60m"}, {7, 7, u"40m"},
    {10, 10, u"30m"}, {14, 14, u"20m"}, {18, 18, u"17m"}, {21, 21, u"15m"}, {24, 24, u"12m"}, {28, 29, u"10m"},
    {50, 54, u"6m"}, {144, 147, u"2m"}, {220, 224, u"1.25m"}, {430, 443, u"70cm"}, {1267, 1267, u"23cm"}};

struct Limit {
    const char16_t *band;
    double lowest, highest; // kilohertz
};
constexpr Limit limits[] = {{u"80m", 500, 1e300}, {u"30m", -1e300, 250}, {u"12m", 890, 1e300}};

struct Range {
    double from, to; // megahertz
    const char16_t *band;
};
constexpr Range ranges[] = {{1, 2, u"160m"}, {3, 4, u"80m"}, {5, 6, u"60m"}, {7, 8, u"40m"}, {10, 11, u"30m"},
    {14, 15, u"20m"}, {18, 19, u"17m"}, {21, 22, u"15m"}, {24, 25, u"12m"}, {28, 30, u"10m"}, {50, 55, u"6m"},
    {144, 148, u"2m"}, {430, 440, u"70cm"}};

struct DefaultFrequency {
    int number; // at the head of the band's name
    const char16_t *frequency;
};
constexpr DefaultFrequency defaultFrequencies[] = {{160, u"1.820"}, {80, u"3.600"}, {60, u"5.100"}, {40, u"7.100"},
    {30, u"10.100"}, {20, u"14.100"}, {17, u"18.100"}, {15, u"21.100"}, {12, u"24.900"}, {10, u"28.500"},
    {6, u"52.000"}, {2, u"145.000"}, {70, u"435.100"}};

struct Pattern {
    const char16_t *pattern; // "#" is any digit
    const char16_t *band;
};
constexpr Pattern dottedPatterns[] = {{u"1.###.#", u"160m"}, {u"3.###.#", u"80m"}, {u"7.###.#", u"40m"},
    {u"10.###.#", u"30m"}, {u"14.###.#", u"20m"}, {u"18.###.#", u"17m"}, {u"21.###.#", u"15m"}, {u"24.###.#", u"12m"},
    {u"28.###.#", u"10m"}, {u"5#.###.#", u"6m"}, {u"14#.###.#", u"2m"}};

bool Fits(QStringView pattern, QStringView text)
{
    return std::equal(pattern.begin(), pattern.end(), text.begin(), text.end(),
        [](QChar wanted, QChar c) { return wanted == u'#' ? c >= u'0' && c <= u'9' : wanted == c; });
}

// The first entry of a table that a test accepts, or null.
template <typename Entry, size_t size, typename Test>
const Entry *FindIn(const Entry (&table)[size], Test test)
{
    const auto found = std::find_if(std::begin(table), std::end(table), test);
    return found == std::end(table) ? nullptr : found;
}

QString Text(const char16_t *text) { return QStringView(text).toString(); }

QString BandOfWholeMegahertz(double megahertz, FieldsOf window)
{
    const auto *entry = FindIn(wholeMegahertz, [megahertz](const WholeMegahertz &e) {
        return megahertz >= e.first && megahertz <= e.last && megahertz == double(qint64(megahertz));
    });
    if (!entry)
        return {};
    return entry->first == 1267 && window == FieldsOf::EditWindow ? u"23m"_qs : Text(entry->band);
}

} // namespace

const QStringList &EntryMegahertz()
{
    static const QStringList list = [] {
        QStringList numbers;
        for (const int number : {1, 3, 5, 7, 10, 14, 18, 21, 24, 28, 29})
            numbers << QString::number(number);
        for (const auto &[first, last] :
            {std::pair(50, 54), std::pair(144, 147), std::pair(220, 224), std::pair(430, 439)})
            for (int number = first; number <= last; ++number)
                numbers << QString::number(number);
        return numbers;
    }();
    return list;
}

const QStringList &EntryBands()
{
    static const QStringList list{u"160m"_qs, u"80m"_qs, u"60m"_qs, u"40m"_qs, u"30m"_qs, u"20m"_qs, u"17m"_qs,
        u"15m"_qs, u"12m"_qs, u"10m"_qs, u"6m"_qs, u"2m"_qs, u"70cm"_qs};
    return list;
}

const QStringList &EntryModes()
{
    static const QStringList list{
        u"SSB"_qs, u"FM"_qs, u"AM"_qs, u"CW"_qs, u"DG"_qs, u"DVoice"_qs, u"DV IP"_qs, u"Echo"_qs, u"Echo IP"_qs};
    return list;
}

FieldBand BandOfFields(QStringView megahertz, QStringView kilohertz, FieldsOf window)
{
    FieldBand result;
    result.band = BandOfWholeMegahertz(LeadingNumber(megahertz), window);
    const double offset = LeadingNumber(kilohertz);
    const auto *limit = FindIn(limits, [&result](const Limit &l) { return result.band == QStringView(l.band); });
    if (limit && (offset < limit->lowest || offset > limit->highest)) {
        result.outOfBand = true;
        result.message = megahertz + u"." + kilohertz + u" KHz\n\nFuera de banda!";
    }
    return result;
}

QString PadKilohertz(QStringView text) { return Conversions::PadZeros(text, 3); }

QString BandOfFrequency(QStringView text)
{
    const double megahertz = LeadingNumber(text);
    const auto *range =
        FindIn(ranges, [megahertz](const Range &r) { return megahertz >= r.from && megahertz <= r.to; });
    return range ? Text(range->band) : QString();
}

QString DefaultFrequencyOfBand(QStringView band)
{
    const double number = LeadingNumber(band);
    const auto *entry = FindIn(defaultFrequencies, [number](const DefaultFrequency &e) { return number == e.number; });
    return entry ? Text(entry->frequency) : QString();
}

QString BandOfDottedFrequency(QStringView text)
{
    if (text.contains(u'm'))
        return text.toString();
    const auto *entry = FindIn(dottedPatterns, [text](const Pattern &p) { return Fits(p.pattern, text); });
    return entry ? Text(entry->band) : QString();
}

} // namespace BandPlan
