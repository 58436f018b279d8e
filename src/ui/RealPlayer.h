// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "keyer/AudioPlayer.h"

#include <QBuffer>
#include <memory>

class QAudioOutput;
class QMediaPlayer;

// The player that the operator hears, on Qt Multimedia: WAV, MP3 and whatever else the system decodes, through the
// sound device that is the default one when the file is opened. Without a sound device it plays into the void, at the
// same pace. Qt's part comes into being with the first Open(), so a program that plays nothing pays nothing.
//
// The file is read into memory by a thread of its own before anything is played: a disk that is slow, goes to sleep or
// vanishes holds neither the window nor a voice that is on the air. Files over 256 MB are refused.
class RealPlayer final : public AudioPlayer {
    Q_OBJECT

public:
    RealPlayer();
    ~RealPlayer() override;

    void Close() override;
    void SetFile(const QString &path) override { path_ = path; }
    void Rewind() override;
    void Open() override;
    void Play() override;
    void Stop() override;
    QString Error() const override { return error_; }
    Mode CurrentMode() const override { return mode_; }
    qint64 Position() const override;
    qint64 Length() const override;

private:
    struct Reading;

    void Read(const QByteArray &content, const QString &failure);
    void Load();
    void Loaded();
    void Broken();
    void Ended();
    void FailOpening(const QString &error);
    void TellLater(void (AudioPlayer::*signal)());

    QString path_, error_;
    Mode mode_ = Mode::Closed;
    std::shared_ptr<Reading> reading_;
    quint64 opening_ = 0; // which one; what belongs to an earlier one is not told any more
    QBuffer content_;
    std::unique_ptr<QAudioOutput> output_;
    std::unique_ptr<QMediaPlayer> media_;
};
