// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/LogCommands.h"

#include "core/StoreCopy.h"
#include "logging/LogNames.h"
#include "ui/Dialogs.h"
#include "ui/Form1_Main.h"
#include "ui/Form3_OpenLog.h"
#include "ui/MainMenu.h"
#include "ui/Program.h"
#include "ui/Windows.h"

LogCommands::LogCommands(Program &program, Form1 &window, MainMenu &menu)
    : QObject(&window)
    , program_(program)
    , window_(window)
{
    menu.On("alog", this, &LogCommands::OpenLog);
    menu.On("nuevo", this, &LogCommands::NewLog);
    menu.On("borralog", this, &LogCommands::DeleteOpenLog);
    menu.On("badeda", this, &LogCommands::BackupDatabase);
}

void LogCommands::Tell(const QString &failure) { program_.dialogs.Message(&window_, failure, Dialogs::Icon::Critical); }

// Opens a log: its first page is shown, and the next start finds it again.
void LogCommands::Use(const QString &name)
{
    program_.logbook.LogInUse = name;
    window_.LoadLogPage(1);
    if (const Result<void> saved = SaveConfig(program_.logbook, program_.FirstRun); !saved)
        Tell(saved.failure().text);
    window_.ShowCaptions();
}

void LogCommands::OpenLog()
{
    const Result<QList<LogEntry>> logs = ListLogs(program_.logbook.Store());
    if (!logs) {
        Tell(logs.failure().text);
        return;
    }
    if (const auto name = program_.windows.OpenLog().Choose(*logs, program_.logbook.LogInUse))
        Use(*name);
}

void LogCommands::NewLog()
{
    while (true) {
        const auto answer = program_.dialogs.Input(&window_, u"Ingrese el nombre del nuevo Log"_qs);
        const QString name = CleanLogName(answer.value_or(QString()));
        if (name.isEmpty())
            return;
        const Result<QList<LogEntry>> logs = ListLogs(program_.logbook.Store());
        if (!logs) {
            Tell(logs.failure().text);
            return;
        }
        if (!FitsConfiguration(name)) {
            program_.dialogs.Message(&window_,
                u"El nombre del log puede tener hasta 100 letras, números y signos comunes, y no las palabras de "
                "config.ini. Elija otro."_qs);
            continue;
        }
        if (SameLog(*logs, name).isEmpty()) {
            if (const Result<void> created = CreateLog(program_.logbook.Store(), name); !created)
                Tell(created.failure().text);
            else
                Use(name);
            return;
        }
        program_.dialogs.Message(&window_, u"El log "_qs + name + u" ya existe!"_qs);
    }
}

void LogCommands::DeleteOpenLog()
{
    const QString name = program_.logbook.LogInUse;
    if (!program_.dialogs.Ask(&window_, u"Esta seguro de borrar "_qs + name + u"\nlos QSOs no podrán recuperarse!"_qs,
            Dialogs::Icon::Question, Dialogs::Button::No))
        return;
    const Result<QString> next = DeleteLog(program_.logbook.Store(), name);
    if (!next)
        Tell(next.failure().text);
    else
        Use(*next);
}

void LogCommands::BackupDatabase()
{
    const QString target =
        program_.logbook.PathOf(u"base0_"_qs + program_.logbook.ClockInUse().Now().toString(u"dd_MM_yy") + u".mdb"_qs);
    program_.processEvents();
    window_.SetBusy(true);
    Run run(program_.logbook.LongWork(), program_.processEvents, [this](qint64 done, qint64 total) {
        window_.ShowActivity(total > 0 ? u"Copiando la base de datos ... %1 %"_qs.arg(done * 100 / total) : QString());
    });
    const Result<void> copied = CopyChecked(program_.logbook.Store(), target, run);
    window_.ShowActivity({});
    window_.SetBusy(false);
    if (!copied && copied.failure().kind == Failure::Kind::Cancelled)
        Tell(u"Operation Failed"_qs);
    else if (!copied)
        Tell(u"La copia NO se hizo; la que hubiera de antes sigue en su lugar.\n\n"_qs + copied.failure().text);
    // Operators wait for this line as the end of the command; after a failure it speaks of the copy that is kept.
    program_.dialogs.Message(&window_, target + u" creada!"_qs, Dialogs::Icon::Information);
}
