// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "logging/QsoStore.h"

// Contacts for tests of the log, all different and all reproducible.
namespace SomeQsos {

inline const QString logName = u"Log inicial"_qs;

inline NewQso Qso(const QString &call, const QString &grid = {})
{
    NewQso qso;
    qso.call = call;
    qso.band = u"20m"_qs;
    qso.mode = u"SSB"_qs;
    qso.reportSent = u"59"_qs;
    qso.reportReceived = u"57"_qs;
    qso.date = u"24/11/2026"_qs;
    qso.time = u"21:15:00"_qs;
    qso.station = u"LU9ZZZ"_qs;
    qso.operatorCall = u"LU1AAA"_qs;
    qso.frequency = u"14.250"_qs;
    qso.ownGrid = u"GF05AB"_qs;
    qso.grid = grid;
    return qso;
}

// The `number`th contact of a run: calls come back, and every fourth contact tells a grid, which then goes to the
// earlier ones with that call, so that one store changes several rows.
inline NewQso Numbered(int number)
{
    NewQso qso = Qso(u"LU%1AB"_qs.arg(number % 7), number % 4 == 0 ? u"GF%1"_qs.arg(number % 90 + 10) : QString());
    qso.remarks = u"O'Higgins %1 "_qs.arg(number) + QString(number * 7 % 200, u'ñ');
    qso.time = u"%1:%2:00"_qs.arg(number / 60 % 24, 2, 10, QChar(u'0')).arg(number % 60, 2, 10, QChar(u'0'));
    return qso;
}

} // namespace SomeQsos
