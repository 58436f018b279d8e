// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/Transfer.h"

#include "contest/ContestEntry.h"
#include "contest/ContestLookup.h"
#include "core/QsoTable.h"
#include "interchange/AdifStaging.h"
#include "logging/Provinces.h"

#include <QHash>

namespace {

constexpr qsizetype rowsOfSlice = 100;

// Drops the contacts that the log holds already and counts them. Stopped on the way, it drops what it has not looked
// at.
Result<void> DropDuplicates(
    LogStore &store, Run &run, const QString &logName, QList<QsoRow> &rows, Transferred &transferred)
{
    QList<QsoRow> fresh;
    for (qsizetype first = 0; first < rows.size() && !transferred.cancelled; first += rowsOfSlice) {
        const auto looked = store.Read([&](Session &session) {
            for (const QsoRow &row : rows.mid(first, rowsOfSlice)) {
                if (AdifStaging::FindDuplicateInLog(session, logName, row))
                    ++transferred.duplicates;
                else
                    fresh << row;
            }
        });
        if (!looked)
            return looked;
        transferred.cancelled = !run.Step(first, rows.size());
    }
    rows = std::move(fresh);
    return {};
}

} // namespace

QsoRow GeneralRow(const QsoRow &contestRow, const QString &contest, QString &frequency)
{
    static const QHash<QString, QString> frequencies{{u"160m"_qs, u"1.820"_qs}, {u"80m"_qs, u"3.500"_qs},
        {u"40m"_qs, u"7.000"_qs}, {u"20m"_qs, u"14.000"_qs}, {u"15m"_qs, u"21.000"_qs}, {u"10m"_qs, u"28.000"_qs},
        {u"6m"_qs, u"52.000"_qs}, {u"2m"_qs, u"144.000"_qs}};
    frequency = frequencies.value(contestRow.Banda, frequency);
    const QString &date = contestRow.Fecha, &time = contestRow.Hora;
    QsoRow row;
    row.Modo = contestRow.Modo;
    row.Banda = contestRow.Banda;
    row.MyCall = contestRow.MyCall;
    row.Estacion = contestRow.Estacion;
    row.Fecha = date.mid(6, 2) + u'/' + date.mid(4, 2) + u'/' + date.left(4);
    row.Hora = time.left(2) + u':' + time.mid(2) + u":00";
    row.RSE = ContestReport(contestRow.Modo);
    row.RSR = row.RSE;
    row.Obs = u"Concurso "_qs + contest;
    row.Operador = contestRow.Operador;
    row.Frecuencia = frequency;
    row.LdA = u"1"_qs;
    row.Argento = ArgentineProvince(contestRow.Estacion);
    return row;
}

Result<Transferred> TransferContest(LogStore &store, Run &run, const QString &contest, const QString &logName)
{
    Transferred transferred;
    const auto contestRows = ContestRows(store, contest, &run);
    if (!contestRows) {
        transferred.cancelled = contestRows.failure().kind == Failure::Kind::Cancelled;
        return transferred.cancelled ? Result<Transferred>(transferred) : contestRows.failure();
    }
    QList<QsoRow> rows;
    QString frequency;
    for (const QsoRow &contestRow : *contestRows) {
        if (contestRow.Modo.isEmpty())
            continue;
        rows << GeneralRow(contestRow, contest, frequency);
        rows.last().NombreLog = logName;
    }
    if (const auto looked = DropDuplicates(store, run, logName, rows, transferred); !looked)
        return looked.failure();
    return store.Write([&](Session &session) {
        // Asked once more, since a contact may repeat one that was copied a moment ago.
        Transferred done = transferred;
        for (const QsoRow &row : rows) {
            if (AdifStaging::FindDuplicateInLog(session, logName, row)) {
                ++done.duplicates;
            } else {
                done.lastId = QsoTable::Insert(session, row);
                ++done.copied;
            }
        }
        return done;
    });
}

QString NothingToTransferMessage(const QString &contest, const QString &baseLog)
{
    return u"el log de concurso "_qs + contest + u" no tiene QSOs para pasar al log Base "_qs + baseLog;
}

QString TransferQuestion(const QString &contest, qint64 count, const QString &baseLog)
{
    return u"Pasa el log de concurso "_qs + contest + u" con "_qs + QString::number(count) + u" QSOs\nal log base "_qs
        + baseLog + u'?';
}

QString TransferMessage(const Transferred &transferred)
{
    return u"Transferencia:\nCopiados: "_qs + QString::number(transferred.copied) + u"\nDuplicados: "_qs
        + QString::number(transferred.duplicates);
}
