// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/QsoTable.h"
#include "support/RawDatabase.h"
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
        QTest::newRow("quotes and brackets") << u"\"a\" [b] `c` \\ % _ ? * ;"_qs;
        QTest::newRow("accents") << u"Ñandú, Río Ñ ß € ÿ"_qs;
        QTest::newRow("line ends") << u"a\r\nb\tc"_qs;
        QTest::newRow("a zero in the middle") << QString::fromUtf16(u"a\0b", 3);
        QTest::newRow("beyond the base plane") << QString::fromUcs4(U"\U0001F4FB", 1);
        QTest::newRow("a number") << u"007.50"_qs;
        QTest::newRow("long") << QString(100000, u'x');
        QTest::newRow("empty") << QString();
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

    void DateAndTimeAreStoredInOneFormOrNotAtAll_data()
    {
        QTest::addColumn<QString>("fecha");
        QTest::addColumn<QString>("hora");
        QTest::addColumn<QString>("stored");
        QTest::newRow("as shown") << u"01/02/2026"_qs << u"23:59:58"_qs << u"2026-02-01 23:59:58"_qs;
        QTest::newRow("as stored") << u"2026-02-01"_qs << u"23:59"_qs << u"2026-02-01 23:59:00"_qs;
        QTest::newRow("damaged") << u"ayer"_qs << u"25:00"_qs << u" "_qs;
        QTest::newRow("contest form") << u"20260201"_qs << u"2359"_qs << u" "_qs;
    }
    void DateAndTimeAreStoredInOneFormOrNotAtAll()
    {
        QFETCH(QString, fecha);
        QFETCH(QString, hora);
        QFETCH(QString, stored);
        QsoRow row;
        row.Fecha = fecha;
        row.Hora = hora;
        const qint64 inserted = Insert(row), updated = Insert({});
        QVERIFY(*store_->Write([&](Session &session) {
            return QsoTable::Update(session, updated, {{&QsoRow::Fecha, fecha}, {&QsoRow::Hora, hora}});
        }));
        for (const qint64 id : {inserted, updated})
            QCOMPARE(QString(Stored(id).Fecha + u' ' + Stored(id).Hora), stored);
    }

    void ANumberIsNotGivenAgain()
    {
        Insert({});
        const qint64 last = Insert({});
        const auto remove = [](qint64 id) { return [id](Session &session) { return QsoTable::Delete(session, id); }; };
        QCOMPARE(*store_->Write(remove(last)), true);
        QCOMPARE(*store_->Write(remove(last)), false);
        QCOMPARE(*store_->Write([&](Session &session) {
            return QsoTable::Update(session, last, {{&QsoRow::Obs, u"x"_qs}});
        }),
            false);
        store_->Close();
        QCOMPARE(Insert({}), last + 1);
        const Result<void> givenUp = store_->Write([](Session &session) {
            QsoTable::Insert(session, {});
            throw StoreError{{u"x"_qs, Failure::Kind::Other}};
        });
        QVERIFY(!givenUp);
        QCOMPARE(Insert({}), last + 2); // what was rolled back never was
    }

    void OneMarkerKeepsALog()
    {
        const auto mark = [this](const QString &name) {
            QVERIFY(store_->Write([&](Session &session) { QsoTable::InsertLogMarker(session, name); }));
        };
        mark(u"Año nuevo"_qs);
        mark(u"año nuevo"_qs);
        QsoRow row;
        row.Modo = u"CW"_qs;
        row.NombreLog = u"Con QSOs"_qs;
        Insert(row);
        mark(u"con qsos"_qs);
        RawDatabase raw(store_->Path());
        QCOMPARE(raw.Value("SELECT group_concat(\"Nombre Log\") FROM Tabla1"), u"Año nuevo,Con QSOs"_qs);
        QCOMPARE(raw.Value("SELECT Modo IS NULL AND Estacion IS NULL AND LdA IS NULL FROM Tabla1"), u"1"_qs);
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
