// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/QsoRow.h"
#include "core/Result.h"

#include <QByteArray>
#include <QDateTime>
#include <QIODevice>
#include <QString>

// ADIF as it is written: a header of five lines, a record a line, windows-1252, CR LF. Lengths count characters.
namespace AdifWriter {

// The header, with the version and the present local time.
QByteArray Header(const QDateTime &localNow);

// One record of a search result, from the texts of its list row (sub-items 1 to 21). With `remarksAsQslMessage` the
// remarks are written as QSLMSG too.
QByteArray SearchRecord(const QStringList &subItems, bool remarksAsQslMessage);

// One record of the backup of all logs.
QByteArray BackupRecord(const QsoRow &row);

// The last line of both.
QByteArray End();

// Writes the whole of `bytes`; a disk that takes less is a failure that names the path.
Result<void> Write(QIODevice &device, const QByteArray &bytes, const QString &path);

} // namespace AdifWriter
