// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/SyncSelection.h"

#include "core/Conversions.h"
#include "core/QsoRow.h"
#include "logging/BandPlan.h"

#include <QSet>

namespace {

constexpr int sliceRows = 2500; // some 20 ms of reading

SyncQso AsSent(const QsoRow &row)
{
    SyncQso qso;
    qso.id = row.id;
    qso.micall = row.MyCall;
    qso.sucall = row.Estacion;
    qso.banda = BandPlan::BandOfDottedFrequency(row.Banda);
    qso.modo = row.Nombre_Sat.isEmpty() ? row.Modo : u"Sat"_qs;
    qso.fecha = Conversions::ShownDate(row.Fecha);
    qso.hora = QString(row.Hora).remove(u':').left(4);
    qso.rst = row.RSE;
    return qso;
}

class Selector {
public:
    explicit Selector(const QString &logName) { selection_.logName = logName; }

    void Take(const QsoRow &row)
    {
        ++selection_.total;
        if (Conversions::LeadingNumber(row.LdA) == 2)
            ++selection_.confirmed;
        else if (row.Estacion.contains(u"/MM") || row.Estacion.contains(u"/MA"))
            ++selection_.mobile;
        else if (row.Argento.isEmpty())
            ++selection_.foreign;
        else
            Send(row);
    }
    const SyncSelection &Selection() const { return selection_; }

private:
    void Send(const QsoRow &row)
    {
        ++selection_.toSend;
        if (selection_.qsos.size() < SyncSelection::mostSent)
            selection_.qsos << AsSent(row);
        if (selection_.ownCalls.size() < SyncSelection::mostCalls && !known_.contains(row.MyCall)) {
            known_.insert(row.MyCall);
            selection_.ownCalls << row.MyCall;
        }
    }

    SyncSelection selection_;
    QSet<QString> known_;
};

// Where a slice ended. Rows of foreign origin may lack date or time; they come first, as if these were empty.
struct Place {
    QString date, time;
    qint64 id = 0;
};

// Dates bound the slice by the index; where in its first date it begins is asked of each row.
QString SliceStatement()
{
    return u"SELECT "_qs + QsoColumns::SelectList()
        + u" FROM Tabla1 WHERE \"Nombre Log\"=?1 AND Fecha>=?2 "
          "AND (Fecha, coalesce(Hora,''), id)>(?2, ?3, ?4) ORDER BY Fecha, Hora, id LIMIT ?5";
}

QString UndatedStatement()
{
    return u"SELECT "_qs + QsoColumns::SelectList()
        + u" FROM Tabla1 WHERE \"Nombre Log\"=? AND Fecha IS NULL ORDER BY Hora, id";
}

void TakeIfContact(Selector &selector, const QsoRow &row)
{
    if (!row.Estacion.isEmpty())
        selector.Take(row);
}

} // namespace

Result<SyncSelection> SelectForSync(LogStore &store, const QString &logName, Run &run)
{
    Selector selector(logName);
    const Result<void> undated = store.Read([&](Session &session) {
        Query query = session.Prepare(UndatedStatement());
        query.Bind(1, logName);
        while (query.Next())
            TakeIfContact(selector, query.Row());
    });
    if (!undated)
        return undated.failure();
    Place place;
    for (int rows = sliceRows; rows == sliceRows;) {
        rows = 0;
        const Result<void> read = store.Read([&](Session &session) {
            Query query = session.Prepare(SliceStatement());
            query.Bind(1, logName).Bind(2, place.date).Bind(3, place.time).Bind(4, place.id).Bind(5, sliceRows);
            for (; query.Next(); ++rows) {
                const QsoRow row = query.Row();
                place = {row.Fecha, row.Hora, row.id};
                TakeIfContact(selector, row);
            }
        });
        if (!read)
            return read.failure();
        if (!run.Step(selector.Selection().total))
            return Failure{u"La lectura del log fue interrumpida."_qs, Failure::Kind::Cancelled};
    }
    return selector.Selection();
}

QString SyncSelection::Refusal() const
{
    if (toSend > 0)
        return {};
    if (total == 0)
        return u"No hay QSOs en el log "_qs + logName;
    if (confirmed == 0)
        return u"No hay estaciones argentinas en\nLog: "_qs + logName;
    return u"No hay estaciones argentinas que no se hayan subido a LdA en\nLog: "_qs + logName;
}

QString SyncSelection::Question() const
{
    const QString calls = ownCalls.join(u' ');
    QString text;
    if (ownCalls.size() == 1)
        text = u"Call: "_qs + calls + u'\n';
    else
        text = u"%1 Calls: %2\nAquellos Alias de los %1 que no estén registrados en LdA No serán subidos.\n\n"_qs.arg(
            QString::number(ownCalls.size()), calls);
    if (toSend > mostSent)
        text += u"Se Tienen %1 QSOs, se enviarán solo los %2 primeros\n"_qs.arg(toSend).arg(mostSent);
    text += u"log "_qs + logName + u" con " + QString::number(total) + u" QSO(s)\n\n";
    text += u"Estaciones NO Argentinas: %1\nEstaciones Móviles: %2\n\n"_qs.arg(foreign).arg(mobile);
    return text + u"Sube a LdA el log " + logName + u" con " + QString::number(qsos.size()) + u" QSO(s)?";
}
