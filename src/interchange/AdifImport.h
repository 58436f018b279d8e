// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/QsoRow.h"

#include <QByteArrayView>
#include <QMap>
#include <QStringList>

// From records to contacts: what the fields of a foreign record become in the log.
namespace AdifImport {

// How the records of a file are to be taken.
struct Settings {
    bool fromLda = false; // the file was written by the LdA service
    QString typedStation; // replaces the station call of every record when not empty
    bool sotaFields = false; // NAME and COMMENT hold summit references
    bool potaFields = false; // NAME and COMMENT hold park references
};

// What went wrong with records, in the order in which it is told.
enum class Trouble { Date, Time, Reports, BandAndFrequency, Incomplete };
// "> 3 error(es) Fecha" and its like; only the kinds that occurred.
QStringList TroubleLines(const QMap<Trouble, int> &troubles);

// What became of one record.
struct Contact {
    QsoRow row; // date "dd/mm/yyyy", time "hh:mm"; without log name, province and id
    bool dropped = false;
    QList<Trouble> troubles;
    QStringList changes; // what was cut or filled in, for the operator
};
Contact ParseRecord(QByteArrayView record, const Settings &settings);

} // namespace AdifImport
