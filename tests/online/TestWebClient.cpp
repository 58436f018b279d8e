// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Online.h"
#include "online/WebClient.h"
#include "support/TestRegistry.h"

#include <QTcpServer>

using Outcome = WebReply::Outcome;
using Manner = LocalServer::Manner;

class TestWebClient : public QObject {
    Q_OBJECT

    struct Asked {
        std::optional<WebReply> reply;
        std::unique_ptr<WebRequest> request;
    };
    static std::unique_ptr<Asked> Ask(WebClient &client, const QString &address, WebClient::Limits limits = {})
    {
        auto asked = std::make_unique<Asked>();
        asked->request = client.Get(address, limits, [to = asked.get()](const WebReply &reply) { to->reply = reply; });
        return asked;
    }
    // The reply to one request by a fresh client.
    static WebReply ReplyTo(Online &online, const QString &address, WebClient::Limits limits = {})
    {
        WebClient client(online.scheduler);
        const auto asked = Ask(client, address, limits);
        if (!online.Until([&] { return asked->reply.has_value(); }))
            qWarning("no reply");
        return asked->reply.value_or(WebReply());
    }

private Q_SLOTS:
    void PagesComeBackWhateverTheirStatus()
    {
        Online online;
        for (const int status : {200, 404, 500}) {
            online.server.Always({"<b>ni\xc3\xb1o</b>", status});
            const WebReply reply = ReplyTo(online, online.server.Base() + u"/a b?c=ñ&d=<e>#f");
            QCOMPARE(reply.outcome, Outcome::Answered);
            QCOMPARE(reply.status, status);
            QCOMPARE(reply.text, u"<b>niño</b>"_qs);
            QCOMPARE(reply.IsGood(), status == 200);
        }
        QCOMPARE(online.server.requests.first().target, "/a%20b?c=%C3%B1&d=%3Ce%3E%23f");
    }

    void BrokenConnectionsAreNoAnswer()
    {
        Online online;
        for (const Manner manner : {Manner::Hangup, Manner::HalfAnswer}) {
            LocalServer::Answer half(manner);
            half.body = "<?xml Guardado";
            online.server.Always(half);
            const WebReply reply = ReplyTo(online, online.server.Base() + u"/?pass=secreto");
            QCOMPARE(reply.outcome, Outcome::NoConnection);
            QCOMPARE(reply.text + reply.Cause(), QString());
            QVERIFY(!reply.trouble.isEmpty() && !reply.trouble.contains(u"secreto"));
        }
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QString nobody = u"http://127.0.0.1:"_qs + QString::number(closed.serverPort());
        closed.close();
        for (const QString &address : {nobody, u"http://no-existe.invalid/"_qs, u"nada://x"_qs, QString()})
            QCOMPARE(ReplyTo(online, address + u"/?pass=secreto").outcome, Outcome::NoConnection);
    }

    void TimeAndLengthAreLimited()
    {
        Online online;
        online.server.Always(Manner::Silent);
        WebClient client(online.scheduler);
        const auto asked = Ask(client, online.server.Base(), {3000, 100});
        QVERIFY(online.Until([&] { return !online.server.requests.isEmpty(); }));
        online.scheduler.Advance(2999);
        QVERIFY(!asked->reply);
        online.scheduler.Advance(1);
        QCOMPARE(asked->reply->outcome, Outcome::TimedOut);
        online.server.Always(Manner::Endless);
        const WebReply endless = ReplyTo(online, online.server.Base());
        QCOMPARE(endless.outcome, Outcome::NoConnection);
        QCOMPARE(endless.Cause(), u"La respuesta de 127.0.0.1 es demasiado larga."_qs);
        online.server.Always(QByteArray(100, 'x'));
        QCOMPARE(ReplyTo(online, online.server.Base(), {3000, 100}).text.size(), 100);
        QVERIFY(ReplyTo(online, online.server.Base(), {3000, 99}).rejected);
    }

    void ARequestThatIsGoneHearsNothing()
    {
        Online online;
        WebClient client(online.scheduler);
        auto first = Ask(client, online.server.Base() + u"/uno");
        QVERIFY(online.Until([&] { return online.server.requests.size() == 1; }));
        first->request.reset();
        online.server.Always("dos");
        const auto second = Ask(client, online.server.Base() + u"/dos");
        QVERIFY(online.Until([&] { return second->reply.has_value(); }));
        QCOMPARE(second->reply->text, u"dos"_qs);
        QVERIFY(!first->reply);
        QCOMPARE(online.scheduler.RunningTimers(), 0);
    }

    void RedirectsDoNotCarryTheAccountElsewhere()
    {
        Online online;
        LocalServer other;
        const auto to = [](const QString &target) {
            LocalServer::Answer answer("mudado", 302);
            answer.moreHeaders = "Location: " + target.toLatin1() + "\r\n";
            return answer;
        };
        online.server.InTurn({to(u"/otra?x=1"_qs), "aquí"});
        QCOMPARE(ReplyTo(online, online.server.Base() + u"/una").text, u"aquí"_qs);
        QCOMPARE(online.server.requests.last().target, "/otra?x=1");
        for (const QString &target :
            {QString(other.Base() + u"/?pass=secreto"), u"http://localhost:1/"_qs, u"//otro.invalid/"_qs}) {
            online.server.Always(to(target));
            const WebReply reply = ReplyTo(online, online.server.Base() + u"/?pass=secreto");
            QCOMPARE(reply.outcome, Outcome::NoConnection);
            QVERIFY(reply.Cause().contains(u"otro lugar") && !reply.Cause().contains(u"secreto"));
        }
        QVERIFY(other.requests.isEmpty());
        online.server.Always(to(u"/circulo"_qs));
        QVERIFY(ReplyTo(online, online.server.Base()).rejected);
    }

    void CertificatesAreVerified()
    {
        Online online;
        LocalServer secure(LocalServer::Scheme::Https);
        secure.Always("bien");
        const WebReply unknown = ReplyTo(online, secure.Base() + u"/?pass=secreto");
        QCOMPARE(unknown.outcome, Outcome::NoConnection);
        QVERIFY2(unknown.Cause().startsWith(u"El certificado del servidor 127.0.0.1 no es de confianza"),
            qPrintable(unknown.trouble));
        const LocalServer::Trust trust;
        QCOMPARE(ReplyTo(online, secure.Base()).text, u"bien"_qs);
        const WebReply otherName = ReplyTo(online, u"https://localhost:"_qs + QString::number(secure.Port()));
        QVERIFY2(otherName.Cause().contains(u"es de otro servidor"), qPrintable(otherName.trouble));
        QCOMPARE(secure.requests.size(), 1);
    }

    void NothingIsKeptForTheNextRequest()
    {
        Online online;
        LocalServer::Answer cookie("a");
        cookie.moreHeaders = "Set-Cookie: sesion=1\r\nCache-Control: max-age=1000\r\n";
        online.server.InTurn({cookie, "b"});
        WebClient client(online.scheduler);
        for (const QString &text : {u"a"_qs, u"b"_qs}) {
            const auto asked = Ask(client, online.server.Base());
            QVERIFY(online.Until([&] { return asked->reply.has_value(); }));
            QCOMPARE(asked->reply->text, text);
        }
        QVERIFY(!online.server.requests.last().head.contains("sesion"));
    }

    void APolledRequestGivesUpAfterFifteenSeconds()
    {
        Online online;
        online.server.Always(Manner::Silent);
        WebClient client(online.scheduler);
        QList<int> ticks;
        std::optional<WebReply> reply;
        PolledRequest request(
            client, online.scheduler, online.server.Base(), [&](int tick) { ticks << tick; },
            [&](const WebReply &given) { reply = given; });
        QVERIFY(online.Until([&] { return !online.server.requests.isEmpty(); }));
        online.scheduler.Advance(14999);
        QVERIFY(!reply);
        online.scheduler.Advance(1);
        QCOMPARE(reply->outcome, Outcome::TimedOut);
        QCOMPARE(ticks.size(), 15);
        online.scheduler.Advance(60000);
        QCOMPARE(ticks.last(), 15);
    }
};

TORDILLO_TEST(TestWebClient)
#include "TestWebClient.moc"
