// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/BandPlan.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace BandPlan;

class TestBandPlan : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void BandOfTheTwoFields()
    {
        const std::tuple<const char *, const char *, const char *, bool> rows[] = {{"1", "820", "160m", false},
            {"3", "499", "80m", true}, {"3", "500", "80m", false}, {"3", "", "80m", true}, {"3", "5?0", "80m", true},
            {"7", "000", "40m", false}, {"10", "250", "30m", false}, {"10", "251", "30m", true},
            {"14", "999", "20m", false}, {"24", "889", "12m", true}, {"24", "890", "12m", false},
            {"54", "0", "6m", false}, {"55", "0", "", false}, {"147", "0", "2m", false}, {"148", "0", "", false},
            {"224", "0", "1.25m", false}, {"443", "0", "70cm", false}, {"444", "0", "", false},
            {"14v", "0", "20m", false}, {"14.2", "0", "", false}, {"", "", "", false}, {"1e300", "0", "", false}};
        for (const auto &[megahertz, kilohertz, band, warned] : rows) {
            const FieldBand found =
                BandOfFields(QString::fromLatin1(megahertz), QString::fromLatin1(kilohertz), FieldsOf::EntryWindow);
            QCOMPARE(found.band, QString::fromLatin1(band));
            QCOMPARE(found.outOfBand, warned);
            QCOMPARE(found.message.isEmpty(), !warned);
        }
    }

    void WindowsDifferAt1267AndWarnWithTheTextsOfTheFields()
    {
        QCOMPARE(BandOfFields(u"1267", u"100", FieldsOf::EntryWindow).band, u"23cm"_qs);
        QCOMPARE(BandOfFields(u"1267", u"100", FieldsOf::EditWindow).band, u"23m"_qs);
        QCOMPARE(BandOfFields(u"3v", u"490", FieldsOf::EntryWindow).message, u"3v.490 KHz\n\nFuera de banda!"_qs);
    }

    // Each listed value leads to a listed band, but for 1.25 m, which only the label can show.
    void ListsAgreeWithThePlan()
    {
        QStringList reached;
        for (const QString &megahertz : EntryMegahertz())
            reached << BandOfFields(megahertz, u"500", FieldsOf::EntryWindow).band;
        reached.removeDuplicates();
        QVERIFY(reached.removeOne(u"1.25m"_qs));
        QCOMPARE(reached, EntryBands());
        QCOMPARE(EntryModes().join(u'|'), u"SSB|FM|AM|CW|DG|DVoice|DV IP|Echo|Echo IP"_qs);
    }

    void BandOfAFrequencyFromOutside()
    {
        const std::pair<const char *, const char *> rows[] = {{"1", "160m"}, {"2.0", "160m"}, {"2.001", ""},
            {"4.0", "80m"}, {"15", "20m"}, {"15.5", ""}, {"30.0", "10m"}, {"30.1", ""}, {"55", "6m"}, {"148", "2m"},
            {"222", ""}, {"440.001", ""}, {"1267", ""}, {"", ""}, {"14.2 MHz", "20m"}};
        for (const auto &[frequency, band] : rows)
            QCOMPARE(BandOfFrequency(QString::fromLatin1(frequency)), QString::fromLatin1(band));
    }

    void DefaultFrequencyLiesInItsBand()
    {
        for (const QString &band : EntryBands())
            QCOMPARE(BandOfFrequency(DefaultFrequencyOfBand(band)), band);
        for (const char16_t *none : {u"1.25m", u"23cm", u"23m", u"", u"HF"})
            QCOMPARE(DefaultFrequencyOfBand(QStringView(none)), QString());
    }

    void BandOfADottedFrequency()
    {
        const std::pair<const char *, const char *> rows[] = {{"1.820.0", "160m"}, {"10.120.0", "30m"},
            {"59.125.0", "6m"}, {"149.300.0", "2m"}, {"20m", "20m"}, {"cm", "cm"}, {"5.100.0", ""}, {"29.600.0", ""},
            {"150.000.0", ""}, {"14.250", ""}, {"14.250.00", ""}, {"14.25x.0", ""}, {"20M", ""}, {"", ""}};
        for (const auto &[frequency, band] : rows)
            QCOMPARE(BandOfDottedFrequency(QString::fromLatin1(frequency)), QString::fromLatin1(band));
    }
};

TORDILLO_TEST(TestBandPlan)
#include "TestBandPlan.moc"
