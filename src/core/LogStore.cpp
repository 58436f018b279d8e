// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/LogStore.h"

#include "core/PlatformFile.h"
#include "core/QsoRow.h"
#include "core/Schema.h"
#include "core/StoreConnection.h"
#include "core/StoreFailure.h"

#include <QFile>
#include <QFileInfo>
#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>
#include <unordered_map>

struct Query::Loan {
    Session::Connection *connection;
    std::string sql;
    std::unique_ptr<SQLite::Statement> statement;
};

Query::Query(std::unique_ptr<Loan> loan)
    : loan_(std::move(loan))
{
}

Query::Query(Query &&other) noexcept = default;

Query::~Query()
{
    if (!loan_)
        return;
    loan_->statement->tryReset();
    loan_->connection->idle.try_emplace(std::move(loan_->sql), std::move(loan_->statement));
}

Query &Query::Bind(int parameter, QStringView text)
{
    const QByteArray utf8 = text.toUtf8();
    loan_->statement->bind(parameter, std::string(utf8.constData(), static_cast<size_t>(utf8.size())));
    return *this;
}

Query &Query::Bind(int parameter, qint64 number)
{
    loan_->statement->bind(parameter, static_cast<int64_t>(number));
    return *this;
}

bool Query::Next() { return loan_->statement->executeStep(); }

void Query::Execute()
{
    while (loan_->statement->executeStep()) { }
}

void Query::Reset() { loan_->statement->reset(); }

QString Query::Text(int column) const
{
    const SQLite::Column value = loan_->statement->getColumn(column);
    const char *text = value.getText("");
    return QString::fromUtf8(text, value.getBytes());
}

qint64 Query::Number(int column) const { return loan_->statement->getColumn(column).getInt64(); }

QsoRow Query::Row() const
{
    QsoRow row;
    row.id = Number(0);
    for (int i = 0; i < QsoColumns::count; ++i)
        row.*QsoColumns::all[i].field = Text(i + 1);
    return row;
}

Query Session::Prepare(const QString &sql)
{
    auto loan = std::make_unique<Query::Loan>();
    loan->connection = &connection_;
    loan->sql = sql.toStdString();
    const auto idle = connection_.idle.find(loan->sql);
    if (idle != connection_.idle.end()) {
        loan->statement = std::move(idle->second);
        connection_.idle.erase(idle);
    } else {
        loan->statement = std::make_unique<SQLite::Statement>(connection_.database, loan->sql);
    }
    return Query(std::move(loan));
}

void Session::Execute(const QString &sql) { connection_.database.exec(sql.toStdString()); }

qint64 Session::LastId() const { return connection_.database.getLastInsertRowid(); }

int Session::Changes() const { return connection_.database.getChanges(); }

namespace {

// The journal of a database that is gone would be played into the new one. False when it cannot be moved.
bool SetOldJournalAside(const QString &path)
{
    const QString journal = path + u"-journal"_qs, aside = journal + u".apartado"_qs;
    if (!QFile::exists(journal))
        return true;
    QFile::remove(aside);
    return QFile::rename(journal, aside);
}

} // namespace

LogStore::LogStore(QString path, QByteArray vfs)
    : path_(std::move(path))
    , vfs_(std::move(vfs))
{
}

LogStore::~LogStore() = default;

bool LogStore::Exists() const { return QFileInfo::exists(path_); }

void LogStore::Close()
{
    connection_.reset();
    damage_.reset();
}

Failure LogStore::Remember(Failure failure)
{
    if (failure.kind == Failure::Kind::Damaged && connection_)
        damage_ = failure;
    return failure;
}

void LogStore::Open(bool write)
{
    if (connection_ && !connection_->Moved() && !(write && connection_->ReadOnly())) {
        if (write && damage_)
            throw StoreError{*damage_};
        return;
    }
    Close();
    QFile file(path_);
    if (!file.exists())
        throw StoreError{MissingFileFailure(path_)};
    if (!file.open(QIODevice::ReadOnly))
        throw StoreError{StoreFailure(SQLITE_CANTOPEN, path_, file.errorString())};
    const QByteArray head = file.read(32);
    file.close();
    if (!ForeignFile::IsDatabaseHead(head))
        throw StoreError{ForeignFile::Describe(path_, head)};
    auto connection = std::make_shared<Session::Connection>(path_, vfs_);
    // A file that is copied by hand must be whole in itself, so another tool's write-ahead log is taken back.
    SQLite::Statement mode(connection->database, "PRAGMA journal_mode=DELETE");
    mode.executeStep();
    mode.reset();
    if (!connection->database.tableExists("Tabla1"))
        throw StoreError{ForeignFile::Describe(path_, "?")};
    connection_ = std::move(connection);
}

Result<void> LogStore::Run(bool write, const std::function<void(Session &)> &work)
{
    try {
        Open(write);
        Session session(*connection_);
        // Reading in a transaction too: one lock for all statements instead of one for each, and the same state for
        // all.
        SQLite::Transaction transaction(connection_->database,
            write ? SQLite::TransactionBehavior::IMMEDIATE : SQLite::TransactionBehavior::DEFERRED);
        work(session);
        transaction.commit();
        return {};
    } catch (const StoreError &error) {
        return Remember(error.failure);
    } catch (const SQLite::Exception &error) {
        return Remember(StoreFailure(error.getErrorCode(), path_, QString::fromUtf8(error.what())));
    }
}

Result<void> LogStore::CreateEmpty()
{
    if (Exists())
        return Failure{u"La base de datos\n%1\nya existe."_qs.arg(path_), Failure::Kind::Other};
    const QString making = path_ + u".nueva"_qs;
    QFile::remove(making);
    QFile::remove(making + u"-journal"_qs);
    try {
        SQLite::Database database(
            making.toUtf8().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, 0, vfs_.toStdString());
        database.exec("PRAGMA synchronous=EXTRA");
        SQLite::Transaction transaction(database);
        for (const QString &statement : Schema::CreateStatements())
            database.exec(statement.toStdString());
        transaction.commit();
    } catch (const SQLite::Exception &error) {
        QFile::remove(making);
        return StoreFailure(error.getErrorCode(), path_, QString::fromUtf8(error.what()));
    }
    if (!SetOldJournalAside(path_) || !QFile::rename(making, path_)) {
        QFile::remove(making);
        return StoreFailure(SQLITE_CANTOPEN, path_, {});
    }
    PlatformFile::SyncFolder(QFileInfo(path_).absolutePath());
    return {};
}

Result<void> LogStore::CheckIntegrity()
{
    return Read([this](Session &session) {
        Query check = session.Prepare(u"PRAGMA integrity_check(1)"_qs);
        const QString finding = check.Next() ? check.Text(0) : QString();
        if (finding != u"ok")
            throw StoreError{StoreFailure(SQLITE_CORRUPT, path_, finding)};
    });
}
