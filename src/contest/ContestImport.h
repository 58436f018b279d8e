// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"
#include "interchange/CabrilloReader.h"

#include <QList>

// Contacts of a Cabrillo file on their way into the open contest.

// Whether the contest holds a contact with these calls, mode and band, whenever it was. The rule of files is wider than
// that of the entry window: one contact is taken for each station, mode and band.
bool ContestQsoExists(Session &session, const QsoRow &row);

struct ImportedContacts {
    QList<QsoRow> stored; // with their ids, in the order of the file
    int repeated = 0; // the contest held them already, or the file twice
};
// Stores those that are not there yet, all of them in one transaction or, on a failure, none. One without a date is
// stored in any case.
Result<ImportedContacts> StoreImportedContacts(LogStore &store, const QList<CabrilloReader::Contact> &contacts);
