// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <sqlite3.h>

// A plain connection beside our own store, as any other SQLite tool would have one.
class RawDatabase {
public:
    explicit RawDatabase(const QString &path)
    {
        const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXRESCODE;
        opened_ = code_ = sqlite3_open_v2(path.toUtf8().constData(), &handle_, flags, nullptr);
    }
    ~RawDatabase() { sqlite3_close(handle_); }
    Q_DISABLE_COPY_MOVE(RawDatabase)

    // One or more statements; false when one of them fails.
    bool Run(const QByteArray &sql)
    {
        if (opened_ == SQLITE_OK)
            code_ = sqlite3_exec(handle_, sql.constData(), nullptr, nullptr, nullptr);
        return code_ == SQLITE_OK;
    }
    // What the opening or the last Run gave.
    int Code() const { return code_; }
    // The first value of a query; null for a null or when there is no row; the engine's message on an error.
    QString Value(const QByteArray &sql)
    {
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(handle_, sql.constData(), -1, &statement, nullptr);
        const int step = statement == nullptr ? SQLITE_ERROR : sqlite3_step(statement);
        QString value;
        if (step == SQLITE_ROW)
            value = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
        else if (step != SQLITE_DONE)
            value = QString::fromUtf8(sqlite3_errmsg(handle_));
        sqlite3_finalize(statement);
        return value;
    }

private:
    sqlite3 *handle_ = nullptr;
    int opened_ = SQLITE_OK, code_ = SQLITE_OK;
};
