// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/StoreFailure.h"

#include <sqlite3.h>

Failure MissingFileFailure(const QString &path)
{
    return {u"No se encuentra la base de datos:\n%1\n\nNo se crea otra en su lugar, para que un log perdido no "
            "parezca un log vacío. Vuelva a poner el archivo en esa carpeta."_qs.arg(path),
        Failure::Kind::Missing};
}

bool ForeignFile::IsDatabaseHead(const QByteArray &head)
{
    return head.startsWith(QByteArrayView("SQLite format 3\0", 16));
}

Failure ForeignFile::Describe(const QString &path, const QByteArray &head)
{
    const QByteArray kind = head.mid(4, 15);
    if (kind == "Standard Jet DB" || kind == "Standard ACE DB")
        return {
            u"El archivo\n%1\nes una base de datos de Access de un programa anterior, que aquí no se puede leer. "
            "No fue modificado.\n\nPara traer sus QSOs: haga un ADIF de todos los logs con el programa que lo creó, "
            "guarde el archivo viejo con otro nombre e importe aquí ese ADIF."_qs.arg(path),
            Failure::Kind::Foreign};
    if (head.isEmpty())
        return {u"El archivo\n%1\nestá vacío: no es una base de datos. No fue modificado."_qs.arg(path),
            Failure::Kind::Damaged};
    return {u"El archivo\n%1\nno es una base de datos de Tordillo Compact. No fue modificado."_qs.arg(path),
        Failure::Kind::Foreign};
}

Failure StoreFailure(int engineCode, const QString &path, const QString &detail)
{
    using Kind = Failure::Kind;
    // A folder that became read-only in the middle of a write: the journal cannot be taken away.
    const int code = engineCode == SQLITE_IOERR_DELETE ? SQLITE_READONLY : engineCode & 0xFF;
    switch (code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {u"La base de datos\n%1\nestá en uso por otro programa. Ciérrelo y vuelva a intentarlo."_qs.arg(path),
            Kind::Locked};
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return {
            u"No se puede escribir en la base de datos\n%1\nEl archivo o su carpeta son de sólo lectura."_qs.arg(path),
            Kind::ReadOnly};
    case SQLITE_CANTOPEN:
        return {u"No se puede abrir la base de datos\n%1\nEl archivo o su carpeta no dan permiso."_qs.arg(path),
            Kind::ReadOnly};
    case SQLITE_FULL:
        return {u"No queda lugar en el disco para escribir en la base de datos\n%1\nLibere espacio y vuelva a "
                "intentarlo."_qs.arg(path),
            Kind::Full};
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return {u"La base de datos\n%1\nestá dañada (%2)."_qs.arg(path, detail), Kind::Damaged};
    case SQLITE_IOERR:
        return {u"El disco falló al usar la base de datos\n%1\n(%2)"_qs.arg(path, detail), Kind::Other};
    case SQLITE_ERROR:
        if (detail.startsWith(u"no such column") || detail.startsWith(u"no such table")
            || detail.contains(u"has no column named"))
            return {u"A la base de datos\n%1\nle faltan partes de esta versión (%2)."_qs.arg(path, detail),
                Kind::OldSchema};
        [[fallthrough]];
    default:
        return {u"Error en la base de datos\n%1\n(%2)"_qs.arg(path, detail), Kind::Other};
    }
}
