// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/AdifCapitals.h"

#include "core/CodePage.h"

namespace {

// Letters whose capital the code page lacks stay.
QByteArray SingleByteCapitals(QByteArray bytes)
{
    for (char &c : bytes)
        if (const int capital = CodePage::CodeOf(CodePage::CharacterOf(uchar(c)).toUpper()); capital >= 0)
            c = char(capital);
    return bytes;
}

} // namespace

QByteArray Capitals(const QByteArray &bytes)
{
    bool ascii = true;
    for (const char c : bytes)
        ascii = ascii && !(c & 0x80);
    if (ascii)
        return bytes.toUpper();
    // Letters whose capital takes another number of bytes or letters stay, or the declared lengths would no longer fit.
    const QString text = QString::fromUtf8(bytes);
    if (text.toUtf8() != bytes)
        return SingleByteCapitals(bytes);
    QByteArray capitals;
    capitals.reserve(bytes.size());
    for (qsizetype at = 0; at < text.size();) {
        if (const char16_t c = text[at].unicode(); c < 0x80) {
            capitals += c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : char(c);
            ++at;
            continue;
        }
        const qsizetype units = text[at].isHighSurrogate() && at + 1 < text.size() ? 2 : 1;
        const QString letter = text.mid(at, units), upper = letter.toUpper();
        const QByteArray plain = letter.toUtf8(), capital = upper.toUtf8();
        capitals += upper.size() == units && capital.size() == plain.size() ? capital : plain;
        at += units;
    }
    return capitals;
}
