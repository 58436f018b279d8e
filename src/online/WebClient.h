// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Scheduler.h"

#include <QString>
#include <functional>
#include <memory>

class QNetworkAccessManager;

// What came back of one request.
struct WebReply {
    enum class Outcome {
        Answered, // a page, whatever its status: error pages are pages too
        NoConnection, // refused, not found, broken off, or an answer that must not be used; `trouble` says which
        TimedOut,
    };
    Outcome outcome = Outcome::NoConnection;
    int status = 0; // of HTTP
    QString text; // as it was sent, tags and all
    QString trouble; // of NoConnection, in Spanish, for people; never holds the address
    int errorNumber = 0;
    bool rejected = false; // somebody answered, but not as it must be: certificate, redirect, length

    bool Answered() const { return outcome == Outcome::Answered; }
    // A page that the service meant to send, and whose words may be believed.
    bool IsGood() const { return Answered() && status >= 200 && status < 300; }
    // The trouble where "no connection" would not tell the operator what to do about it, else nothing.
    QString Cause() const { return rejected ? trouble : QString(); }
};

// One request under way. While it lives its reply comes to its own callback, once; with it everything of the request
// is gone. It may be destroyed in that callback.
class WebRequest {
public:
    WebRequest();
    ~WebRequest();
    WebRequest(const WebRequest &) = delete;
    WebRequest &operator=(const WebRequest &) = delete;

private:
    friend class WebClient;
    struct Work;
    std::unique_ptr<Work> work_;
};

// Asks for pages, one client for each thing that asks, so that they do not disturb each other. Nothing waits: replies
// come from the event loop of the thread. TLS certificates are verified. A redirect within the same host is followed,
// one that leads elsewhere (or from encryption to none) is refused, since the address carries the account. No cookies,
// no cache.
class WebClient {
public:
    explicit WebClient(Scheduler &scheduler);
    ~WebClient();

    // A longer answer is broken off and not used.
    static constexpr qint64 longestReply = 1 << 20;
    struct Limits {
        int milliseconds = 60000; // from the request to the end of the answer
        qint64 bytes = longestReply;
    };
    using Done = std::function<void(const WebReply &)>;

    // `address` with its values in it, as people read it (see WebText). The request must not outlive the client.
    [[nodiscard]] std::unique_ptr<WebRequest> Get(const QString &address, Limits limits, Done done);
    [[nodiscard]] std::unique_ptr<WebRequest> Get(const QString &address, Done done)
    {
        return Get(address, Limits(), std::move(done));
    }

private:
    Scheduler &scheduler_;
    std::unique_ptr<QNetworkAccessManager> network_; // made at the first request: the start of the program needs none
};

// A request of the kind that is waited for with a count of seconds: it fails when the fifteenth has passed.
class PolledRequest {
public:
    static constexpr int mostTicks = 15;
    using Tick = std::function<void(int ticks)>;

    PolledRequest(WebClient &client, Scheduler &scheduler, const QString &address, Tick tick, WebClient::Done done);
    ~PolledRequest();

private:
    void Finish(const WebReply &reply);

    Tick tick_;
    WebClient::Done done_;
    int WebWaitTicks_ = 0;
    std::unique_ptr<Scheduler::Timer> timer_;
    std::unique_ptr<WebRequest> request_;
};

// What people read when nobody answers: what waits with a count of seconds says it in one way, the rest in the other.
namespace NoConnectionText {
inline const QString polled = u"No parace haber conexión con internet!"_qs;
inline const QString lookup = u"No parece haber conexión de internet!"_qs;
} // namespace NoConnectionText
