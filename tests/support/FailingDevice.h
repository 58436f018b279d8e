// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>

// Stands before another device and spoils it after a number of bytes, for tests of what reads and writes text files.
// Opened, closed and positioned together with the device behind it, which must outlive it.
class FailingDevice : public QIODevice {
    Q_OBJECT

public:
    enum class Trouble {
        DiskFull, // the write that passes the limit stores what still fits, and fails, as every later one
        CutShort, // the same, but each write claims to have stored what still fitted: 0 at the limit
        ReadError, // the read that passes the limit gives what comes before it, the next one fails
    };

    // `limit`: bytes read or written through this device, counted from its opening.
    FailingDevice(QIODevice &behind, qint64 limit, Trouble trouble);
    ~FailingDevice() override;

    // Always without a buffer of its own, so that the limit is met where it stands.
    bool open(OpenMode mode) override;
    void close() override;
    bool isSequential() const override { return behind_.isSequential(); }
    qint64 size() const override { return behind_.size(); }
    bool seek(qint64 position) override { return QIODevice::seek(position) && behind_.seek(position); }
    bool atEnd() const override { return behind_.atEnd(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    qint64 Room() const { return limit_ - passed_; }

    QIODevice &behind_;
    const qint64 limit_;
    const Trouble trouble_;
    qint64 passed_ = 0;
};
