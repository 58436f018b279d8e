// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/SearchModel.h"

namespace {

constexpr int blockRows = 64, blocksKept = 40;

} // namespace

SearchModel::SearchModel(LogStore &store, QObject *parent)
    : QAbstractTableModel(parent)
    , list_(store)
    , blocks_(blocksKept)
{
}

const QStringList &SearchModel::Titles()
{
    static const QStringList titles{u"Indice"_qs, u"ID"_qs, u"Estación"_qs, u"Banda"_qs, u"Frec"_qs, u"Modo"_qs,
        u"RSe"_qs, u"RSr"_qs, u"Fecha"_qs, u"Hora UTC"_qs, u"MiCall"_qs, u"Operador"_qs, u"Observaciones"_qs,
        u"Mi Grilla"_qs, u"Su Grilla"_qs, u"LdA"_qs, u"Satélite"_qs, u"Provincia"_qs, u"SOTA"_qs, u"MYPOTA"_qs,
        u"POTA"_qs, u"MYSOTA"_qs};
    return titles;
}

const QList<int> &SearchModel::Widths()
{
    static const QList<int> widths{1000, 1000, 1000, 750, 750, 750, 750, 750, 1300, 1000, 1000, 1000, 3000, 1000, 1000,
        1000, 1000, 1000, 1500, 1500, 1500, 1500};
    return widths;
}

void SearchModel::Clear()
{
    beginResetModel();
    list_.Clear();
    blocks_.clear();
    endResetModel();
}

void SearchModel::Append(const std::vector<qint64> &ids)
{
    if (ids.empty())
        return;
    const int size = int(list_.Size());
    beginInsertRows({}, size, size + int(ids.size()) - 1);
    blocks_.remove(size / blockRows); // it was not full
    list_.Append(ids);
    endInsertRows();
}

Result<void> SearchModel::Sort(int subItem, bool ascending, Run &run)
{
    const Result<void> sorted = list_.Sort(subItem, ascending, run);
    Q_EMIT layoutAboutToBeChanged();
    blocks_.clear();
    Q_EMIT layoutChanged();
    return sorted;
}

void SearchModel::Refresh(int place)
{
    if (place < 0 || place >= list_.Size())
        return;
    if (RowAt(place).id == 0) {
        beginRemoveRows({}, place, place);
        list_.RemoveAt(place);
        blocks_.clear();
        endRemoveRows();
        return;
    }
    blocks_.remove(place / blockRows);
    Q_EMIT dataChanged(index(place, 0), index(place, columnCount() - 1));
}

QsoRow SearchModel::RowAt(int place) const
{
    const Result<QList<QsoRow>> rows = list_.Rows(place, 1);
    return rows && !rows->isEmpty() ? rows->first() : QsoRow();
}

const QStringList &SearchModel::TextsAt(int place) const
{
    static const QStringList none;
    const int block = place / blockRows;
    QList<QStringList> *texts = blocks_.object(block);
    if (!texts) {
        const qsizetype first = qsizetype(block) * blockRows;
        const Result<QList<QsoRow>> rows = list_.Rows(first, blockRows);
        if (!rows)
            return none; // told by whatever the operator does next with the database
        texts = new QList<QStringList>;
        for (qsizetype i = 0; i < rows->size(); ++i)
            texts->append(SearchList::Texts((*rows)[i], list_.NumberAt(first + i)));
        blocks_.insert(block, texts);
    }
    const qsizetype at = place % blockRows;
    return at < texts->size() ? (*texts)[at] : none;
}

int SearchModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(list_.Size()); }

int SearchModel::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(Titles().size()); }

QVariant SearchModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    return TextsAt(index.row()).value(index.column());
}

QVariant SearchModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return Titles()[section];
    return {};
}
