// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/OptionFile.h"
#include "core/Profiles.h"
#include "core/Services.h"
#include "support/Fixtures.h"

// The small files that an operator may write by hand.
class TestOptionFile : public LogbookTest {
    Q_OBJECT

private Q_SLOTS:
    void OptionsOfASection()
    {
        // The file, and the value of "lda" in "servicios".
        const std::pair<QByteArray, QString> rows[] = {{"[servicios]\r\nlda=http://a/b?c=d\r\n", u"http://a/b?c=d"_qs},
            {" [Servicios] \n\n LDA = x y \nlast", u"x y"_qs}, {"[servicios]\nlda=1\nlda=2\n", u"2"_qs},
            {"[servicios]\n;lda=1\n#lda=2\n", u"preset"_qs}, {"lda=0\n[puertos]\nlda=1\n[x]\n", u"preset"_qs},
            {"[servicios]\nlda=\n", QString()}, {QByteArray("[\n=\n]\n\0\xff=[servicios\n", 20), u"preset"_qs}};
        for (const auto &[content, value] : rows) {
            Put(u"servicios.ini"_qs, content);
            QCOMPARE(OptionFile(*logbook_, u"servicios.ini"_qs, u"servicios"_qs).Value(u"Lda"_qs, u"preset"_qs), value);
        }
    }
    void ServicesArePointedElsewhere()
    {
        Put(u"servicios.ini"_qs,
            "[servicios]\nlda=http://127.0.0.1:80//\neqsl=\nweb=//\nlda_predeterminada=http://mia\n");
        QCOMPARE(ServiceAddress(*logbook_, Service::Lda), u"http://127.0.0.1:80"_qs);
        QCOMPARE(ServiceAddress(*logbook_, Service::Eqsl), u"https://www.eqsl.cc"_qs);
        QCOMPARE(ServiceAddress(*logbook_, Service::Web), u"https://tordillo.example"_qs); // nothing but slashes
        QCOMPARE(ServiceAddress(*logbook_, Service::LdaSecure2), u"https://segura2.lda.example"_qs);
        LoadConfig(*logbook_);
        QCOMPARE(logbook_->configuration.LDAQ_web, u"http://mia"_qs);
    }
    void ProfilesComeBackInUpperCase()
    {
        QVERIFY(ReadProfiles(*logbook_) == ProfileNames());
        QVERIFY(SaveProfiles(*logbook_, {u"casa"_qs, {}, u"año Perfil1="_qs}));
        QCOMPARE(Content(u"Perfiles.cfg"_qs), QByteArray("Perfil1=CASA\r\nPerfil2=\r\nPerfil3=A\xd1O PERFIL1=\r\n"));
        QVERIFY((ReadProfiles(*logbook_) == ProfileNames{u"CASA"_qs, {}, u"AÑO PERFIL1="_qs}));
        Put(u"Perfiles.cfg"_qs, "x Perfil2=dos\rPerfil9=\rPerfil3=\r");
        QVERIFY((ReadProfiles(*logbook_) == ProfileNames{QString(), u"x dos"_qs, {}}));
    }
};

TORDILLO_TEST(TestOptionFile)
#include "TestOptionFile.moc"
