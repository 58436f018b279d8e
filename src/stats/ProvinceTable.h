// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

// How far the operator has come with one province in one band; the numbers are those of the column LdA.
enum class ProvinceState : std::int8_t { None = -1, Worked = 0, Uploaded = 1, Confirmed = 2 };

// The 25 provinces of ProvinceNames() by the bands that count for them. A cell holds the highest state of all contacts
// of its province and band.
class ProvinceTable {
public:
    static constexpr int provinces = 25, bands = 12;
    // "160m" to "6m", and "Sat" for contacts by satellite whatever their band. Other bands do not count.
    static const QStringList &BandNames();

    ProvinceTable();

    ProvinceState Cell(int province, int band) const { return cells_[size_t(province)][size_t(band)]; }
    void Raise(int province, int band, ProvinceState state);
    // The highest state of a province in any band.
    ProvinceState Overall(int province) const;

    // Provinces of a band; "worked" is every one that is not empty, confirmed ones included.
    int Confirmed(int band) const;
    int Worked(int band) const;
    // Both, as the last row shows them: "3/7".
    QString Total(int band) const;
    // Provinces confirmed, or worked, in any band that counts.
    int ConfirmedAnywhere() const;
    int WorkedAnywhere() const;

    bool operator==(const ProvinceTable &) const = default;

private:
    int Count(int band, ProvinceState least) const;
    int CountAnywhere(ProvinceState least) const;

    std::array<std::array<ProvinceState, bands>, provinces> cells_;
};

// What the statistics want to know of a contact, as the log holds it.
struct ProvinceQso {
    QString province, band, satellite, lda, grid;
};

// Builds table and grid lists in one pass over the contacts, in any order.
class ProvinceTally {
public:
    ProvinceTally();

    // Counts a contact whose province is not empty. A province that is not in the table ("0") still gives its grid.
    void Add(const ProvinceQso &qso);

    const ProvinceTable &Table() const { return table_; }
    // Squares of four characters, each once, in the order in which they came. A square with a confirmed and another
    // contact is in both lists.
    const QStringList &ConfirmedGrids() const { return confirmed_.names; }
    const QStringList &WorkedGrids() const { return worked_.names; }

private:
    struct Grids {
        QStringList names;
        QSet<QString> known; // as they came, and as they are named
        void Add(const QString &grid);
    };

    ProvinceTable table_;
    QHash<QString, int> provinceOf_, bandOf_;
    Grids confirmed_, worked_;
};
