// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/ProvinceTable.h"

#include "core/Conversions.h"
#include "logging/Provinces.h"

#include <algorithm>

namespace {

constexpr qsizetype gridLength = 4;

// States that the service does not know are those of a contact that was never sent.
ProvinceState StateOf(const QString &lda)
{
    const double number = lda.size() == 1 ? lda[0].unicode() - u'0' : Conversions::LeadingNumber(lda);
    return number == 2 ? ProvinceState::Confirmed : number == 1 ? ProvinceState::Uploaded : ProvinceState::Worked;
}

// The place of a name, outer blanks not regarded; -1 for one that has none.
int Find(const QHash<QString, int> &places, const QString &name)
{
    const int place = places.value(name, -1);
    return place >= 0 ? place : places.value(name.trimmed(), -1);
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
    // Nearly all squares are known, and looked up without a copy.
    const QString head = QString::fromRawData(grid.constData(), std::min(grid.size(), gridLength));
    if (known.contains(head))
        return;
    const QString kept(head.constData(), head.size()); // the text of `head` ends with that of the contact
    known.insert(kept);
    const QString name = kept.trimmed().toUpper();
    if (name.isEmpty() || (name != kept && known.contains(name)))
        return;
    known.insert(name);
    names << name;
}

ProvinceTally::ProvinceTally()
{
    for (const QString &name : ProvinceNames())
        provinceOf_.insert(name, int(provinceOf_.size()));
    for (const QString &name : ProvinceTable::BandNames()) {
        const int band = int(bandOf_.size()) / 2;
        bandOf_.insert(name, band);
        bandOf_.insert(name.toUpper(), band); // as files of other programs write it
    }
}

void ProvinceTally::Add(const ProvinceQso &qso)
{
    const ProvinceState state = StateOf(qso.lda);
    (state == ProvinceState::Confirmed ? confirmed_ : worked_).Add(qso.grid);
    const int province = Find(provinceOf_, qso.province);
    if (province < 0)
        return;
    const bool satellite = !qso.satellite.trimmed().isEmpty();
    if (const int band = satellite ? ProvinceTable::bands - 1 : Find(bandOf_, qso.band); band >= 0)
        table_.Raise(province, band, state);
}
