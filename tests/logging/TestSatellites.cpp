// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/Satellites.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestSatellites : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void TheFirstCatalogue()
    {
        const QList<SatelliteRow> catalogue = ReadSatellites(DefaultSatellites());
        QCOMPARE(catalogue.size(), 16);
        QCOMPARE(FindSatellite(catalogue, u"ao-7"), nullptr);
        const std::optional<SatelliteLabels> labels = LastRowLabels(catalogue);
        QVERIFY(labels);
        QCOMPARE(labels->subida, u"Subida:70cm"_qs);
        QCOMPARE(labels->bajada, u"Bajada:2m"_qs);
        QCOMPARE(labels->modo, u"Modo:FM"_qs);
        QCOMPARE(labels->subtono, u"SubTono:67.0"_qs);
        QVERIFY(!LastRowLabels({}));
    }

    void ToneAndFrequencyAreCarriedOver()
    {
        const QList<SatelliteRow> catalogue =
            ReadSatellites({u"A;2m;70cm;FM;88.5"_qs, u"B;2m;70cm;FM;67.0;145.990"_qs, u"C;70cm;2m;SSB;100.4"_qs,
                u"D;70cm;2m;SSB; ; "_qs, u"E;2m;70cm;FM;1;2;3"_qs, u"F;2m;70cm;FM;"_qs, u"B;23cm;2m;FM;x;y"_qs});
        QStringList tones, frequencies;
        for (const SatelliteRow &row : catalogue) {
            tones << row.tone;
            frequencies << row.uplinkFrequency;
        }
        QCOMPARE(tones.join(u'|'), u"|67.0|67.0| |1|1|x"_qs);
        QCOMPARE(frequencies.join(u'|'), u"|145.990|145.990| |2;3|2;3|y"_qs);
        const SatelliteRow *first = FindSatellite(catalogue, u"B");
        QVERIFY(first);
        const SatelliteLabels labels = ClickLabels(*first);
        QCOMPARE(labels.subida, u"Subida: 2m 145.990"_qs);
        QCOMPARE(labels.bajada, u"Bajada: 70cm"_qs);
        QCOMPARE(labels.modo, u"Modo: FM"_qs);
        QCOMPARE(labels.subtono, u"SubTono: 67.0"_qs);
        QCOMPARE(LastRowLabels(catalogue)->subtono, u"SubTono:x;y"_qs);
    }

    void BrokenLinesAreSkipped()
    {
        const QList<SatelliteRow> catalogue =
            ReadSatellites({u"A;2m;70cm;FM"_qs, QString(), u"B;2m;70cm;FM;"_qs, u"basura"_qs});
        QCOMPARE(catalogue.size(), 1);
        QCOMPARE(catalogue.first().name, u"B"_qs);
    }

    void FrequencyOfTheUplink()
    {
        const std::tuple<const char *, const char *, const char *> rows[] = {{"Subida: 70cm 435.100", "435", "100"},
            {"Subida: 23cm 1267.100", "126", ".10"}, {"Subida: 70cm", "435", "550"}, {"Subida: 2m  ", "145", "550"},
            {"Subida: 23cm  ", "", ""}, {"Subida: 70cm 14", "14", "14"}, {"Subida:70cm", "", ""}, {"", "", ""}};
        for (const auto &[caption, megahertz, kilohertz] : rows) {
            const UplinkFrequency uplink = ApplyUplink(QString::fromLatin1(caption));
            QCOMPARE(uplink.megahertz, QString::fromLatin1(megahertz));
            QCOMPARE(uplink.kilohertz, QString::fromLatin1(kilohertz));
        }
    }
};

TORDILLO_TEST(TestSatellites)
#include "TestSatellites.moc"
