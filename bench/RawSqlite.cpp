// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "RawSqlite.h"

#include "Harness.h"

#include <sqlite3.h>

namespace {

void Check(bool good, sqlite3 *handle)
{
    if (!good)
        GiveUp(u"SQLite: "_qs + QString::fromUtf8(sqlite3_errmsg(handle)));
}

// What a reader does with a text at least: look at it. Keeps the compiler from leaving the reading out.
volatile unsigned char lookedAt;

} // namespace

RawDatabase::RawDatabase(const QString &path, const char *vfs)
{
    const int opened = sqlite3_open_v2(path.toUtf8().constData(), &handle_, SQLITE_OPEN_READWRITE, vfs);
    Check(opened == SQLITE_OK, handle_);
    Execute("PRAGMA synchronous=EXTRA");
    Execute("PRAGMA cache_size=-16000");
}

RawDatabase::~RawDatabase() { sqlite3_close(handle_); }

void RawDatabase::Execute(const char *sql)
{
    Check(sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr) == SQLITE_OK, handle_);
}

RawStatement::RawStatement(RawDatabase &database, const QString &sql)
{
    const QByteArray text = sql.toUtf8();
    Check(sqlite3_prepare_v2(database.Handle(), text.constData(), -1, &statement_, nullptr) == SQLITE_OK,
        database.Handle());
}

RawStatement::~RawStatement() { sqlite3_finalize(statement_); }

void RawStatement::Bind(int parameter, const QByteArray &text)
{
    sqlite3_bind_text(statement_, parameter, text.constData(), static_cast<int>(text.size()), SQLITE_STATIC);
}

void RawStatement::Bind(int parameter, qint64 number) { sqlite3_bind_int64(statement_, parameter, number); }

bool RawStatement::Step()
{
    const int code = sqlite3_step(statement_);
    Check(code == SQLITE_ROW || code == SQLITE_DONE, sqlite3_db_handle(statement_));
    return code == SQLITE_ROW;
}

void RawStatement::TakeRow()
{
    for (int column = sqlite3_column_count(statement_); column-- > 0;)
        if (const unsigned char *text = sqlite3_column_text(statement_, column))
            lookedAt = text[0];
}

void RawStatement::Reset() { sqlite3_reset(statement_); }

void RawStatement::TakeAll()
{
    while (Step())
        TakeRow();
    Reset();
}

QString RawStatement::Text(int column) const
{
    return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement_, column)));
}
