// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/SyncSelection.h"
#include "online/WebClient.h"

#include <functional>
#include <memory>
#include <optional>

namespace SyncRules {

struct Account {
    QString base; // of the fixed LdA server
    QString user, password;
};

// The request for one contact. Only the password is encoded.
QString Address(const Account &account, const SyncQso &qso);

// What the reply for one contact means.
struct Judgement {
    enum class Kind { Error, Checked, Confirmed, Uploaded, NotUnderstood };
    Kind kind = Kind::NotUnderstood;
    QString line; // for the list, without the running number
    QString newState; // of the column LdA; empty: it stays as it is
};
// `reply` is what a reader sees of the page. With `believed` false (an error status) it changes no state.
Judgement Judge(const QString &reply, bool believed, const SyncQso &qso);

} // namespace SyncRules

// One run over selected contacts: each is asked about, one after the other, and its new state is on the disk before the
// next goes out. Works from the event loop; destroying it stops it.
class SyncLda {
public:
    struct Counts {
        qsizetype total = 0, done = 0;
        qsizetype checked = 0, uploaded = 0, confirmed = 0, errors = 0, notUnderstood = 0;
        qsizetype unanswered = 0; // sent when the run broke off: whether it arrived is not known
        qsizetype notStored = 0; // states that the database would not take
        // States that are in the log now.
        qsizetype Standing() const { return checked + uploaded + confirmed - notStored; }
    };
    enum class End { Complete, NoConnection, Cancelled };

    struct Listener {
        std::function<void(SyncRules::Judgement::Kind kind, const QString &line, const Counts &counts)> listed;
        std::function<void(const Failure &failure)> storeFailed; // at the first one only
        std::function<void(End end, const Counts &counts, const QString &cause)> ended; // may destroy the run
    };

    SyncLda(Scheduler &scheduler, LogStore &store, SyncRules::Account account, QList<SyncQso> qsos, Listener listener);
    ~SyncLda();

    void Start();
    // Ends the run at once; the contact that is being asked about keeps its state.
    void Cancel();

private:
    void SendNext();
    void Answered(const WebReply &reply);
    void Store(const SyncQso &qso, const QString &state);
    void Finish(End end, const QString &cause = {});

    Scheduler &scheduler_;
    LogStore &store_;
    SyncRules::Account account_;
    QList<SyncQso> qsos_;
    Listener listener_;
    Counts counts_;
    WebClient client_;
    std::unique_ptr<Scheduler::Timer> Timer10_; // the pace between requests
    std::unique_ptr<PolledRequest> request_;
    bool running_ = false;
};

// What is told in a box of its own when a run did not do all it set out to do; empty when it did.
QString SyncRemainder(const SyncLda::Counts &counts);
