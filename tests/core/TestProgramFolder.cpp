// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ProgramFolder.h"
#include "support/Fixtures.h"

#include <QLockFile>

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>
#endif

class TestProgramFolder : public FolderTest {
    Q_OBJECT

private Q_SLOTS:
    void AFolderThatCannotBeWrittenGivesWayUnlessItHoldsALog()
    {
        // A missing folder cannot be written by anybody, an administrator included.
        QCOMPARE(ProgramFolder::Find(folder_->path(), Path(u"user"_qs)), folder_->path());
        QVERIFY(QDir(folder_->path()).isEmpty()); // the trial leaves nothing behind
        const QString missing = Path(u"none"_qs), user = Path(u"a/b"_qs);
        QVERIFY(!ProgramFolder::IsWritable(missing));
        QCOMPARE(ProgramFolder::Find(missing, user), user);
        QVERIFY(QDir(user).exists());
        Put(u"instalado.txt"_qs, "");
        QCOMPARE(ProgramFolder::Find(folder_->path(), user), user);
        for (const QString &name : {u"config.ini"_qs, u"base0.mdb"_qs}) {
            init();
            Put(name, "x");
            Put(u"instalado.txt"_qs, "");
            const QString own = folder_->path();
            QVERIFY(QFile::setPermissions(own, QFile::ReadOwner | QFile::ExeOwner));
            QCOMPARE(ProgramFolder::Find(own, user), own);
            QVERIFY(QFile::setPermissions(own, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        }
    }

    void DataFilesAreCopiedWhereMissing()
    {
        const QString installed = Path(u"installed"_qs), own = Path(u"own"_qs);
        QVERIFY(QDir().mkpath(installed) && QDir().mkpath(own));
        ProgramFolder::CopyMissingData(installed, own);
        QVERIFY(QDir(own).isEmpty());
        Put(u"installed/dxcc.txt"_qs, "new");
        ProgramFolder::CopyMissingData(installed, own);
        QCOMPARE(Content(u"own/dxcc.txt"_qs), QByteArray("new"));
        Put(u"own/dxcc.txt"_qs, "edited");
        ProgramFolder::CopyMissingData(installed, own);
        ProgramFolder::CopyMissingData(own, own);
        QCOMPARE(Content(u"own/dxcc.txt"_qs), QByteArray("edited"));
    }

#ifdef Q_OS_UNIX
    void AnotherProcessIsSeenAndAKilledOneIsNot()
    {
        int ready[2];
        QCOMPARE(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            const ProgramFolder::Lock held = ProgramFolder::Hold(folder_->path());
            const char answer = held.file ? 'y' : 'n';
            if (write(ready[1], &answer, 1) != 1)
                _exit(1);
            pause();
            _exit(0);
        }
        char answer = 0;
        QCOMPARE(read(ready[0], &answer, 1), 1);
        QCOMPARE(answer, 'y');
        QVERIFY(ProgramFolder::Hold(folder_->path()).heldByOther);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(ready[0]);
        close(ready[1]);
        QCOMPARE(Files(), u"tordillo.lock"_qs); // its lock is still there
        QVERIFY(ProgramFolder::Hold(folder_->path()).file);
    }
#endif

    // A power cut leaves the lock's name, but not always what was written to it.
    void ADamagedLockKeepsNobodyOut()
    {
        for (const QByteArray &content : {QByteArray(), QByteArray(40, '\0'), QByteArray("x\ny\nz\n")}) {
            Put(u"tordillo.lock"_qs, content);
            const ProgramFolder::Lock lock = ProgramFolder::Hold(folder_->path());
            QVERIFY(lock.file && !lock.heldByOther);
            QVERIFY(ProgramFolder::Hold(folder_->path()).heldByOther);
        }
    }
};

TORDILLO_TEST(TestProgramFolder)
#include "TestProgramFolder.moc"
