// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/SearchList.h"
#include "support/Fixtures.h"

#include <algorithm>
#include <numeric>

class TestSearchList : public StoreTest {
    Q_OBJECT

    Runs runs_;

    // Rows whose columns all differ from each other and sort in different orders, in either case.
    void Store(int count)
    {
        QList<QsoRow> rows;
        for (int n = 1; n <= count; ++n) {
            QsoRow row;
            for (int column = 0; column < QsoColumns::count; ++column) {
                const int code = n * (column * 2 + 7) % 53 / 2;
                row.*QsoColumns::all[column].field = QString(u" "_qs).repeated(column % 2)
                    + QChar((n % 2 ? u'a' : u'A') + code) + (n % 5 ? u"ñ"_qs : u"Ñ"_qs);
            }
            row.Fecha = QDate(2026, 1, 1).addDays(n * 37 % 400).toString(Qt::ISODate);
            row.Hora = QTime(n * 7 % 24, n % 60, n % 50).toString(Qt::ISODate);
            row.Frecuencia = u"%1,%2"_qs.arg(n * 3 % 30).arg(n);
            row.NombreLog = u"Log"_qs;
            rows << row;
        }
        Insert(rows);
    }
    static QList<qint64> Ids(const SearchList &list)
    {
        QList<qint64> ids;
        for (qsizetype place = 0; place < list.Size(); ++place)
            ids << list.IdAt(place);
        return ids;
    }
    Result<void> Sort(SearchList &list, int subItem, bool ascending, int stopAt = -1)
    {
        int step = 0;
        Run *running = nullptr;
        Run run(
            runs_,
            [&] {
                if (step++ == stopAt)
                    running->Cancel();
            },
            {}, 0);
        running = &run;
        return list.Sort(subItem, ascending, run);
    }
    // The order by the texts that the list itself shows.
    static QList<qint64> ByShownText(const SearchList &list, int subItem, bool ascending)
    {
        QList<std::pair<QByteArray, qint64>> texts;
        const Result<QList<QsoRow>> rows = list.Rows(0, list.Size());
        for (qsizetype place = 0; place < list.Size(); ++place) {
            const QsoRow &row = (*rows)[place];
            const QString text = SearchList::Texts(row, list.NumberAt(place)).value(subItem);
            texts << std::pair(row.id ? text.toCaseFolded().toUtf8() : QByteArray(), list.IdAt(place));
        }
        std::stable_sort(texts.begin(), texts.end(),
            [ascending](const auto &a, const auto &b) { return ascending ? a.first < b.first : b.first < a.first; });
        QList<qint64> ids;
        for (const auto &text : texts)
            ids << text.second;
        return ids;
    }

private Q_SLOTS:
    void ARowShowsItsTexts()
    {
        QsoRow row;
        for (const QsoColumns::Column &column : QsoColumns::all)
            row.*column.field = QString::fromLatin1(column.sql) + u' ';
        row.id = 77;
        row.Fecha = u"2026-11-24"_qs;
        row.Hora = u"21:15:30"_qs;
        row.Frecuencia = u"14,250"_qs;
        QCOMPARE(SearchList::Texts(row, 5).join(u'|'),
            u"5|77|Estacion |Banda |14.250|Modo |RSE |RSR |24/11/2026|21:15|MyCall |Operador |Obs |MiGrid |SuGrid |LdA|"
            "Nombre_Sat|Argento|SOTA|IOTA|POTA|MYSOTA"_qs);
        row.Fecha = u"hacia-2026 x"_qs; // what no date is shows what it holds
        row.Hora = u"tarde"_qs;
        QCOMPARE(SearchList::Texts(row, 5).mid(8, 2).join(u'|'), u"hacia/2026/x|tarde"_qs);
    }

    void EveryColumnSortsByItsText()
    {
        for (const int step : {9, 2}) { // rows far from each other, and close together
            init();
            Store(300);
            SearchList list(*store_);
            std::vector<qint64> ids;
            for (int id = 300; id > 0; id -= step)
                ids.push_back(id);
            list.Append(ids);
            list.RemoveAt(3);
            Sql("DELETE FROM Tabla1 WHERE id%11=0");
            for (int subItem = 2; subItem < 22; ++subItem) {
                for (const bool ascending : {true, false}) {
                    const QList<qint64> before = Ids(list), expected = ByShownText(list, subItem, ascending);
                    QVERIFY2(Sort(list, subItem, ascending), qPrintable(QString::number(subItem)));
                    QVERIFY2(Ids(list) == expected, qPrintable(QString::number(subItem)));
                    QVERIFY(before != expected);
                }
            }
        }
    }

    void ALongSortCanBeStoppedAtAnyStep()
    {
        constexpr int count = 100000; // several pieces to sort and merge
        std::vector<qint64> ids(count);
        std::iota(ids.begin(), ids.end(), 1);
        SearchList list(*store_);
        list.Append(ids);
        const QList<qint64> before = Ids(list);
        int stopped = 0;
        for (bool ended = false; !ended; ++stopped) {
            const Result<void> sorted = Sort(list, 1, false, stopped);
            ended = bool(sorted);
            if (!ended) {
                QCOMPARE(sorted.failure().kind, Failure::Kind::Cancelled);
                QVERIFY(Ids(list) == before);
            }
        }
        QVERIFY2(stopped > 6, qPrintable(QString::number(stopped)));
        std::vector<QByteArray> texts;
        for (const qint64 id : ids)
            texts.push_back(QByteArray::number(id));
        std::sort(texts.rbegin(), texts.rend());
        for (int place = 0; place < count; ++place)
            QCOMPARE(list.IdAt(place), texts[size_t(place)].toLongLong());
    }

    void ASortThatCannotReadChangesNothing()
    {
        Store(50);
        SearchList list(*store_);
        list.Append({1, 2, 3, 40, 50});
        QVERIFY(QFile::rename(store_->Path(), Path(u"x"_qs)));
        const Result<void> sorted = Sort(list, 2, false);
        QCOMPARE(sorted.failure().kind, Failure::Kind::Missing);
        QCOMPARE(Ids(list), QList<qint64>({1, 2, 3, 40, 50}));
        QVERIFY(!list.Rows(0, 5));
    }

    void NumbersStayWithTheirRows()
    {
        Store(6);
        SearchList list(*store_);
        list.Append({6, 5, 4});
        list.RemoveAt(1);
        list.Append({3, 2});
        QVERIFY(Sort(list, 0, false));
        QList<qint64> numbers;
        for (qsizetype place = 0; place < list.Size(); ++place)
            numbers << list.NumberAt(place);
        QCOMPARE(numbers, QList<qint64>({5, 4, 3, 1}));
        QCOMPARE(Ids(list), QList<qint64>({2, 3, 4, 6}));
        Sql("DELETE FROM Tabla1 WHERE id=3");
        const Result<QList<QsoRow>> rows = list.Rows(1, 9);
        QCOMPARE(rows->size(), 3);
        QCOMPARE((*rows)[0].id, 0); // gone, and the others keep their places
        QCOMPARE((*rows)[2].id, 6);
        list.Clear();
        list.Append({1});
        QCOMPARE(list.NumberAt(0), 1);
    }
};

TORDILLO_TEST(TestSearchList)
#include "TestSearchList.moc"
