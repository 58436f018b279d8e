// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/StoreConnection.h"

#include "core/Wildcard.h"

#include <sqlite3.h>

namespace {

constexpr int busyMilliseconds = 1500;

QStringView Utf8Argument(sqlite3_value *value, QString &buffer)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
    buffer = QString::fromUtf8(text, sqlite3_value_bytes(value));
    return buffer;
}

void FoldFunction(sqlite3_context *context, int, sqlite3_value **values)
{
    QString buffer;
    const QByteArray folded = Wildcard::Fold(Utf8Argument(values[0], buffer)).toUtf8();
    sqlite3_result_text(context, folded.constData(), static_cast<int>(folded.size()), SQLITE_TRANSIENT);
}

// The pattern is the same for all rows of a statement, so its folded form is kept with the statement.
void WildcardFunction(sqlite3_context *context, int, sqlite3_value **values)
{
    auto *pattern = static_cast<QString *>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<QString> made;
    QString buffer;
    if (!pattern) {
        made = std::make_unique<QString>(Wildcard::Fold(Utf8Argument(values[0], buffer)));
        pattern = made.get();
    }
    const QString text = Wildcard::Fold(Utf8Argument(values[1], buffer));
    sqlite3_result_int(context, Wildcard::Matches(*pattern, text) ? 1 : 0);
    if (made)
        sqlite3_set_auxdata(context, 0, made.release(), [](void *kept) { delete static_cast<QString *>(kept); });
}

} // namespace

Session::Connection::Connection(const QString &path, const QByteArray &vfs)
    : database(path.toUtf8().toStdString(), SQLite::OPEN_READWRITE, busyMilliseconds, vfs.toStdString())
{
    sqlite3 *handle = database.getHandle();
    sqlite3_extended_result_codes(handle, 1);
    constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
    sqlite3_create_function(handle, "fold", 1, pure, nullptr, FoldFunction, nullptr, nullptr);
    sqlite3_create_function(handle, "wildcard", 2, pure, nullptr, WildcardFunction, nullptr, nullptr);
    database.exec("PRAGMA synchronous=EXTRA");
    database.exec("PRAGMA cache_size=-16000");
}

bool Session::Connection::Moved()
{
    int moved = 0;
    return sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved;
}

bool Session::Connection::ReadOnly() { return sqlite3_db_readonly(database.getHandle(), "main") == 1; }
