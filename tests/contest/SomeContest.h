// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/ContestTable.h"
#include "support/FaultVfs.h"

#include <QTemporaryDir>
#include <memory>

// A database in a temporary folder, and contacts of a contest to put into it.
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
    const auto text = [](const char16_t *value) { return QString::fromUtf16(value); };
    QsoRow row;
    row.Estacion = text(contact.call);
    row.Modo = text(contact.mode);
    row.Banda = text(contact.band);
    row.Fecha = text(contact.date);
    row.Hora = text(contact.time);
    row.RSE = text(contact.rse);
    row.RSR = text(contact.rsr);
    row.MyCall = u"LU9ZZZ"_qs;
    row.NombreLog = text(contact.contest);
    row.LdA = row.NombreLog;
    row.Nombre_Sat = text(contact.type);
    row.Frecuencia = u"7050"_qs;
    return row;
}

// An empty database on a whole disk; null where it cannot be made.
inline std::unique_ptr<LogStore> NewStore(const QTemporaryDir &folder)
{
    FaultVfs::Instance().Reset();
    FaultVfs::Instance().SetRealSyncs(false);
    auto store = std::make_unique<LogStore>(folder.filePath(u"base0.mdb"_qs), "fault");
    return store->CreateEmpty() ? std::move(store) : nullptr;
}

// Stores them in one step; ids count on from the last.
inline bool Store(LogStore &store, const QList<QsoRow> &rows)
{
    return static_cast<bool>(store.Write([&](Session &session) {
        for (const QsoRow &row : rows)
            ContestTable::Insert(session, row);
    }));
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

} // namespace SomeContest
