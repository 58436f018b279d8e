// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>
#include <optional>

// A member of the LdA service.
struct LdaMember {
    QString call, name, lastDate;

    // As the list of members shows it.
    QString Line() const { return call + u' ' + name + u'>' + lastDate; }
};

// The one member that a reply tells: "<call> nomo:<name> ultimar:<date>". Nothing for any other text, an error page of
// the service among them. Behind "nomo:" at most 2000 characters are looked at. Line ends become blanks.
std::optional<LdaMember> ReadLdaMember(QStringView reply);
