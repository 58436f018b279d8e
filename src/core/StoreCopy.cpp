// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/StoreCopy.h"

#include "core/PlatformFile.h"
#include "core/StoreConnection.h"
#include "core/StoreFailure.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <SQLiteCpp/Backup.h>
#include <chrono>
#include <filesystem>
#include <sqlite3.h>

namespace {

constexpr int pagesAStep = 512; // 2 MB
constexpr int checkPause = 5; // milliseconds

const QString countQsos = u"SELECT count(*) FROM Tabla1 WHERE Modo<>''"_qs;

// From the counters, since this is asked in the operator's time.
qint64 Count(SQLite::Database &database)
{
    return database.execAndGet("SELECT coalesce(sum(QSOs),0) FROM Contadores").getInt64();
}

// Written without waiting for the disk: its last step would else hold up the windows until the whole file is there.
SQLite::Database OpenTarget(const QString &path)
{
    SQLite::Database target(path.toUtf8().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    target.exec("PRAGMA synchronous=OFF");
    return target;
}

// Waits for the disk.
Result<void> Sync(const QString &path)
{
    const SQLite::Database database(path.toUtf8().toStdString(), SQLite::OPEN_READWRITE);
    sqlite3_file *file = nullptr;
    sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void *>(&file));
    const int code = file && file->pMethods ? file->pMethods->xSync(file, SQLITE_SYNC_NORMAL) : SQLITE_IOERR;
    return code == SQLITE_OK ? Result<void>() : StoreFailure(code, path, QString::fromUtf8(sqlite3_errstr(code)));
}

// Runs on a thread of its own, with a connection of its own.
Result<void> Check(const QString &path, qint64 expected)
{
    if (const Result<void> synced = Sync(path); !synced)
        return synced;
    LogStore copy(path);
    if (const Result<void> whole = copy.CheckIntegrity(); !whole)
        return whole;
    const Result<qint64> found = copy.Read([](Session &session) {
        Query query = session.Prepare(countQsos);
        return query.Next() ? query.Number(0) : qint64(-1);
    });
    if (!found)
        return found.failure();
    if (*found != expected)
        return Failure{u"La copia\n%1\nno tiene todos los QSOs."_qs.arg(path), Failure::Kind::Other};
    return {};
}

// On that thread too: to give back the room of a large older copy takes the system longer than a window should wait.
Result<void> Place(const QString &made, const QString &target)
{
    std::error_code error;
    std::filesystem::rename(made.toStdU16String(), target.toStdU16String(), error);
    if (error)
        return StoreFailure(SQLITE_CANTOPEN, target, QString::fromStdString(error.message()));
    PlatformFile::SyncFolder(QFileInfo(target).absolutePath());
    return {};
}

} // namespace

struct StoreCopy::Work {
    std::shared_ptr<Session::Connection> source;
    SQLite::Database target;
    SQLite::Backup backup;

    Work(std::shared_ptr<Session::Connection> from, const QString &path)
        : source(std::move(from))
        , target(OpenTarget(path))
        , backup(target, source->database)
    {
    }
};

StoreCopy::StoreCopy(LogStore &store, QString target)
    : store_(store)
    , target_(std::move(target))
    , making_(target_ + u".nueva"_qs)
{
}

StoreCopy::~StoreCopy()
{
    work_.reset();
    if (check_.valid())
        check_.wait();
    if (stage_ != Stage::Done)
        Discard();
}

void StoreCopy::Discard()
{
    QFile::remove(making_);
    QFile::remove(making_ + u"-journal"_qs); // the engine leaves it where the disk is in trouble
}

Result<void> StoreCopy::Begin()
{
    Discard();
    if (const Result<void> open = store_.Read([](Session &) {}); !open)
        return open;
    work_ = std::make_unique<Work>(store_.connection_, making_);
    return {};
}

Result<void> StoreCopy::CopyPages()
{
    if (!work_)
        if (const Result<void> begun = Begin(); !begun)
            return begun;
    const int code = work_->backup.executeStep(pagesAStep);
    pagesInAll_ = work_->backup.getTotalPageCount();
    pagesDone_ = pagesInAll_ - work_->backup.getRemainingPageCount();
    if (code == SQLITE_OK)
        return {};
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED) // for as long as any other operation waits
        return StoreFailure(code, store_.Path(), {});
    // Counted in the same turn as the last step, so that nothing can have been stored in between.
    const qint64 expected = Count(work_->source->database);
    work_.reset();
    stage_ = Stage::Checking;
    check_ = std::async(std::launch::async, Check, making_, expected);
    return {};
}

Result<StoreCopy::Stage> StoreCopy::Finish()
{
    if (const Result<void> outcome = check_.get(); !outcome)
        return outcome.failure();
    if (placing_) {
        stage_ = Stage::Done;
    } else {
        placing_ = true;
        check_ = std::async(std::launch::async, Place, making_, target_);
    }
    return stage_;
}

Result<StoreCopy::Stage> StoreCopy::Step()
{
    try {
        if (stage_ == Stage::Copying)
            if (const Result<void> copied = CopyPages(); !copied)
                return copied.failure();
        if (stage_ == Stage::Checking && check_.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
            return Finish();
        return stage_;
    } catch (const SQLite::Exception &error) {
        work_.reset();
        Discard();
        return StoreFailure(error.getErrorCode(), target_, QString::fromUtf8(error.what()));
    }
}

Result<void> CopyChecked(LogStore &store, const QString &target, Run &run)
{
    StoreCopy copy(store, target);
    while (true) {
        const Result<StoreCopy::Stage> stage = copy.Step();
        if (!stage)
            return stage.failure();
        if (*stage == StoreCopy::Stage::Done)
            return {};
        if (*stage == StoreCopy::Stage::Checking)
            QThread::msleep(checkPause);
        if (!run.Step(copy.PagesDone(), copy.PagesInAll()))
            return Failure{u"La copia fue detenida."_qs, Failure::Kind::Cancelled};
    }
}
