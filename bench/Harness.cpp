// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Harness.h"

#include <QStringList>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>

Timed Clocked(std::function<void(int)> work)
{
    return [work = std::move(work)](int round) {
        const auto start = std::chrono::steady_clock::now();
        work(round);
        return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
    };
}

double Median(std::vector<double> values)
{
    if (values.empty())
        return NAN;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 == 1)
        return *middle;
    return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

std::vector<double> Alternate(const std::vector<Timed> &measured, int rounds, int warmUps)
{
    std::vector<std::vector<double>> times(measured.size());
    for (int round = -warmUps; round < rounds; ++round) {
        for (size_t turn = 0; turn < measured.size(); ++turn) {
            const size_t which = round % 2 == 0 ? turn : measured.size() - 1 - turn;
            const double time = measured[which](round < 0 ? round + warmUps : round);
            if (round >= 0)
                times[which].push_back(time);
        }
    }
    std::vector<double> medians;
    for (std::vector<double> &list : times)
        medians.push_back(Median(std::move(list)));
    return medians;
}

QString SizeText(qint64 number)
{
    QString text = QString::number(number);
    for (qsizetype i = text.size() - 3; i > 0; i -= 3)
        text.insert(i, u',');
    return text;
}

namespace {

QString Shown(double value, Unit unit)
{
    if (unit == Unit::Count)
        return QString::number(value, 'g', 6);
    if (unit == Unit::Bytes)
        return QString::number(value, 'f', 0) + u" bytes";
    if (value < 1)
        return QString::number(value * 1000, 'f', 0) + u" ns";
    if (value < 1000)
        return QString::number(value, 'f', value < 100 ? 1 : 0) + u" µs";
    if (value < 1000000)
        return QString::number(value / 1000, 'f', 2) + u" ms";
    return QString::number(value / 1000000, 'f', 2) + u" s";
}

QString RatioText(double ratio) { return QString::number(ratio, 'f', ratio < 0.01 ? 5 : 2); }

} // namespace

void ResultTable::AddRatio(
    const QString &what, const QString &size, double ours, double reference, double goal, Unit unit)
{
    const double ratio = ours / reference;
    rows_.push_back({what, size, Shown(ours, unit), Shown(reference, unit), RatioText(ratio),
        QString(u"≤ " + QString::number(goal)), ratio <= goal});
}

void ResultTable::AddLimit(const QString &what, const QString &size, double ours, double goal, Unit unit)
{
    rows_.push_back(
        {what, size, Shown(ours, unit), u"-"_qs, u"-"_qs, QString(u"≤ " + Shown(goal, unit)), ours <= goal});
}

void ResultTable::AddFailure(const QString &what, const QString &reason)
{
    rows_.push_back({what, QString(), reason, u"-"_qs, u"-"_qs, u"-"_qs, false});
}

QString ResultTable::Markdown() const
{
    std::vector<QStringList> lines{
        {u"what"_qs, u"size"_qs, u"median"_qs, u"reference"_qs, u"ratio"_qs, u"goal"_qs, u"met"_qs}};
    for (const Row &row : rows_)
        lines.push_back(
            {row.what, row.size, row.median, row.reference, row.ratio, row.goal, row.met ? u"yes"_qs : u"NO"_qs});
    QString text;
    for (size_t i = 0; i < lines.size(); ++i) {
        QString rule;
        for (qsizetype column = 0; column < lines[i].size(); ++column) {
            qsizetype width = 0;
            for (const QStringList &line : lines)
                width = std::max(width, line[column].size());
            const bool isText = column == 0 || column == lines[i].size() - 1;
            const QString &cell = lines[i][column];
            text += u"| "_qs + (isText ? cell.leftJustified(width) : cell.rightJustified(width)) + u' ';
            rule += u'|' + QString(width + (isText ? 2 : 1), u'-') + (isText ? u""_qs : u":"_qs);
        }
        text += u"|\n"_qs;
        if (i == 0)
            text += rule + u"|\n";
    }
    return text;
}

bool ResultTable::AllMet() const
{
    return std::all_of(rows_.begin(), rows_.end(), [](const Row &row) { return row.met; });
}

void GiveUp(const QString &why)
{
    std::fprintf(stderr, "bench: %s\n", why.toUtf8().constData());
    std::exit(2);
}
