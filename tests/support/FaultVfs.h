// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <map>
#include <mutex>
#include <vector>

struct FaultFile;
struct sqlite3_vfs;

// One thing that SQLite did to a file, as it reached the layer below.
struct FaultEvent {
    enum class Kind {
        Found, // the file was there before the recording: `bytes` is its content then, taken as safe on the disk
        Create, // a file of that name did not exist and was made, empty
        Write, // `bytes` at `number`
        Truncate, // to `number` bytes
        Sync, // everything written to the file so far is safe; with `folder` also the names in its folder
        Delete, // the name is gone; with `folder` safely so, and with it all names of the folder
        Mark, // `number` as given by the test
    };

    Kind kind = Kind::Mark;
    int file = 0; // tells apart files that had the same name one after the other
    QString path; // absolute; empty for a mark
    qint64 number = 0;
    QByteArray bytes;
    bool folder = false;
};

// A layer between SQLite and the disk, for tests: counts what passes, records it in order, and fails where it is told
// to. Everything else goes through to the platform's own layer, locks and shared memory included; memory mapping is
// not offered, so that no write gets past it. Any number of connections and threads may use it.
//
// A connection uses it when it is opened with the name "fault", or without a name while an AsDefault lives.
// Numbers of writes, reads and syncs in the faults count from the call that sets the fault: 1 is the next one.
// Temporary files of SQLite are counted and fail like the others, but are not recorded.
class FaultVfs {
public:
    enum class Trouble { DiskFull, IoError };
    enum class Access {
        Free,
        ReadOnlyFile, // the database opens for reading only, as a file without write permission does
        ReadOnlyFolder, // no file can be made or deleted: the journal fails with SQLITE_READONLY_DIRECTORY
        NoJournal, // the journal fails with SQLITE_CANTOPEN
    };
    struct Counts {
        int writes = 0;
        int syncs = 0; // of files, calls that failed included
        int folderSyncs = 0; // with the first sync of a new journal, and with deletions that ask for it
        qint64 bytes = 0; // that reached the disk
    };
    static constexpr int forever = -1;

    // Makes "fault" the layer that connections get without asking, for its own lifetime. Starts and ends with Reset.
    class AsDefault {
    public:
        AsDefault();
        ~AsDefault();
        Q_DISABLE_COPY_MOVE(AsDefault)
    };

    // Registers the layer on first use.
    static FaultVfs &Instance();

    // No faults, counts zero, nothing recorded, recording on, real syncs. Connections may be open: their files come
    // into the new recording as found, with what they hold when they are next locked or changed.
    void Reset();

    // Off for long measured runs, where the recording would fill the memory.
    void SetRecording(bool on) { Set(recordingOn_, on); }
    // Off: syncs are counted and recorded but not handed to the disk. For runs whose power cuts are simulated.
    void SetRealSyncs(bool on) { Set(realSyncs_, on); }
    // Puts a mark into the recording, for example the id of a QSO that is shown from here on.
    void Mark(qint64 number);

    Counts TakenCounts() const { return Get(counts_); }
    std::vector<FaultEvent> Recording() const { return Get(recording_); }

    // `count` writes, starting with number `first`, fail after `keptBytes` of each have reached the file.
    void FailWrites(int first, int count, Trouble trouble, int keptBytes = 0);
    void FailReads(int first, int count) { Set(reads_, {first, count, 0}); }
    // A failed sync makes nothing safe.
    void FailSyncs(int first, int count) { Set(syncs_, {first, count, 0}); }
    // How much all files together may grow. A write that needs more fills the room and fails as "disk full";
    // overwriting needs no room; truncating and deleting give room back. `forever` is a disk without end.
    void SetRoom(qint64 bytes) { Set(room_, bytes); }
    // Holds for files that are opened from now on.
    void SetAccess(Access access) { Set(access_, access); }
    // The next `attempts` locks are refused as held by another program: all, or only those needed for writing.
    void PretendLocked(int attempts, bool forReadersToo = true);

private:
    using Guard = std::lock_guard<std::mutex>;
    friend struct FaultCalls;

    // Says for a counted call whether it is one of those that fail.
    struct Trap {
        int first = 0;
        int count = 0;
        int seen = 0;
        bool Springs();
    };

    template <typename T>
    void Set(T &member, const T &value)
    {
        const Guard guard(mutex_);
        member = value;
    }
    template <typename T>
    T Get(const T &member) const
    {
        const Guard guard(mutex_);
        return member;
    }

    FaultVfs();
    ~FaultVfs();
    Q_DISABLE_COPY_MOVE(FaultVfs)

    int Open(const char *name, FaultFile &file, int flags, int *outFlags);
    int Write(FaultFile &file, const char *data, int size, qint64 offset);
    int Truncate(FaultFile &file, qint64 size);
    int Sync(FaultFile &file, int flags);
    int Delete(const char *name, bool syncFolder);
    int Lock(FaultFile &file, int level);
    int AllowedPart(FaultFile &file, int size, qint64 offset, int *error);
    bool RefusedOpen(const QString &path, int flags, int *error) const;
    void Append(FaultEvent event);
    void Identify(FaultFile &file);

    mutable std::mutex mutex_;
    sqlite3_vfs *real_ = nullptr;
    sqlite3_vfs *own_ = nullptr;
    std::vector<FaultEvent> recording_;
    std::map<QString, int> files_; // the file that each recorded path stands for now
    int nextFile_ = 1; // never starts again, so that a file of an older recording is recognised
    int oldestFile_ = 1; // files below it belong to an older recording
    bool recordingOn_ = true, realSyncs_ = true, lockReaders_ = true;
    Counts counts_;
    Trap writes_, reads_, syncs_, locks_;
    int writeError_ = 0;
    int keptBytes_ = 0;
    qint64 room_ = forever;
    Access access_ = Access::Free;
};
