// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"
#include "RawSqlite.h"

#include "core/Conversions.h"
#include "logging/Provinces.h"
#include "stats/ProvinceStatistics.h"

#include <QElapsedTimer>
#include <vector>

namespace {

constexpr int rounds = 5;
constexpr double longest = 500000; // microseconds beyond the reading
constexpr double longestPause = 100000;

const QString readingOrder =
    u"SELECT id, Argento, Estacion, Banda, Nombre_Sat, LdA, SuGrid FROM Tabla1 WHERE \"Nombre Log\"=? "
    "ORDER BY Fecha, Hora, id"_qs;

// A log in which every contact counts.
QString AllArgentine(const BenchSetting &setting, qint64 qsos)
{
    const QString path = setting.workFolder + u"/provinces-"_qs + QString::number(qsos) + u".mdb";
    CopyMadeLog(setting.cacheFolder, qsos, path);
    RawDatabase raw(path);
    raw.Execute("CREATE TEMP TABLE Nombres (n INTEGER PRIMARY KEY, nombre TEXT)");
    RawStatement insert(raw, u"INSERT INTO Nombres VALUES (?, ?)"_qs);
    for (int n = 0; n < ProvinceNames().size(); ++n) {
        const QByteArray name = ProvinceNames()[n].toUtf8();
        insert.Bind(1, qint64(n));
        insert.Bind(2, name);
        insert.Step();
        insert.Reset();
    }
    raw.Execute("UPDATE Tabla1 SET Argento=(SELECT nombre FROM Nombres WHERE n=abs(Tabla1.id*7919%1000)%25)");
    return path;
}

std::vector<ProvinceQso> Rows(const QString &path)
{
    RawDatabase raw(path);
    RawStatement select(raw, readingOrder);
    const QByteArray name = madeLogName.toUtf8();
    select.Bind(1, name);
    std::vector<ProvinceQso> rows;
    while (select.Step())
        rows.push_back({select.Text(1), select.Text(3), select.Text(4), select.Text(5), select.Text(6)});
    return rows;
}

// The plain way: all rows once for each province, and the lists looked through for each square.
struct Walked {
    ProvinceTable table;
    QStringList confirmed, worked;
};

Walked WalkByProvince(const std::vector<ProvinceQso> &rows)
{
    Walked result;
    for (int province = 0; province < ProvinceTable::provinces; ++province)
        for (const ProvinceQso &row : rows) {
            const int state = Conversions::LeadingInteger(row.lda);
            const QString grid = row.grid.left(4);
            QStringList &grids = state == 2 ? result.confirmed : result.worked;
            if (!grid.isEmpty() && !grids.contains(grid))
                grids << grid;
            if (row.province != ProvinceNames()[province])
                continue;
            const auto band = ProvinceTable::BandNames().indexOf(row.satellite.isEmpty() ? row.band : u"Sat"_qs);
            if (band >= 0)
                result.table.Raise(province, int(band), ProvinceState(state));
        }
    return result;
}

void AgainstTheWalk(const BenchSetting &setting, ResultTable &table)
{
    const std::vector<ProvinceQso> rows = Rows(AllArgentine(setting, smallLog));
    Walked walked;
    ProvinceTally passed;
    const Timed walk = Clocked([&](int) { walked = WalkByProvince(rows); });
    const Timed pass = Clocked([&](int) {
        passed = {};
        for (const ProvinceQso &row : rows)
            passed.Add(row);
    });
    const std::vector<double> medians = Alternate({pass, walk}, rounds, 1);
    if (walked.table != passed.Table() || walked.confirmed != passed.ConfirmedGrids()
        || walked.worked != passed.WorkedGrids() || walked.worked.isEmpty())
        GiveUp(u"one pass does not give what the walk by province gives"_qs);
    table.AddRatio(u"provinces in one pass / walk by province"_qs, SizeText(smallLog), medians[0], medians[1], 1);
}

} // namespace

void BenchProvinces(const BenchSetting &setting, ResultTable &table)
{
    AgainstTheWalk(setting, table);
    const QString path = AllArgentine(setting, largeLog);
    LogStore store(path);
    RawDatabase raw(path);
    RawStatement bare(raw, readingOrder);
    const QByteArray name = madeLogName.toUtf8();
    double pause = 0;
    const Timed ours = Clocked([&](int) {
        Runs runs;
        QElapsedTimer sinceLook;
        sinceLook.start();
        Run run(runs, [&] { pause = std::max(pause, double(sinceLook.nsecsElapsed()) / 1000), sinceLook.restart(); });
        const Result<ProvinceStatistics> read = StatisticsOfLog(store, madeLogName, largeLog, run);
        if (!read || qint64(read->ids.size()) != largeLog)
            GiveUp(read ? u"contacts are missing"_qs : read.failure().text);
    });
    const Timed reading = Clocked([&](int) {
        bare.Bind(1, name);
        bare.TakeAll();
    });
    const std::vector<double> medians = Alternate({ours, reading}, rounds, 1);
    table.AddRatio(u"province table with its reading / bare reading"_qs, SizeText(largeLog), medians[0], medians[1], 3);
    table.AddLimit(u"province table beyond the bare reading"_qs, SizeText(largeLog), medians[0] - medians[1], longest,
        Unit::Microseconds);
    table.AddLimit(
        u"province table, longest pause of the window"_qs, SizeText(largeLog), pause, longestPause, Unit::Microseconds);
}
