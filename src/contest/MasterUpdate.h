// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"

#include <QDate>
#include <QString>
#include <optional>

// What becomes of a list of calls that was fetched from the web.
struct MasterUpdate {
    enum class Kind {
        NoList, // the text holds no date: it is not a list
        UpToDate, // the present list is not older
        Replaced, // master.txt is the new one now
    };
    Kind kind = Kind::NoList;
    QString message; // for the operator
};

// Writes the fetched text to webomc.txt in the folder, each line ended by LF and CR, and over master.txt where its
// date, which the first line holds between "#", is later than `present`; a present list without a date is older than
// any. On a failure master.txt is as it was.
Result<MasterUpdate> TakeMasterList(
    FileSystem &files, const QString &folder, std::optional<QDate> present, const QString &text);

// What the operator is asked where the fetched list is newer than the present one; else empty.
QString MasterUpdateOffer(std::optional<QDate> present, const QString &text);
