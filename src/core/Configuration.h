// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QString>
#include <QStringList>

// The station's settings, as config.ini keeps them: one field a key, in the order of the file. The controls of the
// settings window and some of the main window are bound to these fields, so they are always what the operator sees.
struct Configuration {
    QString Estacion; // own callsign
    QString Operador;
    QString DiferUTC; // hours from UTC as typed, for example "-3"
    QString LogenUso; // name of the open log, as the file told it; LogInUse of the Logbook is the living one
    QString GridLoca;
    QString UserLdA, PassLdA;
    bool NoBorrar = false;
    bool Pantalla = false; // dark
    QString MySOTA, MyPOTA;
    bool Activac = false;
    QString HAMQuser, HAMQpass;
    QString LDAQ_web; // base address of the LdA server
    QString LDAQuser, LDAQpass;
    QString eQSLuser, eQSLpass;
    QString ArcAudio;
    QString Puerto; // "NINGUNO", "COM1" to "COM20", or nothing yet
    bool PinPTT = false; // the line: true RTS, false DTR
    QString TAntes, TDespues; // milliseconds
    bool BuscaE = false; // look the country up while typing

    bool operator==(const Configuration &) const = default;
};

// Merges the lines of a config.ini into `configuration`. A key counts where its text occurs anywhere in a line; its
// value is what stands from the tenth character on, at most 100 characters (1000 for the audio file). Keys that are
// absent leave their field as it was, and so do an Activac_ of 0 and an empty port or delay.
// Gives whether the theme (Pantalla=) was among the lines.
bool ReadConfigLines(const QStringList &lines, Configuration &configuration);

// The 25 lines of the file. The calls go out in upper case, three of the passwords scrambled.
QStringList ConfigLines(const Configuration &configuration, const QString &logInUse);

// Whether a log of this name can be found again at the next start: its name comes back from the file as it went in,
// and is not taken for another key.
bool FitsConfiguration(const QString &logName);

// The light scrambling of passwords, character by character in windows-1252: direction 0 scrambles, -1 unscrambles,
// any other gives an empty text. Its wrap at 255 instead of 256 is part of the format. A character outside the code
// page is taken as "?".
QString ScrambleText(const QString &text, const QString &key, int direction);

// The key of the passwords in config.ini.
extern const QString passwordKey;
