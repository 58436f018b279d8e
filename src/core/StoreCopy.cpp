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

qint64 Count(SQLite::Database &database) { return database.execAndGet(countQsos.toStdString()).getInt64(); }

// Runs on a thread of its own, with a connection of its own.
Result<void> Check(const QString &path, qint64 expected)
{
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
        return Failure{u"La copia\n%1\nno tiene todos los QSOs."_qs.arg(path), Failure::Kind::Damaged};
    return {};
}

} // namespace

struct StoreCopy::Work {
    std::shared_ptr<Session::Connection> source;
    SQLite::Database target;
    SQLite::Backup backup;

    Work(std::shared_ptr<Session::Connection> from, const QString &path)
        : source(std::move(from))
        , target(path.toUtf8().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
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
    if (code == SQLITE_OK || code == SQLITE_BUSY || code == SQLITE_LOCKED)
        return {};
    // Counted in the same turn as the last step, so that nothing can have been stored in between.
    const qint64 expected = Count(work_->source->database);
    work_.reset();
    stage_ = Stage::Checking;
    check_ = std::async(std::launch::async, Check, making_, expected);
    return {};
}

Result<StoreCopy::Stage> StoreCopy::Finish()
{
    if (const Result<void> checked = check_.get(); !checked)
        return checked.failure();
    std::error_code error;
    std::filesystem::rename(making_.toStdU16String(), target_.toStdU16String(), error);
    if (error)
        return StoreFailure(SQLITE_CANTOPEN, target_, QString::fromStdString(error.message()));
    PlatformFile::SyncFolder(QFileInfo(target_).absolutePath());
    stage_ = Stage::Done;
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
