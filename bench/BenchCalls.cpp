// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"
#include "RawSqlite.h"

#include "core/Schema.h"
#include "logging/QsoStore.h"

namespace {

constexpr int rounds = 400;
constexpr int probeRounds = 100;

const QByteArray &RawLogName()
{
    static const QByteArray name = madeLogName.toUtf8();
    return name;
}

// Calls of the log for which `condition` holds, spread over the whole of it.
std::vector<QString> SampleCalls(RawDatabase &database, const QString &condition)
{
    RawStatement statement(database, u"SELECT Estacion FROM Tabla1 WHERE id>=? AND "_qs + condition + u" LIMIT 1");
    std::vector<QString> calls;
    for (int i = 0; i < rounds; ++i) {
        statement.Bind(1, 1 + i * (largeLog / rounds));
        if (!statement.Step())
            GiveUp(u"no call with "_qs + condition);
        calls.push_back(statement.Text(0));
        statement.Reset();
    }
    return calls;
}

template <typename T>
void Expect(const Result<T> &result)
{
    if (!result)
        GiveUp(result.failure().text);
}

void WorkedBefore(
    LogStore &store, RawDatabase &raw, const std::vector<QString> &calls, const QString &what, ResultTable &table)
{
    // The index is named, since the engine would read the whole log in time order to spare itself a sort of few rows.
    RawStatement list(raw,
        u"SELECT MyCall, Estacion, Banda, Modo, Fecha, Hora FROM Tabla1 INDEXED BY Tabla1_estacion "
        "WHERE Estacion>=? AND Estacion<? AND \"Nombre Log\"=? ORDER BY Fecha, Hora, id DESC"_qs);
    const auto callOf = [&](int round) { return calls[static_cast<size_t>(round) % calls.size()]; };
    const Timed ours = Clocked([&](int round) {
        const Result<QList<QsoRow>> found = QsosWithCall(store, madeLogName, callOf(round));
        Expect(found);
        if (found->isEmpty())
            GiveUp(u"a worked station was not found"_qs);
    });
    const Timed bare = Clocked([&](int round) {
        const QByteArray from = callOf(round).toUtf8(), beyond = from + "\xF4\x8F\xBF\xBF";
        list.Bind(1, from);
        list.Bind(2, beyond);
        list.Bind(3, RawLogName());
        list.TakeAll();
    });
    const std::vector<double> medians = Alternate({ours, bare}, static_cast<int>(calls.size()));
    table.AddRatio(what, SizeText(largeLog), medians[0], medians[1], 3);
}

void GridOfCall(LogStore &store, RawDatabase &raw, const std::vector<QString> &calls, ResultTable &table)
{
    RawStatement grid(raw,
        u"SELECT SuGrid FROM Tabla1 INDEXED BY Tabla1_estacion WHERE Estacion=? AND \"Nombre Log\"=? AND SuGrid<>'' "
        "ORDER BY id LIMIT 1"_qs);
    const Timed ours =
        Clocked([&](int round) { Expect(FindGridOfCall(store, madeLogName, calls[static_cast<size_t>(round)])); });
    const Timed bare = Clocked([&](int round) {
        const QByteArray call = calls[static_cast<size_t>(round)].toUtf8();
        grid.Bind(1, call);
        grid.Bind(2, RawLogName());
        grid.TakeAll();
    });
    const std::vector<double> medians = Alternate({ours, bare}, rounds);
    table.AddRatio(u"grid of a call (FindGridOfCall) / bare query"_qs, SizeText(largeLog), medians[0], medians[1], 3);
}

// Inside a transaction that is then undone, so that no sync hides what the search costs.
void GridSpread(LogStore &store, RawDatabase &raw, const std::vector<QString> &calls, ResultTable &table)
{
    const QString grid = u"GF05AB"_qs;
    const Timed ours = [&](int round) {
        double time = 0;
        const Result<void> undone = store.Write([&](Session &session) {
            time =
                Clocked([&](int) { SpreadGrid(session, madeLogName, calls[static_cast<size_t>(round)], grid); })(round);
            throw StoreError{{u"undone"_qs, Failure::Kind::Cancelled}};
        });
        if (undone || undone.failure().kind != Failure::Kind::Cancelled)
            GiveUp(u"spreading a grid was not undone"_qs);
        return time;
    };
    RawStatement update(raw,
        u"UPDATE Tabla1 INDEXED BY Tabla1_estacion SET SuGrid=? WHERE Estacion=? AND \"Nombre Log\"=? "
        "AND coalesce(SuGrid,'')=''"_qs);
    const QByteArray rawGrid = grid.toUtf8();
    const Timed bare = [&](int round) {
        raw.Execute("BEGIN IMMEDIATE");
        const double time = Clocked([&](int) {
            const QByteArray call = calls[static_cast<size_t>(round)].toUtf8();
            update.Bind(1, rawGrid);
            update.Bind(2, call);
            update.Bind(3, RawLogName());
            update.TakeAll();
        })(round);
        raw.Execute("ROLLBACK");
        return time;
    };
    const std::vector<double> medians = Alternate({ours, bare}, rounds);
    table.AddRatio(u"spread a grid (SpreadGrid) / bare update"_qs, SizeText(largeLog), medians[0], medians[1], 3);
}

// As at the start of the program: the file is opened for it.
void SchemaProbe(const BenchSetting &setting, ResultTable &table)
{
    LogStore small(MadeLog(setting.cacheFolder, smallLog)), large(MadeLog(setting.cacheFolder, largeLog));
    const auto probe = [](LogStore &store) {
        return Clocked([&store](int) {
            store.Close();
            const Result<bool> current = SchemaIsCurrent(store);
            Expect(current);
            if (!*current)
                GiveUp(u"a made log has an old schema"_qs);
        });
    };
    const std::vector<double> medians = Alternate({probe(large), probe(small)}, probeRounds);
    table.AddRatio(
        u"open and look at the schema, large log / small log"_qs, SizeText(largeLog), medians[0], medians[1], 1.3);
}

} // namespace

void BenchCalls(const BenchSetting &setting, ResultTable &table)
{
    LogStore store(MadeLog(setting.cacheFolder, largeLog));
    RawDatabase raw(store.Path());
    const std::vector<QString> calls = SampleCalls(raw, u"Modo<>''"_qs);
    WorkedBefore(store, raw, calls, u"worked before, a call (QsosWithCall) / bare query"_qs, table);
    // Beginnings that stand for one or two hundred contacts, as many as anyone looks through.
    WorkedBefore(store, raw, {u"LU1A"_qs, u"PY2K"_qs, u"EA7C"_qs, u"CE3D"_qs, u"PU5M"_qs, u"LU4H"_qs},
        u"worked before, beginning of a call / bare query"_qs, table);
    GridOfCall(store, raw, calls, table);
    GridSpread(store, raw, SampleCalls(raw, u"SuGrid='' AND Estacion NOT LIKE '%/%'"_qs), table);
    SchemaProbe(setting, table);
}
