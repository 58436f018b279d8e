// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Logbook.h"
#include "core/ProgramFolder.h"
#include "core/Scheduler.h"
#include "keyer/CqCaller.h"
#include "keyer/KeyerPacer.h"
#include "keyer/SerialLines.h"
#include "ui/Form1_Main.h"
#include "ui/Program.h"
#include "ui/RealDialogs.h"
#include "ui/RealPlayer.h"
#include "ui/Spanish.h"
#include "ui/Theme.h"
#include "ui/Windows.h"

#include <QApplication>
#include <QLockFile>
#include <QScopeGuard>
#include <QStandardPaths>
#include <chrono>
#include <cstdio>

namespace {

// What nobody expected ends the program in order: it is told, and what is stored is stored.
class Application : public QApplication {
public:
    using QApplication::QApplication;
    Dialogs *dialogs = nullptr;
    std::function<void()> silence; // nothing is on the air while the operator reads what went wrong

    bool notify(QObject *receiver, QEvent *event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception &error) {
            Tell(QString::fromUtf8(error.what()));
        } catch (...) {
            Tell(QString());
        }
        return true;
    }

    // What they point to goes away.
    void Forget()
    {
        silence = {};
        dialogs = nullptr;
    }

private:
    void Silence() noexcept
    {
        try {
            if (silence)
                silence();
        } catch (...) {
            // It is told already that something has failed.
        }
    }
    void Tell(const QString &what)
    {
        if (dialogs && !ending_) {
            ending_ = true;
            Silence();
            dialogs->Message(nullptr,
                u"Ocurrió un error inesperado y el programa va a cerrarse. Los QSOs guardados no se pierden.\n\n"_qs
                    + what,
                Dialogs::Icon::Critical);
        }
        exit(1);
    }
    bool ending_ = false;
};

// Times of the start for script/bench, in microseconds since the moment that the caller took just before.
void Mark(const char *name)
{
    static const bool wanted = qEnvironmentVariableIsSet("TORDILLO_MARKS");
    if (!wanted)
        return;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const qint64 micros = std::chrono::duration_cast<std::chrono::microseconds>(now).count();
    std::fprintf(stderr, "mark %s %lld\n", name,
        static_cast<long long>(micros - qEnvironmentVariable("TORDILLO_T0").toLongLong()));
    std::fflush(stderr);
}

int RunProgram(Application &application)
{
    RealDialogs dialogs;
    application.dialogs = &dialogs;
    const QString folder = ProgramFolder::Find(
        QCoreApplication::applicationDirPath(), QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    const ProgramFolder::Lock lock = ProgramFolder::Hold(folder);
    if (lock.heldByOther) {
        dialogs.Message(nullptr,
            u"Tordillo "_qs + Logbook::AppVersion + u" ya se está ejecutando en una instancia anterior!"_qs,
            Dialogs::Icon::Critical, Dialogs::DefaultTitle());
        return 1;
    }
    ProgramFolder::CopyMissingData(QCoreApplication::applicationDirPath(), folder);

    FileSystem files;
    const SystemClock clock;
    EventLoopScheduler scheduler;
    Logbook logbook(folder, files, clock);
    SystemModemPorts ports;
    SerialLines lines(logbook, ports);
    RealPlayer player;
    CqCaller caller(logbook, lines, player, scheduler);
    // The lines first: what comes after may be what has just failed.
    application.silence = [&caller, &lines] {
        lines.Silence();
        caller.Escape();
    };
    const auto forget = qScopeGuard([&application] { application.Forget(); });
    Windows windows;
    Program program{logbook, scheduler, dialogs, windows, lines, MakeThreadPacer, caller,
        [] { QCoreApplication::processEvents(); }, [](int exitCode) { QCoreApplication::exit(exitCode); }, Mark, {}, {},
        false, false};
    program.manualFolder = QCoreApplication::applicationDirPath() + u"/manual"_qs;
    windows.SetProgram(program);
    if (!windows.Main().Load())
        return 1;
    windows.Main().show();
    scheduler.WhenIdle([] { Mark("window-shown"); });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    Application application(argc, argv);
    QCoreApplication::setApplicationName(u"tordillo-compact"_qs);
    QGuiApplication::setDesktopFileName(u"tordillo-compact"_qs); // for the icon in the task bar
    QCoreApplication::setApplicationVersion(Logbook::AppVersion);
    InstallSpanish(application);
    SetUpLook(application);
    return RunProgram(application);
}
