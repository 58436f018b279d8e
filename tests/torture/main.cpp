// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program that script/torture kills, starves of room and locks out.
//   torture_program <scene> <folder> <first> [<end>]  does the steps of a scene from <first> on, until it is killed
//   torture_program check <folder>                    opens the log as the program does, checks it whole, says "ok"
// It says "ready", and "done <step>" after each; "failed <kind> <text>" when a step did not succeed, and then it waits
// for a line on the standard input to try that step once more.
#include "Scenes.h"

#include "core/SafetyCopies.h"
#include "core/Schema.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

constexpr int most = 100000; // steps; it ends by itself when nobody kills it

const char *NameOf(Failure::Kind kind)
{
    static constexpr const char *names[] = {
        "Other", "Missing", "Foreign", "Damaged", "Locked", "ReadOnly", "Full", "OldSchema", "Cancelled"};
    return names[static_cast<int>(kind)];
}

// Until it succeeds or nobody tells it to go on.
template <typename Work>
bool Insist(Work &&work)
{
    while (true) {
        const Result<void> outcome = work();
        if (outcome)
            return true;
        const Failure &failure = outcome.failure();
        std::printf(
            "failed %s %s\n", NameOf(failure.kind), QString(failure.text).replace(u'\n', u' ').toUtf8().constData());
        std::fflush(stdout);
        std::string line;
        if (!std::getline(std::cin, line))
            return false;
    }
}

Result<void> Begin(Logbook &logbook, Scene &scene)
{
    SafetyCopies::RemoveUnfinished(logbook);
    if (!logbook.Store().Exists())
        if (const Result<void> made = logbook.Store().CreateEmpty(); !made)
            return made;
    const Result<void> probed = ProbeSchema(logbook.Store());
    return probed ? scene.Prepare(logbook) : probed;
}

int Work(Logbook &logbook, Scene &scene, int first, int end)
{
    if (!Insist([&] { return Begin(logbook, scene); }))
        return 0;
    std::puts("ready");
    for (int number = first; number < end; ++number) {
        if (std::fflush(stdout) != 0 || !Insist([&] { return scene.Step(logbook, number); }))
            return 0;
        std::printf("done %d\n", number);
    }
    return 0;
}

int Check(LogStore &store)
{
    const Result<void> whole = store.CheckIntegrity();
    std::puts(whole ? "ok" : whole.failure().text.toUtf8().constData());
    return whole ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    const QString name = argc > 2 ? QString::fromLocal8Bit(argv[1]) : QString();
    FixedClock clock;
    FileSystem files;
    Logbook logbook(argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString(), files, clock);
    if (name == u"check")
        return Check(logbook.Store());
    const std::unique_ptr<Scene> scene = MakeScene(name, clock);
    if (!scene || argc < 4) {
        std::fputs("torture_program <scene> <folder> <first> [<end>] | check <folder>\n", stderr);
        return 2;
    }
    return Work(logbook, *scene, std::atoi(argv[3]), argc > 4 ? std::atoi(argv[4]) : most);
}
