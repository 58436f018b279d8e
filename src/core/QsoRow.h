// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

// One row of Tabla1, Tabla2 or Tabla3, under the columns' own names. All but `id` are texts; a null reads as an empty
// text. In Tabla1 and Tabla3 `Fecha` is "yyyy-mm-dd" and `Hora` "hh:mm:ss", in Tabla2 "yyyymmdd" and "hhmm".
struct QsoRow {
    qint64 id = 0;
    QString Modo;
    QString Banda;
    QString MyCall;
    QString Estacion;
    QString Fecha;
    QString Hora;
    QString RSE;
    QString RSR;
    QString Obs;
    QString Operador;
    QString NombreLog;
    QString Frecuencia;
    QString MiGrid;
    QString SuGrid;
    QString LdA;
    QString Nombre_Sat;
    QString Argento;
    QString SOTA;
    QString IOTA; // in Tabla1 the own park reference (MY_POTA)
    QString POTA;
    QString MYSOTA;
    QString Perfil;

    bool operator==(const QsoRow &) const = default;
};

namespace QsoColumns {

// The text columns in the order of the struct above: their names, quoted for SQL, and their places in a row.
struct Column {
    const char *sql;
    QString QsoRow::*field;
};
inline constexpr int count = 22;
extern const Column all[count];

// "id,Modo,...": the columns of a SELECT whose rows Read takes.
const QString &SelectList();

} // namespace QsoColumns
