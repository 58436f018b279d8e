// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVarLengthArray>
#include <optional>

// The sound of the keyer: which pattern a character has, and when the line changes while it is sent. Elements and
// pauses are tighter than the common 1, 3 and 7 units: with E the element unit, a dot takes E, a dash 3 E, the pause
// behind each of them 0.75 E (whole milliseconds, halves to the even number), a character ends with E more, a blank is
// E. Times are microseconds.

// What a character needs to know of those before it.
struct CwState {
    int speed = 20; // words a minute, 10 to 40
    // CwDelayLong: the delay with which the last pattern of the run was sent; none before the first. A blank and a
    // sign without a pattern pause with it, also when the speed has changed meanwhile.
    std::optional<int> delayLong;

    bool operator==(const CwState &) const = default;
};

struct LineChange {
    qint64 at = 0; // after the start of the character
    bool on = false;

    bool operator==(const LineChange &) const = default;
};

struct CwChar {
    QVarLengthArray<LineChange, 32> changes; // in the order of their times; the line is open at the end
    qint64 duration = 0; // to the start of the next character
    bool endsOnStop = true; // a stop that came before its end ends the run; speed marks go on all the same
    bool isMark = false; // it changed the speed, or confirmed it at its limit
    CwState after;
};

// One character of the text, in either case. Speed marks (">" and "<", 4 words a minute up or down within the limits),
// a line feed and a double quote take no time.
CwChar CwSendChar(QChar character, const CwState &state);

// "-" and "." of a character, empty where it has no sound.
QString MorsePattern(QChar character);

// The delay in milliseconds that stands for a speed; outside 10 to 40 that of the nearest. E is the delay + 50.
int CwDelayOfSpeed(int wordsPerMinute);
