// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"

#include "core/Logbook.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <chrono>

namespace {

constexpr int startRounds = 15;
constexpr int longestStart = 20000; // milliseconds

// Runs a program until its page is shown. Gives the two spans in which it works, added up; what lies between them is
// a wait of 900 ms that has nothing to do with speed.
double StartSpans(const QString &program, const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_qs, u"offscreen"_qs);
    environment.insert(u"TORDILLO_MARKS"_qs, u"1"_qs);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    environment.insert(
        u"TORDILLO_T0"_qs, QString::number(std::chrono::duration_cast<std::chrono::microseconds>(now).count()));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(QFileInfo(program).absolutePath());
    process.start(program, arguments);
    QHash<QString, double> marks;
    process.setReadChannel(QProcess::StandardError);
    while (!marks.contains(u"page-shown"_qs)) {
        if (!process.canReadLine() && !process.waitForReadyRead(longestStart))
            break;
        const QStringList words = QString::fromUtf8(process.readLine()).simplified().split(u' ');
        if (words.size() == 3 && words[0] == u"mark")
            marks.insert(words[1], words[2].toDouble());
    }
    process.kill();
    process.waitForFinished();
    for (const QString &name : {u"window-shown"_qs, u"timer2"_qs, u"page-shown"_qs})
        if (!marks.contains(name))
            GiveUp(program + u" does not tell its mark \"" + name + u'"');
    return marks[u"window-shown"_qs] + marks[u"page-shown"_qs] - marks[u"timer2"_qs];
}

// A program folder as a station has it, with a log of this size; gives the path of the program in it.
QString MakeProgramFolder(const BenchSetting &setting, qint64 qsos)
{
    const QString folder = setting.workFolder + u'/' + QString::number(qsos);
    const QString program = folder + u"/tordillo";
    if (!QDir().mkpath(folder) || !QFile::copy(setting.program, program))
        GiveUp(u"cannot copy "_qs + setting.program);
    QFile::copy(setting.dxccFile, folder + u"/dxcc.txt");
    CopyMadeLog(setting.cacheFolder, qsos, folder + u"/base0.mdb");
    FileSystem files;
    const SystemClock clock;
    Logbook logbook(folder, files, clock);
    logbook.LogInUse = madeLogName;
    logbook.configuration.Estacion = u"LU9ZZZ"_qs;
    logbook.configuration.Operador = u"LU1AAA"_qs;
    logbook.configuration.GridLoca = u"GF05AB"_qs;
    logbook.configuration.DiferUTC = u"-3"_qs;
    if (const Result<void> saved = SaveConfig(logbook, false); !saved)
        GiveUp(saved.failure().text);
    return program;
}

Timed StartOf(const QString &program)
{
    return [program](int) {
        // The run before was killed and has left its lock, which is not part of a usual start.
        QFile::remove(QFileInfo(program).absolutePath() + u"/tordillo.lock");
        return StartSpans(program, {});
    };
}

} // namespace

void BenchStart(const BenchSetting &setting, ResultTable &table)
{
    for (const QString &file : {setting.program, setting.referenceWindow}) {
        if (!QFileInfo(file).isExecutable()) {
            table.AddFailure(
                u"start to first page"_qs, file.isEmpty() ? u"no program given"_qs : u"no file "_qs + file);
            return;
        }
    }
    const QString log = MadeLog(setting.cacheFolder, smallLog);
    const Timed reference = [&](int) { return StartSpans(setting.referenceWindow, {log, madeLogName}); };
    const std::vector<double> medians = Alternate(
        {StartOf(MakeProgramFolder(setting, smallLog)), reference, StartOf(MakeProgramFolder(setting, largeLog))},
        startRounds, 1);
    table.AddRatio(u"start to first page / bare window"_qs, SizeText(smallLog), medians[0], medians[1], 2.5);
    table.AddRatio(u"start to first page, large log / small log"_qs, SizeText(largeLog), medians[2], medians[0], 1.2);
}
