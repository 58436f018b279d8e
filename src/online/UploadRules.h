// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

// How the rows of the search window become requests to LdA and eQSL, and what the replies mean. A row is given by the
// texts of its list (sub-items 1 to 21, 0 is the running number).
namespace UploadRules {

struct Account {
    QString base; // of the service
    QString user, password;
};

// The band of a row by the whole megahertz of its frequency. A frequency that is none of the plan's keeps the band of
// the row before, so one object serves a whole run.
class UploadBand {
public:
    QString Of(const QStringList &row);
    // For LdA what came over the Internet ("DV IP", "Echo IP") is "2m", also for a row behind it that keeps the band.
    QString OfLda(const QStringList &row);

private:
    QString band_;
};

// The request to LdA for one row. Values go as they stand, but for the password.
QString LdaAddress(const Account &account, const QStringList &row, const QString &band, bool remarksAsQslMessage);

// The ADIF document of one row for eQSL, on one line: head, record, end. Lengths count characters.
QString EqslDocument(const QStringList &row, const QString &band, bool remarksAsQslMessage);
// The request that carries it.
QString EqslAddress(const Account &account, const QString &document);

// What a reply does. Several effects may come together.
struct Effects {
    bool red = false;
    bool stop = false; // no further row would fare better
    int ldaErrors = 0; // a reply may be two at once
    bool eqslError = false;
    bool ldaDuplicate = false, ldaLoaded = false, eqslDuplicate = false, eqslLoaded = false;

    bool operator==(const Effects &) const = default;
};
Effects Judge(const QString &reply);

// The address of the secure server for uploads depends on whether the configuration names an LdA server.
enum class SecureServer { First, Second };
inline SecureServer SecureServerFor(const QString &ldaServerBase)
{
    return ldaServerBase.isEmpty() ? SecureServer::First : SecureServer::Second;
}

} // namespace UploadRules
