// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

// The single-byte code page of all our text files, windows-1252. The five codes that the code page leaves undefined
// (81, 8D, 8F, 90, 9D) map to the characters of the same number, so that every byte survives reading and writing.
namespace CodePage {

QString ToText(QByteArrayView bytes);

// A character outside the code page becomes "?".
QByteArray FromText(QStringView text);

// The code of one character, or -1 when the code page has none.
int CodeOf(QChar character);
QChar CharacterOf(unsigned char code);

} // namespace CodePage
