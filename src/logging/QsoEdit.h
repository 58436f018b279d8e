// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"

#include <QString>
#include <QStringList>
#include <optional>

// The contact in the edit window, field by field as it shows them: date "dd/mm/yyyy", time "hh:mm".
struct EditFields {
    qint64 id = 0;
    QString station; // Text1
    QString call; // Text2
    QString operatorCall; // Text3
    QString date; // Text4
    QString time; // Text5
    QString reportSent, reportReceived; // Text6, Text7
    QString remarks; // Text8
    QString mhz, khz; // mhz, Text9
    QString band; // Label11
    QString mode; // Combo2
    QString ownGrid, grid; // Text10, Text11
    QString satellite; // Text12
    QString SOTA, POTA, MYSOTA, IOTA;
    QString lda; // the state towards LdA, as stored

    bool operator==(const EditFields &) const = default;
};

namespace QsoEdit {

// All fields from a row of the log.
EditFields FromRow(const QsoRow &row);

// The modes that the window offers, when opened from a list and by key; a mode that is not among them is added last.
QStringList ModesForList(const QString &mode);
QStringList ModesForKey(const QString &mode);

// What "Subido:" and "Confirmado:" say for a state.
QString Uploaded(const QString &lda);
QString Confirmed(const QString &lda);

// What keeps the contact from being saved.
struct Refusal {
    enum class Field { Satellite, Call, ReportSent, ReportReceived, Mode };
    QString message;
    bool critical = false;
    Field field = Field::Call;
};
std::optional<Refusal> RefuseSave(const EditFields &fields);

// Checks of fields when they are left; an empty message when all is well.
QString CheckDate(const QString &text);
QString CheckTime(const QString &text);

// Writes the contact. `shown` is what the window held before the operator touched it: what did not change since stays
// as it is stored, byte for byte. Saving always rewrites the province, the state towards LdA, which becomes empty, and
// the band text of 1267 MHz; remarks lose their apostrophes, a satellite becomes upper case. Gives false when the row
// has gone meanwhile.
Result<bool> UpdateQso(LogStore &store, const EditFields &fields, const EditFields &shown);

// False when the row has gone already.
Result<bool> DeleteQso(LogStore &store, qint64 id);

// The row of this id, or of the newest contact of the log when there is none; nothing when the row has gone.
Result<std::optional<QsoRow>> FindQso(LogStore &store, const QString &logName, std::optional<qint64> id);

} // namespace QsoEdit
