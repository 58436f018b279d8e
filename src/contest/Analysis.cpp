// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/Analysis.h"

#include "contest/ContestLogs.h"
#include "contest/ContestLookup.h"
#include "core/CodePage.h"
#include "core/Conversions.h"

#include <QDateTime>
#include <QSet>
#include <algorithm>
#include <numeric>

namespace {

const QString lineEnd = u"\r\n"_qs;
const QString duplicate = u"Duplicado"_qs;
constexpr qint64 pointsOfQso = 10;

using Marks = ContestTable::Marks;

// Places of the rows that take part, in the order in which `before` puts their rows.
template <typename Before>
std::vector<qsizetype> OrderedPlaces(const QList<QsoRow> &rows, const std::vector<Marks> &marks, Before before)
{
    std::vector<qsizetype> places;
    for (qsizetype i = 0; i < rows.size(); ++i)
        if (!marks[static_cast<size_t>(i)].multiplier.isEmpty())
            places.push_back(i);
    std::sort(places.begin(), places.end(), [&](qsizetype a, qsizetype b) { return before(rows[a], rows[b]); });
    return places;
}

bool ComesBefore(const QsoRow &a, const QsoRow &b)
{
    return std::tie(a.Fecha, a.Hora, a.id) < std::tie(b.Fecha, b.Hora, b.id);
}

// Modes and bands are the same apart from case, as in the database; values and calls only where they are equal.
QString KeyOf(const QString &value, const QsoRow &row)
{
    return value + u' ' + row.Modo.toUpper() + u' ' + row.Banda.toUpper();
}

QDateTime MomentOf(const QsoRow &row)
{
    return {QDate::fromString(row.Fecha, u"yyyyMMdd"_qs), QTime::fromString(row.Hora.left(4), u"hhmm"_qs), Qt::UTC};
}

QString ReportLine(const QsoRow &row)
{
    const auto padded = [](const QString &text, int width) { return text.leftJustified(width); };
    const QStringList words{padded(row.Modo, 3), padded(row.Banda, 4), row.Fecha, row.Hora, padded(row.MyCall, 12),
        padded(row.RSE, 6), padded(row.Estacion, 12), padded(row.RSR, 6)};
    return words.join(u' ') + u" >" + row.SOTA;
}

Result<void> WriteAllMarks(
    LogStore &store, const QString &contest, const QList<QsoRow> &rows, const std::vector<Marks> &marks)
{
    return store.Write([&](Session &session) {
        ContestTable::ClearContestMarks(session, contest);
        for (qsizetype i = 0; i < rows.size(); ++i)
            ContestTable::WriteMarks(session, rows[i].id, marks[static_cast<size_t>(i)]);
    });
}

} // namespace

std::vector<Marks> ContestMarks(const QList<QsoRow> &rows, const DxccTable &countries)
{
    std::vector<Marks> marks;
    marks.reserve(static_cast<size_t>(rows.size()));
    for (const QsoRow &row : rows)
        marks.push_back({row.Nombre_Sat == SerieType::Incremental ? countries.CountryOf(row.Estacion) : row.RSR,
            row.RSR, QString()});
    QSet<QString> seen;
    seen.reserve(rows.size());
    const auto isNew = [&](const QString &key) {
        const qsizetype before = seen.size();
        seen.insert(key);
        return seen.size() > before;
    };
    for (const qsizetype i : OrderedPlaces(rows, marks, [](const QsoRow &a, const QsoRow &b) { return a.id > b.id; })) {
        Marks &mark = marks[static_cast<size_t>(i)];
        if (isNew(KeyOf(mark.multiplier, rows[i])))
            mark.verdict = mark.multiplier;
    }
    seen.clear();
    for (const qsizetype i : OrderedPlaces(rows, marks, ComesBefore))
        if (!isNew(KeyOf(rows[i].Estacion, rows[i])))
            marks[static_cast<size_t>(i)].verdict = duplicate;
    return marks;
}

AnalysisFigures CountContest(const QList<QsoRow> &rows)
{
    AnalysisFigures figures;
    QDateTime start, end;
    for (const QsoRow &row : rows) {
        ++figures.qsos;
        figures.ownCall = row.MyCall;
        if (row.SOTA == duplicate)
            ++figures.duplicates;
        else if (!row.SOTA.isEmpty())
            ++figures.multipliers;
        // Damaged times of an imported contact say nothing.
        const QDateTime moment = MomentOf(row);
        if (!moment.isValid())
            continue;
        if (!start.isValid())
            start = moment;
        end = moment;
    }
    if (start.isValid())
        figures.minutes = Conversions::MinutesBetween(start, end);
    return figures;
}

QString ContestTimeText(qint64 minutes)
{
    if (minutes <= 60)
        return QString::number(minutes) + u" min."_qs;
    return QString::number(minutes / 60) + u" hs. "_qs + QString::number(minutes % 60) + u" min."_qs;
}

QString ContestRateText(qint64 qsos, qint64 minutes)
{
    if (minutes == 0)
        return u"?"_qs;
    const qint64 hundredths = (qsos * 60 * 200 + minutes) / (2 * minutes);
    const QString whole = QString::number(hundredths / 100);
    const qint64 rest = hundredths % 100;
    if (rest == 0)
        return whole + u",00"_qs;
    QString decimals = Conversions::PadZeros(QString::number(rest), 2);
    if (decimals.endsWith(u'0'))
        decimals.chop(1);
    return whole + u',' + decimals;
}

QString ContestReportText(const QString &contest, const QString &type, const QList<QsoRow> &rows)
{
    const AnalysisFigures figures = CountContest(rows);
    const QString rule(54, u'-');
    QStringList parts{u"Concurso: "_qs + contest + u" ("_qs + type + u')', rule,
        u"       Estación: "_qs + figures.ownCall, u"           QSOs: "_qs + QString::number(figures.qsos),
        u"     Duplicados: "_qs + QString::number(figures.duplicates),
        u"Multiplicadores: "_qs + QString::number(figures.multipliers),
        u"   Tiempo Total: "_qs + ContestTimeText(figures.minutes),
        u"           Rate: "_qs + ContestRateText(figures.qsos, figures.minutes) + u" QSOs/h."_qs};
    if (type == SerieType::Incremental)
        parts << u"           CAHF: "_qs + QString::number(pointsOfQso * figures.qsos * figures.multipliers)
                + u" puntos."_qs;
    parts << rule;
    // Each contact begins with a line end of its own, so an empty line parts them from the figures.
    QString contacts;
    for (const QsoRow &row : rows)
        contacts += lineEnd + ReportLine(row);
    parts << contacts;
    return parts.join(lineEnd) + lineEnd;
}

QString ContestReportName(const QString &contest, const QString &type)
{
    QString name = u"Analisis_"_qs + contest + u" ("_qs + type + u").txt"_qs;
    for (QChar &c : name)
        if (c < u' ' || QStringView(u"\\/:*?\"<>|").contains(c))
            c = u'_';
    return name;
}

Result<QString> AnalyseContest(LogStore &store, FileSystem &files, const QString &folder, const DxccTable &countries,
    const QString &contest, Run &run)
{
    const auto all = ContestRows(store, contest, &run);
    if (!all)
        return all.failure();
    QList<QsoRow> rows;
    std::copy_if(
        all->begin(), all->end(), std::back_inserter(rows), [](const QsoRow &row) { return !row.Modo.isEmpty(); });
    if (rows.isEmpty())
        return Failure{NoContestToAnalyseText()};
    const std::vector<Marks> marks = ContestMarks(rows, countries);
    if (const auto written = WriteAllMarks(store, contest, rows, marks); !written)
        return written.failure();
    for (qsizetype i = 0; i < rows.size(); ++i)
        rows[i].SOTA = marks[static_cast<size_t>(i)].verdict;
    std::sort(rows.begin(), rows.end(), ComesBefore);
    const QString type = all->first().Nombre_Sat.trimmed();
    const QString path = folder + u'/' + ContestReportName(contest, type);
    const auto replaced =
        files.Replace(path, CodePage::FromText(ContestReportText(contest, type, rows)), FileSystem::Sync::No);
    return replaced ? Result<QString>(path) : replaced.failure();
}

QString NoContestToAnalyseText() { return u"Ningún Concurso con QSOs para analizar!"_qs; }

QString AnalysingText(const QString &contest) { return u"Procesando "_qs + contest + u" ..."_qs; }
