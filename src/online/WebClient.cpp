// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/WebClient.h"

#include "core/Logbook.h"
#include "online/WebText.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslError>
#include <QUrl>

namespace {

constexpr int mostRedirects = 5;

QNetworkRequest RequestOf(const QUrl &url)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    // What a service hands out for one request must not go with the next.
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setHeader(QNetworkRequest::UserAgentHeader, QString(u"Tordillo Compact "_qs + Logbook::AppVersion));
    return request;
}

// Qt's own texts repeat the address, and with it the password.
QString TroubleOf(QNetworkReply::NetworkError error, const QString &host)
{
    switch (error) {
    case QNetworkReply::HostNotFoundError:
        return u"No se encuentra el servidor %1."_qs.arg(host);
    case QNetworkReply::ConnectionRefusedError:
        return u"El servidor %1 no acepta la conexión."_qs.arg(host);
    case QNetworkReply::SslHandshakeFailedError:
        return u"No se pudo establecer una conexión segura con %1."_qs.arg(host);
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolInvalidOperationError:
        return u"La dirección del servidor no es válida."_qs;
    default:
        return u"La conexión con %1 se cortó."_qs.arg(host);
    }
}

QString CertificateTrouble(QSslError::SslError error)
{
    switch (error) {
    case QSslError::CertificateExpired:
    case QSslError::CertificateNotYetValid:
        return u"está vencido o todavía no vale"_qs;
    case QSslError::HostNameMismatch:
        return u"es de otro servidor"_qs;
    default:
        return u"nadie conocido lo respalda"_qs;
    }
}

// The same service, or the same service with encryption.
bool MayFollow(const QUrl &from, const QUrl &to)
{
    if (from.host().compare(to.host(), Qt::CaseInsensitive) != 0)
        return false;
    const bool samePlace = from.scheme() == to.scheme()
        && from.port(from.scheme() == u"https" ? 443 : 80) == to.port(to.scheme() == u"https" ? 443 : 80);
    return samePlace || (from.scheme() == u"http" && to.scheme() == u"https");
}

} // namespace

struct WebRequest::Work : QObject {
    QNetworkAccessManager &network;
    WebClient::Limits limits;
    WebClient::Done done;
    std::unique_ptr<Scheduler::Timer> timer;
    QNetworkReply *reply = nullptr;
    QByteArray content;
    QString certificate; // what is wrong with it
    int redirects = 0;

    Work(QNetworkAccessManager &manager, WebClient::Limits given, WebClient::Done callback)
        : network(manager)
        , limits(given)
        , done(std::move(callback))
    {
    }
    ~Work() override { Drop(); }

    void Drop()
    {
        if (!reply)
            return;
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
        reply = nullptr;
    }
    void Ask(const QUrl &url)
    {
        content.clear();
        reply = network.get(RequestOf(url));
        connect(reply, &QNetworkReply::readyRead, this, &Work::Read);
        connect(reply, &QNetworkReply::finished, this, &Work::Finished);
        connect(reply, &QNetworkReply::sslErrors, this, [this](const QList<QSslError> &errors) {
            certificate = u"El certificado del servidor %1 no es de confianza (%2): no se le envió nada."_qs.arg(
                reply->url().host(), errors.isEmpty() ? QString() : CertificateTrouble(errors.first().error()));
        });
    }
    // False when that was too much: the request is over then, and may be gone.
    bool Read()
    {
        content += reply->read(limits.bytes + 1 - content.size());
        if (content.size() <= limits.bytes)
            return true;
        Reject(u"La respuesta de %1 es demasiado larga."_qs.arg(reply->url().host()));
        return false;
    }
    void Finished()
    {
        if (!Read())
            return;
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const QVariant target = reply->attribute(QNetworkRequest::RedirectionTargetAttribute);
        if (target.isValid())
            return Redirect(target.toUrl());
        const QNetworkReply::NetworkError error = reply->error();
        // An error with a status is a page that the server sent; with one of the lower numbers the connection broke.
        const bool isPage = error >= QNetworkReply::ContentAccessDenied && (status < 200 || status >= 300);
        if (status == 0 || (error != QNetworkReply::NoError && !isPage))
            return certificate.isEmpty() ? Fail(TroubleOf(error, reply->url().host()), error) : Reject(certificate);
        WebReply answer;
        answer.outcome = WebReply::Outcome::Answered;
        answer.status = status;
        answer.text = WebText::Decode(content, reply->rawHeader("Content-Type"));
        Finish(answer);
    }
    void Redirect(const QUrl &target)
    {
        const QUrl from = reply->url(), to = from.resolved(target);
        if (!MayFollow(from, to) || ++redirects > mostRedirects)
            return Reject(u"El servidor %1 envió el pedido a otro lugar (%2), adonde no se siguió."_qs.arg(
                from.host(), to.host()));
        Drop();
        Ask(to);
    }
    void Fail(const QString &trouble, int number)
    {
        WebReply answer;
        answer.trouble = trouble;
        answer.errorNumber = number;
        Finish(answer);
    }
    void Reject(const QString &trouble)
    {
        WebReply answer;
        answer.trouble = trouble;
        answer.rejected = true;
        Finish(answer);
    }
    // The last thing that happens here: the callback may destroy the request.
    void Finish(const WebReply &answer)
    {
        Drop();
        timer.reset();
        const auto callback = std::exchange(done, {});
        callback(answer);
    }
};

WebRequest::WebRequest() = default;
WebRequest::~WebRequest() = default;

WebClient::WebClient(Scheduler &scheduler)
    : scheduler_(scheduler)
{
}

WebClient::~WebClient() = default;

std::unique_ptr<WebRequest> WebClient::Get(const QString &address, Limits limits, Done done)
{
    if (!network_)
        network_ = std::make_unique<QNetworkAccessManager>();
    auto request = std::make_unique<WebRequest>();
    request->work_ = std::make_unique<WebRequest::Work>(*network_, limits, std::move(done));
    WebRequest::Work *work = request->work_.get();
    work->timer = scheduler_.Make(limits.milliseconds, [work] {
        WebReply answer;
        answer.outcome = WebReply::Outcome::TimedOut;
        work->Finish(answer);
    });
    work->timer->Start();
    work->Ask(QUrl::fromEncoded(WebText::AddressBytes(address)));
    return request;
}

PolledRequest::PolledRequest(
    WebClient &client, Scheduler &scheduler, const QString &address, Tick tick, WebClient::Done done)
    : tick_(std::move(tick))
    , done_(std::move(done))
{
    // The seconds are counted here; the client's own limit stands behind them.
    timer_ = scheduler.Make(1000, [this] {
        ++WebWaitTicks_;
        if (tick_)
            tick_(WebWaitTicks_);
        if (WebWaitTicks_ < mostTicks)
            return;
        WebReply late;
        late.outcome = WebReply::Outcome::TimedOut;
        Finish(late);
    });
    timer_->Start();
    request_ = client.Get(address, [this](const WebReply &reply) { Finish(reply); });
}

PolledRequest::~PolledRequest() = default;

void PolledRequest::Finish(const WebReply &reply)
{
    timer_->Stop();
    request_.reset();
    const auto callback = std::exchange(done_, {});
    callback(reply);
}
