// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/SafetyCopies.h"

#include "core/Logbook.h"
#include "core/PlatformFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace {

constexpr int stepPause = 15; // milliseconds
const QString folderName = u"copias"_qs;

} // namespace

SafetyCopies::SafetyCopies(Logbook &logbook, Scheduler &scheduler, std::function<void(const Failure &)> told)
    : logbook_(logbook)
    , told_(std::move(told))
    , timer_(scheduler.Make(stepPause, [this] { Step(); }))
{
}

SafetyCopies::~SafetyCopies() = default;

QStringList SafetyCopies::Existing(const Logbook &logbook)
{
    const QDir folder(logbook.PathOf(folderName));
    QStringList paths;
    // The names carry the time they were made at, so their order is that of time.
    for (const QString &name : folder.entryList({u"base0_*.mdb"_qs}, QDir::Files, QDir::Name | QDir::Reversed))
        paths << folder.filePath(name);
    return paths;
}

// A copy carries the time stamp of the file it was made from.
bool SafetyCopies::IsDue() const
{
    const QFileInfo source(logbook_.PathOf(u"base0.mdb"_qs));
    if (!source.exists())
        return false;
    const QStringList copies = Existing(logbook_);
    return copies.isEmpty() || QFileInfo(copies.first()).lastModified() != source.lastModified();
}

void SafetyCopies::Begin()
{
    if (copy_ || !IsDue())
        return;
    QDir().mkpath(logbook_.PathOf(folderName));
    const QString stamp = logbook_.ClockInUse().Now().toString(u"yyyy-MM-dd_hhmmss");
    target_ = logbook_.PathOf(folderName) + u"/base0_"_qs + stamp + u".mdb"_qs;
    stampOfSource_ = QFileInfo(logbook_.PathOf(u"base0.mdb"_qs)).lastModified();
    copy_ = std::make_unique<StoreCopy>(logbook_.Store(), target_);
    timer_->Start();
}

void SafetyCopies::Step()
{
    const Result<StoreCopy::Stage> stage = copy_->Step();
    if (stage && *stage != StoreCopy::Stage::Done)
        return;
    timer_->Stop();
    copy_.reset();
    if (!stage) {
        told_(stage.failure());
        return;
    }
    QFile made(target_);
    if (made.open(QIODevice::ReadWrite))
        made.setFileTime(stampOfSource_, QFileDevice::FileModificationTime);
    Rotate();
}

void SafetyCopies::Rotate()
{
    const QStringList copies = Existing(logbook_);
    for (const QString &old : copies.mid(kept))
        QFile::remove(old);
}

void SafetyCopies::RemoveUnfinished(const Logbook &logbook)
{
    const auto remove = [](const QString &folder, const QStringList &names) {
        for (const QFileInfo &left : QDir(folder).entryInfoList(names, QDir::Files))
            QFile::remove(left.absoluteFilePath());
    };
    remove(logbook.PathOf(folderName), {u"base0_*.mdb.nueva"_qs, u"base0_*.mdb.nueva-journal"_qs});
    remove(logbook.Folder(),
        {u"base0.mdb.nueva"_qs, u"base0.mdb.nueva-journal"_qs, u"base0_??_??_??.mdb.nueva"_qs,
            u"base0_??_??_??.mdb.nueva-journal"_qs});
}

QString SafetyCopies::NewestGood(const Logbook &logbook)
{
    // The dated copies that the operator made lie beside the database.
    QFileInfoList candidates = QDir(logbook.PathOf(folderName)).entryInfoList({u"base0_*.mdb"_qs}, QDir::Files);
    candidates += QDir(logbook.Folder()).entryInfoList({u"base0_??_??_??.mdb"_qs}, QDir::Files);
    std::sort(candidates.begin(), candidates.end(),
        [](const QFileInfo &a, const QFileInfo &b) { return a.lastModified() > b.lastModified(); });
    for (const QFileInfo &candidate : candidates) {
        LogStore copy(candidate.absoluteFilePath());
        if (copy.CheckIntegrity())
            return candidate.absoluteFilePath();
    }
    return {};
}

Result<QString> SafetyCopies::PutBack(Logbook &logbook, const QString &copy)
{
    const QString present = logbook.PathOf(u"base0.mdb"_qs);
    const QString aside =
        logbook.PathOf(u"base0_apartada_"_qs + logbook.ClockInUse().Now().toString(u"yyyy-MM-dd_hhmmss") + u".mdb"_qs);
    const QString making = present + u".nueva"_qs;
    const Failure refused{
        u"No se pudo poner la copia\n%1\nen lugar de\n%2"_qs.arg(copy, present), Failure::Kind::ReadOnly};
    logbook.Store().Close();
    QFile::remove(making);
    if (!QFile::copy(copy, making))
        return refused;
    QFile made(making);
    if (!made.open(QIODevice::ReadWrite) || !PlatformFile::Sync(made.handle()))
        return refused;
    made.close();
    if (QFile::exists(present) && !QFile::rename(present, aside)) {
        QFile::remove(making);
        return refused;
    }
    // Its journal goes with it: played back into the good file it would spoil that too.
    QFile::rename(present + u"-journal"_qs, aside + u"-journal"_qs);
    if (!QFile::rename(making, present)) {
        QFile::rename(aside, present);
        QFile::rename(aside + u"-journal"_qs, present + u"-journal"_qs);
        QFile::remove(making);
        return refused;
    }
    PlatformFile::SyncFolder(logbook.Folder());
    return aside;
}
