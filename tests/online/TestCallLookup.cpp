// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Online.h"
#include "online/AccountTest.h"
#include "online/CallLookup.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>

using Manner = LocalServer::Manner;

class TestCallLookup : public QObject {
    Q_OBJECT

    // All that a search tells, one line each.
    struct Heard {
        explicit Heard(CallSearch &search)
        {
            connect(&search, &CallSearch::Activity, &search, [this](auto, const QString &text) { lines << text; });
            connect(&search, &CallSearch::ServiceSays, &search, [this](const QString &text) { End(text); });
            connect(
                &search, &CallSearch::NoConnection, &search, [this](const QString &text) { End(u"nadie:"_qs + text); });
            connect(&search, &CallSearch::Found, &search,
                [this](const LookupResult &result) { End(result.title + u'|' + result.text); });
            connect(&search, &CallSearch::Raw, &search, [this](const QString &text) { raw = text; });
        }
        void End(const QString &text)
        {
            lines << text;
            ended = true;
        }
        QStringList lines;
        QString raw;
        bool ended = false;
    };

private Q_SLOTS:
    void TagsAreFoundByTheirText()
    {
        const QString xml =
            u"<?xml?><callsign>NO</callsign></call><fname>Ana</fname><call>lu1abc</call><call>lu2</call>"
            "<Error></Error><addr1>A &amp; B &lt;x&gt; &#241;</addr1><name><![CDATA[P <&amp;> Q]]></name>"
            "<grid>GF05"_qs;
        const std::pair<QString, QString> rows[] = {{u"call"_qs, u"lu1abc"_qs}, {u"fname"_qs, u"Ana"_qs},
            {u"Error"_qs, {}}, {u"error"_qs, {}}, {u"addr1"_qs, u"A & B <x> ñ"_qs}, {u"name"_qs, u"P <&amp;> Q"_qs},
            {u"grid"_qs, {}}, {u"email"_qs, {}}};
        for (const auto &[tag, value] : rows)
            QCOMPARE(CallLookup::TagValue(xml, tag), value);
    }

    void AnswersBecomeLines()
    {
        const QString person = u"<ultimo>1/2/26</ultimo><image>i</image><eqsl>1</eqsl><url>u</url><email>a@b</email>"
                               "<grid>GF05</grid><zip>1000</zip><country>Argentina</country><state>BA</state>"
                               "<addr2>Acá</addr2><addr1>Calle 1</addr1><name>Pérez</name><fname>Juan</fname>"
                               "<aliases>lu0x</aliases><Count>2</Count><call>lu1abc</call>"_qs;
        QCOMPARE(CallLookup::ReadQrzAnswer(u"LU1ABC"_qs, person).text,
            u"LU1ABC\n2\nAlias: LU0X\nJuan Pérez\nCalle 1\nAcá\nEstado: BA\nArgentina\nZIP: 1000\nGrid Locator: GF05\n"
            "email: a@b\nweb: u\neQSL: 1\nImagen: i\n"_qs);
        const LookupResult lda = CallLookup::ReadLdaAnswer(u"LU1ABC"_qs, u"<?xml ?>"_qs + person);
        QCOMPARE(
            lda.text, u"LU1ABC\nAlias: LU0X\nPérez\nCalle 1\nAcá\nGrid Locator: GF05\na@b\núltimo QSO: 1/2/26\n"_qs);
        QCOMPARE((QStringList{lda.name, lda.email, lda.grid, lda.title}),
            (QStringList{u"Pérez"_qs, u"a@b"_qs, u"GF05"_qs, u"Log de Argentina"_qs}));
        QCOMPARE(
            CallLookup::ReadQrzAnswer(u"XX1X"_qs, u"<Error>Not found</Error>"_qs).text, u"XX1X No está en QRZ!"_qs);
        QCOMPARE(CallLookup::ReadLdaAnswer(u"XX1X"_qs, u"<?xml ?><call></call>"_qs).text, u"XX1X No está en Lda!"_qs);
        QCOMPARE(CallLookup::ReadLdaAnswer(u"XX1X"_qs, u"<html>Error 500</html>"_qs).text, QString());
    }

    void QrzLogsInAndAsksOnce()
    {
        Online online;
        online.server.InTurn({"<Session><Key>k7</Key></Session>", "<call>lu1abc</call>"});
        CallSearch search(online.scheduler);
        Heard heard(search);
        search.SearchQrz({online.server.Base(), u"yo o él"_qs, u"a&b%c+d#ñ e"_qs}, u"LU1ABC"_qs);
        QVERIFY(online.Until([&] { return heard.ended; }));
        QCOMPARE(
            heard.lines, QStringList({u"Conectando a QRZ ..."_qs, u"Buscando a LU1ABC en QRZ"_qs, u"QRZ|LU1ABC\n"_qs}));
        QCOMPARE(heard.raw, u"<call>lu1abc</call>"_qs);
        QCOMPARE(online.server.requests.size(), 2);
        const LocalServer::Request login = online.server.requests[0], query = online.server.requests[1];
        QVERIFY(login.target.startsWith("/xml/?username="));
        QCOMPARE(login.Value(u"username"_qs), u"yo o él"_qs);
        QCOMPARE(login.Value(u"password"_qs), u"a&b%c+d#ñ e"_qs);
        QCOMPARE(query.target, "/xml/current/?s=k7;callsign=LU1ABC");
    }

    void QrzSaysWhyNot()
    {
        // What the service answers, and what is told in the end.
        const std::pair<LocalServer::Answer, QString> rows[] = {
            {"<Error>Password &lt;clave&gt; incorrect</Error><Key>k</Key>", u"QRZ dice:\nPassword <***> incorrect"_qs},
            {"<Session></Session>", u"nadie:"_qs}, {{"<html>Internal Server Error</html>", 500}, u"nadie:"_qs},
            {"<html>Bienvenido al hotel</html>", u"nadie:"_qs}, {Manner::Hangup, u"nadie:"_qs}};
        for (const auto &[answer, told] : rows) {
            Online online;
            online.server.Always(answer);
            CallSearch search(online.scheduler);
            Heard heard(search);
            search.SearchQrz({online.server.Base(), u"yo"_qs, u"clave"_qs}, u"LU1ABC"_qs);
            QVERIFY(online.Until([&] { return heard.ended; }));
            QCOMPARE(heard.lines.last(), told);
            QVERIFY(!search.IsRunning());
        }
    }

    void LdaSettlesForASecondAndOnlyTheLastSearchIsHeard()
    {
        Online online;
        online.server.answer = [](const LocalServer::Request &request) {
            const QByteArray call = request.Value(u"qrz"_qs).toLatin1();
            return call == "LU1AAA" ? LocalServer::Answer(Manner::Silent)
                                    : LocalServer::Answer("<?xml ?><call>" + call + "</call>");
        };
        CallSearch search(online.scheduler);
        Heard heard(search);
        search.SearchLda(online.server.Base(), u"LU1AAA"_qs);
        QVERIFY(online.Until([&] { return online.server.requests.size() == 1; }));
        search.SearchLda(online.server.Base(), u"LU2AAA"_qs);
        QVERIFY(online.Until([&] { return online.scheduler.RunningTimers() == 1; })); // the second of settling
        online.scheduler.Advance(999);
        QVERIFY(!heard.ended);
        search.SearchLda(online.server.Base(), u"LU3AAA"_qs);
        QVERIFY(online.Until([&] { return heard.ended; }, 1000));
        QCOMPARE(heard.lines.mid(1),
            QStringList({u"Buscando a LU2AAA en LdA ..."_qs, u"Buscando a LU3AAA en LdA ..."_qs,
                u"Log de Argentina|LU3AAA\n"_qs}));
        QCOMPARE(online.server.requests.last().target, "/php/tordillo_lda.php?qrz=LU3AAA");
    }

    void AnAnswerThatNeverComesSaysNothing()
    {
        Online online;
        online.server.Always(Manner::Silent);
        CallSearch search(online.scheduler);
        Heard heard(search);
        search.SearchLda(online.server.Base(), u"LU1AAA"_qs);
        QVERIFY(online.Until([&] { return !online.server.requests.isEmpty(); }));
        online.scheduler.Advance(600000);
        QVERIFY(!heard.ended && !search.IsRunning());
    }

    void TheAccountTestShowsTheReply()
    {
        const AccountTest::Account account{u"http://x"_qs, u"yo@x"_qs, u"a&b ñ"_qs, u"LU9ZZZ"_qs};
        QCOMPARE(
            AccountTest::Address(account), u"http://x/php/tordillo_c2.php?user=yo@x&pass=a%26b ñ&micall=LU9ZZZ"_qs);
        QCOMPARE(AccountTest::Asking(account), u"user=yo@x\nmicall=LU9ZZZ\n"_qs);
        WebReply reply;
        reply.outcome = WebReply::Outcome::Answered;
        reply.text = u"<html><body>Todo OK con a%26b%20%C3%B1</body></html>"_qs;
        QCOMPARE(AccountTest::Judge(account, reply).text, u"Todo OK con ***"_qs);
        WebReply late;
        late.outcome = WebReply::Outcome::TimedOut;
        QVERIFY(AccountTest::Judge(account, late).noConnection);
        QCOMPARE(AccountTest::Judge(account, late).text, u"No parace haber conexión con internet!"_qs);
        late.rejected = true;
        late.trouble = u"El certificado ..."_qs;
        QCOMPARE(
            AccountTest::Judge(account, late).text, u"No parace haber conexión con internet!\nEl certificado ..."_qs);
    }
};

TORDILLO_TEST(TestCallLookup)
#include "TestCallLookup.moc"
