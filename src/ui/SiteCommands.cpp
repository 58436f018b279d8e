// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/SiteCommands.h"

#include "contest/MasterUpdate.h"
#include "core/Services.h"
#include "online/SiteCalls.h"
#include "ui/Form18_Closing.h"
#include "ui/Form1_Main.h"
#include "ui/MainMenu.h"
#include "ui/Program.h"
#include "ui/WhenFree.h"
#include "ui/Windows.h"

#include <QAction>
#include <QPushButton>

using namespace SiteCalls;

namespace {

const QString fetching = u"Acualización MasterCheck ..."_qs;

} // namespace

SiteCommands::SiteCommands(Program &program, Form1 &window, MainMenu &menu)
    : QObject(&window)
    , program_(program)
    , window_(window)
    , menu_(menu)
    , versions_(program.scheduler)
    , presence_(program.scheduler)
    , lists_(program.scheduler)
    , free_(new WhenFree(window))
{
    menu.On("ac", this, [this] { CheckVersion(Check::Manual); });
    menu.On("amc", this, &SiteCommands::MasterCheckUpdate);
    Timer4_ = program.scheduler.Make(5000, [this] {
        Timer4_->Stop();
        CheckVersion(Check::Automatic);
    });
    Timer5_ = program.scheduler.Make(5000, [this] {
        Timer5_->Stop();
        PresenceOn();
    });
    Timer6_ = program.scheduler.Make(200, [this] { ClosingStep(); });
    masterTimer4_ = program.scheduler.Make(5000, [this] {
        masterTimer4_->Stop();
        OfferMasterList();
    });
    auto *closing = new QPushButton(u"Command10"_qs, &window);
    closing->setObjectName(u"Command10"_qs);
    closing->setAccessibleName(closing->text());
    closing->hide();
    connect(closing, &QPushButton::clicked, this, &SiteCommands::StartClosing);
}

SiteCommands::~SiteCommands() = default;

void SiteCommands::Tell(const QString &text, Dialogs::Icon icon)
{
    free_->Show([this, text, icon] { program_.dialogs.Message(&window_, text, icon); });
}

void SiteCommands::CheckVersion(Check check)
{
    const QString address = VersionAddress(ServiceAddress(program_.logbook, Service::Web));
    const bool asked = check == Check::Manual;
    version_ = versions_.Get(address, {versionMilliseconds, longestVersionFile}, [this, asked](const WebReply &reply) {
        version_.reset();
        if (!reply.Answered()) {
            if (asked)
                Tell(TransportError(reply), Dialogs::Icon::Critical);
            return;
        }
        // The page that stands for a missing file is no version, whatever numbers it holds.
        const auto verdict =
            reply.IsGood() ? CompareVersion(Logbook::AppVersion, reply.text) : std::optional<VersionVerdict>();
        if (verdict && (asked || verdict->outdated))
            Tell(verdict->message);
    });
}

void SiteCommands::Send(const QString &address)
{
    word_ = presence_.Get(address, [this](const WebReply &) { word_.reset(); });
}

void SiteCommands::PresenceOn()
{
    const QString station = program_.logbook.configuration.Estacion;
    if (station.isEmpty())
        return;
    Send(PresenceAddress(ServiceAddress(program_.logbook, Service::Web), station, Presence::On));
    window_.setWindowTitle(u"Tordillo Compact V"_qs + Logbook::AppVersion + u'*');
}

void SiteCommands::StartClosing()
{
    Send(ServiceAddress(program_.logbook, Service::Web));
    closingSteps_ = 0;
    Timer6_->Start();
}

void SiteCommands::ClosingStep()
{
    program_.windows.Closing().ShowStep(++closingSteps_);
    if (closingSteps_ < Form18::steps)
        return;
    Timer6_->Stop();
    const QString station = program_.logbook.configuration.Estacion;
    if (!station.isEmpty())
        Send(PresenceAddress(ServiceAddress(program_.logbook, Service::Web), station, Presence::Off));
    program_.windows.Closing().hide();
    window_.AllowClosing();
}

void SiteCommands::MasterCheckUpdate()
{
    FetchMasterList([this](const QString &text) { TakeMasterList(text); });
}

void SiteCommands::OfferMasterList()
{
    FetchMasterList([this](const QString &text) {
        const QString offer = MasterUpdateOffer(program_.master.Date(), text);
        if (offer.isEmpty())
            return;
        free_->Show([this, offer] {
            if (program_.dialogs.Ask(&window_, offer))
                MasterCheckUpdate();
        });
    });
}

// `use` gets the text, an empty one where there is none.
void SiteCommands::FetchMasterList(std::function<void(const QString &text)> use)
{
    const auto ended = [this] {
        window_.EndActivity(fetching);
        menu_.Entry("amc")->setEnabled(true);
        listRun_.reset();
    };
    window_.ShowActivity(fetching);
    menu_.Entry("amc")->setEnabled(false);
    listRun_ = std::make_unique<Run>(program_.logbook.LongWork(), Pump());
    listRun_->WhenCancelled([this, ended] {
        list_.reset();
        ended();
    });
    WebClient::Limits limits;
    limits.bytes = longestMasterList;
    list_ = lists_.Get(MasterListAddress(ServiceAddress(program_.logbook, Service::Web)), limits,
        [this, ended, use = std::move(use)](const WebReply &reply) {
            list_.reset();
            ended();
            use(reply.IsGood() ? reply.text : QString());
            if (!reply.Cause().isEmpty())
                Tell(reply.Cause());
        });
}

void SiteCommands::TakeMasterList(const QString &text)
{
    Logbook &logbook = program_.logbook;
    const auto update = ::TakeMasterList(logbook.Files(), logbook.Folder(), program_.master.Date(), text);
    if (!update) {
        Tell(update.failure().text, Dialogs::Icon::Critical);
        return;
    }
    switch (update->kind) {
    case MasterUpdate::Kind::NoList:
        Tell(NoConnectionText::lookup);
        break;
    case MasterUpdate::Kind::UpToDate:
        Tell(update->message);
        break;
    case MasterUpdate::Kind::Replaced:
        program_.master = LoadMasterFile(logbook.Files(), logbook.PathOf(u"master.txt"_qs));
        Tell(update->message, Dialogs::Icon::Information);
        break;
    }
}
