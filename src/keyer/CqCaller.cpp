// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/CqCaller.h"

#include "core/Logbook.h"
#include "keyer/AudioPlayer.h"
#include "keyer/SerialLines.h"

#include <utility>

namespace {

constexpr int openingLimit = 10000;

} // namespace

CqCaller::CqCaller(const Logbook &logbook, SerialLines &lines, AudioPlayer &player, Scheduler &scheduler)
    : logbook_(logbook)
    , lines_(lines)
    , player_(player)
    , openingLimit_(
          scheduler.Make(openingLimit, [this] { Refuse(u"El archivo de audio no se pudo abrir a tiempo."_qs); }))
{
    connect(&player_, &AudioPlayer::Opened, this, &CqCaller::OnOpened);
    connect(&player_, &AudioPlayer::StatusUpdate, this, &CqCaller::OnStatus);
    connect(&player_, &AudioPlayer::Done, this, &CqCaller::OnDone);
}

CqCaller::~CqCaller()
{
    player_.Close();
    if (raised_)
        lines_.Set(SerialLines::User::Caller, *raised_, false);
}

void CqCaller::Start(From from)
{
    from_ = from;
    player_.Close();
    player_.SetFile(logbook_.configuration.ArcAudio);
    player_.Rewind();
    opening_ = true;
    openingLimit_->Start();
    player_.Open();
}

void CqCaller::OnOpened()
{
    if (!std::exchange(opening_, false))
        return;
    openingLimit_->Stop();
    if (const QString error = player_.Error(); !error.isEmpty()) {
        Refuse(error);
        return;
    }
    player_.Play();
    if (from_ != From::Test)
        PttOn(Line());
}

void CqCaller::Refuse(const QString &why)
{
    opening_ = false;
    openingLimit_->Stop();
    player_.Close();
    // Of an audio that this one was to replace; nobody hears it any more.
    if (from_ != From::Test && raised_)
        PttOff(*raised_);
    Q_EMIT Refused(why);
}

void CqCaller::OnStatus()
{
    if (player_.CurrentMode() == AudioPlayer::Mode::Playing && player_.Length() > 0)
        Q_EMIT Progress(player_.Position(), player_.Length());
}

void CqCaller::OnDone()
{
    if (from_ == From::Contest)
        PttOff(Line());
    Q_EMIT Done(from_);
}

void CqCaller::Escape()
{
    opening_ = false;
    openingLimit_->Stop();
    PttOff(Line());
    player_.Stop();
    player_.Close();
    Q_EMIT Rested();
}

bool CqCaller::StopTest()
{
    if (from_ != From::Test)
        return false;
    openingLimit_->Stop();
    if (std::exchange(opening_, false))
        player_.Close();
    const bool playing = player_.CurrentMode() == AudioPlayer::Mode::Playing;
    player_.Stop();
    return playing;
}

void CqCaller::Leave(From from)
{
    const bool busy = opening_ || raised_ || player_.CurrentMode() != AudioPlayer::Mode::Closed;
    if (busy && from == from_)
        Escape();
}

Result<void> CqCaller::OpenPort()
{
    // The window changed; a voice that is still to come would surprise there.
    if (std::exchange(opening_, false)) {
        openingLimit_->Stop();
        player_.Close();
    }
    const bool was = std::exchange(raised_, std::nullopt).has_value();
    Result<void> opened = lines_.Open(SerialLines::User::Caller, logbook_.configuration.Puerto);
    if (was)
        Q_EMIT LineChanged(false);
    return opened;
}

void CqCaller::PttOn(ModemLine line)
{
    if (raised_ && *raised_ != line)
        PttOff(*raised_);
    raised_ = line;
    lines_.Set(SerialLines::User::Caller, line, true);
    Q_EMIT LineChanged(true);
}

void CqCaller::PttOff(ModemLine line)
{
    lines_.Set(SerialLines::User::Caller, line, false);
    if (const auto other = std::exchange(raised_, std::nullopt); other && *other != line)
        lines_.Set(SerialLines::User::Caller, *other, false);
    Q_EMIT LineChanged(false);
}

ModemLine CqCaller::Line() const { return logbook_.configuration.PinPTT ? ModemLine::RTS : ModemLine::DTR; }
