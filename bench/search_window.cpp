// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The search window over a whole log, in a process of its own, so that its memory can be told and its pauses are those
// of a real event loop. Called with a program folder and a log's name it opens the window, waits for the list, clicks
// on a column title, and prints what it saw: microseconds, bytes a row.

#include "BenchProgram.h"

#include "ui/Form1_Main.h"
#include "ui/Form6_Search.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>
#include <cstdio>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

constexpr int clickedColumn = 2; // the call
constexpr int settling = 300; // milliseconds

// Memory of the process, where the system tells it.
double ResidentBytes()
{
#ifdef Q_OS_UNIX
    QFile file(u"/proc/self/statm"_qs);
    if (file.open(QIODevice::ReadOnly))
        return file.readAll().split(' ').value(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE));
#endif
    return 0;
}

// Beats whenever events are let through.
class Pulse {
public:
    Pulse()
    {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Beat(); });
        timer_.start(0);
    }
    void Restart()
    {
        longest_ = 0;
        whole_.start();
        last_.start();
    }
    void Tell(const char *what)
    {
        Beat();
        std::printf("%s %lld\n%s-pause %lld\n", what, static_cast<long long>(whole_.nsecsElapsed() / 1000), what,
            static_cast<long long>(longest_ / 1000));
    }

private:
    void Beat()
    {
        longest_ = std::max(longest_, last_.nsecsElapsed());
        last_.start();
    }

    QTimer timer_;
    QElapsedTimer whole_, last_;
    qint64 longest_ = 0;
};

void Measure(Program &program)
{
    const qint64 count = program.windows.Main().QsoCountShown();
    const double before = ResidentBytes();
    Pulse pulse;
    pulse.Restart();
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        const Form6 &window = program.windows.Search();
        if (!window.findChild<QPushButton *>(u"Command3"_qs)->isEnabled()
            || window.findChild<QLabel *>(u"Label6"_qs)->text() != QString::number(count))
            return;
        watch.stop();
        pulse.Tell("filling");
        std::printf("row %f\n", (ResidentBytes() - before) / static_cast<double>(count));
        QHeaderView *titles = window.findChild<QTreeView *>(u"ListView2"_qs)->header();
        pulse.Restart();
        QMetaObject::invokeMethod(titles, "sectionClicked", Q_ARG(int, clickedColumn));
        QCoreApplication::processEvents();
        pulse.Tell("sorting");
        QCoreApplication::quit();
    });
    watch.start(1);
    program.windows.Search().ShowSearch();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc != 3)
        return 2;
    SetUpLook(application);
    BenchProgram bench(QString::fromLocal8Bit(argv[1]));
    Logbook &logbook = bench.logbook;
    Windows &windows = bench.windows;
    logbook.LogInUse = QString::fromLocal8Bit(argv[2]);
    windows.Main().LoadLogPage(1);
    QTimer::singleShot(settling, &windows.Main(), [&] { Measure(bench.program); });
    return QCoreApplication::exec();
}
