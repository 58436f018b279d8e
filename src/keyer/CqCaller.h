// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"
#include "core/Scheduler.h"
#include "keyer/ModemPort.h"

#include <QObject>
#include <memory>
#include <optional>

class AudioPlayer;
class Logbook;
class SerialLines;

// The recorded CQ: plays the audio file of the settings and holds the push-to-talk line of the settings meanwhile. All
// windows share it, as they share the transmitter, so there is never more than one voice; each shows its state by the
// signals. Errors of the line are ignored: without a port, or with an adapter that is gone, the audio plays all the
// same.
class CqCaller : public QObject {
    Q_OBJECT

public:
    // Who started it, which settles what happens to the line.
    enum class From {
        Main, // the line is closed at the start and stays so after the audio, until Escape()
        Contest, // the line is closed at the start and opens at the end of the audio
        Test, // playing leaves the line alone
    };

    CqCaller(const Logbook &logbook, SerialLines &lines, AudioPlayer &player, Scheduler &scheduler);
    // Opens the line.
    ~CqCaller() override;

    // Plays from the beginning, also when it is playing. The line closes once the player was told to play, with no
    // delay before or after. A file that cannot be played, or that is not there within the opening limit of 10 s (a
    // voice that goes on the air long after the key was pressed surprises everybody), leaves the line open.
    void Start(From from);
    // Opens the line, stops and closes the player, and lets the bars rest. With nothing under way it does the same.
    void Escape();
    // Silence where a Test plays; the line is left alone. True when Done() will follow.
    bool StopTest();
    // The window that started what plays goes away: Escape(). Nothing for what another one started.
    void Leave(From from);

    // Leaves the port and opens the one of the settings ("COM1" to "COM20", nothing for any other name) with the line
    // open. What is still being opened to be played is given up. A failure leaves the caller without a port.
    Result<void> OpenPort();

    // The line by hand. `line` is closed or opened; a line of the former choice never stays closed beside it.
    void PttOn(ModemLine line);
    void PttOff(ModemLine line);
    // The line of the settings.
    ModemLine Line() const;
    bool LineIsOn() const { return raised_.has_value(); }
    // The main window's CQ holds the line; nobody else should touch its port then.
    bool MainHoldsPort() const { return LineIsOn() && from_ == From::Main; }

Q_SIGNALS:
    // How far the audio is, only while it plays.
    void Progress(qint64 position, qint64 length);
    void Rested();
    void LineChanged(bool on);
    // The audio came to its end.
    void Done(CqCaller::From from);
    // It could not be played; a Spanish sentence. Only the settings tell it.
    void Refused(const QString &why);

private:
    void OnOpened();
    void OnStatus();
    void OnDone();
    void Refuse(const QString &why);

    const Logbook &logbook_;
    SerialLines &lines_;
    AudioPlayer &player_;
    std::unique_ptr<Scheduler::Timer> openingLimit_;
    From from_ = From::Test;
    bool opening_ = false;
    std::optional<ModemLine> raised_;
};
