// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzzing.h"
#include "online/CallLookup.h"
#include "online/SiteCalls.h"
#include "online/SyncLda.h"
#include "online/UploadRules.h"
#include "online/WebText.h"
#include "stats/LdaMember.h"

#include <QUrl>
#include <algorithm>
#include <fuzzer/FuzzedDataProvider.h>

// Any bytes at all are taken as the answer of a service, and as the values that go into an address.

namespace {

const QByteArray contentTypes[] = {{}, "text/html; charset=utf-8", "text/html; charset=ISO-8859-1",
    "text/xml;charset=\"windows-1252\"", "text/plain; charset=utf-16", "text/html; charset=", "charset=koi8-r"};

QString CheckDecoding(const QByteArray &bytes, const QByteArray &contentType)
{
    const QString text = WebText::Decode(bytes, contentType);
    Require(text.size() <= bytes.size(), "no more characters than bytes");
    if (std::all_of(bytes.begin(), bytes.end(), [](char c) { return c > 0; }) && contentType.size() < 40
        && !contentType.contains("utf-16"))
        Require(text == QString::fromLatin1(bytes), "plain text stays");
    return text;
}

void CheckPage(const QString &text)
{
    const QString page = WebText::PageText(text), decoded = WebText::DecodeEntities(text);
    Require(page.size() <= text.size() && page == page.trimmed(), "what a reader sees");
    Require(decoded.size() <= text.size(), "entities become characters");
    if (!text.contains(u'&'))
        Require(decoded == text, "a text without entities");
    if (!text.contains(u'&') && !text.contains(u'<'))
        Require(page == text.trimmed(), "a text without tags");
}

bool IsLegal(const QByteArray &address)
{
    return std::all_of(address.begin(), address.end(),
        [](char c) { return c > ' ' && c < '\x7F' && !QByteArrayView("\"<>#\\^`{|}").contains(c); });
}

void CheckAddress(const QString &value)
{
    const QByteArray bytes = WebText::AddressBytes(value);
    Require(IsLegal(bytes) && WebText::AddressBytes(QString::fromLatin1(bytes)) == bytes, "an address, encoded once");
    const QByteArray encoded = WebText::AddressBytes(WebText::PercentEncode(value));
    Require(IsLegal(encoded) && !encoded.contains('&') && !encoded.contains('='), "a value in an address");
    // Halves of characters cannot go over the line.
    if (QString::fromUtf8(value.toUtf8()) == value)
        Require(QUrl::fromPercentEncoding(encoded) == value, "a value arrives whole");
}

void CheckSecret(const QString &text, const QString &secret)
{
    const QString shown = WebText::WithoutSecret(text, secret);
    if (secret.size() < 3 || secret.contains(u'*'))
        return;
    Require(!shown.contains(secret, Qt::CaseInsensitive), "a secret is not shown");
    Require(!shown.contains(WebText::PercentEncode(secret), Qt::CaseInsensitive), "an encoded secret is not shown");
}

void CheckLookup(const QString &text)
{
    for (const QString &tag : {u"call"_qs, u"Error"_qs, u"Key"_qs, u"name"_qs}) {
        const QString value = CallLookup::TagValue(text, tag);
        Require(value.isEmpty() || (text.contains(u'<' + tag + u'>') && value.size() < text.size()), "a tag's value");
    }
    const LookupResult qrz = CallLookup::ReadQrzAnswer(u"LU1ABC"_qs, text);
    Require(!qrz.text.isEmpty() && !qrz.title.isEmpty() && qrz.name.isEmpty(), "an answer of QRZ");
    const LookupResult lda = CallLookup::ReadLdaAnswer(u"LU1ABC"_qs, text);
    Require(lda.name.isEmpty() || lda.name == CallLookup::TagValue(text, u"name"_qs), "an answer of LdA");
    Require(!lda.text.isEmpty() || !text.contains(u"<?xml"), "LdA does not know the call");
}

void CheckSync(const QString &page)
{
    using Kind = SyncRules::Judgement::Kind;
    SyncQso qso;
    qso.sucall = u"LU1ABC"_qs;
    const SyncRules::Judgement judged = SyncRules::Judge(page, true, qso);
    const bool changes =
        judged.kind == Kind::Checked || judged.kind == Kind::Confirmed || judged.kind == Kind::Uploaded;
    Require(changes != judged.newState.isEmpty() && !judged.line.isEmpty(), "what a reply means");
    Require(judged.newState.isEmpty() || (judged.newState == u"2") == (judged.kind == Kind::Confirmed), "a new state");
    Require(SyncRules::Judge(page, false, qso).newState.isEmpty(), "an error page changes nothing");
}

void CheckUpload(const QString &page)
{
    const UploadRules::Effects effects = UploadRules::Judge(page);
    Require(effects.ldaErrors >= int(effects.eqslError) && effects.ldaErrors <= 2, "errors of a reply");
    Require(effects.red == (effects.stop || effects.ldaDuplicate || effects.ldaErrors > 0), "the colour of a reply");
    QStringList row = page.split(u'|');
    const UploadRules::Account account{u"https://lda.example"_qs, u"yo"_qs, row.value(0)};
    UploadRules::UploadBand bands;
    const QString band = bands.OfLda(row);
    Require(bands.Of({}) == band && bands.OfLda({}) == band, "the band of the row before");
    Require(IsLegal(WebText::AddressBytes(UploadRules::LdaAddress(account, row, band, true))), "an upload to LdA");
    const QString document = UploadRules::EqslDocument(row, band, page.size() % 2 == 0);
    Require(document.endsWith(u"<EOR><EOF>"), "a document for eQSL");
    Require(IsLegal(WebText::AddressBytes(UploadRules::EqslAddress(account, document))), "an upload to eQSL");
}

void CheckVersion(const QString &text)
{
    const QString own = Logbook::AppVersion;
    const auto verdict = SiteCalls::CompareVersion(own, text);
    if (!verdict)
        return;
    Require(verdict->message.contains(own) && verdict->message.count(u'\n') == 3, "a verdict");
    const QString line = text.trimmed().section(u'\n', 0, 0).section(u'\r', 0, 0).trimmed();
    if (const auto same = SiteCalls::CompareVersion(line, line))
        Require(!same->outdated, "no version is older than itself");
}

void CheckMember(const QString &text)
{
    const std::optional<LdaMember> member = ReadLdaMember(text);
    if (!member)
        return;
    Require(text.contains(u"nomo:") && text.contains(u"ultimar:"), "a member is told");
    Require(!member->Line().contains(u'\n') && !member->Line().contains(u'\r'), "a line of the list");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // The choices come from the end of the input, so that a file that somebody wrote is an answer as it stands.
    FuzzedDataProvider input(data, size);
    const QByteArray contentType = contentTypes[input.ConsumeIntegralInRange<size_t>(0, std::size(contentTypes) - 1)];
    const auto secretAt = input.ConsumeIntegral<uint8_t>(), secretSize = input.ConsumeIntegralInRange<uint8_t>(0, 20);
    const std::string rest = input.ConsumeRemainingBytesAsString();
    const QString text = CheckDecoding(QByteArray::fromStdString(rest), contentType);
    CheckPage(text);
    CheckSecret(text, text.mid(secretAt, secretSize));
    CheckAddress(text.left(200));
    CheckLookup(text);
    const QString page = WebText::PageText(text);
    CheckSync(page);
    CheckUpload(page);
    CheckVersion(text);
    CheckMember(page);
    return 0;
}
