// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

struct sqlite3;
struct sqlite3_stmt;

// The engine's C interface with nothing around it, as the references use it: the quickest that the same work can be
// done. Ends the bench with a message on any error.
class RawDatabase {
public:
    // Opens with the settings of LogStore: sync, cache size. `vfs` as in LogStore.
    explicit RawDatabase(const QString &path, const char *vfs = nullptr);
    ~RawDatabase();
    Q_DISABLE_COPY_MOVE(RawDatabase)

    void Execute(const char *sql);
    sqlite3 *Handle() const { return handle_; }

private:
    sqlite3 *handle_ = nullptr;
};

class RawStatement {
public:
    RawStatement(RawDatabase &database, const QString &sql);
    ~RawStatement();
    Q_DISABLE_COPY_MOVE(RawStatement)

    // The text must live until the statement has run.
    void Bind(int parameter, const QByteArray &text);
    void Bind(int parameter, qint64 number);
    bool Step();
    // Takes every column of the row as text, as far as the engine hands it out.
    void TakeRow();
    void Reset();
    // All rows of the statement, then Reset.
    void TakeAll();
    QString Text(int column) const;

private:
    sqlite3_stmt *statement_ = nullptr;
};
