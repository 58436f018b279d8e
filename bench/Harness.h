// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

// What every bench needs: clocks that take turns, and the table that is printed in the end.

// One measurement: does its work for the given round and says how many microseconds that took. What is measured and
// what it is measured against get the same round numbers, so that they can work on the same data.
using Timed = std::function<double(int round)>;

// The work as a measurement of its whole duration.
Timed Clocked(std::function<void(int round)> work);

// Calls all of them in every round, in turn from the front and from the back, so that a disk or a processor that is
// slow for a while is slow for all. Gives the median of each in microseconds. `warmUps` rounds go before, not counted
// (their numbers are those of the first rounds).
std::vector<double> Alternate(const std::vector<Timed> &measured, int rounds, int warmUps = 3);

double Median(std::vector<double> values);

enum class Unit {
    Microseconds, // printed as ns, µs, ms or s, whatever fits
    Bytes,
    Count,
};

// The result: rows with what was measured and whether it is good enough.
class ResultTable {
public:
    // `ours` against a reference of the same run; met when ours / reference is at most `goal`.
    void AddRatio(const QString &what, const QString &size, double ours, double reference, double goal,
        Unit unit = Unit::Microseconds);
    // Met when `ours` is at most `goal`.
    void AddLimit(const QString &what, const QString &size, double ours, double goal, Unit unit);
    // A row that could not be measured; it counts as not met.
    void AddFailure(const QString &what, const QString &reason);

    // The rows as a Markdown table that also reads well as it is.
    QString Markdown() const;
    bool AllMet() const;

private:
    struct Row {
        QString what, size, median, reference, ratio, goal;
        bool met = false;
    };
    std::vector<Row> rows_;
};

// Where a bench finds what it works with and on. Folders exist.
struct BenchSetting {
    QString cacheFolder; // made logs are kept here from run to run
    QString workFolder; // empty at the start of the run, removed after it; on the same disk as the cache
    QString dxccFile;
    QString program; // the program as users start it
    QString referenceWindow;
    QString searchWindow;
    QString keyerLine;
    QString lookupWindow;
};

// A count with separators: "1,000,000".
QString SizeText(qint64 number);

// Ends the bench with a message; for what makes measuring pointless.
[[noreturn]] void GiveUp(const QString &why);
