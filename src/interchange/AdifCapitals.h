// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

// A line of ADIF in capitals, as UTF-8 where it is that and in windows-1252 otherwise. The number of bytes stays: a
// letter whose capital takes another number of them is left as it is, since the declared lengths count them.
QByteArray Capitals(const QByteArray &bytes);
