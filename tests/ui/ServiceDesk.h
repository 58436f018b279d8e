// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Desk.h"
#include "support/LocalServer.h"

#include <QTest>

// A desk whose program talks to a web server of the test's own, with an account at every service. The password holds
// all that an address could spoil.
class ServiceDesk : public Desk {
public:
    static inline const QString password = u"a&b%c+d#ñ"_qs;

    explicit ServiceDesk(int qsos = 0)
    {
        Furnish(qsos);
        PointTo(server.Base());
        Configure(u"UserLdA_="_qs, u"yo@x"_qs);
        Configure(u"PassLdA_="_qs, password);
        for (const QString &service : {u"HAMQ"_qs, u"LDAQ"_qs, u"eQSL"_qs}) {
            Configure(service + u"user=", u"yo@x"_qs);
            Configure(service + u"pass=", ScrambleText(password, passwordKey, 0));
        }
    }

    void PointTo(const QString &base) const
    {
        QByteArray lines = "[servicios]\r\n";
        for (const char *key :
            {"lda", "lda_segura_1", "lda_segura_2", "lda_predeterminada", "qrz", "qrz_plano", "hamqth", "eqsl", "web"})
            lines += QByteArray(key) + '=' + base.toLatin1() + "/" + key + "\r\n";
        Write(u"servicios.ini"_qs, lines);
    }

    // Lets the network run, and so much of the program's time pass at each look, until `condition` holds.
    bool Until(const std::function<bool()> &condition, int milliseconds = 0)
    {
        return QTest::qWaitFor(
            [&] {
                Advance(milliseconds);
                return condition();
            },
            10000);
    }
    // Until something was told.
    QStringList NextTold(int milliseconds = 0)
    {
        Until([this] { return !dialogs.shown.isEmpty(); }, milliseconds);
        return Told();
    }
    // The paths that were asked for since the last call, the name of the service first.
    QStringList Asked()
    {
        QStringList paths;
        for (const LocalServer::Request &request : std::exchange(server.requests, {}))
            paths << request.Path();
        return paths;
    }

    LocalServer server;
};
