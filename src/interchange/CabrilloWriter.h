// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"
#include "core/QsoRow.h"
#include "core/Result.h"

#include <QList>
#include <QStringList>
#include <optional>

// A contest as a Cabrillo 3.0 file: the QSO lines, the header above them, the end below. Rows are those of Tabla2.
// Texts that go to the operator's text box or to the file have CR LF line ends.
namespace CabrilloWriter {

// The items of a box of the header window, in their order, and the one that it starts with.
struct Choice {
    QStringList items;
    QString start;
};
struct Choices {
    Choice category; // Combo1
    Choice power; // Combo2
    Choice band; // Combo3
    Choice mode; // Combo4
    Choice overlay; // Combo5
};
const Choices &HeaderChoices();
// The operators are asked for in this category only.
bool HasOperators(QStringView category);

// The fields of the header window.
struct Header {
    QString callsign; // Text1
    QString contest; // Text3
    QString category, power, band, mode, overlay; // Combo1 to Combo5
    QString operators; // Text9
    QString name; // Text2
    QString address1, address2, address3; // Text4, Text5, Text6
    QString email; // Text7
};

// Reads the personal fields (name, addresses, email) from datos.cbr into the header, which keeps its other fields.
// A missing or unreadable file empties the five; lines that lack are empty, lines behind the fifth are ignored.
void LoadPersonalData(const FileSystem &files, const QString &path, Header &header);
// Writes datos.cbr anew; a failure leaves the old one.
Result<void> SavePersonalData(FileSystem &files, const QString &path, const Header &header);

// What has to be filled in first, and what is said about it.
struct Missing {
    QString Header::*field; // &Header::callsign or &Header::name
    QString text;
};
std::optional<Missing> FirstMissing(const Header &header);

// The fifteen lines of the header. Each line is written, also with an empty value.
QString HeaderText(const Header &header);

// Where a band stands in the format, in kilohertz ("7000" for "40m"); empty for bands that it does not know.
QString KilohertzOfBand(QStringView band);

// The QSOs among the rows of a contest (those with a mode), by date, time and id, oldest first.
QList<QsoRow> QsosInOrder(QList<QsoRow> rows);

// One QSO line without line end: fixed columns, the last field padded too. Longer values push what stands behind them
// to the right; a band that has no frequency in the format stands there itself.
QString QsoLine(const QsoRow &row);

// The lines of a whole contest, or why there are none.
struct QsoLines {
    struct Refusal {
        QString text;
        bool critical; // the icon of the box; an exclamation mark otherwise
    };
    QString text; // what goes to Text8
    QList<QsoRow> rows; // the QSOs, in the order of their lines
    std::optional<Refusal> refusal;
};
// Takes the rows of one contest in any order, the header row too. Another own call than `ownCall` in one of the QSOs
// refuses the whole.
QsoLines BuildLines(const QList<QsoRow> &rows, const QString &ownCall);

// Title of the header window.
QString HeaderTitle(const QString &contest, qsizetype count);

// The content of the file: what stands in Text8 (with any kind of line ends) and the closing line.
QString FileText(const QString &text);
// Replaces the file; on a failure the old file stands untouched.
Result<void> WriteFile(FileSystem &files, const QString &path, const QString &fileText);

} // namespace CabrilloWriter
