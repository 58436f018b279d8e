// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/WebClient.h"

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

// What a service knows of a station, ready for the window.
struct LookupResult {
    enum class Service { Qrz, Lda };
    Service service = Service::Qrz;
    QString title; // of the window
    QString text; // a line for each thing known, or one that says that the call is not there
    QString name, email, grid; // of LdA only
};

namespace CallLookup {

// The text between the first "<tag>" and the next "</tag>", entities decoded; empty where either is missing. Case
// counts.
QString TagValue(const QString &text, const QString &tag);

// The addresses, behind the base of the service. The password is encoded here.
QString QrzLoginAddress(const QString &base, const QString &user, const QString &password);
QString QrzQueryAddress(const QString &base, const QString &key, const QString &call);
QString LdaQueryAddress(const QString &base, const QString &call);

LookupResult ReadQrzAnswer(const QString &call, const QString &xml);
// An answer that is no XML, an error page for one, gives an empty text.
LookupResult ReadLdaAnswer(const QString &call, const QString &xml);

} // namespace CallLookup

// One search of a call after the other: starting one ends the one before. All that happens is told by signals, from the
// event loop.
class CallSearch : public QObject {
    Q_OBJECT

public:
    explicit CallSearch(Scheduler &scheduler, QObject *parent = nullptr);
    ~CallSearch() override;

    struct QrzAccount {
        QString base, user, password;
    };
    // Logs in and asks, with a key that serves this once.
    void SearchQrz(const QrzAccount &account, const QString &call);
    // The answer is let settle for a second.
    void SearchLda(const QString &base, const QString &call);
    // Asks for a login whose answer holds no key, so that it shows whether the service answers at all.
    void Probe(const QString &loginAddress, const QString &call);
    // No signal comes after this.
    void Stop();
    bool IsRunning() const { return request_ != nullptr || Timer8_->IsRunning(); }

Q_SIGNALS:
    // What is going on.
    void Activity(LookupResult::Service service, const QString &text);
    // The last raw answer or key, for diagnosis. Holds no account.
    void Raw(const QString &text);
    // The search has ended: with a message of the service, or because nobody answered (then with the cause, where one
    // is known that the operator can do something about).
    void ServiceSays(const QString &message);
    void NoConnection(const QString &trouble);
    void Found(const LookupResult &result);

private:
    void Login(const QString &address);
    void LoggedIn(const WebReply &reply);
    void Failed(const WebReply &reply);

    QString SearchedCall_;
    QrzAccount account_;
    std::function<LookupResult()> settled_;
    WebClient client_;
    std::unique_ptr<Scheduler::Timer> Timer8_; // lets an answer of LdA settle
    std::unique_ptr<WebRequest> request_;
};
