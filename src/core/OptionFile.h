// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>

class Logbook;

// The optional text files by which an operator points parts of the program elsewhere: servicios.ini, puertos.ini,
// programas.ini. Lines "key=value" below a line "[section]"; ";" and "#" begin a comment line. Keys are compared
// without regard to case. A missing file is an empty one.
class OptionFile {
public:
    OptionFile(const Logbook &logbook, const QString &name, const QString &section);

    // The value of a key, or `preset` where the file says nothing.
    QString Value(const QString &key, const QString &preset = {}) const;

private:
    QHash<QString, QString> values_;
};
