// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/LdaCommands.h"

#include "core/Services.h"
#include "online/SyncLda.h"
#include "ui/Dialogs.h"
#include "ui/Form13_Analysis.h"
#include "ui/Form1_Main.h"
#include "ui/MainMenu.h"
#include "ui/Program.h"
#include "ui/Windows.h"

#include <QAction>

LdaCommands::LdaCommands(Program &program, Form1 &window, MainMenu &menu)
    : QObject(&window)
    , program_(program)
    , window_(window)
    , menu_(menu)
{
    menu.On("suych", this, &LdaCommands::UploadAndCheck);
    menu.On("ssub", this, [] {}); // there, and without an action
}

void LdaCommands::UploadAndCheck()
{
    Logbook &logbook = program_.logbook;
    const SyncRules::Account account{
        ServiceAddress(logbook, Service::Lda), logbook.configuration.UserLdA, logbook.configuration.PassLdA};
    if (account.user.isEmpty() || account.password.isEmpty()) {
        program_.dialogs.Message(&window_,
            account.user.isEmpty() ? u"Falta configurar el usuario de LdA!"_qs
                                   : u"Falta configurar la contraseña de LdA!"_qs);
        menu_.Entry("conf")->trigger();
        return;
    }
    window_.SetBusy(true);
    Result<SyncSelection> selection = SyncSelection();
    {
        Run run(logbook.LongWork(), program_.processEvents,
            [this](qint64 done, qint64) { window_.ShowActivity(u"Leyendo el log ... %1 QSOs"_qs.arg(done)); });
        selection = SelectForSync(logbook.Store(), logbook.LogInUse, run);
    }
    window_.ShowActivity({});
    window_.SetBusy(false);
    if (!selection) {
        if (selection.failure().kind != Failure::Kind::Cancelled)
            program_.dialogs.Message(&window_, selection.failure().text, Dialogs::Icon::Critical);
    } else if (const QString refusal = selection->Refusal(); !refusal.isEmpty()) {
        program_.dialogs.Message(&window_, refusal);
    } else {
        program_.windows.Analysis().ShowUpload(*selection, account);
    }
}
