// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"

#include <QString>
#include <QStringList>
#include <optional>

class Logbook;

// QSL cards are drawn by a program of its own, Bagual. Its folder is C:\Bagual; elsewhere than on Windows, and where
// programas.ini says so, another one stands for it, while messages name it as that program knows it.
//
//   Bagual.exe      the program
//   MisQSLs/*.qsl   card designs, text files; "SuCall=" tells the station that a design is made for
//   Salida/         the pictures it writes

// The contact on a card, as the edit window shows it: date "dd/mm/yyyy".
struct QslCard {
    QString ownCall, call, date, time, mode, band, report, satellite, remarks;
};

// The folder of this machine that stands for C:\Bagual: programas.ini ([programas], key "bagual", relative to the
// program folder), else that folder on Windows and "Bagual" in the home folder elsewhere.
QString QslFolder(const Logbook &logbook);

// The program file in that folder, in whatever letter case it is written; empty when there is none.
QString QslProgram(const QString &folder);

// Looks through the designs, in the order of their names without regard to case, for the first made for this call.
// Letter case of the call counts. A missing folder holds no designs.
struct QslDesign {
    std::optional<QString> path;
    QStringList unreadable; // designs looked at that could not be read
};
QslDesign FindQslDesign(const FileSystem &files, const QString &folder, const QString &ownCall);

// What the program is told, in one piece: "Bagua$de=LU9ZZZ$para=...". Blanks in the remarks stand as they are.
QString QslArgument(const QslCard &card);

// The name of the picture without its folder, "LU1ABC_24112026.jpg". `call` may hold slashes, as the message shows it;
// the file has "_" in their place.
QString QslPictureShown(const QslCard &card);
QString QslPictureFile(const QString &folder, const QslCard &card);
