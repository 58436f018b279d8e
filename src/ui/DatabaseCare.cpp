// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/DatabaseCare.h"

#include "core/Schema.h"
#include "ui/Dialogs.h"
#include "ui/Form1_Main.h"
#include "ui/Program.h"

#include <QFileInfo>

using Kind = Failure::Kind;

DatabaseCare::DatabaseCare(Program &program, Form1 &window)
    : program_(program)
    , window_(window)
    , copies_(program.logbook, program.scheduler, [this](const Failure &failure) {
        if (failure.kind == Kind::Damaged && OfferCopy(failure))
            window_.LoadLogPage(1);
        else if (failure.kind != Kind::Damaged)
            program_.dialogs.Message(
                &window_, u"La copia de seguridad no se pudo hacer. El log no corre peligro.\n\n"_qs + failure.text);
    })
{
}

bool DatabaseCare::Probe()
{
    Logbook &logbook = program_.logbook;
    if (!logbook.Store().Exists() && !HasConfig(logbook))
        return true;
    const Result<void> probed = ProbeSchema(logbook.Store());
    if (probed)
        return true;
    const Kind kind = probed.failure().kind;
    if (kind == Kind::Damaged || kind == Kind::Missing)
        return OfferCopy(probed.failure()) && bool(ProbeSchema(logbook.Store()));
    program_.dialogs.Message(&window_, probed.failure().text, Dialogs::Icon::Critical);
    return kind != Kind::Foreign && kind != Kind::OldSchema;
}

bool DatabaseCare::OfferCopy(const Failure &failure)
{
    const QString copy = SafetyCopies::NewestGood(program_.logbook);
    if (copy.isEmpty()) {
        program_.dialogs.Message(&window_, failure.text, Dialogs::Icon::Critical);
        return false;
    }
    const QString when = QFileInfo(copy).lastModified().toString(u"dd/MM/yyyy hh:mm");
    const QString question = failure.text + u"\n\nLa copia buena más nueva, del "_qs + when + u", es\n"_qs + copy
        + u"\n\nLa pone en su lugar? El archivo que hay ahora se conserva con otro nombre."_qs;
    if (!program_.dialogs.Ask(&window_, question, Dialogs::Icon::Critical, Dialogs::Button::No))
        return false;
    const Result<QString> aside = SafetyCopies::PutBack(program_.logbook, copy);
    if (!aside)
        program_.dialogs.Message(&window_, aside.failure().text, Dialogs::Icon::Critical);
    else if (QFileInfo::exists(*aside))
        program_.dialogs.Message(&window_, u"La copia está en su lugar. El archivo anterior quedó en\n"_qs + *aside,
            Dialogs::Icon::Information);
    return bool(aside);
}

void DatabaseCare::AfterFirstPage()
{
    // The counters are kept by triggers; a tool that switched those off is found out here.
    program_.scheduler.WhenIdle([this] {
        const Result<bool> corrected = RecountLogs(program_.logbook.Store());
        if (corrected && *corrected)
            window_.LoadLogPage(1);
        copies_.Begin();
    });
}
