// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/PortDevice.h"

#include "core/Logbook.h"
#include "core/OptionFile.h"

namespace {

QString BuiltIn(int number)
{
#ifdef Q_OS_WIN
    return u"COM%1"_qs.arg(number);
#else
    constexpr int boardPorts = 4, adapters = 8;
    if (number <= boardPorts)
        return u"/dev/ttyS%1"_qs.arg(number - 1);
    if (number <= boardPorts + adapters)
        return u"/dev/ttyUSB%1"_qs.arg(number - 1 - boardPorts);
    return u"/dev/ttyACM%1"_qs.arg(number - 1 - boardPorts - adapters);
#endif
}

} // namespace

QString PortDevice(const Logbook &logbook, const QString &com)
{
    const QString prefix = u"COM"_qs;
    bool isNumber = false;
    const int number = com.startsWith(prefix) ? com.mid(prefix.size()).toInt(&isNumber) : 0;
    if (!isNumber || number < 1 || number > comPorts)
        return {};
    return OptionFile(logbook, u"puertos.ini"_qs, u"puertos"_qs).Value(com, BuiltIn(number));
}
