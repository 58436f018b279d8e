// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Logbook.h"
#include "core/QsoTable.h"
#include "core/Schema.h"
#include "support/FaultVfs.h"
#include "support/FixedClock.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// What the test classes of all folders share: rows written and read as one line of text, and what each test function
// finds ready before it begins. A class that prepares more hides `init` with a slot of its own that calls this one.

// "Modo=SSB;NombreLog=Base" laid over `row`; a column by its name without quotes and blanks.
inline QsoRow RowOf(const QString &columns, QsoRow row = {})
{
    for (const QString &one : columns.split(u';', Qt::SkipEmptyParts)) {
        bool known = false;
        for (const QsoColumns::Column &column : QsoColumns::all)
            if (QString::fromLatin1(column.sql).remove(u'"').remove(u' ') == one.section(u'=', 0, 0)) {
                row.*column.field = one.section(u'=', 1);
                known = true;
            }
        if (!known)
            qFatal("no column in %s", qPrintable(one));
    }
    return row;
}

// The columns that hold something, as RowOf takes them.
inline QString Shown(const QsoRow &row)
{
    QStringList columns;
    for (const QsoColumns::Column &column : QsoColumns::all)
        if (const QString &value = row.*column.field; !value.isEmpty())
            columns << QString::fromLatin1(column.sql).remove(u'"').remove(u' ') + u'=' + value;
    return columns.join(u';');
}

// One column of many rows, by blanks.
inline QString Column(const QList<QsoRow> &rows, QString QsoRow::*column)
{
    QStringList values;
    for (const QsoRow &row : rows)
        values << row.*column;
    return values.join(u' ');
}

// All rows of Tabla1 in the order of their ids; one row that tells the failure when they cannot be read.
inline QList<QsoRow> RowsOf(LogStore &store)
{
    const auto rows = store.Read([](Session &session) {
        Query query = session.Prepare(u"SELECT " + QsoColumns::SelectList() + u" FROM Tabla1 ORDER BY id");
        QList<QsoRow> read;
        while (query.Next())
            read << query.Row();
        return read;
    });
    return rows ? *rows : QList<QsoRow>{RowOf(u"Obs="_qs + rows.failure().text)};
}

// A new folder.
class FolderTest : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void init() { folder_ = std::make_unique<QTemporaryDir>(); }

protected:
    QString Path(const QString &name) const { return folder_->filePath(name); }
    QByteArray Content(const QString &name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void Put(const QString &name, const QByteArray &content) const
    {
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    // Overwrites `size` bytes in the middle of a file, or from `from` on.
    void Spoil(const QString &name, qint64 size, qint64 from = -1) const
    {
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(from < 0 ? file.size() / 2 : from));
        file.write(QByteArray(size, '\xee'));
    }
    // The names of all files, by blanks.
    QString Files() const { return QDir(folder_->path()).entryList(QDir::Files | QDir::Hidden).join(u' '); }

    std::unique_ptr<QTemporaryDir> folder_;
    FileSystem files_;
};

// A logbook over a new folder.
class LogbookTest : public FolderTest {
    Q_OBJECT

protected Q_SLOTS:
    void init()
    {
        FolderTest::init();
        clock_ = FixedClock();
        logbook_ = std::make_unique<Logbook>(folder_->path(), files_, clock_);
    }

protected:
    FixedClock clock_;
    std::unique_ptr<Logbook> logbook_;
};

// An empty database, on a layer that can fail and does not wait for the disk.
class StoreTest : public FolderTest {
    Q_OBJECT

protected Q_SLOTS:
    void init()
    {
        NoStore();
        QVERIFY(store_->CreateEmpty());
    }
    void cleanup()
    {
        store_.reset();
        Disk().Reset();
    }

protected:
    static FaultVfs &Disk() { return FaultVfs::Instance(); }
    static void HealDisk()
    {
        Disk().Reset();
        Disk().SetRecording(false);
        Disk().SetRealSyncs(false);
    }
    // A store whose file is not there yet.
    void NoStore()
    {
        FolderTest::init();
        HealDisk();
        path_ = Path(u"base0.mdb"_qs);
        store_ = std::make_unique<LogStore>(path_, "fault");
    }
    // Stores in one step.
    void Insert(const QList<QsoRow> &rows)
    {
        QVERIFY(store_->Write([&rows](Session &session) {
            for (const QsoRow &row : rows)
                QsoTable::Insert(session, row);
        }));
    }
    QList<QsoRow> Rows() { return RowsOf(*store_); }
    // Statements, and the first value of a query, through another connection.
    void Sql(const QByteArray &sql) const { QVERIFY2(RawDatabase(path_).Run(sql), sql.constData()); }
    QString Value(const QByteArray &sql) const { return RawDatabase(path_).Value(sql); }

    QString path_;
    std::unique_ptr<LogStore> store_;
};
