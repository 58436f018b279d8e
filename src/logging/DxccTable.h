// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

// The table of callsign prefixes and their countries, filled from the lines of "dxcc.txt".
//
// A row is "prefix;...;country": the prefix stands before its first ";", the country (at most 100 characters of it)
// after its last; what lies between is not read. Where two rows have one prefix the first wins. Rows count from the
// top of the file; the first 22,901 of them are searched, up to the first empty one.
class DxccTable {
public:
    static constexpr int maxRows = 23001;
    static constexpr int searchedRows = 22901;

    enum class LineUse {
        Searched, // the row is found from now on, or is the empty row that ends the table
        NeverSearched, // kept and counted, but behind an empty row or behind the last searched one
        NoSeparator, // no ";": skipped, the next line takes its place
        NoRoom, // the table holds maxRows rows: skipped
    };

    // Takes the next line of the file, outer blanks not counting. Lines may be of any length.
    LineUse AddLine(QStringView line);

    // Number of rows kept.
    int Size() const { return rowCount_; }

    // The country of a call in upper case, found by its longest listed prefix; the empty text when no row matches. In
    // place of "Argentina" comes the province that the call's own letters name: those behind the first "/" if it has
    // one ("LU1ABC/MM" is "Mendoza"), else those from the fourth character on; empty when they name none.
    // `call` is cut to the prefix that matched, or to its first character when none did.
    QString CountryOfCall(QString &call) const;

    // The same with the call left alone. Neither allocates memory.
    QString CountryOf(QStringView call) const;

    // What the entry window shows beside the call: the country, or "Argentina" when that is empty.
    QString CountryLabel(QStringView call) const;

private:
    struct Row {
        QString prefix;
        QString country;
    };
    // A place of the hash table: part of the prefix's hash, and the row's place in rows_ plus one (0: free).
    struct Slot {
        quint32 tag = 0;
        quint32 row = 0;
    };

    const Row *FindPrefix(quint64 hash, QStringView prefix) const;
    const Row *FindLongestPrefix(QStringView call) const;
    static QString ShownCountry(const Row *row, QStringView call);
    void Insert(QStringView prefix, QStringView country);

    std::vector<Row> rows_;
    std::vector<Slot> slots_;
    qsizetype longestPrefix_ = 0;
    int rowCount_ = 0;
    bool ended_ = false;
};
