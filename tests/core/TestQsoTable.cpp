// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Fixtures.h"

class TestQsoTable : public StoreTest {
    Q_OBJECT

    qint64 Added(const QsoRow &row)
    {
        return *store_->Write([&](Session &session) { return QsoTable::Insert(session, row); });
    }

private Q_SLOTS:
    void EveryColumnHoldsAnyText()
    {
        for (const QString &text : {u"O'Higgins'); DELETE FROM Tabla1;--"_qs, QString::fromUtf16(u"a\0b", 3),
                 QString::fromUcs4(U"\U0001F4FB", 1), QString(100000, u'x')}) {
            QsoRow row;
            int number = 0;
            for (const QsoColumns::Column &column : QsoColumns::all) // a column in another's place shows
                row.*column.field = text + QString::number(++number);
            row.id = Added(RowOf(u"Fecha=31/12/2026;Hora=9:05"_qs, row));
            row = RowOf(u"Fecha=2026-12-31;Hora=09:05:00"_qs, row);
            QVERIFY(Rows().last() == row);
            QVERIFY(*store_->Write([&](Session &session) {
                return QsoTable::Update(session, row.id, {{&QsoRow::Obs, text}, {&QsoRow::NombreLog, text}});
            }));
            row.Obs = row.NombreLog = text;
            QVERIFY(Rows().last() == row);
        }
    }

    void DateAndTimeAreStoredInOneFormOrNotAtAll()
    {
        const std::pair<QString, QString> rows[] = {{u"01/02/2026|23:59:58"_qs, u"2026-02-01|23:59:58"_qs},
            {u"2026-02-01|23:59"_qs, u"2026-02-01|23:59:00"_qs}, {u"ayer|25:00"_qs, u"|"_qs},
            {u"20260201|2359"_qs, u"|"_qs}};
        for (const auto &[given, stored] : rows) {
            const QString fecha = given.section(u'|', 0, 0), hora = given.section(u'|', 1);
            Added(RowOf(u"Fecha=%1;Hora=%2"_qs.arg(fecha, hora)));
            QCOMPARE(QString(Rows().last().Fecha + u'|' + Rows().last().Hora), stored);
            const qint64 id = Added({});
            QVERIFY(*store_->Write([&](Session &session) {
                return QsoTable::Update(session, id, {{&QsoRow::Fecha, fecha}, {&QsoRow::Hora, hora}});
            }));
            QCOMPARE(QString(Rows().last().Fecha + u'|' + Rows().last().Hora), stored);
        }
    }

    void ANumberIsNotGivenAgain()
    {
        Added({});
        const qint64 last = Added({});
        QVERIFY(*store_->Write([&](Session &session) { return QsoTable::Delete(session, last); }));
        store_->Close();
        QCOMPARE(Added({}), last + 1);
        QVERIFY(!store_->Write([](Session &session) {
            QsoTable::Insert(session, {});
            throw StoreError{{u"x"_qs, Failure::Kind::Other}};
        }));
        QCOMPARE(Added({}), last + 2); // what was rolled back never was
    }
};

TORDILLO_TEST(TestQsoTable)
#include "TestQsoTable.moc"
