// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeQsos.h"
#include "support/Fixtures.h"

using namespace SomeQsos;

class TestQsoStore : public StoreTest {
    Q_OBJECT

private Q_SLOTS:
    void EveryValueLandsInItsColumn()
    {
        using Q = NewQso;
        const std::pair<QString Q::*, const char16_t *> fields[] = {{&Q::call, u"LU1ABC/W"}, {&Q::band, u"20m"},
            {&Q::mode, u"Sat CW"}, {&Q::reportSent, u"599"}, {&Q::reportReceived, u"579"}, {&Q::date, u"01/02/2027"},
            {&Q::time, u"02:30:00"}, {&Q::station, u"LU9ZZZ"}, {&Q::operatorCall, u"LU1AAA"},
            {&Q::remarks, u"O'Higgins \"ñ\" ; --"}, {&Q::frequency, u"14.250"}, {&Q::ownGrid, u"GF05AB"},
            {&Q::grid, u"FE46"}, {&Q::satellite, u"  AO-7 "}, {&Q::SOTA, u"LUD/DA-001"}, {&Q::MY_POTA, u"AR-0001"},
            {&Q::POTA, u"AR-0002"}, {&Q::MYSOTA, u"LUD/DA-002"}};
        NewQso qso;
        for (const auto &[field, text] : fields)
            qso.*field = QString::fromUtf16(text);
        const Result<qint64> id = AddQso(*store_, logName, qso);
        QCOMPARE(*id, 1);

        QCOMPARE(Shown(Rows()[0]),
            u"Modo=Sat CW;Banda=20m;MyCall=LU9ZZZ;Estacion=LU1ABC/W;Fecha=2027-02-01;Hora=02:30:00;RSE=599;RSR=579;"
            "Obs=O'Higgins \"ñ\" ; --;Operador=LU1AAA;NombreLog=Log inicial;Frecuencia=14.250;MiGrid=GF05AB;"
            "SuGrid=FE46;LdA=1;Nombre_Sat=AO-7;Argento=Chubut;SOTA=LUD/DA-001;IOTA=AR-0001;POTA=AR-0002;"
            "MYSOTA=LUD/DA-002"_qs);
    }

    void ANewGridGoesToTheEarlierContacts()
    {
        const std::tuple<QString, QString, QString> cases[] = {{u"LU1ABC"_qs, u"GF05"_qs, u"GF05,FF99,GF05,,,,GF05"_qs},
            {u"LU1ABC"_qs, QString(), u",FF99,,,,,"_qs}, {u"LU1ABC/P"_qs, u"GF05"_qs, u",FF99,,,,,GF05"_qs}};
        for (const auto &[call, grid, grids] : cases) {
            init();
            const QString row = u"Modo=SSB;NombreLog=%1;Estacion="_qs.arg(logName);
            Insert({RowOf(row + u"LU1ABC"), RowOf(row + u"LU1ABC;SuGrid=FF99"), RowOf(row + u"LU1ABC"),
                RowOf(row + u"LU1ABC/P"), RowOf(row + u"LU1ABCD")});
            Sql("UPDATE Tabla1 SET SuGrid=NULL WHERE id=3"); // foreign tools leave the column without a value
            QVERIFY(AddQso(*store_, u"Otro"_qs, Qso(u"LU1ABC"_qs)));
            QVERIFY(AddQso(*store_, logName, Qso(call, grid)));
            QCOMPARE(Column(Rows(), &QsoRow::SuGrid).replace(u' ', u','), grids);
        }
    }

    void ContactsWithACall()
    {
        // The hours of the rows below, in the order of the answer.
        const std::pair<QString, QString> cases[] = {{u"lu1abc"_qs, u"01,03,05"_qs}, {u"LU1"_qs, u"01,02,03,05"_qs},
            {u"L?2"_qs, u"04"_qs}, {u"*ABC"_qs, u"01,03,04,05"_qs}, {{}, u"01,02,03,04,05"_qs}, {u"LU1'"_qs, {}},
            {u"LU1%"_qs, {}}};
        const std::pair<QString, QString> rows[] = {{u"LU1ABC"_qs, u"05"_qs}, {u"LU1ABC"_qs, u"01"_qs},
            {u"LU1XYZ"_qs, u"02"_qs}, {u"LU1ABC/P"_qs, u"03"_qs}, {u"LW2ABC"_qs, u"04"_qs}};
        for (const auto &[station, hour] : rows) {
            NewQso qso = Qso(station);
            qso.time = hour + u":00:00";
            QVERIFY(AddQso(*store_, logName, qso));
            QVERIFY(AddQso(*store_, u"Otro"_qs, qso));
        }
        QVERIFY(store_->Write([](Session &session) { QsoTable::InsertLogMarker(session, u"Vacío"_qs); }));
        for (const auto &[call, times] : cases) {
            QStringList hours;
            const Result<QList<QsoRow>> found = QsosWithCall(*store_, logName, call);
            for (const QsoRow &row : *found)
                hours << row.Hora.left(2);
            QCOMPARE(hours.join(u','), times);
        }
    }
};

TORDILLO_TEST(TestQsoStore)
#include "TestQsoStore.moc"
