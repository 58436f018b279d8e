// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ContestListModel.h"

#include "contest/ContestEntry.h"

#include <QColor>

namespace {

struct Column {
    const char16_t *title;
    int width; // twips
    QString QsoRow::*field; // null: id, or a report
};

constexpr Column logColumns[] = {{u"Indice", 0, nullptr}, {u"ID", 0, nullptr}, {u"Frec", 750, &QsoRow::Banda},
    {u"Modo", 750, &QsoRow::Modo}, {u"Fecha", 1500, &QsoRow::Fecha}, {u"Hora", 1000, &QsoRow::Hora},
    {u"Estación", 1500, &QsoRow::MyCall}, {u"RSe", 750, nullptr}, {u"SerieE", 1500, &QsoRow::RSE},
    {u"Corresponsal", 2000, &QsoRow::Estacion}, {u"RSr", 750, nullptr}, {u"SerieR", 1500, &QsoRow::RSR}};

constexpr Column duplicateColumns[] = {{u"Indice", 0, nullptr}, {u"ID", 0, nullptr}, {u"Frec", 750, &QsoRow::Banda},
    {u"Modo", 1000, &QsoRow::Modo}, {u"Fecha", 1500, &QsoRow::Fecha}, {u"Hora", 1000, &QsoRow::Hora},
    {u"Estación", 1500, &QsoRow::MyCall}, {u"SerieE", 1200, &QsoRow::RSE}, {u"Corresponsal", 1500, &QsoRow::Estacion},
    {u"SerieR", 1200, &QsoRow::RSR}};

std::pair<const Column *, int> ColumnsOf(ContestListModel::Columns columns)
{
    if (columns == ContestListModel::Columns::Log)
        return {logColumns, int(std::size(logColumns))};
    return {duplicateColumns, int(std::size(duplicateColumns))};
}

} // namespace

ContestListModel::ContestListModel(Columns columns, QObject *parent)
    : QAbstractTableModel(parent)
    , columns_(columns)
{
}

const QList<int> &ContestListModel::Widths() const
{
    static const auto widths = [](Columns columns) {
        const auto [first, count] = ColumnsOf(columns);
        QList<int> list;
        for (int i = 0; i < count; ++i)
            list << first[i].width;
        return list;
    };
    static const QList<int> ofLog = widths(Columns::Log), ofDuplicates = widths(Columns::Duplicates);
    return columns_ == Columns::Log ? ofLog : ofDuplicates;
}

void ContestListModel::SetRows(const QList<QsoRow> &rows)
{
    beginResetModel();
    rows_ = rows;
    endResetModel();
}

void ContestListModel::AddNewest(const QsoRow &row)
{
    beginInsertRows({}, 0, 0);
    rows_.prepend(row);
    endInsertRows();
}

int ContestListModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(rows_.size()); }

int ContestListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnsOf(columns_).second;
}

QString ContestListModel::TextOf(const QsoRow &row, int column) const
{
    const Column &shown = ColumnsOf(columns_).first[column];
    if (shown.field)
        return row.*shown.field;
    if (column == 0)
        return u"nombre1"_qs;
    return column == 1 ? QString::number(row.id) : ContestReport(row.Modo);
}

QVariant ContestListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return TextOf(rows_[index.row()], index.column());
    if (role == Qt::ForegroundRole)
        return (rows_.size() - index.row()) % 2 ? QColor(0x00, 0x40, 0x00) : QColor(Qt::black);
    return {};
}

QVariant ContestListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return QString::fromUtf16(ColumnsOf(columns_).first[section].title);
    return {};
}
