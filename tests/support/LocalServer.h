// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QSslConfiguration>
#include <QString>
#include <functional>
#include <memory>

class QTcpServer;
class QTcpSocket;

// A web server of our own, on this machine only, that plays the services. What it answers is scripted by the test, bad
// manners included. It lives on the event loop of the thread that it is made on.
class LocalServer {
public:
    struct Request {
        QByteArray target; // path and query as they came over the line
        QByteArray head;
        QString Path() const;
        // A parameter of the query as a service reads it, "&" or ";" between parameters; "(missing)" where there is
        // none.
        QString Value(const QString &key) const;
    };
    struct Answer {
        QByteArray body;
        int status = 200;
        QByteArray type = "text/html; charset=utf-8";
        QByteArray moreHeaders; // each ended by CR LF
        enum class Manner {
            Good,
            Silent, // nothing, and the line stays open
            Hangup, // the line is closed before a word
            HalfAnswer, // closed in the middle of the body
            Endless, // more and more of the body
        } manner = Manner::Good;

        Answer(QByteArray text = {})
            : body(std::move(text))
        {
        }
        Answer(const char *text)
            : body(text)
        {
        }
        Answer(QByteArray text, int code)
            : body(std::move(text))
            , status(code)
        {
        }
        Answer(Manner how)
            : manner(how)
        {
        }
    };
    using Manner = Answer::Manner;

    enum class Scheme { Http, Https };
    explicit LocalServer(Scheme scheme = Scheme::Http);
    ~LocalServer();

    // "http://127.0.0.1:port"
    QString Base() const;
    int Port() const;

    // What is answered to a request; without it everything is answered with an empty page.
    std::function<Answer(const Request &)> answer;
    // All answers are this from now on.
    void Always(const Answer &given);
    // These in turn, the last one again and again.
    void InTurn(const QList<Answer> &given);
    QList<Request> requests; // so far

    // Believes the certificate of the Https server while it lives; without it nobody knows who signed it.
    class Trust {
    public:
        Trust();
        ~Trust();

    private:
        QSslConfiguration before_;
    };

private:
    void Serve(QTcpSocket *socket);
    void Read(QTcpSocket *socket);
    void Send(QTcpSocket *socket, const Answer &given);

    std::unique_ptr<QTcpServer> server_;
    Scheme scheme_;
};
