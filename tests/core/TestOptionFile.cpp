// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Logbook.h"
#include "core/OptionFile.h"
#include "core/Profiles.h"
#include "support/FixedClock.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// The small files that an operator may write by hand.
class TestOptionFile : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    FileSystem files_;
    FixedClock clock_;
    Logbook logbook_{folder_.path(), files_, clock_};

    void Put(const QString &name, const QByteArray &content) const
    {
        QFile file(folder_.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

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
            QCOMPARE(OptionFile(logbook_, u"servicios.ini"_qs, u"servicios"_qs).Value(u"Lda"_qs, u"preset"_qs), value);
        }
    }
    void ProfilesComeBackInUpperCase()
    {
        QVERIFY(ReadProfiles(logbook_) == ProfileNames());
        QVERIFY(SaveProfiles(logbook_, {u"casa"_qs, {}, u"año Perfil1="_qs}));
        QFile file(folder_.filePath(u"Perfiles.cfg"_qs));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("Perfil1=CASA\r\nPerfil2=\r\nPerfil3=A\xd1O PERFIL1=\r\n"));
        QVERIFY((ReadProfiles(logbook_) == ProfileNames{u"CASA"_qs, {}, u"AÑO PERFIL1="_qs}));
        Put(u"Perfiles.cfg"_qs, "x Perfil2=dos\rPerfil9=\rPerfil3=\r");
        QVERIFY((ReadProfiles(logbook_) == ProfileNames{QString(), u"x dos"_qs, {}}));
    }
};

TORDILLO_TEST(TestOptionFile)
#include "TestOptionFile.moc"
