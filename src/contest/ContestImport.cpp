// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/ContestImport.h"

#include "contest/ContestTable.h"

bool ContestQsoExists(Session &session, const QsoRow &row)
{
    static const QString sql = u"SELECT 1 FROM Tabla2 WHERE \"Nombre Log\"=? AND Estacion=? AND Modo=? AND Banda=? "
                               "AND MyCall=? LIMIT 1"_qs;
    Query query = session.Prepare(sql);
    query.Bind(1, row.NombreLog).Bind(2, row.Estacion).Bind(3, row.Modo).Bind(4, row.Banda).Bind(5, row.MyCall);
    return query.Next();
}

Result<ImportedContacts> StoreImportedContacts(LogStore &store, const QList<CabrilloReader::Contact> &contacts)
{
    return store.Write([&](Session &session) {
        ImportedContacts imported;
        for (const CabrilloReader::Contact &contact : contacts) {
            if (!contact.date.isEmpty() && ContestQsoExists(session, contact.row)) {
                ++imported.repeated;
                continue;
            }
            QsoRow row = contact.row;
            row.id = ContestTable::Insert(session, row);
            imported.stored << row;
        }
        return imported;
    });
}
