// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "logging/DxccTable.h"
#include "logging/Provinces.h"

#include <QStringList>

// The search by its definition: all rows from the top, for the call and each of its beginnings.
inline QString CountryByScan(const QStringList &rows, QString &call)
{
    if (call.isEmpty())
        return {};
    const QString whole = call;
    for (;; call.chop(1)) {
        for (int i = 0; i < DxccTable::searchedRows && i < rows.size() && !rows[i].isEmpty(); ++i) {
            const QString &row = rows[i];
            if (row.indexOf(u';') != call.size() || !row.startsWith(call))
                continue;
            const QString country = row.sliced(row.lastIndexOf(u';') + 1).left(100);
            if (country != u"Argentina")
                return country;
            const qsizetype slash = whole.indexOf(u'/');
            return ProvinceOfSuffix(slash < 0 ? whole.mid(3, 10) : whole.mid(slash + 1, 5));
        }
        if (call.size() == 1)
            return {};
    }
}
