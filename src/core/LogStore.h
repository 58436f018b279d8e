// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>

struct QsoRow;

// Thrown inside a Read or Write to give it up: a Write is rolled back, and the failure becomes the operation's result.
struct StoreError {
    Failure failure;
};

// One statement of an operation. Statements are compiled once and kept by the store; a Query is a loan that ends with
// its scope. Parameters count from 1, columns from 0. Engine errors leave as exceptions that only Read and Write catch.
class Query {
public:
    ~Query();
    Query(Query &&other) noexcept;

    Query &Bind(int parameter, QStringView text);
    Query &Bind(int parameter, qint64 number);
    // Goes to the next row; false behind the last one.
    bool Next();
    // For statements without rows.
    void Execute();
    // To use the same statement again with new values.
    void Reset();

    QString Text(int column) const; // a null is the empty text
    qint64 Number(int column) const;
    // A row of SELECT QsoColumns::SelectList().
    QsoRow Row() const;

private:
    friend class Session;
    struct Loan;
    explicit Query(std::unique_ptr<Loan> loan);
    std::unique_ptr<Loan> loan_;
};

// What an operation sees of the open database. Lives only inside Read or Write.
class Session {
public:
    // SQL with values as parameters, never inside the text. The functions fold(text) (case folded, for "Ñ" and accents
    // too) and wildcard(pattern, text) ("*" any run, "?" one character, over folded text) can be used in it.
    Query Prepare(const QString &sql);
    // Statements without parameters and rows that are not worth keeping compiled.
    void Execute(const QString &sql);
    qint64 LastId() const;
    // Rows that the last statement changed.
    int Changes() const;

private:
    friend class LogStore;
    friend class Query;
    friend class StoreCopy;
    struct Connection;
    explicit Session(Connection &connection)
        : connection_(connection)
    {
    }
    Connection &connection_;
};

// The log database, base0.mdb. It is opened at the first operation, and again whenever another file has been put in its
// place or a Write meets a file that could only be opened for reading; between operations nobody holds a lock on it.
// What Write returned without a failure survives a power cut. A file that was found damaged is not written to any more.
//
// Failures tell what happened in Spanish and name the path: Missing, Foreign (an old Access file among them), Damaged,
// Locked, ReadOnly, Full or Other. The file is left untouched by everything but a Write that succeeds.
class LogStore {
public:
    // `vfs` names another SQLite file layer than the platform's; tests use it to break things.
    explicit LogStore(QString path, QByteArray vfs = {});
    ~LogStore();

    const QString &Path() const { return path_; }
    bool Exists() const;

    // Makes an empty database where none is. It appears whole or not at all; an existing file is never touched
    // (a failure of kind Other). A journal that a file of this name has left behind is kept as "...-journal.apartado".
    Result<void> CreateEmpty();

    // Runs `work(session)` and gives what it gives. Nothing it opened may outlive it, and it must not wait for
    // anything.
    template <typename Work>
    auto Read(Work &&work)
    {
        return Operate(false, std::forward<Work>(work));
    }

    // The same in one transaction that is durable when the call returns: all of it or, on a failure, nothing.
    template <typename Work>
    auto Write(Work &&work)
    {
        return Operate(true, std::forward<Work>(work));
    }

    // Closes the file until the next operation.
    void Close();

    // The whole file checked by the engine; fails as Damaged with the engine's first finding.
    Result<void> CheckIntegrity();

private:
    friend class StoreCopy;
    template <typename Work>
    auto Operate(bool write, Work &&work) -> Result<std::invoke_result_t<Work, Session &>>
    {
        using Value = std::invoke_result_t<Work, Session &>;
        if constexpr (std::is_void_v<Value>) {
            return Run(write, [&work](Session &session) { work(session); });
        } else {
            std::optional<Value> value;
            const Result<void> outcome = Run(write, [&](Session &session) { value.emplace(work(session)); });
            if (!outcome)
                return outcome.failure();
            return std::move(*value);
        }
    }
    Result<void> Run(bool write, const std::function<void(Session &)> &work);
    void Open(bool write);
    Failure Remember(Failure failure);

    QString path_;
    QByteArray vfs_;
    std::shared_ptr<Session::Connection> connection_;
    std::optional<Failure> damage_; // found in the file that is open
};
