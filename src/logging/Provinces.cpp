// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/Provinces.h"

#include <algorithm>

namespace {

// One entry a letter, "A" to "Z": the place in ProvinceNames(). G and X have a second name, one place further.
constexpr int byLetter[] = {
    0, 0, 0, // A B C
    1, 1, // D E
    2, 3, // F G
    5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, // H to W
    21, 23, 24, // X Y Z
};
static_assert(std::size(byLetter) == 26);

// Behind the prefix stand at most ten characters.
QStringView BehindThePrefix(QStringView call) { return call.mid(3, 10); }

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }

} // namespace

const QStringList &ProvinceNames()
{
    static const QStringList names{u"Capital"_qs, u"Buenos Aires"_qs, u"Santa Fe"_qs, u"Chaco"_qs, u"Formosa"_qs,
        u"Córdoba"_qs, u"Misiones"_qs, u"Entre Ríos"_qs, u"Tucumán"_qs, u"Corrientes"_qs, u"Mendoza"_qs,
        u"Santiago del Estero"_qs, u"Salta"_qs, u"San Juan"_qs, u"San Luis"_qs, u"Catamarca"_qs, u"La Rioja"_qs,
        u"Jujuy"_qs, u"La Pampa"_qs, u"Río Negro"_qs, u"Chubut"_qs, u"Tierra del Fuego"_qs, u"Santa Cruz"_qs,
        u"Neuquén"_qs, u"Antártida"_qs};
    return names;
}

std::optional<QString> ArgentineSuffix(QStringView anyCase)
{
    const QString call = anyCase.toString().toUpper();
    const QStringView tail = BehindThePrefix(call);
    if (call.startsWith(u"AZ") || call.startsWith(u"AY"))
        return tail.toString();
    if (call.size() < 2 || call[0] != u'L')
        return std::nullopt;
    const QChar second = call[1];
    if (!(second >= u'1' && second <= u'9') && !(second >= u'O' && second <= u'W'))
        return std::nullopt;
    const auto letter = std::find_if_not(tail.begin(), tail.end(), IsDigit);
    if (letter == tail.end())
        return tail.toString();
    return tail.mid(letter - tail.begin(), 2).toString();
}

QString ProvinceOfSuffix(QStringView suffix)
{
    if (suffix.isEmpty() || suffix[0] < u'A' || suffix[0] > u'Z')
        return {};
    const QChar first = suffix[0];
    qsizetype place = byLetter[first.unicode() - u'A'];
    if ((first == u'G' || first == u'X') && suffix.size() > 1 && suffix[1] > u'M')
        ++place;
    return ProvinceNames()[place];
}

QString ArgentineProvince(QStringView anyCase)
{
    const QString call = anyCase.toString().toUpper();
    const qsizetype slashes = call.count(u'/');
    if (slashes == 2)
        return u"0"_qs;
    if (slashes != 1) {
        const std::optional<QString> suffix = ArgentineSuffix(call);
        return suffix ? ProvinceOfSuffix(*suffix) : QString();
    }
    const qsizetype slash = call.indexOf(u'/');
    const QStringView before = QStringView(call).first(slash), behind = QStringView(call).sliced(slash + 1);
    if (behind == u"MM" || behind == u"MA" || !ArgentineSuffix(before))
        return {};
    return ProvinceOfSuffix(behind);
}
