// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/WebText.h"
#include "support/TestRegistry.h"

#include <QElapsedTimer>
#include <QTest>

class TestWebText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ValuesAreEncodedOnce()
    {
        // What stands in a value, as PercentEncode and as the client then sends it.
        const QStringList rows[] = {{u"50%"_qs, u"50%25"_qs, u"50%25"_qs}, {u"a&b"_qs, u"a%26b"_qs, u"a%26b"_qs},
            {u"%26"_qs, u"%2526"_qs, u"%2526"_qs},
            {u"!*'();:@&=+$,/?#[]"_qs, u"%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%23%5B%5D"_qs,
                u"%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%23%5B%5D"_qs},
            {u"a b<c>\"ñ€"_qs, u"a b<c>\"ñ€"_qs, u"a%20b%3Cc%3E%22%C3%B1%E2%82%AC"_qs}};
        for (const QStringList &row : rows) {
            QCOMPARE(WebText::PercentEncode(row[0]), row[1]);
            QCOMPARE(QString::fromLatin1(WebText::AddressBytes(row[1])), row[2]);
        }
        // Of what goes as it stands, only what no address can hold is encoded.
        QCOMPARE(WebText::AddressBytes(u"http://a/b?c=d&e=50%25 o 50%&f=#;+[/]'%zz%4"),
            "http://a/b?c=d&e=50%25%20o%2050%25&f=%23;+[/]'%25zz%254");
    }

    void RepliesAreReadByTheirCharacterSet()
    {
        struct Row {
            QByteArray bytes, type;
            QString text;
        };
        const Row rows[] = {{"\xc3\xb1", "text/html; charset=UTF-8", u"ñ"_qs}, {"\xc3\xb1", "text/html", u"ñ"_qs},
            {"\xf1", "text/html", u"ñ"_qs}, {"\xf1\x80", "text/html; Charset=\"ISO-8859-1\"", u"ñ€"_qs},
            {"\xc3\xb1", "text/xml;charset=windows-1252;x=y", u"Ã±"_qs},
            {"\xc3\xb1", "text/html; charset=klingon", u"ñ"_qs},
            {QByteArray("\xff\xfe"
                        "a\0",
                 4),
                "text/plain; charset=utf-16", u"a"_qs},
            {"\xef\xbb\xbf"
             "a",
                "", u"a"_qs}};
        for (const Row &row : rows)
            QCOMPARE(WebText::Decode(row.bytes, row.type), row.text);
    }

    void PagesLoseTheirTags()
    {
        const std::pair<QString, QString> rows[] = {
            {u" LU1ABC LU2ABC\n 20m Guardado\r\n"_qs, u"LU1ABC LU2ABC\n 20m Guardado"_qs},
            {u"<html><head><title>LdA</title></head><body>Uno  dos<br/>\n tres<p>cuatro</p></body></html>"_qs,
                u"Uno dos\ntres\ncuatro"_qs},
            {u"<script>if (a<b) 'LdA'</script><!-- <b>LdA</b> -->A<b>B</b>&nbsp;&amp;lt; &ntilde;&#241;&#xF1;&nada;&"_qs,
                u"AB &lt; ñññ&nada;&"_qs},
            {u"<style>p{}</style>uno<!-- nunca acaba > dos"_qs, u"uno"_qs},
            {u"uno<script>nunca acaba > dos"_qs, u"uno"_qs}, {u"2 < 3 &amp; 4 > 1"_qs, u"2 < 3 & 4 > 1"_qs},
            {u"<b"_qs, u"<b"_qs}, {{}, {}}};
        for (const auto &[page, text] : rows)
            QCOMPARE(WebText::PageText(page), text);
        // A megabyte of nonsense takes no longer than a megabyte of text.
        for (const QString &nonsense : {u"<script>"_qs, u"<!--"_qs, u"<a"_qs, u"<br>"_qs, u"<p>a</p>"_qs}) {
            QElapsedTimer clock;
            clock.start();
            WebText::PageText(nonsense.repeated((1 << 20) / nonsense.size()));
            QVERIFY2(clock.elapsed() < 1000, qPrintable(nonsense));
        }
    }

    void SecretsAreNotShown()
    {
        QCOMPARE(
            WebText::WithoutSecret(u"x?pass=a%26b%c3%b1c&y a&bñc a%26bñc"_qs, u"a&bñc"_qs), u"x?pass=***&y *** ***"_qs);
        QCOMPARE(WebText::WithoutSecret(u"a la una"_qs, u"a"_qs), u"a la una"_qs);
        QCOMPARE(WebText::WithoutSecret(u"nada"_qs, {}), u"nada"_qs);
    }
};

TORDILLO_TEST(TestWebText)
#include "TestWebText.moc"
