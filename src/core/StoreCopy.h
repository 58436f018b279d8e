// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/Run.h"

#include <future>
#include <memory>

// A copy of the database that is known to be good: taken through the engine while the program works, written beside
// its final name, opened again and checked, and only then put in place of an older file of that name. Whatever fails
// on the way leaves the older file where it was and nothing of the new one.
//
// It goes in steps, so that contacts can be stored between them; they come into the copy.
class StoreCopy {
public:
    // Both files may be on different disks. The target's folder must exist.
    StoreCopy(LogStore &store, QString target);
    ~StoreCopy();
    StoreCopy(const StoreCopy &) = delete;
    StoreCopy &operator=(const StoreCopy &) = delete;

    enum class Stage { Copying, Checking, Done };
    // One small piece of the work (a few milliseconds). The check runs beside the program, and so does putting the copy
    // in its place; meanwhile a step only asks whether that is over. After a failure the copy is given up.
    Result<Stage> Step();

    // Parts of the file that are copied, and how many there are.
    int PagesDone() const { return pagesDone_; }
    int PagesInAll() const { return pagesInAll_; }

private:
    struct Work;
    void Discard();
    Result<void> Begin();
    Result<void> CopyPages();
    Result<Stage> Finish();

    LogStore &store_;
    QString target_, making_;
    std::unique_ptr<Work> work_;
    std::future<Result<void>> check_;
    bool placing_ = false; // the check is over
    Stage stage_ = Stage::Copying;
    int pagesDone_ = 0, pagesInAll_ = 0;
};

// The whole copy in one go, with progress and Esc.
Result<void> CopyChecked(LogStore &store, const QString &target, Run &run);
