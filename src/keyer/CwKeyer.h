// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Scheduler.h"
#include "keyer/KeyerPacer.h"
#include "keyer/Morse.h"
#include "keyer/SerialLines.h"

#include <QMutex>
#include <QObject>
#include <atomic>

// The Morse sender: one text buffer, sent character by character on a control line by the pacer. The members are for
// the thread of the object; none of them waits for the text. Edges are kept to times reckoned from the start of a run,
// so that errors do not add up; where the machine stood still for longer than half a pause the rest is put off by that
// time instead of being hurried through.
//
// A text sent during a run is a run inside the run: what is left of the buffer and the new text go on behind the
// character in hand. A stop takes effect at the end of a character, never in it, and drops the rest.
class CwKeyer : public QObject {
    Q_OBJECT

public:
    // What there is to show.
    struct View {
        QString sent; // of the present run, in upper case
        int speed = 20;
        bool speedByMark = false; // the text changed it last, not the operator
        bool keyed = false;
        bool running = false;
    };
    // How far the edges of a run came from their computed times, in microseconds.
    struct Timing {
        int edges = 0;
        double mean = 0;
        double largest = 0;
    };
    // A key that is closed for longer than this is opened: nobody is there any more.
    static constexpr int longestHold = 10'000; // milliseconds
    // What stays of the buffer behind the character in hand.
    static constexpr int longestBuffer = 500;

    CwKeyer(SerialLines &lines, std::unique_ptr<KeyerPacer> pacer, Scheduler &scheduler);
    // Opens the key, in the middle of a character too, and leaves the port.
    ~CwKeyer() override;

    // Port by its name in the list, "Ninguno" for practice without one. A failure leaves the keyer without a port:
    // texts are paced and shown all the same.
    Result<void> Choose(const QString &port);
    void ReleasePort();
    // DTR or RTS, from the next element on; what is closed now is opened where it was closed.
    void SetLine(ModemLine line);
    // 10 to 40 words a minute, from the next character on.
    void SetSpeed(int wordsPerMinute);

    void Append(const QString &text);
    void Replace(const QString &text);
    // Sends the buffer.
    void CwSendPending();
    // CwStop. The character in hand is the last one, also where a text was added during it. With nothing under way it
    // means nothing: the next run begins without it.
    void Stop();
    void ClearStop();
    // The manual key, for at most longestHold.
    void CwKeyDown();
    // While a text is being sent the pattern in hand is not cut.
    void CwKeyUp();

    View Shown() const;
    // A sent text without its line ends.
    static QString OnOneLine(QString sent) { return sent.remove(u'\n').replace(u'\r', u' '); }
    Timing LastTiming() const;
    bool IsRunning() const { return Shown().running; }
    bool IsRealTime() const { return pacer_->IsRealTime(); }

Q_SIGNALS:
    // Something of Shown() is new; changes that follow one another closely come as one.
    void Changed();
    // The adapter does not answer any more: the port was left, and the rest of the text goes without. Once for each
    // choice of a port.
    void LineLost();
    // A key was closed for too long and has been opened.
    void HeldTooLong();

private:
    struct Edge {
        qint64 at = 0;
        bool on = false;
    };
    using Moment = std::optional<qint64>;

    Moment Service(qint64 now);
    std::optional<Edge> TakeEdge(qint64 now, Moment &next);
    std::optional<Edge> TakeManual(qint64 now, Moment &next);
    bool TakeCharacter();
    void Finish();
    void PutOff(qint64 by);
    void CheckHold();
    void SetKeyerLine(const Edge &edge);
    void Measure(const Edge &edge);
    void Post(void (CwKeyer::*signal)());
    void PostChanged();

    SerialLines &lines_;
    std::unique_ptr<KeyerPacer> pacer_;
    std::unique_ptr<Scheduler::Timer> watchdog_; // a second, while a text is sent or the key is closed
    std::atomic<ModemLine> closed_{ModemLine::DTR}; // the line that was raised last

    mutable QMutex mutex_; // for all that follows
    QString CwBuffer_;
    bool CwStop_ = false;
    bool running_ = false;
    bool nested_ = false; // a run inside the run begins behind the character in hand
    CwState state_;
    CwChar inHand_;
    qsizetype nextChange_ = 0;
    qint64 startOfChar_ = 0;
    QString sent_;
    bool speedByMark_ = false;
    bool keyed_ = false;
    std::optional<bool> manualWish_;
    Moment manualSince_;
    ModemLine line_ = ModemLine::DTR;
    Timing timing_;
    double errorSum_ = 0;

    std::atomic<qint64> keyedSince_{0}; // 0: open
    std::atomic<bool> posted_{false};
};
