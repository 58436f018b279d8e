// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/CallLookup.h"

#include "core/Logbook.h"
#include "online/WebText.h"

namespace {

constexpr qsizetype longestError = 500; // nobody reads more in a box

const QString qrzName = u"QRZ"_qs;

// Answers of the services are a page long; what is kept for diagnosis need not be longer.
constexpr qsizetype longestRaw = 20000;

struct Line {
    const char16_t *tag;
    const char16_t *caption;
};

void AddLine(QString &text, const QString &caption, const QString &value)
{
    if (!value.isEmpty())
        text += QString(caption + value + u'\n');
}

void AddLines(QString &text, const QString &xml, std::initializer_list<Line> lines)
{
    for (const Line &line : lines)
        AddLine(text, QString::fromUtf16(line.caption), CallLookup::TagValue(xml, QString::fromUtf16(line.tag)));
}

void AddAlias(QString &text, const QString &xml)
{
    AddLine(text, u"Alias: "_qs, CallLookup::TagValue(xml, u"aliases"_qs).toUpper());
}

} // namespace

QString CallLookup::TagValue(const QString &text, const QString &tag)
{
    const QString opening = u'<' + tag + u'>';
    const qsizetype start = text.indexOf(opening);
    if (start < 0)
        return {};
    const qsizetype from = start + opening.size();
    const qsizetype end = text.indexOf(QString(u"</"_qs + tag + u'>'), from);
    if (end < 0)
        return {};
    QString value = text.mid(from, end - from);
    if (const QString head = u"<![CDATA["_qs; value.startsWith(head) && value.endsWith(u"]]>"))
        return value.mid(head.size(), value.size() - head.size() - 3);
    return WebText::DecodeEntities(value);
}

QString CallLookup::QrzLoginAddress(const QString &base, const QString &user, const QString &password)
{
    return base + u"/xml/?username=" + user + u";password=" + WebText::PercentEncode(password);
}

QString CallLookup::QrzQueryAddress(const QString &base, const QString &key, const QString &call)
{
    return base + u"/xml/current/?s=" + key + u";callsign=" + call;
}

QString CallLookup::LdaQueryAddress(const QString &base, const QString &call)
{
    return base + u"/php/tordillo_lda.php?qrz=" + call;
}

LookupResult CallLookup::ReadQrzAnswer(const QString &call, const QString &xml)
{
    LookupResult result;
    result.title = qrzName;
    const QString found = TagValue(xml, u"call"_qs).toUpper();
    if (found.isEmpty()) {
        result.text = call + u" No está en " + qrzName + u'!';
        return result;
    }
    AddLine(result.text, {}, found);
    AddLine(result.text, {}, TagValue(xml, u"Count"_qs).toUpper());
    AddAlias(result.text, xml);
    AddLine(result.text, {}, QString(TagValue(xml, u"fname"_qs) + u' ' + TagValue(xml, u"name"_qs)).trimmed());
    AddLines(result.text, xml,
        {{u"addr1", u""}, {u"addr2", u""}, {u"state", u"Estado: "}, {u"country", u""}, {u"zip", u"ZIP: "},
            {u"grid", u"Grid Locator: "}, {u"email", u"email: "}, {u"url", u"web: "}, {u"eqsl", u"eQSL: "},
            {u"image", u"Imagen: "}});
    return result;
}

LookupResult CallLookup::ReadLdaAnswer(const QString &call, const QString &xml)
{
    LookupResult result;
    result.service = LookupResult::Service::Lda;
    result.title = u"Log de Argentina"_qs;
    const QString found = TagValue(xml, u"call"_qs).toUpper();
    if (found.isEmpty() && xml.contains(u"<?xml")) {
        result.text = call + u" No está en Lda!";
        return result;
    }
    AddLine(result.text, {}, found);
    AddAlias(result.text, xml);
    AddLines(result.text, xml,
        {{u"name", u""}, {u"addr1", u""}, {u"addr2", u""}, {u"grid", u"Grid Locator: "}, {u"email", u""},
            {u"ultimo", u"último QSO: "}});
    result.name = TagValue(xml, u"name"_qs);
    result.email = TagValue(xml, u"email"_qs);
    result.grid = TagValue(xml, u"grid"_qs);
    return result;
}

CallSearch::CallSearch(Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , client_(scheduler)
    , Timer8_(scheduler.Make(1000, [this] {
        Timer8_->Stop();
        const auto settled = std::exchange(settled_, {});
        Q_EMIT Found(settled());
    }))
{
}

CallSearch::~CallSearch() = default;

void CallSearch::Stop()
{
    request_.reset();
    Timer8_->Stop();
    settled_ = {};
}

void CallSearch::SearchQrz(const QrzAccount &account, const QString &call)
{
    account_ = account;
    SearchedCall_ = call;
    Login(CallLookup::QrzLoginAddress(account.base, account.user, account.password));
    Q_EMIT Activity(LookupResult::Service::Qrz, u"Conectando a QRZ ..."_qs);
}

void CallSearch::Probe(const QString &loginAddress, const QString &call)
{
    account_ = {};
    SearchedCall_ = call;
    Login(loginAddress);
}

void CallSearch::Login(const QString &address)
{
    Stop();
    request_ = client_.Get(address, [this](const WebReply &reply) { LoggedIn(reply); });
}

void CallSearch::LoggedIn(const WebReply &reply)
{
    request_.reset();
    if (!reply.Answered())
        return Failed(reply);
    if (const QString error = CallLookup::TagValue(reply.text, u"Error"_qs); !error.isEmpty()) {
        Q_EMIT ServiceSays(qrzName + u" dice:\n" + WebText::WithoutSecret(error, account_.password).left(longestError));
        return;
    }
    const QString key = CallLookup::TagValue(reply.text, u"Key"_qs);
    if (key.isEmpty() || account_.base.isEmpty()) {
        Q_EMIT Raw(u"\nvacío!"_qs);
        Q_EMIT NoConnection({});
        return;
    }
    Q_EMIT Raw(key);
    Q_EMIT Activity(LookupResult::Service::Qrz, u"Buscando a "_qs + SearchedCall_ + u" en " + qrzName);
    const QString query = CallLookup::QrzQueryAddress(account_.base, key, SearchedCall_);
    request_ = client_.Get(query, [this](const WebReply &answer) {
        request_.reset();
        if (!answer.Answered())
            return Failed(answer);
        Q_EMIT Raw(answer.text.left(longestRaw));
        Q_EMIT Found(CallLookup::ReadQrzAnswer(SearchedCall_, answer.text));
    });
}

void CallSearch::SearchLda(const QString &base, const QString &call)
{
    Stop();
    SearchedCall_ = call;
    Q_EMIT Activity(LookupResult::Service::Lda, u"Buscando a "_qs + call + u" en LdA ...");
    request_ = client_.Get(CallLookup::LdaQueryAddress(base, call), [this](const WebReply &reply) {
        request_.reset();
        if (!reply.Answered())
            return Failed(reply);
        settled_ = [this, text = reply.text] {
            Q_EMIT Raw(QString(u"Tordillo Compact "_qs + Logbook::AppVersion + u'\n' + text.left(longestRaw)));
            return CallLookup::ReadLdaAnswer(SearchedCall_, text);
        };
        Timer8_->Start();
    });
}

// An answer that never comes says nothing, as a person who does not call back; a line that is cut does.
void CallSearch::Failed(const WebReply &reply)
{
    if (reply.outcome == WebReply::Outcome::NoConnection)
        Q_EMIT NoConnection(reply.Cause());
}
