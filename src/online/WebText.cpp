// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/WebText.h"

#include "core/CodePage.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QStringList>
#include <algorithm>

namespace WebText {

namespace {

constexpr char16_t encodedSigns[] = u"%!*'();:@&=+$,/?#[]";
constexpr char16_t forbiddenSigns[] = u"\"<>#\\^`{|}";

QString Code(QChar sign) { return u'%' + QString::number(sign.unicode(), 16).toUpper().rightJustified(2, u'0'); }

bool IsHexPair(QStringView text)
{
    const auto isHex = [](QChar c) { return (c >= u'0' && c <= u'9') || (c.toUpper() >= u'A' && c.toUpper() <= u'F'); };
    return text.size() == 2 && isHex(text[0]) && isHex(text[1]);
}

const QHash<QString, QChar> &Entities()
{
    static const QHash<QString, QChar> entities{{u"amp"_qs, u'&'}, {u"lt"_qs, u'<'}, {u"gt"_qs, u'>'},
        {u"quot"_qs, u'"'}, {u"apos"_qs, u'\''}, {u"nbsp"_qs, u' '}, {u"aacute"_qs, u'á'}, {u"eacute"_qs, u'é'},
        {u"iacute"_qs, u'í'}, {u"oacute"_qs, u'ó'}, {u"uacute"_qs, u'ú'}, {u"ntilde"_qs, u'ñ'}, {u"uuml"_qs, u'ü'},
        {u"Aacute"_qs, u'Á'}, {u"Eacute"_qs, u'É'}, {u"Iacute"_qs, u'Í'}, {u"Oacute"_qs, u'Ó'}, {u"Uacute"_qs, u'Ú'},
        {u"Ntilde"_qs, u'Ñ'}, {u"Uuml"_qs, u'Ü'}, {u"iexcl"_qs, u'¡'}, {u"iquest"_qs, u'¿'}, {u"ordm"_qs, u'º'},
        {u"ordf"_qs, u'ª'}};
    return entities;
}

// The character of "amp", "#241" or "#xF1"; empty for what is none of these.
QString CharacterOfEntity(const QString &name)
{
    if (!name.startsWith(u'#')) {
        const auto found = Entities().find(name);
        return found == Entities().end() ? QString() : QString(*found);
    }
    const bool hexadecimal = name.size() > 1 && name[1].toLower() == u'x';
    bool ok = false;
    const uint code = QStringView(name).mid(hexadecimal ? 2 : 1).toUInt(&ok, hexadecimal ? 16 : 10);
    const bool character = ok && code >= 0x20 && code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
    return character ? QString::fromUcs4(reinterpret_cast<const char32_t *>(&code), 1) : QString();
}

QByteArray CharsetOf(const QByteArray &contentType)
{
    const QByteArray lower = contentType.toLower();
    const qsizetype at = lower.indexOf("charset=");
    if (at < 0)
        return {};
    return lower.mid(at + 8).split(';').first().trimmed().replace('"', "").replace('\'', "");
}

bool IsOurCodePage(const QByteArray &charset)
{
    // Pages that name the older of these are meant for the newer, and browsers read them so.
    return charset == "windows-1252" || charset == "cp1252" || charset == "iso-8859-1" || charset == "latin1"
        || charset == "us-ascii";
}

// Reads a page once from front to back, so that a reply of any length and any nonsense takes no longer than its size.
class PageReader {
public:
    explicit PageReader(const QString &page)
        : page_(page)
    {
        for (qsizetype at = 0; at < page.size();) {
            if (page[at] == u'<' && IsTagStart(at))
                at = Tag(at);
            else
                Put(page[at++]);
        }
    }

    bool HasTags() const { return hasTags_; }
    const QString &Text() const { return text_; }

private:
    enum class Gap { None, Blank, Break };

    bool IsTagStart(qsizetype at) const
    {
        if (at + 1 >= page_.size() || at > lastClose_)
            return false;
        const char16_t next = page_[at + 1].unicode();
        return next == u'!' || next == u'/' || next == u'?' || (next < 0x80 && page_[at + 1].isLetter());
    }
    // What stands behind the tag, or behind what a reader does not see of it.
    qsizetype Tag(qsizetype at)
    {
        hasTags_ = true;
        if (QStringView(page_).mid(at).startsWith(u"<!--"))
            return Behind(u"-->"_qs, at + 4);
        const qsizetype end = Behind(u">"_qs, at);
        const bool closes = page_[at + 1] == u'/';
        qsizetype nameEnd = at + 1 + closes;
        while (nameEnd < end && page_[nameEnd].isLetterOrNumber())
            ++nameEnd;
        const QString name = page_.mid(at + 1 + closes, nameEnd - at - 1 - closes).toLower();
        if (!closes && (name == u"script" || name == u"style" || name == u"head"))
            return Behind(u">"_qs, Behind(u"</"_qs + name, end));
        static const QStringList breaks{u"br"_qs, u"p"_qs, u"div"_qs, u"tr"_qs, u"h1"_qs, u"h2"_qs, u"h3"_qs, u"h4"_qs,
            u"h5"_qs, u"h6"_qs, u"li"_qs, u"ul"_qs, u"table"_qs, u"hr"_qs};
        if (breaks.contains(name))
            gap_ = Gap::Break;
        return end;
    }
    // An end that never comes takes the rest of the page.
    qsizetype Behind(const QString &words, qsizetype from) const
    {
        const qsizetype found = page_.indexOf(words, from, Qt::CaseInsensitive);
        return found < 0 ? page_.size() : found + words.size();
    }
    // The line breaks of the page itself are blanks, those of its tags are lines.
    void Put(QChar character)
    {
        if (character == u' ' || (character >= u'\t' && character <= u'\r')) {
            gap_ = std::max(gap_, Gap::Blank);
            return;
        }
        if (gap_ != Gap::None)
            text_ += gap_ == Gap::Break ? u'\n' : u' ';
        gap_ = Gap::None;
        text_ += character;
    }

    const QString &page_;
    const qsizetype lastClose_ = page_.lastIndexOf(u'>'); // no tag begins behind it
    QString text_;
    Gap gap_ = Gap::None;
    bool hasTags_ = false;
};

} // namespace

QString PercentEncode(QStringView text)
{
    QString encoded;
    for (const QChar sign : text)
        encoded += QStringView(encodedSigns).contains(sign) ? Code(sign) : QString(sign);
    return encoded;
}

QByteArray AddressBytes(QStringView address)
{
    const QByteArray utf8 = address.toUtf8();
    QByteArray bytes;
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        const QChar sign = QChar::fromLatin1(utf8[i]);
        const bool forbidden = sign <= u' ' || sign >= QChar(0x7F) || QStringView(forbiddenSigns).contains(sign)
            || (sign == u'%' && !IsHexPair(QString::fromLatin1(utf8.mid(i + 1, 2))));
        bytes += forbidden ? Code(sign).toLatin1() : QByteArray(1, utf8[i]);
    }
    return bytes;
}

QString Decode(const QByteArray &bytes, const QByteArray &contentType)
{
    const QByteArray charset = CharsetOf(contentType);
    if (IsOurCodePage(charset))
        return CodePage::ToText(bytes);
    if (!charset.isEmpty())
        if (QStringDecoder named(charset.constData()); named.isValid())
            return named(bytes);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless); // a character cut off is an error
    QString text = utf8(bytes);
    return utf8.hasError() ? CodePage::ToText(bytes) : text;
}

QString DecodeEntities(const QString &text)
{
    static const QRegularExpression entity(u"&(#?[A-Za-z0-9]{1,8});"_qs);
    QString decoded;
    qsizetype done = 0;
    for (auto found = entity.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString character = CharacterOfEntity(match.captured(1));
        if (character.isEmpty())
            continue;
        decoded += QStringView(text).mid(done, match.capturedStart() - done) + character;
        done = match.capturedEnd();
    }
    return decoded + QStringView(text).mid(done);
}

QString PageText(const QString &page)
{
    PageReader reader(page);
    return reader.HasTags() ? DecodeEntities(reader.Text()).trimmed() : DecodeEntities(page).trimmed();
}

QString WithoutSecret(QString text, const QString &secret)
{
    constexpr qsizetype shortest = 3; // a shorter one would be found in every word
    if (secret.size() < shortest)
        return text;
    const QString encoded = PercentEncode(secret);
    for (const QString &form : {QString::fromLatin1(AddressBytes(encoded)), encoded, secret})
        text.replace(form, u"***"_qs, Qt::CaseInsensitive);
    return text;
}

} // namespace WebText
