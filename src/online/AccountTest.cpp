// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/AccountTest.h"

#include "online/WebText.h"

QString AccountTest::Address(const Account &account)
{
    return account.base + u"/php/tordillo_c2.php?user=" + account.user + u"&pass="
        + WebText::PercentEncode(account.password) + u"&micall=" + account.call;
}

QString AccountTest::Asking(const Account &account)
{
    return u"user="_qs + account.user + u"\nmicall=" + account.call + u'\n';
}

AccountTest::Verdict AccountTest::Judge(const Account &account, const WebReply &reply)
{
    if (reply.Answered())
        return {WebText::WithoutSecret(WebText::PageText(reply.text), account.password), false};
    return {QString(NoConnectionText::polled + u'\n' + reply.Cause()).trimmed(), true};
}
