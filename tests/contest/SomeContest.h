// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/ContestLogs.h"
#include "contest/ContestTable.h"
#include "support/Fixtures.h"

// A database, and contacts of a contest to put into it.
namespace SomeContest {

inline const QString name = u"CQWW"_qs;

struct Contact {
    const char16_t *call = u"LU1ABC";
    const char16_t *mode = u"SSB";
    const char16_t *band = u"40m";
    const char16_t *date = u"20261124";
    const char16_t *time = u"2115";
    const char16_t *rse = u"1";
    const char16_t *rsr = u"12";
    const char16_t *contest = u"CQWW";
    const char16_t *type = u"Incremental";
};

inline QsoRow Row(const Contact &contact)
{
    QsoRow row = RowOf(u"MyCall=LU9ZZZ;Frecuencia=7050"_qs);
    const std::pair<QString QsoRow::*, const char16_t *> columns[] = {{&QsoRow::Estacion, contact.call},
        {&QsoRow::Modo, contact.mode}, {&QsoRow::Banda, contact.band}, {&QsoRow::Fecha, contact.date},
        {&QsoRow::Hora, contact.time}, {&QsoRow::RSE, contact.rse}, {&QsoRow::RSR, contact.rsr},
        {&QsoRow::NombreLog, contact.contest}, {&QsoRow::LdA, contact.contest}, {&QsoRow::Nombre_Sat, contact.type}};
    for (const auto &[column, value] : columns)
        row.*column = QString::fromUtf16(value);
    return row;
}

// The `number`th contact of a long contest: every call once or twice, two modes, four bands.
inline QsoRow Numbered(int number)
{
    static const QStringList bands{u"80m"_qs, u"40m"_qs, u"20m"_qs, u"15m"_qs};
    QsoRow row = Row({});
    row.Estacion = u"LU%1%2"_qs.arg(number % 10).arg(number * 7 % 12000);
    row.Modo = number % 3 == 0 ? u"CW"_qs : u"SSB"_qs;
    row.Banda = bands.at(number % 4);
    row.Hora = u"%1%2"_qs.arg(number / 600 % 24, 2, 10, QChar(u'0')).arg(number / 10 % 60, 2, 10, QChar(u'0'));
    row.RSE = QString::number(number);
    return row;
}

// So many of them.
inline QList<QsoRow> Many(int count)
{
    QList<QsoRow> rows;
    for (int number = 0; number < count; ++number)
        rows << Numbered(number);
    return rows;
}

} // namespace SomeContest

class ContestTest : public StoreTest {
    Q_OBJECT

protected:
    // Stores them in one step; ids count on from the last.
    static bool Store(LogStore &store, const QList<QsoRow> &rows)
    {
        return static_cast<bool>(store.Write([&](Session &session) {
            for (const QsoRow &row : rows)
                ContestTable::Insert(session, row);
        }));
    }
    bool Store(const QList<QsoRow> &rows) { return Store(*store_, rows); }
};
