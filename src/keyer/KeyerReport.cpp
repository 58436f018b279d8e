// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/KeyerReport.h"

#include <QLocale>

namespace {

constexpr double goodMean = 500, goodLargest = 2000; // microseconds

QString Milliseconds(double microseconds)
{
    return QLocale(QLocale::Spanish, QLocale::Argentina).toString(microseconds / 1000, 'f', 2);
}

} // namespace

KeyerReport ReportTiming(const CwKeyer::Timing &timing, bool realTime, const QString &latencyHint)
{
    KeyerReport report;
    report.figures = u"Flancos: %1     Error medio: %2 ms     Error mayor: %3 ms"_qs.arg(
        QString::number(timing.edges), Milliseconds(timing.mean), Milliseconds(timing.largest));
    if (timing.mean <= goodMean && timing.largest <= goodLargest) {
        report.advice = u"La manipulación es buena."_qs;
        return report;
    }
    QStringList advice{u"La manipulación es irregular."_qs};
    if (!latencyHint.isEmpty())
        advice << latencyHint;
    if (!realTime)
        advice << u"El sistema no da prioridad de tiempo real a este programa (límite rtprio del usuario)."_qs;
    if (advice.size() == 1)
        advice << u"Cierre otros programas o pruebe otro adaptador."_qs;
    report.advice = advice.join(u'\n');
    return report;
}
