// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/ContestAdif.h"

#include "core/CodePage.h"
#include "interchange/CabrilloWriter.h"

#include <algorithm>

namespace ContestAdif {

namespace {

void Field(QByteArray &record, const char *tag, const QString &value)
{
    const QByteArray bytes = CodePage::FromText(value);
    record += QByteArray("<") + tag + ':' + QByteArray::number(bytes.size()) + '>' + bytes;
}

} // namespace

const QString nothingToExport = u"No hay ningún QSO para exportar a ADIF!"_qs;

qsizetype CountQsos(const QList<QsoRow> &rows)
{
    return std::count_if(rows.begin(), rows.end(), [](const QsoRow &row) { return !row.Modo.isEmpty(); });
}

Records::Records(QString contest, QString ownCall)
    : contest_(std::move(contest))
    , ownCall_(std::move(ownCall))
{
}

Result<QByteArray> Records::Next(const QsoRow &row)
{
    if (row.Modo.isEmpty())
        return QByteArray();
    if (row.MyCall != ownCall_)
        return Failure{u"Error!\nEn el log distinta Señal Distintiva"_qs};
    if (const QString kilohertz = CabrilloWriter::KilohertzOfBand(row.Banda); !kilohertz.isEmpty())
        frequency_ = kilohertz.chopped(3) + u'.' + kilohertz.right(3);
    const QString report = row.Modo == u"SSB" ? u"59"_qs : u"599"_qs;
    QByteArray record;
    record.reserve(256);
    Field(record, "STATION_CALLSIGN", row.MyCall);
    Field(record, "CALL", row.Estacion);
    Field(record, "QSO_DATE", row.Fecha.left(4) + row.Fecha.mid(4, 2) + row.Fecha.right(2));
    Field(record, "TIME_ON", row.Hora);
    Field(record, "MODE", row.Modo);
    Field(record, "FREQ", frequency_);
    Field(record, "RST_SENT", report);
    // The receivers of these files know the two exchanges this way round.
    Field(record, "SRX", row.RSE);
    Field(record, "RST_RCVD", report);
    Field(record, "STX", row.RSR);
    Field(record, "CONTEST_ID", contest_);
    record += "<EOR>\r\n";
    return record;
}

} // namespace ContestAdif
