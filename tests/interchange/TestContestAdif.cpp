// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/ContestAdif.h"
#include "support/Fixtures.h"

class TestContestAdif : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void Records()
    {
        ContestAdif::Records records(u"CQ Ñandú"_qs, u"XX1AA"_qs);
        QsoRow row;
        QCOMPARE(*records.Next(row), QByteArray());
        row = RowOf(u"MyCall=XX1AA;Estacion=XX2BB;Fecha=20240309;Hora=1203;Modo=SSB;Banda=70cm;RSE=001;RSR=12"_qs);
        const auto record = [](const QByteArray &mode, const QByteArray &frequency,
                                const QByteArray &report) -> QByteArray {
            return "<STATION_CALLSIGN:5>XX1AA<CALL:5>XX2BB<QSO_DATE:8>20240309<TIME_ON:4>1203<MODE:" + mode
                + "<FREQ:" + frequency + "<RST_SENT:" + report + "<SRX:3>001<RST_RCVD:" + report
                + "<STX:2>12<CONTEST_ID:8>CQ \xD1"
                  "and\xFA<EOR>\r\n";
        };
        QCOMPARE(*records.Next(row), record("3>SSB", "0>", "2>59"));
        row.Banda = u"160m"_qs;
        row.Modo = u"FM"_qs;
        QCOMPARE(*records.Next(row), record("2>FM", "5>1.820", "3>599"));
        row.Banda = u"70cm"_qs;
        QCOMPARE(*records.Next(row), record("2>FM", "5>1.820", "3>599"));
        row.Banda = u"2m"_qs;
        QCOMPARE(*records.Next(row), record("2>FM", "7>144.000", "3>599"));
        row.MyCall = u"XX9ZZ"_qs;
        const auto refused = records.Next(row);
        QVERIFY(!refused);
        QCOMPARE(refused.failure().text, u"Error!\nEn el log distinta Señal Distintiva"_qs);
        QCOMPARE(ContestAdif::CountQsos({row, QsoRow()}), 1);
    }
};

TORDILLO_TEST(TestContestAdif)
#include "TestContestAdif.moc"
