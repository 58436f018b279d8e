// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/DatabaseCare.h"

#include "core/Schema.h"
#include "ui/Dialogs.h"
#include "ui/Form1_Main.h"
#include "ui/Program.h"

#include <QFileInfo>

using Kind = Failure::Kind;

namespace {

constexpr int auditPause = 15; // milliseconds

} // namespace

DatabaseCare::DatabaseCare(Program &program, Form1 &window)
    : program_(program)
    , window_(window)
    , copies_(program.logbook, program.scheduler, [this](const Failure &failure) { CopyFailed(failure); })
    , auditTimer_(program.scheduler.Make(auditPause, [this] { AuditStep(); }))
{
}

void DatabaseCare::CopyFailed(const Failure &failure)
{
    const QString database = program_.logbook.PathOf(u"base0.mdb"_qs);
    if (failure.kind == Kind::Damaged)
        PageFailed(
            {u"La base de datos\n%1\nestá dañada: una copia que se hizo de ella no pasó la revisión."_qs.arg(database),
                Kind::Damaged});
    else
        program_.dialogs.Message(
            &window_, u"La copia de seguridad no se pudo hacer. El log no corre peligro.\n\n"_qs + failure.text);
}

void DatabaseCare::PageFailed(const Failure &failure)
{
    if (failure.kind != Kind::Damaged || offered_) {
        program_.dialogs.Message(&window_, failure.text, Dialogs::Icon::Critical);
        return;
    }
    offered_ = true; // one question a run: a No is a No
    if (OfferCopy(failure) && ProbeSchema(program_.logbook.Store()))
        window_.LoadLogPage(1);
}

bool DatabaseCare::Probe()
{
    Logbook &logbook = program_.logbook;
    SafetyCopies::RemoveUnfinished(logbook);
    if (!logbook.Store().Exists() && !HasConfig(logbook))
        return true;
    const Result<void> probed = ProbeSchema(logbook.Store());
    if (probed)
        return true;
    const Kind kind = probed.failure().kind;
    if (kind == Kind::Damaged || kind == Kind::Missing || kind == Kind::Foreign)
        return OfferCopy(probed.failure()) && bool(ProbeSchema(logbook.Store()));
    program_.dialogs.Message(&window_, probed.failure().text, Dialogs::Icon::Critical);
    return kind != Kind::OldSchema;
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
    audit_ = std::make_unique<CounterAudit>(program_.logbook.Store());
    auditTimer_->Start();
}

// The counters are kept by triggers; a tool that switched those off is found out here.
void DatabaseCare::AuditStep()
{
    const Result<CounterAudit::Finding> finding = audit_->Step();
    if (finding && *finding == CounterAudit::Finding::Working)
        return;
    auditTimer_->Stop();
    audit_.reset();
    if (finding && *finding == CounterAudit::Finding::Wrong) {
        const Result<bool> corrected = RecountLogs(program_.logbook.Store());
        if (corrected && *corrected)
            window_.ReloadPage();
    }
    copies_.Begin();
}
