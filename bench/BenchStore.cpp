// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"
#include "RawSqlite.h"

#include "core/QsoRow.h"
#include "logging/QsoStore.h"
#include "support/FaultVfs.h"

#include <QFileInfo>
#include <memory>

namespace {

constexpr int storedPairs = 400;
constexpr int countedQsos = 20;

QString InsertStatement()
{
    QString columns, values;
    for (const QsoColumns::Column &column : QsoColumns::all) {
        columns += (columns.isEmpty() ? u""_qs : u","_qs) + QString::fromLatin1(column.sql);
        values += values.isEmpty() ? u"?"_qs : u",?"_qs;
    }
    return u"INSERT INTO Tabla1 ("_qs + columns + u") VALUES (" + values + u')';
}

// The bare insert: one statement, prepared once, in its own transaction.
class RawInserter {
public:
    RawInserter(const QString &path, const char *vfs)
        : database_(path, vfs)
        , insert_(database_, InsertStatement())
    {
    }

    void Insert(QsoRow row)
    {
        row.NombreLog = madeLogName;
        QByteArray texts[QsoColumns::count];
        for (int i = 0; i < QsoColumns::count; ++i) {
            texts[i] = (row.*QsoColumns::all[i].field).toUtf8();
            if (!texts[i].isNull())
                insert_.Bind(i + 1, texts[i]);
        }
        insert_.Step();
        insert_.Reset();
    }

private:
    RawDatabase database_;
    RawStatement insert_;
};

// Two copies of the same log, one for each side, and the same contacts coming in at both.
struct Pair {
    Pair(const BenchSetting &setting, qint64 qsos, const QByteArray &vfs)
        : ourPath(setting.workFolder + u"/ours-" + QString::number(qsos))
        , rawPath(setting.workFolder + u"/raw-" + QString::number(qsos))
    {
        CopyMadeLog(setting.cacheFolder, qsos, ourPath);
        CopyMadeLog(setting.cacheFolder, qsos, rawPath);
        store = std::make_unique<LogStore>(ourPath, vfs);
        raw = std::make_unique<RawInserter>(rawPath, vfs.isEmpty() ? nullptr : vfs.constData());
        QsoMaker maker(qsos);
        for (qint64 i = 0; i < qsos; ++i)
            maker.Next();
        for (int i = 0; i < storedPairs; ++i)
            rows.push_back(maker.Next());
    }

    void StoreOurs(int round) const
    {
        if (const Result<qint64> id = AddQso(*store, madeLogName, EntryOf(rows[static_cast<size_t>(round)])); !id)
            GiveUp(id.failure().text);
    }
    void StoreRaw(int round) const { raw->Insert(rows[static_cast<size_t>(round)]); }

    QString ourPath, rawPath;
    std::vector<QsoRow> rows;
    std::unique_ptr<LogStore> store;
    std::unique_ptr<RawInserter> raw;
};

double SyncsPerQso(const std::function<void(int)> &store)
{
    FaultVfs &layer = FaultVfs::Instance();
    layer.Reset();
    layer.SetRecording(false);
    for (int i = 0; i < countedQsos; ++i)
        store(i);
    const FaultVfs::Counts counts = layer.TakenCounts();
    return static_cast<double>(counts.syncs + counts.folderSyncs) / countedQsos;
}

void CountSyncs(const BenchSetting &setting, ResultTable &table)
{
    FaultVfs::Instance();
    const Pair pair(setting, smallLog, "fault");
    // Opening the file is not part of storing.
    pair.StoreOurs(storedPairs - 1);
    pair.StoreRaw(storedPairs - 1);
    const double ours = SyncsPerQso([&](int i) { pair.StoreOurs(i); });
    const double raw = SyncsPerQso([&](int i) { pair.StoreRaw(i); });
    table.AddRatio(u"sync calls for a stored QSO"_qs, SizeText(smallLog), ours, raw, 1, Unit::Count);
}

} // namespace

void BenchStore(const BenchSetting &setting, ResultTable &table)
{
    const Pair small(setting, smallLog, {}), large(setting, largeLog, {});
    const auto side = [](const Pair &pair, void (Pair::*store)(int) const) {
        return Clocked([&pair, store](int round) { (pair.*store)(round); });
    };
    const std::vector<double> medians = Alternate({side(small, &Pair::StoreOurs), side(small, &Pair::StoreRaw),
                                                      side(large, &Pair::StoreOurs), side(large, &Pair::StoreRaw)},
        storedPairs);
    table.AddRatio(u"store a QSO / bare insert"_qs, SizeText(smallLog), medians[0], medians[1], 1.25);
    table.AddRatio(u"store a QSO / bare insert"_qs, SizeText(largeLog), medians[2], medians[3], 1.25);
    table.AddRatio(u"store a QSO, large log / small log"_qs, SizeText(largeLog), medians[2], medians[0], 1.5);
    CountSyncs(setting, table);
    const double bytes = static_cast<double>(QFileInfo(MadeLog(setting.cacheFolder, largeLog)).size());
    table.AddLimit(
        u"file, for each QSO"_qs, SizeText(largeLog), bytes / static_cast<double>(largeLog), 320, Unit::Bytes);
}
