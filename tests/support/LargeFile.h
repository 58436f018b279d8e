// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>
#include <algorithm>

// Stands for a file of `size` bytes that nobody wrote: the pattern over and over.
class LargeFile : public QIODevice {
public:
    LargeFile(QByteArray pattern, qint64 size)
        : pattern_(std::move(pattern))
        , size_(size)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    qint64 size() const override { return size_; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        qint64 done = 0;
        for (qint64 at = pos(); done < maxSize && at + done < size_;) {
            const qint64 place = (at + done) % pattern_.size();
            const qint64 part = std::min({maxSize - done, pattern_.size() - place, size_ - at - done});
            std::copy_n(pattern_.constData() + place, part, data + done);
            done += part;
        }
        return done;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray pattern_;
    qint64 size_;
};
