// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/WebClient.h"

#include <QString>
#include <optional>

// What the program asks of its own web site: the newest version, a word that a station is on, the list of contest
// calls.
namespace SiteCalls {

QString VersionAddress(const QString &base);
constexpr int versionMilliseconds = 3000;
constexpr qint64 longestVersionFile = 64 << 10;
// Why no version came, with the number of the trouble.
QString TransportError(const WebReply &reply);

// The outcome of comparing with the published version, from the text of its file: its first line counts.
struct VersionVerdict {
    bool outdated = false;
    QString message;
};
// Nothing where the text is no version of three numbers. The three are compared each by itself, which is no order of
// versions: 3.0.0 is outdated against 2.9.9.
std::optional<VersionVerdict> CompareVersion(const QString &own, const QString &published);

enum class Presence { On, Off };
QString PresenceAddress(const QString &base, const QString &station, Presence presence);

QString MasterListAddress(const QString &base);
constexpr qint64 longestMasterList = 16 << 20;

} // namespace SiteCalls
