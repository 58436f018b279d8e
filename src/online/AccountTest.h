// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/WebClient.h"

#include <QString>

// The test of an LdA account: whether its user, password and call belong together.
namespace AccountTest {

struct Account {
    QString base; // of the LdA server
    QString user, password, call;
};

QString Address(const Account &account);
// What is shown while nobody has answered yet. Without the password.
QString Asking(const Account &account);
// What is shown in the end: the reply's own words, or that there is no connection.
struct Verdict {
    QString text;
    bool noConnection = false;
};
Verdict Judge(const Account &account, const WebReply &reply);

} // namespace AccountTest
