// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"
#include "RawSqlite.h"

#include "logging/LogPage.h"

#include <memory>

namespace {

constexpr int rounds = 400;
constexpr int middleRounds = 60;

// A made log, read by the program's way and by the bare one.
struct Reader {
    Reader(const BenchSetting &setting, qint64 size)
        : qsos(size)
        , store(MadeLog(setting.cacheFolder, size))
        , database(store.Path())
        , counter(database, u"SELECT QSOs FROM Contadores WHERE \"Nombre Log\"=?"_qs)
        , page(database,
              u"SELECT "_qs + QsoColumns::SelectList()
                  + u" FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>'' "
                    "ORDER BY Fecha DESC, Hora DESC, id DESC LIMIT 20")
        , place(database,
              u"SELECT id FROM Tabla1 WHERE \"Nombre Log\"=? AND Modo<>'' "
              "ORDER BY Fecha DESC, Hora DESC, id DESC LIMIT 20 OFFSET ?"_qs)
    {
    }

    Timed Page(qint64 firstRow)
    {
        return Clocked([this, firstRow](int) {
            const Result<LogPage> read = ReadLogPage(store, madeLogName, firstRow);
            if (!read)
                GiveUp(read.failure().text);
            const qint64 wanted = std::min<qint64>(pageSize, qsos - firstRow + 1);
            if (read->count != qsos || read->rows.size() != wanted)
                GiveUp(u"a page with wrong rows"_qs);
        });
    }

    Timed RawFirstPage()
    {
        return Clocked([this](int) {
            counter.Bind(1, logName);
            counter.TakeAll();
            page.Bind(1, logName);
            page.TakeAll();
        });
    }

    Timed RawPlace(qint64 firstRow)
    {
        return Clocked([this, firstRow](int) {
            place.Bind(1, logName);
            place.Bind(2, firstRow - 1);
            place.TakeAll();
        });
    }

    qint64 LastPage() const { return (qsos - 1) / pageSize * pageSize + 1; }
    // Just below the half, where either end of the log is as far as it can be.
    qint64 MiddlePage() const { return qsos / 2 / pageSize * pageSize + 1; }

    qint64 qsos;
    LogStore store;
    RawDatabase database;
    RawStatement counter, page, place;
    QByteArray logName = madeLogName.toUtf8();
};

} // namespace

void BenchPages(const BenchSetting &setting, ResultTable &table)
{
    constexpr qint64 sizes[] = {smallLog, middleLog, largeLog};
    std::vector<std::unique_ptr<Reader>> readers;
    std::vector<Timed> measured;
    for (const qint64 size : sizes) {
        Reader &reader = *readers.emplace_back(std::make_unique<Reader>(setting, size));
        measured.push_back(reader.Page(1));
        measured.push_back(reader.RawFirstPage());
        measured.push_back(reader.Page(reader.LastPage()));
    }
    const std::vector<double> medians = Alternate(measured, rounds);
    const auto first = [&](size_t i) { return medians[3 * i]; };
    for (size_t i = 0; i < std::size(sizes); ++i)
        table.AddRatio(u"first page with count / bare read"_qs, SizeText(sizes[i]), first(i), medians[3 * i + 1], 3);
    table.AddRatio(u"first page, large log / small log"_qs, SizeText(largeLog), first(2), first(0), 1.3);
    for (size_t i = 0; i < std::size(sizes); ++i)
        table.AddRatio(u"last page / first page"_qs, SizeText(sizes[i]), medians[3 * i + 2], first(i), 1.3);

    Reader &large = *readers.back();
    const qint64 middle = large.MiddlePage();
    const std::vector<double> places = Alternate({large.Page(middle), large.RawPlace(middle)}, middleRounds);
    table.AddRatio(u"page in the middle / bare offset in the index"_qs, SizeText(largeLog), places[0], places[1], 2);
}
