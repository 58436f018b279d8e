// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/LookupCommands.h"

#include "core/Services.h"
#include "ui/Form1_Main.h"
#include "ui/Form33_LookupResult.h"
#include "ui/Program.h"
#include "ui/WhenFree.h"
#include "ui/Windows.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>

namespace {

// The account by which the program itself looks whether HamQTH answers, and the call it asks for.
const QString probeQuery = u"/xml.php?u=tordillo&p=48273615"_qs;
const QString probeCall = u"LU1AA"_qs;

const QString diagnosisName = u"Text4"_qs;

QString WithoutSlash(QString base)
{
    while (base.endsWith(u'/'))
        base.chop(1);
    return base;
}

} // namespace

LookupCommands::LookupCommands(Program &program, Window &window, From from)
    : QObject(&window)
    , program_(program)
    , window_(window)
    , from_(from)
    , search_(program.scheduler)
    , free_(new WhenFree(window))
{
    window.installEventFilter(this);
    if (from == From::Entry)
        BuildHidden();
    ConnectSearch();
}

LookupCommands::~LookupCommands() = default;

// What no operator reaches: the raw answers, and the look at HamQTH.
void LookupCommands::BuildHidden()
{
    auto *diagnosis = new QLabel(&window_);
    diagnosis->setObjectName(diagnosisName);
    diagnosis->setTextFormat(Qt::PlainText);
    diagnosis->hide();
    auto *probe = new QPushButton(u"Command12"_qs, &window_);
    probe->setObjectName(u"Command12"_qs);
    probe->setAccessibleName(probe->text());
    probe->hide();
    connect(probe, &QPushButton::clicked, this, &LookupCommands::Probe);
}

void LookupCommands::ConnectSearch()
{
    connect(&search_, &CallSearch::Activity, this, [this](LookupResult::Service service, const QString &text) {
        // The edit window's search of LdA goes on without a word.
        if (from_ == From::Entry || service == LookupResult::Service::Qrz)
            ShowActivity(text);
    });
    connect(&search_, &CallSearch::Raw, this, [this](const QString &text) {
        if (auto *diagnosis = program_.windows.Main().findChild<QLabel *>(diagnosisName))
            diagnosis->setText(text);
    });
    connect(&search_, &CallSearch::ServiceSays, this, [this](const QString &message) {
        End();
        free_->Show([this, message] { program_.dialogs.Message(&window_, message, Dialogs::Icon::Critical); });
    });
    connect(&search_, &CallSearch::NoConnection, this, [this](const QString &trouble) {
        End();
        free_->Show([this, trouble] {
            program_.dialogs.Message(&window_, NoConnectionText::lookup);
            if (!trouble.isEmpty())
                program_.dialogs.Message(&window_, trouble);
        });
    });
    connect(&search_, &CallSearch::Found, this, [this](const LookupResult &result) {
        End();
        free_->Show([this, result] { ShowResult(result); });
    });
}

void LookupCommands::Begin()
{
    free_->Clear();
    run_ = std::make_unique<Run>(program_.logbook.LongWork(), Pump());
    run_->WhenCancelled([this] {
        search_.Stop();
        End();
    });
}

void LookupCommands::End()
{
    program_.windows.Main().EndActivity(activity_);
    run_.reset();
}

void LookupCommands::ShowActivity(const QString &text)
{
    activity_ = text;
    program_.windows.Main().ShowActivity(text);
}

void LookupCommands::SearchQrz(const QString &call)
{
    const Configuration &configuration = program_.logbook.configuration;
    if (configuration.HAMQuser.isEmpty() || configuration.HAMQpass.isEmpty()) {
        program_.dialogs.Message(&window_, u"Sin configurar Usuario o Contraseña!"_qs);
        return;
    }
    Begin();
    const Service service = from_ == From::Entry ? Service::Qrz : Service::QrzPlain;
    search_.SearchQrz(
        {ServiceAddress(program_.logbook, service), configuration.HAMQuser, configuration.HAMQpass}, call);
}

void LookupCommands::SearchLda(const QString &call)
{
    Begin();
    const Logbook &logbook = program_.logbook;
    // The configuration of a first run has no server until it is read again.
    const QString configured = WithoutSlash(logbook.configuration.LDAQ_web);
    const Service service = from_ == From::Entry ? Service::LdaDefault : Service::Lda;
    search_.SearchLda(
        from_ == From::Entry && !configured.isEmpty() ? configured : ServiceAddress(logbook, service), call);
}

void LookupCommands::Probe()
{
    Begin();
    search_.Probe(ServiceAddress(program_.logbook, Service::HamQth) + probeQuery, probeCall);
}

void LookupCommands::ShowResult(const LookupResult &result)
{
    Form33 &form = program_.windows.LookupResult();
    if (from_ == From::Entry) {
        connect(&form, &Form33::RemarksChosen, this, &LookupCommands::RemarksChosen, Qt::UniqueConnection);
        connect(&form, &Form33::GridChosen, this, &LookupCommands::GridChosen, Qt::UniqueConnection);
    }
    form.ShowResult(window_, result, from_ == From::Entry);
}

bool LookupCommands::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Hide && from_ == From::EditWindow) {
        free_->Clear();
        if (run_)
            run_->Cancel();
    }
    return false;
}
