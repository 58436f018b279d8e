// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeQsos.h"
#include "core/QsoTable.h"
#include "core/Schema.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QTemporaryDir>
#include <QTest>

using namespace SomeQsos;

class TestQsoStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        store_ = std::make_unique<LogStore>(folder_->filePath(u"base0.mdb"_qs));
        QVERIFY(store_->CreateEmpty());
    }

    void EveryValueLandsInItsColumn()
    {
        NewQso qso;
        qso.call = u"LU1ABC/W"_qs;
        qso.band = u"20m"_qs;
        qso.mode = u"Sat CW"_qs;
        qso.reportSent = u"599"_qs;
        qso.reportReceived = u"579"_qs;
        qso.date = u"01/02/2027"_qs;
        qso.time = u"02:30:00"_qs;
        qso.station = u"LU9ZZZ"_qs;
        qso.operatorCall = u"LU1AAA"_qs;
        qso.remarks = u"O'Higgins \"ñ\" ; --"_qs;
        qso.frequency = u"14.250"_qs;
        qso.ownGrid = u"GF05AB"_qs;
        qso.grid = u"FE46"_qs;
        qso.satellite = u"  AO-7 "_qs;
        qso.SOTA = u"LUD/DA-001"_qs;
        qso.MY_POTA = u"AR-0001"_qs;
        qso.POTA = u"AR-0002"_qs;
        qso.MYSOTA = u"LUD/DA-002"_qs;
        const Result<qint64> id = AddQso(*store_, logName, qso);
        QCOMPARE(*id, 1);

        QStringList values;
        for (const QsoColumns::Column &column : QsoColumns::all)
            values << Rows()[0].*column.field;
        QCOMPARE(values.join(u'|'),
            u"Sat CW|20m|LU9ZZZ|LU1ABC/W|2027-02-01|02:30:00|599|579|O'Higgins \"ñ\" ; --|LU1AAA|Log inicial|14.250|"
            "GF05AB|FE46|1|AO-7|Chubut|LUD/DA-001|AR-0001|AR-0002|LUD/DA-002|"_qs);
    }

    void ANewGridGoesToTheEarlierContacts_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QString>("grids"); // of the six rows below and the new one
        QTest::newRow("plain") << u"LU1ABC"_qs << u"GF05"_qs << u"GF05,FF99,GF05,,,,GF05"_qs;
        QTest::newRow("no grid") << u"LU1ABC"_qs << QString() << u",FF99,,,,,"_qs;
        QTest::newRow("portable") << u"LU1ABC/P"_qs << u"GF05"_qs << u",FF99,,,,,GF05"_qs;
    }
    void ANewGridGoesToTheEarlierContacts()
    {
        QFETCH(QString, call);
        QFETCH(QString, grid);
        QFETCH(QString, grids);
        const NewQso earlier[] = {Qso(u"LU1ABC"_qs), Qso(u"LU1ABC"_qs, u"FF99"_qs), Qso(u"LU1ABC"_qs),
            Qso(u"LU1ABC/P"_qs), Qso(u"LU1ABCD"_qs)};
        for (const NewQso &qso : earlier)
            QVERIFY(store_->Write([&](Session &session) {
                QsoRow row;
                row.Modo = u"SSB"_qs;
                row.NombreLog = logName;
                row.Estacion = qso.call;
                row.SuGrid = qso.grid;
                QsoTable::Insert(session, row);
            }));
        // Foreign tools leave the column without a value.
        QVERIFY(RawDatabase(store_->Path()).Run("UPDATE Tabla1 SET SuGrid=NULL WHERE id=3"));
        QVERIFY(AddQso(*store_, u"Otro"_qs, Qso(u"LU1ABC"_qs)));
        QVERIFY(AddQso(*store_, logName, Qso(call, grid)));
        QStringList found;
        for (const QsoRow &row : Rows())
            found << row.SuGrid;
        QCOMPARE(found.join(u','), grids);
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

private:
    QList<QsoRow> Rows() { return *AllRows(*store_); }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<LogStore> store_;
};

TORDILLO_TEST(TestQsoStore)
#include "TestQsoStore.moc"
