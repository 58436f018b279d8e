// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/SiteCalls.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestSiteCalls : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void VersionsAreComparedNumberByNumber()
    {
        // The published text, and the verdict on 2.1.34: "-" none, "=" up to date, "<" outdated.
        const std::pair<QString, QChar> rows[] = {{u"2.1.34"_qs, u'='}, {u"2.1.40"_qs, u'<'}, {u"2.0.99"_qs, u'<'},
            {u"1.9.9"_qs, u'<'}, {u"2.1.33\r\n9.9.9"_qs, u'='}, {u"2.1"_qs, u'-'}, {u"Error"_qs, u'-'}, {{}, u'-'},
            {u"<!DOCTYPE html 4.0.1>"_qs, u'-'}, {u"\x01.\x02.\xFFFD"_qs, u'-'}, {QString(1000, u'9') + u".1.1", u'-'}};
        for (const auto &[published, verdict] : rows) {
            const auto compared = SiteCalls::CompareVersion(u"2.1.34"_qs, published);
            const QChar found = !compared ? u'-' : compared->outdated ? u'<' : u'=';
            QVERIFY2(found == verdict, qPrintable(published));
        }
        QCOMPARE(SiteCalls::CompareVersion(u"3.0.0"_qs, u"2.9.9"_qs)->message,
            u"Su versión: 3.0.0\nen la Web: 2.9.9\n\ndebe actualizar!"_qs);
        QCOMPARE(SiteCalls::CompareVersion(u"2.1.34"_qs, u"2.1.34\n"_qs)->message,
            u"Su versión: 2.1.34\nen la Web: 2.1.34\n\nestá actualizado"_qs);
    }

    void PresenceNamesTheStation()
    {
        QCOMPARE(SiteCalls::PresenceAddress(u"http://x"_qs, u"LU1AA"_qs, SiteCalls::Presence::Off),
            u"http://x/tordillo.php?qrz=LU1AA&prog=Tordillo Compact 2&ver=2.1.34&comando=off"_qs);
    }
};

TORDILLO_TEST(TestSiteCalls)
#include "TestSiteCalls.moc"
