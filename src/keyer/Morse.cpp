// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/Morse.h"

#include "core/Conversions.h"
#include "keyer/CwSettings.h"

#include <QHash>
#include <algorithm>
#include <array>

namespace {

constexpr int speedStep = 4;
constexpr qint64 millisecond = 1000;

qint64 UnitOf(int delay) { return (delay + 50) * millisecond; }

const QHash<QChar, QString> &Patterns()
{
    static const QHash<QChar, QString> table = [] {
        QHash<QChar, QString> made;
        const auto row = [&made](char16_t first, const QStringList &patterns) {
            for (qsizetype i = 0; i < patterns.size(); ++i)
                made.insert(QChar(char16_t(first + i)), patterns[i]);
        };
        row(u'0',
            {u"-----"_qs, u".----"_qs, u"..---"_qs, u"...--"_qs, u"....-"_qs, u"....."_qs, u"-...."_qs, u"--..."_qs,
                u"---.."_qs, u"----."_qs});
        row(u'a',
            {u".-"_qs, u"-..."_qs, u"-.-."_qs, u"-.."_qs, u"."_qs, u"..-."_qs, u"--."_qs, u"...."_qs, u".."_qs,
                u".---"_qs, u"-.-"_qs, u".-.."_qs, u"--"_qs, u"-."_qs, u"---"_qs, u".--."_qs, u"--.-"_qs, u".-."_qs,
                u"..."_qs, u"-"_qs, u"..-"_qs, u"...-"_qs, u".--"_qs, u"-..-"_qs, u"-.--"_qs, u"--.."_qs});
        const std::pair<const char16_t *, QString> signs[] = {{u",", u"--..--"_qs}, {u".", u".-.-.-"_qs},
            {u"/\\", u"-..-."_qs}, {u"=", u"-...-"_qs}, {u"?", u"..--.."_qs}, {u":", u"---..."_qs},
            {u"()", u"-.--.-"_qs}, {u"'", u".-..-."_qs}, {u"*", u".-..."_qs}, {u"@", u"-.--."_qs}, {u"&", u".-.-."_qs},
            {u"%", u"...-."_qs}, {u"~", u"-...-.-"_qs}, {u">", u"...-...-...-"_qs}, {u"<", u"...-.-"_qs}};
        for (const auto &[characters, pattern] : signs)
            for (const QChar character : QStringView(characters))
                made.insert(character, pattern);
        return made;
    }();
    return table;
}

void CwSendPattern(const QString &CwPattern, qint64 unit, CwChar &made)
{
    const qint64 pause = Conversions::RoundHalfEven(0.75 * double(unit / millisecond)) * millisecond;
    for (const QChar element : CwPattern) {
        made.changes.append({made.duration, true});
        made.duration += element == u'-' ? 3 * unit : unit;
        made.changes.append({made.duration, false});
        made.duration += pause;
    }
}

} // namespace

QString MorsePattern(QChar character) { return Patterns().value(character.toLower()); }

int CwDelayOfSpeed(int wordsPerMinute)
{
    // Near 1200 / speed - 50, but no formula: operators know the keyer by these figures.
    static constexpr std::array delays{70, 60, 52, 44, 36, 30, 25, 21, 17, 13, 10, 6, 3, 1, -1, -2, -4, -5, -6, -8, -10,
        -11, -12, -14, -15, -16, -17, -18, -19, -19, -20};
    return delays[size_t(std::clamp(wordsPerMinute, CwSpeed::slowest, CwSpeed::fastest) - CwSpeed::slowest)];
}

CwChar CwSendChar(QChar character, const CwState &state)
{
    CwChar made;
    made.after = state;
    if (character == u'\n' || character == u'"')
        return made;
    if (character == u'>' || character == u'<') {
        made.isMark = true;
        made.endsOnStop = false;
        const int wanted = state.speed + (character == u'>' ? speedStep : -speedStep);
        made.after.speed = std::clamp(wanted, CwSpeed::slowest, CwSpeed::fastest);
        return made;
    }
    const int present = CwDelayOfSpeed(state.speed);
    if (const QString pattern = MorsePattern(character); !pattern.isEmpty()) {
        made.after.delayLong = present;
        CwSendPattern(pattern, UnitOf(present), made);
    }
    made.duration += UnitOf(made.after.delayLong.value_or(present));
    return made;
}
