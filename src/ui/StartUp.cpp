// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/StartUp.h"

#include "core/TextFile.h"
#include "logging/LogNames.h"
#include "ui/EntryPanel.h"
#include "ui/Form1_Main.h"
#include "ui/Form2_Settings.h"
#include "ui/Program.h"
#include "ui/SatellitePanel.h"
#include "ui/Windows.h"

#include <QFileDevice>
#include <QPushButton>

namespace {

// Tells in debug.txt how far the load step came, should it ever die.
class LoadTrace {
public:
    explicit LoadTrace(const Logbook &logbook)
    {
        Result<std::unique_ptr<QIODevice>> opened = logbook.Files().OpenForWriting(logbook.PathOf(u"debug.txt"_qs));
        if (opened)
            device_ = *std::move(opened);
        Mark("1");
    }
    void Mark(const char *number)
    {
        if (device_) {
            device_->write(QByteArray(number) + "\r\n");
            if (auto *file = qobject_cast<QFileDevice *>(device_.get()))
                file->flush();
        }
    }

private:
    std::unique_ptr<QIODevice> device_;
};

} // namespace

StartUp::StartUp(Program &program, Form1 &window, EntryPanel &entry, SatellitePanel &satellite)
    : program_(program)
    , window_(window)
    , entry_(entry)
    , satellite_(satellite)
    , care_(program, window)
{
    Timer1_ = program.scheduler.Make(1000, [this] { entry_.Tick(); });
    Timer2_ = program.scheduler.Make(900, [this] { Hurry(); });
    Timer7_ = program.scheduler.Make(20000, [this] {
        Timer7_->Stop();
        if (auto *button = window_.findChild<QPushButton *>(u"Command9"_qs))
            button->click();
    });
}

StartUp::~StartUp() = default;

bool StartUp::Load()
{
    program_.LoadingMainWindow = true;
    program_.FirstRun = false;
    FillWindow();
    LoadPrefixTable();
    program_.LoadingMainWindow = false;
    return care_.Probe();
}

void StartUp::FillWindow()
{
    LoadTrace trace(program_.logbook);
    entry_.FillLists();
    trace.Mark("2");
    entry_.RestoreFieldMemory();
    satellite_.WriteDefaultSatellites();
    satellite_.LoadSatellites();
    satellite_.RestoreSatellite();
    trace.Mark("3");
    entry_.RestoreExitMemory();
    program_.master = LoadMasterFile(program_.logbook.Files(), program_.logbook.PathOf(u"master.txt"_qs));
    trace.Mark("4");
}

void StartUp::LoadPrefixTable()
{
    const Logbook &logbook = program_.logbook;
    const auto device = logbook.Files().OpenForReading(logbook.PathOf(u"dxcc.txt"_qs));
    if (!device)
        return;
    LineReader reader(*device);
    while (const auto line = reader.Next())
        if (program_.dxcc.AddLine(*line) == DxccTable::LineUse::NoRoom)
            break;
}

void StartUp::Begin()
{
    if (begun_)
        return;
    begun_ = true;
    Timer1_->Start();
    Timer2_->Start();
    Timer7_->Start();
}

void StartUp::Hurry()
{
    if (!Timer2_->IsRunning())
        return;
    Timer2_->Stop();
    SecondHalf();
}

void StartUp::SecondHalf()
{
    program_.mark("timer2");
    Form2 &settings = program_.windows.Settings();
    if (!HasConfig(program_.logbook)) {
        program_.FirstRun = true;
        settings.ShowSettings();
        configured_ = !program_.FirstRun;
        window_.ShowCaptions();
        window_.SetArchivoMenu(true);
        return;
    }
    const bool themeTold = LoadConfig(program_.logbook);
    configured_ = true;
    if (const Result<QString> name = ResolveLogName(program_.logbook.Store(), program_.logbook.LogInUse))
        program_.logbook.LogInUse = program_.logbook.captions.log = *name;
    window_.ShowConfiguration();
    settings.FillLists();
    if (themeTold)
        settings.ApplyTheme();
    window_.SetArchivoMenu(false);
    window_.LoadLogPage(1);
    window_.SetArchivoMenu(true);
    program_.scheduler.WhenIdle([this] { program_.mark("page-shown"); });
    care_.AfterFirstPage();
    // Behind the page and behind what the operator is in the middle of: a port that is not there brings up a message.
    program_.scheduler.WhenIdle([this, &settings] { settings.OpenPort(&window_); });
}
