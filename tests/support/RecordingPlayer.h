// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "keyer/AudioPlayer.h"

#include <QStringList>
#include <utility>

// A player that writes down its orders and plays nothing; the test says what the disk and the sound do.
class RecordingPlayer final : public AudioPlayer {
public:
    // What was ordered since the last call.
    QStringList Taken() { return std::exchange(record_, {}); }
    int Orders() const { return orders_; } // in all
    QString File() const { return file_; }

    void Opens(const QString &error = {})
    {
        error_ = error;
        mode_ = error.isEmpty() ? Mode::Stopped : Mode::Closed;
        Q_EMIT Opened();
    }
    void Plays(qint64 position, qint64 length)
    {
        position_ = position;
        length_ = length;
        Q_EMIT StatusUpdate();
    }
    void Ends()
    {
        mode_ = Mode::Stopped;
        Q_EMIT Done();
    }

    void Close() override { Order(u"close"_qs, Mode::Closed); }
    void SetFile(const QString &path) override { file_ = path; }
    void Rewind() override { Order(u"rewind"_qs, mode_); }
    void Open() override { Order(u"open"_qs, Mode::Opening); }
    void Play() override { Order(u"play"_qs, Mode::Playing); }
    void Stop() override { Order(u"stop"_qs, mode_ == Mode::Playing ? Mode::Stopped : mode_); }
    QString Error() const override { return error_; }
    Mode CurrentMode() const override { return mode_; }
    qint64 Position() const override { return position_; }
    qint64 Length() const override { return length_; }

private:
    void Order(const QString &what, Mode mode)
    {
        record_ << what;
        ++orders_;
        mode_ = mode;
    }

    QStringList record_;
    int orders_ = 0;
    QString file_, error_;
    Mode mode_ = Mode::Closed;
    qint64 position_ = 0, length_ = 0;
};
