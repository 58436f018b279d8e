// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FailingDevice.h"

#include <algorithm>

FailingDevice::FailingDevice(QIODevice &behind, qint64 limit, Trouble trouble)
    : behind_(behind)
    , limit_(limit)
    , trouble_(trouble)
{
}

FailingDevice::~FailingDevice()
{
    if (isOpen())
        FailingDevice::close();
}

bool FailingDevice::open(OpenMode mode)
{
    passed_ = 0;
    if (!behind_.isOpen() && !behind_.open(mode)) {
        setErrorString(behind_.errorString());
        return false;
    }
    return QIODevice::open(mode | Unbuffered);
}

void FailingDevice::close()
{
    QIODevice::close();
    behind_.close();
}

qint64 FailingDevice::readData(char *data, qint64 maxSize)
{
    const bool limited = trouble_ == Trouble::ReadError;
    if (limited && Room() <= 0 && maxSize > 0) {
        if (!behind_.atEnd())
            setErrorString(QStringLiteral("Input/output error"));
        return -1;
    }
    const qint64 count = behind_.read(data, limited ? std::min(maxSize, Room()) : maxSize);
    passed_ += std::max<qint64>(0, count);
    return count;
}

qint64 FailingDevice::writeData(const char *data, qint64 size)
{
    const bool limited = trouble_ == Trouble::DiskFull || trouble_ == Trouble::CutShort;
    const qint64 count = behind_.write(data, limited ? std::min(size, Room()) : size);
    passed_ += std::max<qint64>(0, count);
    if (count == size || trouble_ != Trouble::DiskFull)
        return count;
    setErrorString(QStringLiteral("No space left on device"));
    return -1;
}
