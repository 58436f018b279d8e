// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class Logbook;

inline constexpr int comPorts = 20;

// The device that stands for "COM1" to "COM20". puertos.ini ([puertos], keys COM1 to COM20) goes before the names that
// are built in: on Windows the name itself, elsewhere COM1 to COM4 for the ports of the board (/dev/ttyS0 to 3), COM5
// to COM12 for USB adapters (/dev/ttyUSB0 to 7), COM13 to COM20 for USB modems (/dev/ttyACM0 to 7). Anything else,
// "Ninguno" included, gives an empty text.
QString PortDevice(const Logbook &logbook, const QString &com);
