// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"

#include <QString>

// The contest contact in its edit window, field by field. Date "yyyymmdd", time "hhmm", as stored.
struct ContestEditFields {
    qint64 id = 0;
    QString band; // Combo1
    QString mode; // Combo2
    QString ownCall; // Text1
    QString call; // Text2
    QString frequency; // Text3, kilohertz
    QString date; // Text4
    QString time; // Text5
    QString rse, rsr; // Text6, Text7
    QString contest; // Label3, from LdA
    QString type; // Label10, from Nombre_Sat

    bool operator==(const ContestEditFields &) const = default;
};

namespace ContestEdit {

// The fields of a row, from FindContestQso or LastContestQso.
ContestEditFields FromRow(const QsoRow &row);

// "Edición de Registro #<id>".
QString Caption(qint64 id);

// Checks of fields when they are left; an empty message when all is well.
QString CheckFrequency(const QString &text);
QString CheckDate(const QString &text);
QString CheckTime(const QString &text);

// Whether kilohertz lie in a contest band, or in the ranges of 6000 and 2000 kHz that the contest window stores for its
// entries "6" and "2". Both edges count.
bool IsContestFrequency(qint64 kilohertz);

// Writes all fields; the contest that the row belongs to stays. False when the row has gone meanwhile.
Result<bool> Update(LogStore &store, const ContestEditFields &fields);

// "Elimina el QSO con <call>?"
QString DeleteQuestion(const QString &call);
// False when the row had gone already.
Result<bool> Delete(LogStore &store, qint64 id);

} // namespace ContestEdit
