// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeQsos.h"
#include "core/Conversions.h"
#include "logging/LogPage.h"
#include "support/Fixtures.h"

#include <algorithm>

using SomeQsos::logName;

namespace {

// Entered in no order of time, many of them with the same date and time.
QsoRow RowAt(int number)
{
    const QDateTime at = QDateTime(QDate(2025, 12, 30), QTime(22, 0)).addSecs(number * 7919 % 5003 * 60);
    return RowOf(u"Modo=CW;NombreLog=%1;Estacion=LU%2AB;Fecha=%3;Hora=%4"_qs.arg(logName).arg(number).arg(
        Conversions::DateText(at.date()), Conversions::LongTimeText(at.time())));
}

QString State(const Paging &paging, qint64 count)
{
    const Paging::Buttons buttons = paging.Enabled(count);
    QString text = u"%1/%2 from %3 "_qs.arg(paging.PageNumber).arg(paging.PageCount).arg(paging.PageFirstRow);
    for (const bool button : {buttons.first, buttons.previous, buttons.next, buttons.last})
        text += button ? u'+' : u'-';
    return text;
}

} // namespace

class TestLogPage : public StoreTest {
    Q_OBJECT

    QList<qint64> order_; // ids as the log shows them, newest first
    Paging paging_;

    void Fill(int count)
    {
        QList<std::pair<QString, qint64>> keys;
        QVERIFY(store_->Write([&](Session &session) {
            for (int i = 0; i < count; ++i) {
                const QsoRow row = RowAt(i);
                keys.emplaceBack(Conversions::StoredDate(row.Fecha) + row.Hora, QsoTable::Insert(session, row));
            }
        }));
        std::sort(keys.rbegin(), keys.rend());
        for (const auto &[time, id] : keys)
            order_ << id;
    }
    // The page that the paging stands on, read as the window reads it.
    QList<qint64> CheckPage()
    {
        QList<qint64> ids;
        const Result<LogPage> page = ReadLogPage(*store_, logName, paging_.PageFirstRow);
        if (!page) {
            QTest::qFail(qPrintable(page.failure().text), __FILE__, __LINE__);
            return ids;
        }
        paging_.Loaded(page->count, paging_.PageFirstRow);
        for (const QsoRow &row : page->rows)
            ids << row.id;
        [&] {
            QCOMPARE(page->count, order_.size());
            QCOMPARE(ids, order_.mid(paging_.PageFirstRow - 1, pageSize));
        }();
        return ids;
    }

private Q_SLOTS:
    void init()
    {
        StoreTest::init();
        order_.clear();
        paging_ = {};
    }

    void PagesOfLogsOfAllSizes()
    {
        // So many contacts, the first page, and what stands after "Ultima"; 20020 is the most that is counted out.
        const std::tuple<int, QString, QString> rows[] = {{21, u"1/2 from 1 --++"_qs, u"2/2 from 21 ++--"_qs},
            {20020, u"1/1001 from 1 --++"_qs, u"1001/1001 from 20001 ++--"_qs},
            {20021, u"1/1002 from 1 --++"_qs, u"1/1002 from 1 --++"_qs}};
        for (const auto &[count, first, last] : rows) {
            init();
            Fill(count);
            CheckPage();
            QCOMPARE(State(paging_, count), first);
            paging_.Last(count);
            CheckPage();
            QCOMPARE(State(paging_, count), last);
            for (const qint64 page :
                {paging_.PageCount, qint64(1), paging_.PageCount / 2, qint64(0), qint64(1000000)}) {
                const qint64 target = std::clamp<qint64>(page, 1, std::max<qint64>(1, paging_.PageCount));
                QCOMPARE(paging_.GoTo(page), target);
                QCOMPARE(paging_.PageFirstRow, 20 * (target - 1) + 1);
                CheckPage();
            }
        }
    }

    void TurningPagesShowsEveryContactOnce()
    {
        Fill(65);
        QList<qint64> seen, back;
        for (int i = 0; i < 6; ++i) { // two more than there are pages: the last one stays
            if (i < 4)
                seen += CheckPage();
            paging_.Next();
        }
        QCOMPARE(State(paging_, 65), u"4/4 from 61 ++--"_qs);
        QCOMPARE(seen, order_);
        for (int i = 0; i < 6; ++i) {
            if (i < 4)
                back = CheckPage() + back;
            paging_.Previous();
        }
        QCOMPARE(State(paging_, 65), u"1/4 from 1 --++"_qs);
        QCOMPARE(back, order_);
    }

    void OtherLogsAndMarkersDoNotCount()
    {
        Fill(21);
        Sql("INSERT INTO Tabla1 (\"Nombre Log\") VALUES ('Log inicial');"
            "INSERT INTO Tabla1 (\"Nombre Log\", Modo, Fecha) VALUES ('Log inicial','','2030-01-01'),"
            "('Log','CW','2030-01-01'), ('Log inicial 2','CW','2030-01-01')");
        CheckPage();
        const LogPage tail = *ReadLogPage(*store_, logName, 3); // any row can be the first
        QCOMPARE(tail.rows.size(), 19);
        QCOMPARE(tail.rows.last().id, order_.last());
    }

    void AnOldFileIsBroughtUpToDateOnTheWay()
    {
        Fill(25);
        Sql("ALTER TABLE Tabla1 DROP COLUMN SOTA; DROP TABLE Contadores");
        CheckPage();
        QVERIFY(*SchemaIsCurrent(*store_));
        for (const qint64 row : {-19, 0, 26, 1000})
            QVERIFY(ReadLogPage(*store_, logName, row)->rows.isEmpty());
    }

    void RowsWithoutDateComeLast()
    {
        Fill(3);
        Sql("INSERT INTO Tabla1 (\"Nombre Log\", Modo) VALUES ('Log inicial','CW');"
            "INSERT INTO Tabla1 (\"Nombre Log\", Modo, Fecha, Hora) VALUES ('Log inicial','CW','','')");
        order_ << 5 << 4;
        CheckPage();
    }
};

TORDILLO_TEST(TestLogPage)
#include "TestLogPage.moc"
