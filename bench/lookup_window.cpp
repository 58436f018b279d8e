// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
// A lookup in LdA by a whole program, in a process of its own. Called with a program folder it looks a call up at a
// server of its own and prints the microseconds from the server's answer to the painted window, without the second that
// an answer is let settle.

#include "BenchProgram.h"

#include "support/LocalServer.h"
#include "ui/Form1_Main.h"
#include "ui/LookupCommands.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTimer>
#include <cstdio>

namespace {

constexpr qint64 settling = 1000000; // microseconds
constexpr int quiet = 1500; // milliseconds until the main window stands and the log is read

// Ends the program at the first painting of the result.
class Watch : public QObject {
public:
    QElapsedTimer answered;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && watched->objectName() == u"Form33") {
            std::printf("%lld\n", static_cast<long long>(answered.nsecsElapsed() / 1000 - settling));
            std::fflush(stdout);
            std::_Exit(0); // what runs in the background need not be wound up
        }
        return false;
    }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc != 2)
        return 2;
    SetUpLook(application);
    BenchProgram bench(QString::fromLocal8Bit(argv[1]));
    Logbook &logbook = bench.logbook;
    Windows &windows = bench.windows;
    Watch watch;
    application.installEventFilter(&watch);
    LocalServer server;
    server.answer = [&watch](const LocalServer::Request &) {
        watch.answered.start();
        return LocalServer::Answer("<?xml ?><call>lu1abc</call><name>Juan</name><grid>GF05AB</grid>");
    };
    // Without a configuration the settings would stand in front.
    logbook.configuration.Estacion = u"LU9ZZZ"_qs;
    logbook.configuration.LDAQ_web = server.Base();
    if (!SaveConfig(logbook, true))
        return 1;
    windows.Main().QWidget::show();
    QTimer::singleShot(
        quiet, &windows.Main(), [&] { windows.Main().findChild<LookupCommands *>()->SearchLda(u"LU1ABC"_qs); });
    return QCoreApplication::exec();
}
