// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/CwKeyer.h"

#include <QMutexLocker>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr qint64 millisecond = 1000;
constexpr qint64 holdLimit = CwKeyer::longestHold * millisecond;
// The watchdog leaves the pacer the first word.
constexpr int watchdogInterval = 1000;
constexpr qint64 watchdogGrace = 1000 * millisecond;

std::optional<qint64> Earlier(std::optional<qint64> one, std::optional<qint64> other)
{
    return one && other ? std::min(*one, *other) : one ? one : other;
}

} // namespace

CwKeyer::CwKeyer(SerialLines &lines, std::unique_ptr<KeyerPacer> pacer, Scheduler &scheduler)
    : lines_(lines)
    , pacer_(std::move(pacer))
    , watchdog_(scheduler.Make(watchdogInterval, [this] { CheckHold(); }))
{
    pacer_->Start([this](qint64 now) { return Service(now); });
}

CwKeyer::~CwKeyer()
{
    pacer_->Stop();
    lines_.Close(SerialLines::User::Keyer);
}

Result<void> CwKeyer::Choose(const QString &port) { return lines_.Open(SerialLines::User::Keyer, port); }

void CwKeyer::ReleasePort() { lines_.Close(SerialLines::User::Keyer); }

void CwKeyer::SetLine(ModemLine line)
{
    const QMutexLocker lock(&mutex_);
    line_ = line;
}

void CwKeyer::SetSpeed(int wordsPerMinute)
{
    const QMutexLocker lock(&mutex_);
    state_.speed = wordsPerMinute;
    speedByMark_ = false;
}

void CwKeyer::Append(const QString &text)
{
    const QMutexLocker lock(&mutex_);
    CwBuffer_ += text;
}

void CwKeyer::Replace(const QString &text)
{
    const QMutexLocker lock(&mutex_);
    CwBuffer_ = text;
}

void CwKeyer::CwSendPending()
{
    {
        const QMutexLocker lock(&mutex_);
        sent_.clear();
        if (running_) {
            nested_ = true;
        } else {
            running_ = true;
            CwStop_ = false;
            state_.delayLong.reset();
            inHand_ = {};
            nextChange_ = 0;
            startOfChar_ = pacer_->Now();
            timing_ = {};
            errorSum_ = 0;
        }
    }
    watchdog_->Start();
    pacer_->Wake();
}

void CwKeyer::Stop()
{
    const QMutexLocker lock(&mutex_);
    CwStop_ = true;
    nested_ = false;
}

void CwKeyer::ClearStop()
{
    const QMutexLocker lock(&mutex_);
    CwStop_ = false;
}

void CwKeyer::CwKeyDown()
{
    {
        const QMutexLocker lock(&mutex_);
        manualWish_ = true;
    }
    watchdog_->Start();
    pacer_->Wake();
}

void CwKeyer::CwKeyUp()
{
    {
        const QMutexLocker lock(&mutex_);
        if (!manualSince_ && !manualWish_)
            return;
        manualWish_ = false;
    }
    pacer_->Wake();
}

// Runs in the thread of the window, so it works where the pacer does not.
void CwKeyer::CheckHold()
{
    const qint64 since = keyedSince_;
    if (since == 0) {
        if (!IsRunning())
            watchdog_->Stop();
        return;
    }
    if (pacer_->Now() - since < holdLimit + watchdogGrace)
        return;
    keyedSince_ = 0;
    lines_.ForceLow(SerialLines::User::Keyer, closed_);
    {
        const QMutexLocker lock(&mutex_);
        keyed_ = false;
    }
    PostChanged();
    Q_EMIT HeldTooLong();
}

CwKeyer::View CwKeyer::Shown() const
{
    const QMutexLocker lock(&mutex_);
    return {sent_, state_.speed, speedByMark_, keyed_, running_};
}

CwKeyer::Timing CwKeyer::LastTiming() const
{
    const QMutexLocker lock(&mutex_);
    return timing_;
}

// Runs on the pacer. The line is driven outside the mutex, so that a slow device holds up nobody else.
CwKeyer::Moment CwKeyer::Service(qint64 now)
{
    for (;;) {
        Moment next;
        std::optional<Edge> edge;
        {
            const QMutexLocker lock(&mutex_);
            edge = TakeManual(now, next);
            if (!edge)
                edge = TakeEdge(now, next);
        }
        if (!edge)
            return next;
        SetKeyerLine(*edge);
    }
}

std::optional<CwKeyer::Edge> CwKeyer::TakeManual(qint64 now, Moment &next)
{
    if (manualWish_) {
        const bool down = *std::exchange(manualWish_, std::nullopt);
        if (down) {
            manualSince_ = now;
            return Edge{now, true};
        }
        manualSince_.reset();
        // The pattern in hand opens the key itself.
        return running_ && nextChange_ < inHand_.changes.size() ? std::nullopt : std::optional(Edge{now, false});
    }
    if (!manualSince_)
        return std::nullopt;
    if (now < *manualSince_ + holdLimit) {
        next = *manualSince_ + holdLimit;
        return std::nullopt;
    }
    manualSince_.reset();
    Post(&CwKeyer::HeldTooLong);
    return Edge{now, false};
}

std::optional<CwKeyer::Edge> CwKeyer::TakeEdge(qint64 now, Moment &next)
{
    while (running_) {
        const bool inPattern = nextChange_ < inHand_.changes.size();
        const qint64 due = startOfChar_ + (inPattern ? inHand_.changes[nextChange_].at : inHand_.duration);
        if (now < due) {
            next = Earlier(next, due);
            return std::nullopt;
        }
        PutOff(now - due);
        if (inPattern) {
            const bool on = inHand_.changes[nextChange_++].on;
            if (!on)
                manualSince_.reset();
            return Edge{startOfChar_ + inHand_.changes[nextChange_ - 1].at, on};
        }
        const bool stopCounts = inHand_.endsOnStop && !std::exchange(nested_, false);
        startOfChar_ += inHand_.duration;
        if ((stopCounts && CwStop_) || !TakeCharacter())
            Finish();
    }
    return std::nullopt;
}

bool CwKeyer::TakeCharacter()
{
    if (CwBuffer_.isEmpty())
        return false;
    const QChar character = CwBuffer_.at(0);
    CwBuffer_ = CwBuffer_.mid(1, longestBuffer);
    sent_ += character.toUpper();
    inHand_ = CwSendChar(character, state_);
    nextChange_ = 0;
    state_ = inHand_.after;
    speedByMark_ = speedByMark_ || inHand_.isMark;
    PostChanged();
    return true;
}

void CwKeyer::Finish()
{
    running_ = nested_ = CwStop_ = false;
    CwBuffer_.clear();
    PostChanged();
}

void CwKeyer::PutOff(qint64 late)
{
    const qint64 unit = (CwDelayOfSpeed(state_.speed) + 50) * millisecond;
    if (late > unit * 3 / 8)
        startOfChar_ += late;
}

void CwKeyer::SetKeyerLine(const Edge &edge)
{
    {
        const QMutexLocker lock(&mutex_);
        if (edge.on)
            closed_ = line_;
        keyed_ = edge.on;
        keyedSince_ = edge.on ? pacer_->Now() : 0;
    }
    const bool driven = lines_.Set(SerialLines::User::Keyer, closed_, edge.on);
    {
        const QMutexLocker lock(&mutex_);
        Measure(edge);
    }
    PostChanged();
    if (!driven) {
        // Leaving the port makes the system lower what the order did not; the text is paced to its end.
        lines_.Close(SerialLines::User::Keyer);
        Post(&CwKeyer::LineLost);
    }
}

void CwKeyer::Measure(const Edge &edge)
{
    if (!running_)
        return;
    const double error = std::abs(double(pacer_->Now() - edge.at));
    errorSum_ += error;
    timing_.mean = errorSum_ / ++timing_.edges;
    timing_.largest = std::max(timing_.largest, error);
}

void CwKeyer::Post(void (CwKeyer::*signal)())
{
    QMetaObject::invokeMethod(
        this,
        [this, signal] {
            Q_EMIT(this->*signal)
            ();
        },
        Qt::QueuedConnection);
}

void CwKeyer::PostChanged()
{
    if (posted_.exchange(true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            posted_ = false;
            Q_EMIT Changed();
        },
        Qt::QueuedConnection);
}
