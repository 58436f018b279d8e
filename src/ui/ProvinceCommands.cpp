// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ProvinceCommands.h"

#include "stats/ProvinceStatistics.h"
#include "ui/Dialogs.h"
#include "ui/Form14_Provinces.h"
#include "ui/Form1_Main.h"
#include "ui/LogListPanel.h"
#include "ui/MainMenu.h"
#include "ui/Program.h"
#include "ui/Windows.h"

ProvinceCommands::ProvinceCommands(Program &program, Form1 &window, MainMenu &menu, LogListPanel &list)
    : QObject(&window)
    , program_(program)
    , window_(window)
    , list_(list)
{
    menu.On("parg", this, &ProvinceCommands::ShowOfLog);
}

void ProvinceCommands::ShowOfLog()
{
    const qint64 total = window_.QsoCountShown();
    if (working_)
        return;
    if (total == 0) {
        program_.dialogs.Message(&window_, u"No hay QSOs para mostrar!"_qs);
        return;
    }
    working_ = true;
    window_.SetBusy(true);
    list_.BeginProcessing();
    const QString log = program_.logbook.LogInUse;
    Result<ProvinceStatistics> statistics = ProvinceStatistics();
    {
        Run run(program_.logbook.LongWork(), program_.processEvents,
            [this](qint64 done, qint64 all) { list_.ShowProcessed(done, all); });
        statistics = StatisticsOfLog(program_.logbook.Store(), log, total, run);
    }
    list_.EndProcessing();
    window_.SetBusy(false);
    working_ = false;
    if (statistics)
        program_.windows.Provinces().ShowStatistics(window_, u"Log: "_qs + log, *statistics);
    else if (statistics.failure().kind != Failure::Kind::Cancelled)
        program_.dialogs.Message(&window_, statistics.failure().text, Dialogs::Icon::Critical);
}
