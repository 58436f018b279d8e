// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/RealPlayer.h"

#include <QAudioOutput>
#include <QFile>
#include <QMediaPlayer>
#include <QMutex>
#include <QUrl>
#include <new>
#include <system_error>
#include <thread>

namespace {

constexpr qint64 largestFile = qint64(256) * 1024 * 1024;
constexpr qint64 piece = qint64(64) * 1024;

} // namespace

// What the reading thread shares with the player. The thread may outlive the player: a read that hangs cannot be ended.
struct RealPlayer::Reading {
    QMutex mutex;
    RealPlayer *reader = nullptr; // null: nobody waits for it any more

    bool IsWanted()
    {
        const QMutexLocker lock(&mutex);
        return reader;
    }
    void Forget()
    {
        const QMutexLocker lock(&mutex);
        reader = nullptr;
    }
    void Give(const QByteArray &content, const QString &failure)
    {
        const QMutexLocker lock(&mutex);
        if (!reader)
            return;
        QMetaObject::invokeMethod(
            reader,
            [to = reader, opening = opening, content, failure] {
                if (to->opening_ == opening)
                    to->Read(content, failure);
            },
            Qt::QueuedConnection);
    }

    static void Work(const std::shared_ptr<Reading> &reading, const QString &path)
    {
        try {
            Read(reading, path);
        } catch (const std::bad_alloc &) {
            reading->Give({}, u"No alcanza la memoria para el archivo de audio."_qs);
        }
    }
    static void Read(const std::shared_ptr<Reading> &reading, const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            reading->Give({}, u"No se puede abrir el archivo de audio: "_qs + file.errorString());
            return;
        }
        QByteArray content, read;
        do {
            read = file.read(piece);
            content += read;
            if (content.size() > largestFile) {
                reading->Give({}, u"El archivo de audio es demasiado grande."_qs);
                return;
            }
        } while (!read.isEmpty() && reading->IsWanted());
        if (file.error() != QFileDevice::NoError)
            reading->Give({}, u"No se puede leer el archivo de audio: "_qs + file.errorString());
        else
            reading->Give(content, {});
    }

    quint64 opening = 0;
};

RealPlayer::RealPlayer() = default;

RealPlayer::~RealPlayer() { Close(); }

void RealPlayer::Close()
{
    ++opening_;
    if (reading_)
        reading_->Forget();
    reading_.reset();
    if (media_) {
        media_->disconnect(this);
        media_->setSource({}); // Qt 6.4 crashes on destroying a player that still has its medium
    }
    media_.reset();
    output_.reset();
    content_.close();
    content_.setData({});
    mode_ = Mode::Closed;
}

void RealPlayer::Rewind()
{
    if (media_)
        media_->setPosition(0);
}

void RealPlayer::Open()
{
    Close();
    error_.clear();
    mode_ = Mode::Opening;
    if (path_.isEmpty()) {
        FailOpening(u"No hay un archivo de audio elegido."_qs);
        return;
    }
    reading_ = std::make_shared<Reading>();
    reading_->reader = this;
    reading_->opening = opening_;
    try {
        std::thread(&Reading::Work, reading_, path_).detach();
    } catch (const std::system_error &) {
        FailOpening(u"El sistema no puede abrir más archivos ahora."_qs);
    }
}

void RealPlayer::Read(const QByteArray &content, const QString &failure)
{
    reading_.reset();
    if (!failure.isEmpty()) {
        FailOpening(failure);
        return;
    }
    content_.setData(content);
    content_.open(QIODevice::ReadOnly);
    Load();
}

void RealPlayer::Load()
{
    output_ = std::make_unique<QAudioOutput>();
    media_ = std::make_unique<QMediaPlayer>();
    if (!media_->isAvailable()) {
        FailOpening(u"Este equipo no tiene con qué reproducir audio."_qs);
        return;
    }
    media_->setAudioOutput(output_.get());
    connect(media_.get(), &QMediaPlayer::mediaStatusChanged, this, [this](QMediaPlayer::MediaStatus status) {
        if (status == QMediaPlayer::LoadedMedia || status == QMediaPlayer::BufferedMedia)
            Loaded();
        else if (status == QMediaPlayer::EndOfMedia)
            Ended();
        else if (status == QMediaPlayer::InvalidMedia)
            Broken();
    });
    connect(media_.get(), &QMediaPlayer::errorOccurred, this, &RealPlayer::Broken);
    connect(media_.get(), &QMediaPlayer::positionChanged, this, [this] {
        if (mode_ == Mode::Playing)
            TellLater(&AudioPlayer::StatusUpdate);
    });
    media_->setSourceDevice(&content_, QUrl::fromLocalFile(path_));
}

void RealPlayer::Loaded()
{
    if (mode_ != Mode::Opening)
        return;
    if (!media_->hasAudio()) {
        FailOpening(u"El archivo elegido no tiene audio."_qs);
        return;
    }
    mode_ = Mode::Stopped;
    TellLater(&AudioPlayer::Opened);
}

void RealPlayer::Broken()
{
    if (mode_ == Mode::Opening)
        FailOpening(u"El archivo elegido no es un audio que se pueda reproducir."_qs);
    else
        Ended();
}

void RealPlayer::FailOpening(const QString &error)
{
    error_ = error;
    mode_ = Mode::Closed;
    TellLater(&AudioPlayer::Opened);
}

void RealPlayer::Play()
{
    if (mode_ != Mode::Stopped || !media_)
        return;
    mode_ = Mode::Playing;
    media_->play();
}

void RealPlayer::Stop()
{
    if (mode_ != Mode::Playing)
        return;
    Ended();
    media_->stop();
}

void RealPlayer::Ended()
{
    if (mode_ != Mode::Playing)
        return;
    mode_ = Mode::Stopped;
    TellLater(&AudioPlayer::Done);
}

qint64 RealPlayer::Position() const { return media_ ? media_->position() : 0; }

qint64 RealPlayer::Length() const { return media_ ? media_->duration() : 0; }

void RealPlayer::TellLater(void (AudioPlayer::*signal)())
{
    QMetaObject::invokeMethod(
        this,
        [this, signal, opening = opening_] {
            if (opening == opening_)
                Q_EMIT(this->*signal)();
        },
        Qt::QueuedConnection);
}
