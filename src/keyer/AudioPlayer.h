// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

// One device that plays one audio file. No call waits for a disk or for the sound: what comes of it is told by the
// signals, always from the event loop and never from inside a call. Nothing fails loudly: an order that makes no sense
// in the present mode, Stop or Close without a file for example, does nothing.
class AudioPlayer : public QObject {
    Q_OBJECT

public:
    enum class Mode { Closed, Opening, Stopped, Playing };

    // Silence at once. Nothing is told any more of what was opened before.
    virtual void Close() = 0;
    // The file that the next Open() takes.
    virtual void SetFile(const QString &path) = 0;
    // Back to the beginning.
    virtual void Rewind() = 0;
    // Opened() follows, at some time or, with a disk that does not answer, never.
    virtual void Open() = 0;
    virtual void Play() = 0;
    // Stops where it is. Done() follows when it was playing.
    virtual void Stop() = 0;

    // Why the last Open() failed, a Spanish sentence; empty when it did not.
    virtual QString Error() const = 0;
    virtual Mode CurrentMode() const = 0;
    // Milliseconds; the length is 0 while it is unknown.
    virtual qint64 Position() const = 0;
    virtual qint64 Length() const = 0;

Q_SIGNALS:
    // The answer to Open(): see Error(), CurrentMode() is Stopped when there is none.
    void Opened();
    // The position moved; comes several times a second while playing.
    void StatusUpdate();
    // A Play() has come to its end: all was played, the rest cannot be, or Stop() was told.
    void Done();
};
