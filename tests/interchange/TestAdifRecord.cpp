// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/AdifRecord.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestAdifRecord : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // A comment, and the operator behind it, which must not be swallowed.
    void OneValue()
    {
        const std::pair<QByteArray, QString> rows[] = {{"<COMMENT:4>hola<OPERATOR:3>LU1", u"hola"_qs},
            {"<COMMENT:4:S>hola<OPERATOR:3:S>LU1", u"hola"_qs}, {"<COMMENT:4:9>hola<OPERATOR:3>LU1", u"hola"_qs},
            {"<COMMENT:3>uno<COMMENT:3>dos<OPERATOR:3>LU1", u"uno"_qs},
            {"<NOTES:14><COMMENT:3>sie<COMMENT:3>dos<OPERATOR:3>LU1", u"sie"_qs},
            {"<COMMENT:2>hola<OPERATOR:3>LU1", u"ho"_qs}, {"<OPERATOR:3>LU1<COMMENT:9>hola", u"hola"_qs},
            {"<COMMENT:0>hola<OPERATOR:3>LU1", {}}, {"<COMMENT:cuatro>hola<OPERATOR:3>LU1", {}},
            {"<OPERATOR:3>LU1<COMMENT:88888888888888888888>hola", u"hola"_qs},
            {"<COMMENTS:4>hola<MYCOMMENT:4>hola<OPERATOR:3>LU1", {}}, {"<OPERATOR:3>LU1<COMMENT:4", {}},
            {"<COMMENT:13>a<b>c <EOR> d<OPERATOR:3>LU1", u"a<b>c <EOR> d"_qs},
            {"<COMMENT:6>Pe\xC3\xB1"
             "as<OPERATOR:3>LU1",
                u"Peñas"_qs},
            {"<COMMENT:4>se\xC3\xB1<OPERATOR:3>LU1", u"señ"_qs}, {"<COMMENT:3>se\xC3\xB1<OPERATOR:3>LU1", u"señ"_qs},
            {"<COMMENT:4>se\xC3\xB1\xC3\xB1 \n<OPERATOR:3>LU1", u"seññ"_qs},
            {"<COMMENT:3>se\xC3\xB1 // nota <OPERATOR:3>LU1", u"señ"_qs},
            {"<COMMENT:3>se\xC3\xB1or // nota <OPERATOR:3>LU1", u"se"_qs},
            {"<COMMENT:5>Pe\xF1"
             "as<OPERATOR:3>LU1",
                u"Peñas"_qs},
            {"<COMMENT:4>25\xB0\xBA<OPERATOR:3>LU1", u"25°º"_qs},
            {"<COMMENT:4>a\xC3\xB1\xF1<OPERATOR:3>LU1", u"aÃ±ñ"_qs}};
        for (const auto &[record, comment] : rows) {
            QCOMPARE(AdifRecord(record).Value(AdifTag::Comment), comment);
            QCOMPARE(AdifRecord(record).Value(AdifTag::Operator), u"LU1"_qs);
            // What is kept of a long record is read the same.
            const QByteArray longer = "<X:4>abcd" + QByteArray(5000, '.') + record;
            const QByteArray kept = AdifRecord(longer).Essence();
            QVERIFY(kept.size() <= record.size());
            QCOMPARE(AdifRecord(kept).Value(AdifTag::Comment), comment);
            QCOMPARE(AdifRecord(kept).Value(AdifTag::Operator), u"LU1"_qs);
        }
    }

    void AThousandCharactersAreLookedAt()
    {
        const QByteArray letters = "<COMMENT:4000>" + QByteArray("\xC3\xB1").repeated(2000);
        QCOMPARE(AdifRecord(letters).Value(AdifTag::Comment).size(), 1000 - 5); // "4000>" is part of them
        const QByteArray late = "<COMMENT:4" + QByteArray(1000, ' ') + ">hola";
        QCOMPARE(AdifRecord(late).Value(AdifTag::Comment), QString());
    }

    void TheRestIsListed()
    {
        QStringList tags;
        AdifRecord::OtherTags("<CALL:3>abc<Dxcc:3>100<app_x:2>ab<DXCC:1>1 < a <b> <no end <EOR>",
            [&](QByteArrayView tag) { tags << QString::fromLatin1(tag); });
        QCOMPARE(tags.join(u' '), u"Dxcc app_x DXCC"_qs);
    }

    void TheEssenceHoldsEachFieldOnce()
    {
        const QByteArray junk(3000, 'x');
        const QByteArray record = "<APP_A:3000>" + junk + "<CALL:6>LU1ABC<BAND:3>20m<APP_B:3000>" + junk
            + "<MODE:2>CW<CALL:3>XXX<COMMENT:900>" + QByteArray(900, 'c') + "<EOR>";
        const QByteArray essence = AdifRecord(record).Essence();
        QVERIFY2(essence.size() < 3200, qPrintable(QString::number(essence.size())));
        for (const AdifTag tag : {AdifTag::Call, AdifTag::Band, AdifTag::Mode, AdifTag::Comment, AdifTag::Freq})
            QCOMPARE(AdifRecord(essence).Value(tag), AdifRecord(record).Value(tag));
        QCOMPARE(AdifRecord("sin campos").Essence(), QByteArray());
    }
};

TORDILLO_TEST(TestAdifRecord)
#include "TestAdifRecord.moc"
