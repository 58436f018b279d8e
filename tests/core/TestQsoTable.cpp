// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/QsoTable.h"
#include "support/TestRegistry.h"

#include <QTemporaryDir>
#include <QTest>

class TestQsoTable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        store_ = std::make_unique<LogStore>(folder_->filePath(u"base0.mdb"_qs));
        QVERIFY(store_->CreateEmpty());
    }

    void EveryColumnHoldsAnyText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("apostrophe") << u"O'Higgins'); DELETE FROM Tabla1;--"_qs;
        QTest::newRow("a zero in the middle") << QString::fromUtf16(u"a\0b", 3);
        QTest::newRow("beyond the base plane") << QString::fromUcs4(U"\U0001F4FB", 1);
        QTest::newRow("long") << QString(100000, u'x');
    }
    void EveryColumnHoldsAnyText()
    {
        QFETCH(QString, text);
        QsoRow row;
        int number = 0;
        for (const QsoColumns::Column &column : QsoColumns::all) // a column in another's place shows
            row.*column.field = text.isEmpty() ? text : QString(text + QString::number(++number));
        row.Fecha = u"31/12/2026"_qs;
        row.Hora = u"9:05"_qs;
        row.id = Insert(row);
        row.Fecha = u"2026-12-31"_qs;
        row.Hora = u"09:05:00"_qs;
        QVERIFY(Stored(row.id) == row);
        QVERIFY(*store_->Write([&](Session &session) {
            return QsoTable::Update(session, row.id, {{&QsoRow::Obs, text}, {&QsoRow::NombreLog, text}});
        }));
        row.Obs = row.NombreLog = text;
        QVERIFY(Stored(row.id) == row);
    }

    void ANumberIsNotGivenAgain()
    {
        Insert({});
        const qint64 last = Insert({});
        const auto remove = [](qint64 id) { return [id](Session &session) { return QsoTable::Delete(session, id); }; };
        QCOMPARE(*store_->Write(remove(last)), true);
        store_->Close();
        QCOMPARE(Insert({}), last + 1);
        const Result<void> givenUp = store_->Write([](Session &session) {
            QsoTable::Insert(session, {});
            throw StoreError{{u"x"_qs, Failure::Kind::Other}};
        });
        QVERIFY(!givenUp);
        QCOMPARE(Insert({}), last + 2); // what was rolled back never was
    }

private:
    qint64 Insert(const QsoRow &row)
    {
        return *store_->Write([&](Session &session) { return QsoTable::Insert(session, row); });
    }
    QsoRow Stored(qint64 id)
    {
        return *store_->Read([&](Session &session) {
            Query query = session.Prepare(u"SELECT " + QsoColumns::SelectList() + u" FROM Tabla1 WHERE id=?");
            return query.Bind(1, id).Next() ? query.Row() : QsoRow();
        });
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<LogStore> store_;
};

TORDILLO_TEST(TestQsoTable)
#include "TestQsoTable.moc"
