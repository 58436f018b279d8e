// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FaultVfs.h"

#include <QFileInfo>
#include <algorithm>
#include <sqlite3.h>

// What SQLite holds as an open file: ours first, the platform's own right behind it in the same block.
struct FaultFile {
    sqlite3_file base;
    QString *path; // null for a temporary file
    int file;
    bool folderSyncDue; // the platform's layer syncs the folder with the first sync of a journal that may be new

    sqlite3_file *Real() { return reinterpret_cast<sqlite3_file *>(this + 1); }
    const sqlite3_io_methods &Methods() { return *Real()->pMethods; }
    qint64 Size()
    {
        sqlite3_int64 size = 0;
        return Methods().xFileSize(Real(), &size) == SQLITE_OK ? size : 0;
    }
};

// The entry points that SQLite calls. `Through` hands a call on to the platform's layer as it is.
struct FaultCalls {
    static sqlite3_vfs *Real() { return FaultVfs::Instance().real_; }
    static FaultFile &File(sqlite3_file *file) { return *reinterpret_cast<FaultFile *>(file); }

    template <auto Member>
    struct Through;
    template <typename R, typename... A, R (*sqlite3_vfs::*Member)(sqlite3_vfs *, A...)>
    struct Through<Member> {
        static R Call(sqlite3_vfs *, A... arguments) { return (Real()->*Member)(Real(), arguments...); }
    };
    template <typename R, typename... A, R (*sqlite3_io_methods::*Member)(sqlite3_file *, A...)>
    struct Through<Member> {
        static R Call(sqlite3_file *file, A... arguments)
        {
            return (File(file).Methods().*Member)(File(file).Real(), arguments...);
        }
    };

    static int Open(sqlite3_vfs *, const char *name, sqlite3_file *file, int flags, int *outFlags)
    {
        return FaultVfs::Instance().Open(name, File(file), flags, outFlags);
    }
    static int Delete(sqlite3_vfs *, const char *name, int syncFolder)
    {
        return FaultVfs::Instance().Delete(name, (syncFolder & 1) != 0);
    }
    static int Close(sqlite3_file *file)
    {
        delete File(file).path;
        File(file).path = nullptr;
        return Through<&sqlite3_io_methods::xClose>::Call(file);
    }
    static int Read(sqlite3_file *file, void *data, int size, sqlite3_int64 offset)
    {
        FaultVfs &vfs = FaultVfs::Instance();
        {
            const std::lock_guard guard(vfs.mutex_);
            if (vfs.reads_.Springs())
                return SQLITE_IOERR_READ;
        }
        return Through<&sqlite3_io_methods::xRead>::Call(file, data, size, offset);
    }
    static int Write(sqlite3_file *file, const void *data, int size, sqlite3_int64 offset)
    {
        return FaultVfs::Instance().Write(File(file), static_cast<const char *>(data), size, offset);
    }
    static int Truncate(sqlite3_file *file, sqlite3_int64 size)
    {
        return FaultVfs::Instance().Truncate(File(file), size);
    }
    static int Sync(sqlite3_file *file, int flags) { return FaultVfs::Instance().Sync(File(file), flags); }
    static int Lock(sqlite3_file *file, int level) { return FaultVfs::Instance().Lock(File(file), level); }

    static const sqlite3_io_methods *IoMethods()
    {
        using M = sqlite3_io_methods;
        static const sqlite3_io_methods methods = [] {
            sqlite3_io_methods table{};
            table.iVersion = 2; // 3 would offer memory mapping
            table.xClose = Close;
            table.xRead = Read;
            table.xWrite = Write;
            table.xTruncate = Truncate;
            table.xSync = Sync;
            table.xLock = Lock;
            table.xFileSize = Through<&M::xFileSize>::Call;
            table.xUnlock = Through<&M::xUnlock>::Call;
            table.xCheckReservedLock = Through<&M::xCheckReservedLock>::Call;
            table.xFileControl = Through<&M::xFileControl>::Call;
            table.xSectorSize = Through<&M::xSectorSize>::Call;
            table.xDeviceCharacteristics = Through<&M::xDeviceCharacteristics>::Call;
            table.xShmMap = Through<&M::xShmMap>::Call;
            table.xShmLock = Through<&M::xShmLock>::Call;
            table.xShmBarrier = Through<&M::xShmBarrier>::Call;
            table.xShmUnmap = Through<&M::xShmUnmap>::Call;
            return table;
        }();
        return &methods;
    }

    static void Fill(sqlite3_vfs &vfs, const sqlite3_vfs &real)
    {
        using V = sqlite3_vfs;
        vfs.iVersion = 2; // 3 would let callers replace system calls behind our back
        vfs.szOsFile = static_cast<int>(sizeof(FaultFile)) + real.szOsFile;
        vfs.mxPathname = real.mxPathname;
        vfs.zName = "fault";
        vfs.xOpen = Open;
        vfs.xDelete = Delete;
        vfs.xAccess = Through<&V::xAccess>::Call;
        vfs.xFullPathname = Through<&V::xFullPathname>::Call;
        vfs.xDlOpen = Through<&V::xDlOpen>::Call;
        vfs.xDlError = Through<&V::xDlError>::Call;
        vfs.xDlSym = Through<&V::xDlSym>::Call;
        vfs.xDlClose = Through<&V::xDlClose>::Call;
        vfs.xRandomness = Through<&V::xRandomness>::Call;
        vfs.xSleep = Through<&V::xSleep>::Call;
        vfs.xCurrentTime = Through<&V::xCurrentTime>::Call;
        vfs.xGetLastError = Through<&V::xGetLastError>::Call;
        vfs.xCurrentTimeInt64 = Through<&V::xCurrentTimeInt64>::Call;
    }
};

FaultVfs::AsDefault::AsDefault()
{
    Instance().Reset();
    sqlite3_vfs_register(Instance().own_, 1);
}

FaultVfs::AsDefault::~AsDefault()
{
    sqlite3_vfs_register(Instance().real_, 1);
    Instance().Reset();
}

FaultVfs &FaultVfs::Instance()
{
    static FaultVfs instance;
    return instance;
}

FaultVfs::FaultVfs()
    : real_(sqlite3_vfs_find(nullptr))
    , own_(new sqlite3_vfs{})
{
    FaultCalls::Fill(*own_, *real_);
    sqlite3_vfs_register(own_, 0);
}

FaultVfs::~FaultVfs()
{
    sqlite3_vfs_unregister(own_);
    delete own_;
}

bool FaultVfs::Trap::Springs()
{
    ++seen;
    return count != 0 && seen >= first && (count == forever || seen < first + count);
}

void FaultVfs::Reset()
{
    const Guard guard(mutex_);
    recording_.clear();
    files_.clear();
    oldestFile_ = nextFile_;
    recordingOn_ = realSyncs_ = lockReaders_ = true;
    counts_ = {};
    writes_ = reads_ = syncs_ = locks_ = {};
    room_ = forever;
    access_ = Access::Free;
}

void FaultVfs::Mark(qint64 number)
{
    const Guard guard(mutex_);
    Append({FaultEvent::Kind::Mark, 0, {}, number, {}, false});
}

void FaultVfs::FailWrites(int first, int count, Trouble trouble, int keptBytes)
{
    const Guard guard(mutex_);
    writes_ = {first, count, 0};
    writeError_ = trouble == Trouble::DiskFull ? SQLITE_FULL : SQLITE_IOERR_WRITE;
    keptBytes_ = keptBytes;
}

void FaultVfs::PretendLocked(int attempts, bool forReadersToo)
{
    const Guard guard(mutex_);
    locks_ = {1, attempts, 0};
    lockReaders_ = forReadersToo;
}

bool FaultVfs::RefusedOpen(const QString &path, int flags, int *error) const
{
    if (path.isEmpty() || (flags & SQLITE_OPEN_CREATE) == 0 || QFileInfo::exists(path))
        return false;
    const bool mainFile = (flags & SQLITE_OPEN_MAIN_DB) != 0;
    if (access_ == Access::ReadOnlyFolder)
        *error = mainFile ? SQLITE_CANTOPEN : SQLITE_READONLY_DIRECTORY;
    else if (access_ == Access::NoJournal && !mainFile)
        *error = SQLITE_CANTOPEN;
    else
        return false;
    return true;
}

int FaultVfs::Open(const char *name, FaultFile &file, int flags, int *outFlags)
{
    const Guard guard(mutex_);
    const QString path = name != nullptr ? QString::fromUtf8(name) : QString();
    file.base.pMethods = nullptr;
    file.Real()->pMethods = nullptr;
    int result = SQLITE_OK;
    if (RefusedOpen(path, flags, &result))
        return result;
    if (access_ == Access::ReadOnlyFile && (flags & SQLITE_OPEN_MAIN_DB) != 0)
        flags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
    const bool isNew = !path.isEmpty() && !QFileInfo::exists(path);
    result = real_->xOpen(real_, name, file.Real(), flags, outFlags);
    if (result != SQLITE_OK) {
        if (file.Real()->pMethods != nullptr)
            file.Methods().xClose(file.Real());
        return result;
    }
    const int journals = SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_SUPER_JOURNAL | SQLITE_OPEN_WAL;
    file.base.pMethods = FaultCalls::IoMethods();
    file.path = path.isEmpty() ? nullptr : new QString(path);
    file.file = 0;
    file.folderSyncDue = (flags & SQLITE_OPEN_CREATE) != 0 && (flags & journals) != 0;
    if (isNew && recordingOn_) {
        file.file = nextFile_++;
        files_[path] = file.file;
        Append({FaultEvent::Kind::Create, file.file, path, 0, {}, false});
    } else {
        Identify(file);
    }
    return SQLITE_OK;
}

void FaultVfs::Append(FaultEvent event)
{
    if (recordingOn_)
        recording_.push_back(std::move(event));
}

// Gives a file its number in the present recording; one that was there before is taken in with what it holds.
// The content is read through SQLite's own handle: opening and closing the file a second time would drop the
// process's locks on it.
void FaultVfs::Identify(FaultFile &file)
{
    if (!recordingOn_ || file.path == nullptr || file.file >= oldestFile_)
        return;
    const auto known = files_.find(*file.path);
    if (known != files_.end()) {
        file.file = known->second;
        return;
    }
    QByteArray content(static_cast<qsizetype>(file.Size()), '\0');
    if (!content.isEmpty())
        file.Methods().xRead(file.Real(), content.data(), static_cast<int>(content.size()), 0);
    file.file = nextFile_++;
    files_[*file.path] = file.file;
    Append({FaultEvent::Kind::Found, file.file, *file.path, 0, content, false});
}

// How many bytes of a write get through; the rest fails with `error`.
int FaultVfs::AllowedPart(FaultFile &file, int size, qint64 offset, int *error)
{
    if (writes_.Springs()) {
        *error = writeError_;
        return std::min(keptBytes_, size);
    }
    if (room_ == forever)
        return size;
    const qint64 growth = std::max<qint64>(0, offset + size - file.Size());
    if (growth <= room_) {
        room_ -= growth;
        return size;
    }
    const qint64 missing = growth - room_;
    *error = SQLITE_FULL;
    if (missing >= size)
        return 0;
    room_ = 0;
    return static_cast<int>(size - missing);
}

int FaultVfs::Write(FaultFile &file, const char *data, int size, qint64 offset)
{
    const Guard guard(mutex_);
    Identify(file);
    ++counts_.writes;
    int error = SQLITE_OK;
    const int allowed = AllowedPart(file, size, offset, &error);
    if (allowed > 0) {
        const int result = file.Methods().xWrite(file.Real(), data, allowed, offset);
        if (result != SQLITE_OK)
            return result;
        counts_.bytes += allowed;
        if (file.path != nullptr && recordingOn_)
            Append({FaultEvent::Kind::Write, file.file, *file.path, offset, QByteArray(data, allowed), false});
    }
    return error;
}

int FaultVfs::Truncate(FaultFile &file, qint64 size)
{
    const Guard guard(mutex_);
    Identify(file);
    const qint64 before = file.Size();
    const int result = file.Methods().xTruncate(file.Real(), size);
    if (result != SQLITE_OK)
        return result;
    if (room_ != forever)
        room_ += std::max<qint64>(0, before - size);
    if (file.path != nullptr)
        Append({FaultEvent::Kind::Truncate, file.file, *file.path, size, {}, false});
    return SQLITE_OK;
}

int FaultVfs::Sync(FaultFile &file, int flags)
{
    const Guard guard(mutex_);
    Identify(file);
    ++counts_.syncs;
    if (syncs_.Springs())
        return SQLITE_IOERR_FSYNC;
    const int result = realSyncs_ ? file.Methods().xSync(file.Real(), flags) : SQLITE_OK;
    if (result != SQLITE_OK)
        return result;
    if (file.path != nullptr)
        Append({FaultEvent::Kind::Sync, file.file, *file.path, 0, {}, file.folderSyncDue});
    counts_.folderSyncs += file.folderSyncDue ? 1 : 0;
    file.folderSyncDue = false;
    return SQLITE_OK;
}

int FaultVfs::Delete(const char *name, bool syncFolder)
{
    const Guard guard(mutex_);
    const QString path = QString::fromUtf8(name);
    if (access_ == Access::ReadOnlyFolder && QFileInfo::exists(path))
        return SQLITE_IOERR_DELETE;
    const qint64 size = QFileInfo(path).size();
    const int result = real_->xDelete(real_, name, realSyncs_ && syncFolder ? 1 : 0);
    if (result != SQLITE_OK)
        return result;
    counts_.folderSyncs += syncFolder ? 1 : 0;
    if (room_ != forever)
        room_ += size;
    const auto known = files_.find(path);
    Append({FaultEvent::Kind::Delete, known == files_.end() ? 0 : known->second, path, 0, {}, syncFolder});
    files_.erase(path);
    return SQLITE_OK;
}

int FaultVfs::Lock(FaultFile &file, int level)
{
    const Guard guard(mutex_);
    if ((lockReaders_ || level > SQLITE_LOCK_SHARED) && locks_.Springs())
        return SQLITE_BUSY;
    Identify(file); // before the journal that is made next, or a cut could leave the journal alone in the folder
    return file.Methods().xLock(file.Real(), level);
}
