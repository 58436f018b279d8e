// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/ProvinceTable.h"

#include "core/Conversions.h"
#include "logging/Provinces.h"

#include <algorithm>

namespace {

constexpr int gridLength = 4;

// States that the service does not know are those of a contact that was never sent.
ProvinceState StateOf(const QString &lda)
{
    const double number = Conversions::LeadingNumber(lda);
    return number == 2 ? ProvinceState::Confirmed : number == 1 ? ProvinceState::Uploaded : ProvinceState::Worked;
}

} // namespace

const QStringList &ProvinceTable::BandNames()
{
    static const QStringList names{u"160m"_qs, u"80m"_qs, u"60m"_qs, u"40m"_qs, u"30m"_qs, u"20m"_qs, u"17m"_qs,
        u"15m"_qs, u"12m"_qs, u"10m"_qs, u"6m"_qs, u"Sat"_qs};
    return names;
}

ProvinceTable::ProvinceTable()
{
    for (auto &row : cells_)
        row.fill(ProvinceState::None);
}

void ProvinceTable::Raise(int province, int band, ProvinceState state)
{
    ProvinceState &cell = cells_[size_t(province)][size_t(band)];
    cell = std::max(cell, state);
}

ProvinceState ProvinceTable::Overall(int province) const
{
    const auto &row = cells_[size_t(province)];
    return *std::max_element(row.begin(), row.end());
}

int ProvinceTable::Count(int band, ProvinceState least) const
{
    return int(
        std::count_if(cells_.begin(), cells_.end(), [&](const auto &row) { return row[size_t(band)] >= least; }));
}

int ProvinceTable::CountAnywhere(ProvinceState least) const
{
    int count = 0;
    for (int province = 0; province < provinces; ++province)
        count += Overall(province) >= least;
    return count;
}

int ProvinceTable::Confirmed(int band) const { return Count(band, ProvinceState::Confirmed); }
int ProvinceTable::Worked(int band) const { return Count(band, ProvinceState::Worked); }
int ProvinceTable::ConfirmedAnywhere() const { return CountAnywhere(ProvinceState::Confirmed); }
int ProvinceTable::WorkedAnywhere() const { return CountAnywhere(ProvinceState::Worked); }

QString ProvinceTable::Total(int band) const
{
    return QString::number(Confirmed(band)) + u'/' + QString::number(Worked(band));
}

void ProvinceTally::Grids::Add(const QString &grid)
{
    if (known.contains(grid))
        return;
    known.insert(grid);
    names << grid;
}

ProvinceTally::ProvinceTally()
{
    for (const QString &name : ProvinceNames())
        provinceOf_.insert(name, int(provinceOf_.size()));
    for (const QString &name : ProvinceTable::BandNames())
        bandOf_.insert(name.toLower(), int(bandOf_.size()));
}

void ProvinceTally::Add(const ProvinceQso &qso)
{
    const ProvinceState state = StateOf(qso.lda);
    if (const QString grid = qso.grid.left(gridLength).trimmed().toUpper(); !grid.isEmpty())
        (state == ProvinceState::Confirmed ? confirmed_ : worked_).Add(grid);
    const int province = provinceOf_.value(qso.province.trimmed(), -1);
    if (province < 0)
        return;
    // Files of other programs write "20M".
    const QString band = qso.satellite.trimmed().isEmpty() ? qso.band.trimmed().toLower() : u"sat"_qs;
    if (const int at = bandOf_.value(band, -1); at >= 0)
        table_.Raise(province, at, state);
}
