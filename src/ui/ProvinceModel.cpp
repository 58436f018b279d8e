// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ProvinceModel.h"

#include "core/Wildcard.h"
#include "logging/Provinces.h"

#include <algorithm>
#include <numeric>

ProvinceModel::ProvinceModel(QObject *parent)
    : QAbstractTableModel(parent)
    , order_(ProvinceTable::provinces)
    , icons_{StateIcon(ProvinceState::Worked), StateIcon(ProvinceState::Uploaded), StateIcon(ProvinceState::Confirmed)}
{
    std::iota(order_.begin(), order_.end(), 0);
}

QString ProvinceModel::StateText(ProvinceState state)
{
    switch (state) {
    case ProvinceState::Worked:
        return u"Trabajado"_qs;
    case ProvinceState::Uploaded:
        return u" Subido (aún no Confirmado)"_qs;
    case ProvinceState::Confirmed:
        return u"Confirmado"_qs;
    case ProvinceState::None:
        break;
    }
    return {};
}

QIcon ProvinceModel::StateIcon(ProvinceState state)
{
    switch (state) {
    case ProvinceState::Worked:
        return QIcon(u":/icons/trabajado.svg"_qs);
    case ProvinceState::Uploaded:
        return QIcon(u":/icons/subido.svg"_qs);
    case ProvinceState::Confirmed:
        return QIcon(u":/icons/confirmado.svg"_qs);
    case ProvinceState::None:
        break;
    }
    return {};
}

void ProvinceModel::Show(const ProvinceTable &table)
{
    beginResetModel();
    table_ = table;
    std::iota(order_.begin(), order_.end(), 0);
    endResetModel();
}

void ProvinceModel::SortBy(int column, bool ascending)
{
    const auto before = [&](int a, int b) {
        if (column == Province)
            return Wildcard::Fold(ProvinceNames()[a]) < Wildcard::Fold(ProvinceNames()[b]);
        if (column < FirstBand)
            return a < b;
        return table_.Cell(a, column - FirstBand) < table_.Cell(b, column - FirstBand);
    };
    Q_EMIT layoutAboutToBeChanged();
    std::stable_sort(
        order_.begin(), order_.end(), [&](int a, int b) { return ascending ? before(a, b) : before(b, a); });
    Q_EMIT layoutChanged();
}

int ProvinceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ProvinceTable::provinces + 1;
}

int ProvinceModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : FirstBand + ProvinceTable::bands;
}

ProvinceState ProvinceModel::StateAt(const QModelIndex &index) const
{
    if (IsTotal(index.row()) || index.column() < Province)
        return ProvinceState::None;
    const int province = order_[size_t(index.row())];
    return index.column() == Province ? table_.Overall(province) : table_.Cell(province, index.column() - FirstBand);
}

QString ProvinceModel::TextAt(const QModelIndex &index) const
{
    if (IsTotal(index.row()))
        return index.column() >= FirstBand ? table_.Total(index.column() - FirstBand)
            : index.column() == Province   ? u"Confirmados/Trabajados"_qs
                                           : QString();
    const int province = order_[size_t(index.row())];
    return index.column() == Number  ? QString::number(province + 1)
        : index.column() == Province ? ProvinceNames()[province]
                                     : QString();
}

// What an icon says, with where it stands: "Chaco, 20m: Confirmado".
QString ProvinceModel::DescriptionAt(const QModelIndex &index) const
{
    if (index.column() < Province)
        return TextAt(index);
    const QString band = headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString();
    if (IsTotal(index.row()))
        return index.column() == Province ? TextAt(index)
                                          : QString(u"Confirmados/Trabajados, "_qs + band + u": " + TextAt(index));
    const ProvinceState state = StateAt(index);
    const QString place = ProvinceNames()[order_[size_t(index.row())]]
        + (index.column() == Province ? QString() : QString(u", "_qs + band));
    return place + u": " + (state == ProvinceState::None ? u"sin QSOs"_qs : StateText(state).trimmed());
}

QVariant ProvinceModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const ProvinceState state = StateAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return TextAt(index);
    case Qt::DecorationRole:
        return state == ProvinceState::None ? QVariant() : icons_[size_t(state)];
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return DescriptionAt(index);
    case Qt::TextAlignmentRole:
        return int(index.column() == Province ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
    case StateRole:
        return int(state);
    default:
        return {};
    }
}

QVariant ProvinceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles = QStringList{u"Indice"_qs, u"ID"_qs, u"Provincia"_qs} + ProvinceTable::BandNames();
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(section == Province ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
    return role == Qt::DisplayRole ? QVariant(titles[section]) : QVariant();
}
