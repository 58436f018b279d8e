// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/CodePage.h"

#include <QHash>

namespace CodePage {

namespace {

// Codes 80 to 9F; all others are the characters of the same number.
constexpr char16_t upperControls[32] = {0x20AC, 0x81, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030,
    0x0160, 0x2039, 0x0152, 0x8D, 0x017D, 0x8F, 0x90, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC,
    0x2122, 0x0161, 0x203A, 0x0153, 0x9D, 0x017E, 0x0178};

const QHash<char16_t, int> &Codes()
{
    static const QHash<char16_t, int> codes = [] {
        QHash<char16_t, int> made;
        for (int i = 0; i < 32; ++i)
            made.insert(upperControls[i], 0x80 + i);
        return made;
    }();
    return codes;
}

} // namespace

QChar CharacterOf(unsigned char code)
{
    return code >= 0x80 && code < 0xA0 ? QChar(upperControls[code - 0x80]) : QChar(char16_t(code));
}

int CodeOf(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF))
        return unit;
    return Codes().value(unit, -1);
}

QString ToText(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i)
        text[i] = CharacterOf(static_cast<unsigned char>(bytes[i]));
    return text;
}

QByteArray FromText(QStringView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar c : text) {
        const int code = CodeOf(c);
        // The second half of a surrogate pair would double the "?" of its character.
        if (!c.isLowSurrogate())
            bytes += code < 0 ? '?' : static_cast<char>(code);
    }
    return bytes;
}

} // namespace CodePage
