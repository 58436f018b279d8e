// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/LogListModel.h"

#include "core/Conversions.h"

#include <QColor>
#include <algorithm>

namespace {

constexpr int idColumn = 1;
constexpr int bandColumn = 3;

} // namespace

const QStringList &LogListModel::Titles()
{
    static const QStringList titles{u"Indice"_qs, u"ID"_qs, u"Estación"_qs, u"Banda"_qs, u"Frec"_qs, u"Modo"_qs,
        u"RSe"_qs, u"RSr"_qs, u"Fecha"_qs, u"Hora UTC"_qs, u"MiCall"_qs, u"Operador"_qs, u"Observaciones"_qs,
        u"Mi Grilla"_qs, u"Su Grilla"_qs, u"LdA"_qs, u"Satélite"_qs, u"Argentina"_qs, u"SOTA"_qs, u"MYPOTA"_qs,
        u"POTA"_qs, u"MYSOTA"_qs};
    return titles;
}

const QList<int> &LogListModel::Widths()
{
    static const QList<int> widths{0, 0, 1000, 750, 1000, 1000, 700, 700, 1500, 1000, 1300, 1300, 5000, 1000, 1000, 500,
        1000, 1000, 1500, 1500, 1500, 1500};
    return widths;
}

QStringList LogListModel::Texts(const QsoRow &qso)
{
    // The column "Argentina" stays empty on this page; the search window shows the province.
    return {u"nombre1"_qs, QString::number(qso.id), qso.Estacion, qso.Banda,
        QString(qso.Frecuencia).replace(u',', u'.'), qso.Modo, qso.RSE, qso.RSR, Conversions::ShownDate(qso.Fecha),
        Conversions::ShownTime(qso.Hora), qso.MyCall, qso.Operador, qso.Obs, qso.MiGrid, qso.SuGrid, qso.LdA.trimmed(),
        qso.Nombre_Sat.trimmed(), QString(), qso.SOTA.trimmed(), qso.IOTA.trimmed(), qso.POTA.trimmed(),
        qso.MYSOTA.trimmed()};
}

void LogListModel::SetRows(const QList<QsoRow> &rows)
{
    beginResetModel();
    rows_.clear();
    for (const QsoRow &qso : rows)
        rows_.append({qso, Texts(qso)});
    endResetModel();
}

void LogListModel::SortByColumn(int column)
{
    // Nobody sorts by the row key: that place gives the bands instead.
    const int key = column == idColumn ? bandColumn : column;
    ascending_ = !ascending_;
    Q_EMIT layoutAboutToBeChanged();
    std::stable_sort(rows_.begin(), rows_.end(), [key, this](const Row &a, const Row &b) {
        const int order = QString::compare(a.texts[key], b.texts[key], Qt::CaseInsensitive);
        return ascending_ ? order < 0 : order > 0;
    });
    Q_EMIT layoutChanged();
}

int LogListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int LogListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(Titles().size());
}

QVariant LogListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return rows_[index.row()].texts[index.column()];
    if (role == Qt::ForegroundRole)
        return QColor(0x00, 0x40, 0x00);
    return {};
}

QVariant LogListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return Titles()[section];
    return {};
}
