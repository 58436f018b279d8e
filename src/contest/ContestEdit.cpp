// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/ContestEdit.h"

#include "contest/ContestTable.h"

#include <QDate>
#include <algorithm>

namespace ContestEdit {

namespace {

struct Field {
    QString ContestEditFields::*shown;
    QString QsoRow::*column;
};
constexpr Field allFields[] = {{&ContestEditFields::mode, &QsoRow::Modo}, {&ContestEditFields::band, &QsoRow::Banda},
    {&ContestEditFields::ownCall, &QsoRow::MyCall}, {&ContestEditFields::call, &QsoRow::Estacion},
    {&ContestEditFields::date, &QsoRow::Fecha}, {&ContestEditFields::time, &QsoRow::Hora},
    {&ContestEditFields::rse, &QsoRow::RSE}, {&ContestEditFields::rsr, &QsoRow::RSR},
    {&ContestEditFields::frequency, &QsoRow::Frecuencia}, {&ContestEditFields::contest, &QsoRow::LdA},
    {&ContestEditFields::type, &QsoRow::Nombre_Sat}};

struct Range {
    qint64 from, to;
};
constexpr Range bands[] = {{1800, 2000}, {3500, 4000}, {7000, 7300}, {14000, 14350}, {21000, 21450}, {28000, 29700},
    {50000, 54000}, {144000, 148000}, {6000, 6999}, {2000, 2999}};

bool IsDigits(const QString &text, qsizetype length)
{
    return text.size() == length
        && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

ContestEditFields FromRow(const QsoRow &row)
{
    ContestEditFields fields;
    fields.id = row.id;
    for (const Field &field : allFields)
        fields.*field.shown = row.*field.column;
    return fields;
}

QString Caption(qint64 id) { return u"Edición de Registro #"_qs + QString::number(id); }

bool IsContestFrequency(qint64 kilohertz)
{
    return std::any_of(std::begin(bands), std::end(bands),
        [=](const Range &band) { return kilohertz >= band.from && kilohertz <= band.to; });
}

QString CheckFrequency(const QString &text)
{
    if (text.isEmpty())
        return u"Ingrese la frecuencia en KHZ!"_qs;
    bool isNumber = false;
    const qint64 kilohertz = text.toLongLong(&isNumber);
    if (isNumber && IsContestFrequency(kilohertz))
        return {};
    return text + u" KHz NO ES BANDA DE CONCURSO!"_qs;
}

QString CheckDate(const QString &text)
{
    if (!IsDigits(text, 8))
        return u"Error en la fecha, formato DDMMAAAA!"_qs;
    const int year = text.left(4).toInt(), month = text.mid(4, 2).toInt(), day = text.mid(6, 2).toInt();
    const QString wrongDay = u"Error en la fecha, día "_qs + text.mid(6, 2) + u'!';
    if (day < 1 || day > 31)
        return wrongDay;
    if (month < 1 || month > 12)
        return u"Error en la fecha, mes "_qs + text.mid(4, 2) + u'!';
    // The month may be shorter; in a year that the calendar does not know no day is in range.
    return QDate::isValid(year, month, day) ? QString() : wrongDay;
}

QString CheckTime(const QString &text)
{
    if (!IsDigits(text, 4))
        return u"Error en la HORA, formato HHMM!"_qs;
    if (text.left(2).toInt() > 23 || text.mid(2).toInt() > 59)
        return u"Error en la HORA "_qs + text + u'!';
    return {};
}

Result<bool> Update(LogStore &store, const ContestEditFields &fields)
{
    QsoTable::Changes changes;
    for (const Field &field : allFields)
        changes.append({field.column, fields.*field.shown});
    return store.Write([&](Session &session) { return ContestTable::Update(session, fields.id, changes); });
}

QString DeleteQuestion(const QString &call) { return u"Elimina el QSO con "_qs + call + u'?'; }

Result<bool> Delete(LogStore &store, qint64 id)
{
    return store.Write([&](Session &session) { return ContestTable::Delete(session, id); });
}

} // namespace ContestEdit
