// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

// How values get into an address, and how a reply becomes a text.
namespace WebText {

// A value that must arrive whole although it holds signs that an address uses: nineteen signs are replaced, "%" first,
// "!*'();:@&=+$,/?#[]" after it. Blanks, quotes, "<", ">" and non-ASCII characters stay, for AddressBytes to encode.
QString PercentEncode(QStringView text);

// The address as it goes over the line. What no address can hold is encoded once: blanks, quotes, "<", ">", "#",
// control and non-ASCII characters (as UTF-8), and a "%" without two hexadecimal digits behind it. All else stays.
QByteArray AddressBytes(QStringView address);

// The text of a reply: by the character set that `contentType` names, else UTF-8 where the bytes are valid, else
// windows-1252.
QString Decode(const QByteArray &bytes, const QByteArray &contentType);

// What a reader sees of a page: tags, comments, scripts and style sheets gone, breaks and blocks as line breaks, runs
// of blanks as one, entities as their characters. A text without tags and entities comes back as it is, without the
// blanks around it.
QString PageText(const QString &page);

// The characters behind the entities of XML and of Spanish pages ("&amp;", "&#241;", "&#xF1;", "&ntilde;"). Others
// stay.
QString DecodeEntities(const QString &text);

// `text` with every occurrence of `secret`, plain or encoded, replaced by asterisks: for showing what a service sent,
// which may repeat the request.
QString WithoutSecret(QString text, const QString &secret);

} // namespace WebText
