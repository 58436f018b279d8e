// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Scenes.h"

#include "contest/ContestEntry.h"
#include "contest/ContestLogs.h"
#include "contest/ContestTable.h"
#include "contest/Transfer.h"
#include "core/SafetyCopies.h"
#include "core/Schema.h"
#include "interchange/AdifFile.h"
#include "interchange/AdifImport.h"
#include "interchange/AdifStaging.h"
#include "logging/QsoEdit.h"
#include "logging/QsoStore.h"
#include "support/ManualScheduler.h"

#include <QThread>
#include <cstdio>

namespace {

const QString logName = u"Log inicial"_qs, contestName = u"Concurso"_qs;
constexpr int remarksWidth = 400, editedQsos = 40, largeQsos = 150, largeWidth = 20000, contestQsos = 1000;

// Each pair of numbers has a call of its own.
QString CallOf(int pair)
{
    const auto letter = [](int value) { return QString(QChar(u'A' + value % 26)); };
    return u"LU%1M"_qs.arg(pair / 676 % 9 + 1) + letter(pair / 26) + letter(pair);
}

QString TimeOf(int number)
{
    return u"%1:%2"_qs.arg(number / 60 % 24, 2, 10, QChar(u'0')).arg(number % 60, 2, 10, QChar(u'0'));
}

// Two neighbours share a call, and only the second has a grid: storing it changes the row of the first as well.
NewQso MakeQso(int number, int width = remarksWidth)
{
    NewQso qso;
    qso.call = CallOf(number / 2);
    qso.band = u"20m"_qs;
    qso.mode = number % 3 == 0 ? u"CW"_qs : u"SSB"_qs;
    qso.reportSent = number % 3 == 0 ? u"599"_qs : u"59"_qs;
    qso.reportReceived = u"57"_qs;
    qso.date = u"%1/11/2026"_qs.arg(number % 28 + 1, 2, 10, QChar(u'0'));
    qso.time = TimeOf(number) + u":00";
    qso.station = u"LU9ZZZ"_qs;
    qso.operatorCall = u"LU1AAA"_qs;
    qso.remarks = u"%1 "_qs.arg(number) + QString(number * 37 % width, QChar(u'ñ'));
    qso.frequency = u"14.%1"_qs.arg(number % 350, 3, 10, QChar(u'0'));
    qso.ownGrid = u"GF05AB"_qs;
    qso.grid = number % 2 == 1 ? u"FF57"_qs : QString();
    qso.SOTA = u"LUM/M-%1"_qs.arg(number % 1000);
    qso.MY_POTA = u"AR-0001"_qs;
    qso.POTA = u"AR-%1"_qs.arg(number % 100);
    qso.MYSOTA = u"LUH/H-001"_qs;
    return qso;
}

Result<void> StoreOne(LogStore &store, int number, int width = remarksWidth)
{
    const Result<qint64> id = AddQso(store, logName, MakeQso(number, width));
    return id ? Result<void>() : id.failure();
}

// Stores QSOs until there are `wanted`.
Result<void> FillLog(LogStore &store, int wanted, int width)
{
    Result<qint64> count = CountQsos(store, logName);
    for (; count && *count < wanted; count = CountQsos(store, logName))
        if (const Result<void> stored = StoreOne(store, int(*count), width); !stored)
            return stored;
    return count ? Result<void>() : count.failure();
}

Result<void> Done(const Result<bool> &found)
{
    if (!found)
        return found.failure();
    return *found ? Result<void>() : Failure{u"The row has gone."_qs};
}

class StoreScene final : public Scene {
    Result<void> Step(Logbook &logbook, int number) override { return StoreOne(logbook.Store(), number); }
};

// Two edits and a state towards LdA, over and over.
class EditScene final : public Scene {
    Result<void> Prepare(Logbook &logbook) override { return FillLog(logbook.Store(), editedQsos, remarksWidth); }

    Result<void> Step(Logbook &logbook, int number) override
    {
        LogStore &store = logbook.Store();
        const qint64 id = number * 7 % editedQsos + 1;
        if (number % 3 == 2)
            return SetLdaState(store, id, QString::number(number % 4));
        const auto row = QsoEdit::FindQso(store, logName, id);
        if (!row)
            return row.failure();
        if (!*row)
            return Failure{u"The row has gone."_qs};
        const EditFields shown = QsoEdit::FromRow(**row);
        EditFields fields = shown;
        fields.call = CallOf(number);
        fields.mode = number % 2 == 0 ? u"FM"_qs : u"DVoice"_qs;
        fields.band = u"40m"_qs;
        fields.mhz = u"7"_qs;
        fields.khz = QString::number(number % 300);
        fields.date = u"%1/10/2026"_qs.arg(number % 28 + 1, 2, 10, QChar(u'0'));
        fields.reportSent = QString::number(number % 60);
        fields.remarks = QString::number(number) + u' ' + QString(number * 91 % 1500, QChar(u'é'));
        fields.satellite = u"SO-%1"_qs.arg(number);
        return Done(QsoEdit::UpdateQso(store, fields, shown));
    }
};

// By turns a new QSO and the end of the oldest one.
class DeleteScene final : public Scene {
    Result<void> Prepare(Logbook &logbook) override { return FillLog(logbook.Store(), editedQsos, remarksWidth); }

    Result<void> Step(Logbook &logbook, int number) override
    {
        if (number % 2 == 0)
            return StoreOne(logbook.Store(), editedQsos + number / 2);
        return Done(QsoEdit::DeleteQso(logbook.Store(), number / 2 + 1));
    }
};

QsoRow ContestRow(int number)
{
    ContestFields fields;
    fields.ownCall = u"LU9ZZZ"_qs;
    fields.fecha = u"%1/11/2026"_qs.arg(number % 28 + 1, 2, 10, QChar(u'0'));
    fields.hora = TimeOf(number);
    fields.corresponsal = CallOf(number);
    fields.mode = number % 3 == 0 ? u"CW"_qs : u"SSB"_qs;
    fields.band = number % 5 == 0 ? u"40m"_qs : u"20m"_qs;
    fields.mhz = number % 5 == 0 ? u"7"_qs : u"14"_qs;
    fields.khz = u"%1"_qs.arg(number % 200, 3, 10, QChar(u'0'));
    fields.rse = QString::number(number + 1);
    fields.rsr = QString::number(number * 7 % 1000);
    fields.contest = contestName;
    fields.type = SerieType::Incremental;
    return BuildContestRow(fields);
}

Result<void> MakeContest(LogStore &store)
{
    const Result<bool> exists = ContestExists(store, contestName);
    if (!exists)
        return exists.failure();
    if (*exists)
        return {};
    const auto created = CreateContest(store, contestName, SerieType::Incremental);
    return created ? Result<void>() : Result<void>(created.failure());
}

class ContestScene final : public Scene {
    Result<void> Prepare(Logbook &logbook) override { return MakeContest(logbook.Store()); }

    Result<void> Step(Logbook &logbook, int number) override
    {
        const Result<qint64> id = StoreContestRow(logbook.Store(), ContestRow(number));
        return id ? Result<void>() : id.failure();
    }
};

// A contest into one log after the other.
class TransferScene final : public Scene {
    Result<void> Prepare(Logbook &logbook) override
    {
        LogStore &store = logbook.Store();
        if (const Result<void> made = MakeContest(store); !made)
            return made;
        return store.Write([](Session &session) {
            Query query = session.Prepare(u"SELECT count(*) FROM Tabla2"_qs);
            if (!query.Next() || query.Number(0) > 1)
                return;
            for (int number = 0; number < contestQsos; ++number)
                ContestTable::Insert(session, ContestRow(number));
        });
    }

    Result<void> Step(Logbook &logbook, int number) override
    {
        Run run(logbook.LongWork(), {});
        const auto moved = TransferContest(logbook.Store(), run, contestName, u"Log %1"_qs.arg(number));
        if (!moved)
            return moved.failure();
        return moved->copied == contestQsos ? Result<void>() : Failure{u"Not all were copied."_qs};
    }
};

// One file over and over, by turns as new QSOs of another station and as repeats that replace them.
class ImportScene final : public Scene {
    Result<void> Step(Logbook &logbook, int number) override
    {
        LogStore &store = logbook.Store();
        Run run(logbook.LongWork(), {});
        if (const Result<void> cleared = AdifStaging::ClearStaging(store); !cleared)
            return cleared;
        const auto records = Read(logbook, run);
        if (!records)
            return records.failure();
        const AdifImport::Settings settings{false, u"LU%1ZZZ"_qs.arg(number / 2), number % 2 == 1, false};
        QList<AdifStaging::Staged> prepared;
        for (const QByteArray &record : records->records) {
            const auto staged = AdifStaging::Prepare(store, logName, AdifImport::ParseRecord(record, settings).row);
            if (!staged)
                return staged.failure();
            prepared << *staged;
        }
        if (const Result<void> staged = AdifStaging::StageRows(store, prepared); !staged)
            return staged;
        const auto rows = AdifStaging::StagedRows(store);
        if (!rows)
            return rows.failure();
        const auto loaded = AdifStaging::LoadRows(store, logName, *rows, rows->size(), true);
        return loaded ? Result<void>() : loaded.failure();
    }

    // As the import window reads a file.
    static Result<AdifFile::Records> Read(Logbook &logbook, Run &run)
    {
        FileSystem &files = logbook.Files();
        const QString path = logbook.PathOf(u"import.adi"_qs), copy = path + u"_000000";
        const QString modified = logbook.PathOf(u"modificado_000000"_qs);
        const auto failed = [&](const Failure &failure) {
            files.Remove(copy);
            files.Remove(modified);
            return failure;
        };
        const auto show = [](const QString &) {};
        const Result<bool> split = AdifFile::SplitSingleLineFile(files, path, copy, run, show);
        if (!split)
            return failed(split.failure());
        const auto repaired =
            AdifFile::JoinRecordLines(files, *split ? copy : path, modified, run, show, [](qint64, const QString &) {});
        if (!repaired)
            return failed(repaired.failure());
        const auto records = AdifFile::ReadRecords(files, *repaired, run, show);
        if (!records)
            return failed(records.failure());
        return records;
    }
};

// Safety copies one after the other while QSOs are stored, and every now and then the operator's own copy.
class CopyScene final : public Scene {
public:
    explicit CopyScene(FixedClock &clock)
        : clock_(clock)
    {
    }

private:
    Result<void> Prepare(Logbook &logbook) override { return FillLog(logbook.Store(), largeQsos, largeWidth); }

    Result<void> Step(Logbook &logbook, int number) override
    {
        clock_.now = QDateTime(QDate(2026, 11, 25), QTime(0, 0)).addSecs(10 * number);
        if (const Result<void> copied = CopyOn(logbook); !copied)
            return copied;
        if (number % 16 == 15) {
            Run run(logbook.LongWork(), {});
            if (const Result<void> copied = CopyChecked(logbook.Store(), logbook.PathOf(dated_), run); !copied)
                return copied;
            Tell(dated_, largeQsos + number);
        }
        return StoreOne(logbook.Store(), largeQsos + number);
    }

    // Begins a safety copy or takes it a little further.
    Result<void> CopyOn(Logbook &logbook)
    {
        if (!copies_)
            copies_ = std::make_unique<SafetyCopies>(
                logbook, scheduler_, [this](const Failure &failure) { failure_ = failure; });
        if (!copies_->UnderWay())
            copies_->Begin();
        scheduler_.Advance(15);
        if (!failure_)
            return {};
        const Failure failure = *failure_;
        failure_.reset();
        return failure;
    }

    static void Tell(const QString &name, int qsos) { std::printf("copied %s %d\n", name.toUtf8().constData(), qsos); }

    FixedClock &clock_;
    ManualScheduler scheduler_;
    std::unique_ptr<SafetyCopies> copies_;
    std::optional<Failure> failure_;
    const QString dated_ = u"base0_25_11_26.mdb"_qs;
};

} // namespace

std::unique_ptr<Scene> MakeScene(const QString &name, FixedClock &clock)
{
    if (name == u"store")
        return std::make_unique<StoreScene>();
    if (name == u"edit")
        return std::make_unique<EditScene>();
    if (name == u"delete")
        return std::make_unique<DeleteScene>();
    if (name == u"contest")
        return std::make_unique<ContestScene>();
    if (name == u"transfer")
        return std::make_unique<TransferScene>();
    if (name == u"import")
        return std::make_unique<ImportScene>();
    return name == u"copy" ? std::make_unique<CopyScene>(clock) : nullptr;
}
