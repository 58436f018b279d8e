// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/AdifRecord.h"

#include "core/CodePage.h"
#include "core/Conversions.h"

#include <QStringDecoder>
#include <algorithm>
#include <cstring>

namespace {

constexpr qsizetype looked = 1000; // characters behind a tag
constexpr qsizetype longestName = 16; // STATION_CALLSIGN

constexpr const char *names[size_t(AdifTag::Count)] = {"MY_SIG_INFO", "SOTA_REF", "MY_SOTA_REF", "SIG_INFO", "NAME",
    "GRIDSQUARE", "MY_GRIDSQUARE", "QSL_RCVD", "STATION_CALLSIGN", "CALL", "QSO_DATE", "TIME_ON", "BAND", "FREQ",
    "RST_SENT", "RST_RCVD", "OPERATOR", "MODE", "PROP_MODE", "COMMENT", "SAT_NAME", "PROGRAMID"};

constexpr char Upper(char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; }

bool Same(QByteArrayView text, const char *capitals)
{
    for (const char c : text)
        if (*capitals == '\0' || Upper(c) != *capitals++) // a NUL in the text must not lead beyond the name
            return false;
    return *capitals == '\0';
}

// Length and first letter decide between all names but a few, so that most tags cost one comparison.
int TagOf(QByteArrayView name)
{
    if (name.size() < 4 || name.size() > longestName)
        return -1;
    const char first = Upper(name[0]);
    for (size_t i = 0; i < size_t(AdifTag::Count); ++i)
        if (names[i][0] == first && Same(name, names[i]))
            return int(i);
    return -1;
}

// How many bytes `characters` characters of UTF-8 take; all of them when there are fewer.
qsizetype Utf8Bytes(QByteArrayView text, qsizetype characters)
{
    qsizetype at = 0;
    for (; at < text.size(); ++at) {
        const bool begins = (text[at] & 0xC0) != 0x80;
        if (begins && characters-- == 0)
            break;
    }
    return at;
}

bool IsAscii(QByteArrayView text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return c & 0x80; });
}

// A value ends well where the next tag begins, or the record; blanks between do not matter.
bool EndsWell(QByteArrayView rest)
{
    for (const char c : rest)
        if (c != ' ' && c != '\t' && c != '\n')
            return c == '<';
    return true;
}

bool IsUtf8(QByteArrayView text)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    static_cast<void>(QString(decoder(text)));
    return !decoder.hasError();
}

qsizetype DeclaredLength(QByteArrayView text)
{
    // The usual case first: a few digits, then ">" or ":".
    qsizetype length = 0, at = 0;
    while (at < text.size() && at < 6 && text[at] >= '0' && text[at] <= '9')
        length = length * 10 + (text[at++] - '0');
    if (at > 0 && at < text.size() && (text[at] == '>' || text[at] == ':'))
        return length;
    return std::max(
        0, Conversions::LeadingInteger(QString::fromLatin1(text.first(std::min<qsizetype>(30, text.size())))));
}

} // namespace

namespace Adif {

QString TextOf(QByteArrayView bytes)
{
    if (IsAscii(bytes))
        return QString::fromLatin1(bytes);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    return decoder.hasError() ? CodePage::ToText(bytes) : text;
}

bool Holds(QByteArrayView line, QByteArrayView tag)
{
    const char *at = line.data(), *end = line.data() + line.size();
    while (end - at >= tag.size() && (at = static_cast<const char *>(std::memchr(at, '<', size_t(end - at))))) {
        if (end - at >= tag.size()
            && std::equal(tag.begin(), tag.end(), at, [](char capital, char c) { return capital == Upper(c); }))
            return true;
        ++at;
    }
    return false;
}

} // namespace Adif

QByteArrayView AdifRecord::NextTag(QByteArrayView text)
{
    const void *at = text.isEmpty() ? nullptr : std::memchr(text.data(), '<', size_t(text.size()));
    return at ? text.sliced(static_cast<const char *>(at) - text.data()) : QByteArrayView();
}

QByteArrayView AdifRecord::NameOf(QByteArrayView text)
{
    const qsizetype last = std::min<qsizetype>(text.size(), 40);
    for (qsizetype at = 1; at < last; ++at) {
        if (text[at] == ':')
            return text.sliced(1, at - 1);
        if (text[at] == '<' || text[at] == '>')
            break;
    }
    return {};
}

bool AdifRecord::IsKnown(QByteArrayView name) { return TagOf(name) >= 0; }

AdifRecord::AdifRecord(QByteArrayView record)
{
    for (QByteArrayView rest = record; !(rest = NextTag(rest)).isEmpty(); rest = rest.sliced(1)) {
        const QByteArrayView name = NameOf(rest);
        const int tag = TagOf(name);
        if (tag >= 0 && !found_[size_t(tag)].data())
            found_[size_t(tag)] = rest.sliced(name.size() + 2);
    }
}

QByteArray AdifRecord::Essence() const
{
    std::vector<QByteArrayView> fields;
    for (size_t tag = 0; tag < found_.size(); ++tag)
        if (const QByteArrayView behind = found_[tag]; behind.data()) {
            const qsizetype head = qsizetype(std::strlen(names[tag])) + 2;
            fields.emplace_back(behind.data() - head, head + Utf8Bytes(behind, looked));
        }
    std::sort(fields.begin(), fields.end(), [](auto a, auto b) { return a.data() < b.data(); });
    QByteArray essence;
    const char *taken = nullptr;
    for (const QByteArrayView field : fields) {
        const char *from = taken && taken > field.data() ? taken : field.data(), *end = field.data() + field.size();
        if (end > from)
            essence.append(from, end - from);
        taken = taken && taken > end ? taken : end;
    }
    return essence;
}

QString AdifRecord::Value(AdifTag tag) const
{
    const QByteArrayView behind = found_[size_t(tag)];
    if (!behind.data())
        return {};
    const QByteArrayView text = behind.first(std::min(behind.size(), Utf8Bytes(behind, looked)));
    const auto *close =
        static_cast<const char *>(text.isEmpty() ? nullptr : std::memchr(text.data(), '>', size_t(text.size())));
    if (!close)
        return {};
    const QByteArrayView rest = text.sliced(close - text.data() + 1);
    const qsizetype length = DeclaredLength(text);
    const qsizetype bytes = std::min(length, rest.size());
    if (IsAscii(rest.first(bytes)))
        return QString::fromLatin1(rest.first(bytes));
    const qsizetype characters = Utf8Bytes(rest, length);
    const auto fits = [&](qsizetype end) { return IsUtf8(rest.first(end)) && EndsWell(rest.sliced(end)); };
    // Behind a value there may be a remark, parted by a blank; the middle of a word is no end.
    const auto atBlank = [&](qsizetype end) { return end < rest.size() && (rest[end] == ' ' || rest[end] == '\t'); };
    const bool byRemark = !fits(bytes) && IsUtf8(rest.first(characters)) && atBlank(characters) && !atBlank(bytes)
        && !rest.first(characters).contains('<');
    if ((!fits(bytes) && fits(characters)) || byRemark)
        return Adif::TextOf(rest.first(characters));
    // Where neither reading fits, the shorter one at least swallows no tag; it must not end within a letter.
    qsizetype end = bytes;
    while (end > 0 && end < rest.size() && (rest[end] & 0xC0) == 0x80 && IsUtf8(rest.first(characters)))
        --end;
    return Adif::TextOf(rest.first(end));
}
