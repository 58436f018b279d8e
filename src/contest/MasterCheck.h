// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileSystem.h"
#include "core/TextFile.h"

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

// A call of the list that fits what was typed.
struct MasterHit {
    QString call;
    // Begins as typed (shown in one colour), or differs at the third character.
    bool prefix = true;
    // For one that differs: per character of the call, whether it differs from what was typed. Characters behind the
    // end of what was typed do.
    QList<bool> different;

    bool operator==(const MasterHit &) const = default;
};

// The list of known contest calls, in the order of its file.
class MasterCheck {
public:
    // Fewer typed characters find nothing.
    static constexpr qsizetype shortestSearch = 3;
    // Calls that differ: the search ends with the one that makes them more than 15.
    static constexpr int mostNearHits = 16;

    MasterCheck() = default;
    // The calls in upper case, without outer blanks.
    explicit MasterCheck(QStringList calls, std::optional<QDate> date = {});

    const QStringList &Calls() const { return calls_; }
    // The date of the list; nothing where the file has none that can be read.
    std::optional<QDate> Date() const { return date_; }

    // First all calls that begin with `text`, then those that agree in the first two characters and from the fourth
    // on, at most mostNearHits of them and none twice; both in the order of the list. "?" in the text stands for any
    // character in the second group. Looks only at calls that share the first two characters; only a text with "?"
    // there, or with "*", looks at all.
    QList<MasterHit> Search(QStringView text) const;

private:
    // What tells nearly all calls apart without touching their texts.
    struct Entry {
        quint64 key = 0; // the characters from the third to the tenth, a byte each, the third lowest
        quint32 place = 0; // in calls_
        quint16 length = 0; // cut at 65535
        bool exact = false; // the key says all of the call but its first two characters
    };
    struct Range {
        quint32 first = 0, count = 0;
    };
    struct Typed;

    void AddPrefixHits(QList<MasterHit> &hits, const Typed &typed, Range range) const;
    void AddNearHits(QList<MasterHit> &hits, const Typed &typed, const QList<Range> &ranges) const;
    void CollectNear(std::vector<quint32> &found, const Typed &typed, Range range) const;
    QList<MasterHit> SearchAll(QStringView text) const;

    QStringList calls_;
    std::optional<QDate> date_;
    // Calls with the same first three characters stand side by side, in the order of the list.
    std::vector<Entry> entries_;
    std::vector<QString> texts_; // of the entries; calls_ shares them
    QHash<quint32, QList<Range>> ranges_; // by the first two characters, one range for each third
};

// Reads master.txt: one call a line, outer blanks off, in upper case; a line with "#" holds the date of the list. Line
// ends may be of any kind, LF CR as written by the update among them; empty lines count for nothing. A missing file
// gives an empty list. What cannot be used goes to `report`.
MasterCheck LoadMasterFile(const FileSystem &files, const QString &path, const Reporter &report = {});

// The date of a line of the form "#24/11/2026#", with or without marks; nothing where it holds none.
std::optional<QDate> MasterDateOf(QStringView line);

// "MasterCheck (<count>)".
QString MasterCheckCaption(qsizetype count);

// Makes a list: the calls of `calls`, and behind them the lines of datos6.txt that are not among them, written to
// master_hoy.txt, one a line. Empty lines of datos6.txt are passed over; one that holds a date is taken like any other.
struct MasterBuild {
    qsizetype fresh = 0; // in datos6.txt
    qsizetype current = 0; // in `calls`
    qsizetype added = 0;
    qsizetype total = 0;
};
Result<MasterBuild> BuildMasterList(
    FileSystem &files, const QString &newPath, const QStringList &calls, const QString &outputPath);

// "NUEVO 3", "ACTUAL 2", "AGREGA 1", "QUEDA 3".
QStringList MasterBuildTexts(const MasterBuild &build);
