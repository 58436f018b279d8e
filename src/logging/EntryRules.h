// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>

// The rules of the entry window that can be told without the window: what a field takes, whether its content is good,
// where Enter leads. Messages are what the operator reads, empty when all is well.
namespace EntryRules {

// --- Reports

// "599" for the modes "CW" and "Sat CW", "59" for all others.
QString ReportForMode(QStringView mode);

// The check when a report field is left: 0 good, 1 bad. A report is as long as ReportForMode's and ends in 1 to 9; two
// characters begin with 1 to 5, of three the middle one is 1 to 9 and the first is not looked at.
int ValidateReport(QStringView text, QStringView mode);
QString BadReportMessage(QStringView text);

// --- The whole entry

struct EntryFields {
    QString corresponsal;
    QString modo;
    QString rse;
    QString rsr;
    bool viaSatellite = false;
    QString satellite; // the name chosen
    QString station; // own call
    QString operatorCall;
};

enum class EntryFocus { Corresponsal, Fecha, Hora, Rse, Rsr, Kilohertz, Grid, Obs, Satellite };

// The first thing wrong with call and reports. Here a report of any length begins with 1 to 5, ends in 1 to 9, and a
// middle digit is not looked at; RSR is checked before RSE.
QString ValidateEntry(const EntryFields &fields);

struct WalkRefusal {
    enum class Icon { Exclamation, Critical };
    QString message;
    Icon icon = Icon::Exclamation;
    EntryFocus focus = EntryFocus::Corresponsal; // the field to correct
};

// What keeps Enter from going on, whatever field has the focus: a bad entry, a satellite QSO without a satellite, a
// QSO with the own station or its operator. Nothing when the walk goes on.
std::optional<WalkRefusal> RefuseWalk(const EntryFields &fields);

// Where Enter leads from the field with the number `entryField`, 1 to 8 in the order of EntryFocus. Nothing means that
// the QSO is to be stored: from Obs, and from a number that is no field's.
std::optional<EntryFocus> NextEntryField(int entryField, bool qtrManual, bool viaSatellite);

// --- Date and time

struct FieldCheck {
    QString text; // what the field is to show
    QString message;
};

// The date when its field is left: "dd/mm/yyyy". A date without a year ("24/11/") goes into the year 2000. In a text
// that is refused "-" becomes "/", so that leaving the field once more takes it; the message shows it as it was.
FieldCheck CheckFecha(QStringView text);

// The time when its field is left, brought to "hh:mm": "9:5" comes out as "09:05". What is no time stays as it is.
FieldCheck CheckHora(QStringView text);

// --- Grid locators

enum class GridOf { OwnStation, Correspondent };

// A grid while it is typed: letters "A" to "Z" at places 1, 2, 5 and 6, digits elsewhere. Only the last character is
// looked at; it is cut off when it does not fit.
QString CutBadGridCharacter(QStringView text);

// A grid after a change: `before` is what the field held. One character more is a key and looked at as above; when more
// came in one piece (pasted, dropped) the whole text is taken as if it had been typed anew.
QString TidyGrid(QStringView text, QStringView before);

// A grid when its field is left: 0 or 6 characters, the correspondent's also 4.
bool GridLengthAllowed(qsizetype length, GridOf kind);
QString BadGridMessage();

// --- Keys

// What a field takes. All take "?", which marks a doubtful character. Backspace and the like are no characters and are
// left to the window.
enum class KeyFilter {
    Callsign, // letters, digits, "/"; small letters made capital
    Grid, // letters, digits; small letters made capital
    Date, // digits, "/"
    Time, // digits, ":"
    Digits,
    UtcOffset, // digits, "-"
};

// The character as the field takes it; nothing when it takes none of it.
std::optional<QChar> FilterKey(QChar key, KeyFilter filter);

} // namespace EntryRules
