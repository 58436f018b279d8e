// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/QsoRow.h"
#include "logging/EntryRules.h"

#include <QString>
#include <QStringList>
#include <optional>

// The rules of the contest window that can be told without window and database: what a field takes, whether the entry
// can be stored, the row it becomes. Messages are what the operator reads, empty when all is well.

// The lists of the window, in the order shown: modes, bands, whole megahertz.
const QStringList &ContestModes();
const QStringList &ContestBands();
const QStringList &ContestMegahertz();

// What the fields hold when Enter is pressed.
struct ContestFields {
    QString ownCall; // Text2
    QString fecha; // "dd/mm/yyyy", UTC
    QString hora; // "hh:mm", UTC
    QString corresponsal;
    QString mode; // Combo1
    QString band; // Combo2
    QString mhz, khz; // mhz, Text1
    QString rse, rsr;
    QString contest; // Label2
    QString type; // Label3
};

enum class ContestFocus { OwnCall, Fecha, Hora, Corresponsal, Rse, Rsr };

// What keeps an entry from being stored: the message, empty where the focus alone says it, and the field to correct.
struct ContestRefusal {
    QString message;
    ContestFocus focus = ContestFocus::Corresponsal;
};

// The first thing missing, in the order own call, date, time, call, serial sent, serial received; after these a date
// or time that is none. Nothing when the entry can be stored.
std::optional<ContestRefusal> CheckContestEntry(const ContestFields &fields);

// The row of an entry that CheckContestEntry passed, date and time in the contest forms. The frequency is that of the
// fields, in kilohertz ("3" and "650" give "3650"), whatever the band says.
QsoRow BuildContestRow(const ContestFields &fields);

// "59" for SSB and FM, "599" for all else.
QString ContestReport(QStringView mode);

// The serial that follows one: its number plus 1; "1" after a text that is no number, the empty one included.
QString NextContestSerial(QStringView last);

// "<count> QSOs ", as after loading, and "<count + 1> QSOs", as after a contact has been stored under a caption.
QString ContestCountText(qint64 count);
QString ContestCountAfterStore(QStringView caption);

// --- Fields when they are left

// Date and time: the text that the field is to show, and the message. A date without a year goes into the year 2000,
// "9:5" becomes "09:05".
EntryRules::FieldCheck CheckContestFecha(QStringView text);
EntryRules::FieldCheck CheckContestHora(QStringView text);

// The own call: a text without letters or without digits is told; an empty one is not.
QString CheckContestOwnCall(QStringView text);

// "QSO con <call> ???" where the call typed is the own one. It warns and keeps nobody from storing.
QString OwnCallWarning(QStringView call, QStringView ownCall);

// What Label6 shows for an entry of the megahertz list; nothing for one that leaves it as it is.
std::optional<QString> ContestBandOfMegahertz(QStringView megahertz);

// --- Keys. The call worked takes what EntryRules::KeyFilter::Callsign says, the doubtful "?" included; it has no place
// in the other fields.

enum class ContestFilter {
    OwnCall, // letters, digits, "/"; small letters made capital
    Date, // digits, "/"
    Time, // digits, ":"
    Digits, // kilohertz, and the serial sent of an "Incremental" contest
    SerieText, // letters and digits: other serials sent, and every serial received
};

// The filter of `RSE`.
ContestFilter SentSerieFilter(QStringView type);

// The character as the field takes it; nothing when it takes none of it. Texts that are pasted: what passes, in order.
std::optional<QChar> FilterContestKey(QChar key, ContestFilter filter);
QString FilterContestText(QStringView text, ContestFilter filter);
