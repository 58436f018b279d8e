// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"

#include <QFile>
#include <QHash>
#include <QProcess>
#include <memory>
#include <thread>

namespace {

constexpr int seconds = 60;
constexpr int longestRun = (seconds + 30) * 1000; // milliseconds

constexpr double medianGoal = 100, quietGoal = 1000, loadedGoal = 2000, driftGoal = 1000; // microseconds
constexpr double processorGoal = 15; // per cent of a core
constexpr double keyGoal = 50000;

using Figures = QHash<QString, double>;

// Other programs that want every processor there is.
class Load {
public:
    Load()
    {
        for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) {
            auto process = std::make_unique<QProcess>();
            process->start(u"/bin/sh"_qs, {u"-c"_qs, u"while :; do :; done"_qs});
            busy_.push_back(std::move(process));
        }
    }
    ~Load()
    {
        for (const auto &process : busy_) {
            process->kill();
            process->waitForFinished();
        }
    }

private:
    std::vector<std::unique_ptr<QProcess>> busy_;
};

Figures Keyed(const BenchSetting &setting, int speed)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_qs, u"offscreen"_qs);
    const QString record = setting.workFolder + u"/lines-" + QString::number(speed);
    QFile::remove(record);
    environment.insert(u"TORDILLO_MODEM_LINES"_qs, record);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(setting.keyerLine, {QString::number(speed), QString::number(seconds)});
    if (!process.waitForFinished(longestRun) || process.exitCode() != 0)
        GiveUp(u"the keyer's run of %1 ppm failed"_qs.arg(speed));
    Figures figures;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n'))
        figures.insert(QString::fromLatin1(line.split(' ').value(0)), line.split(' ').value(1).toDouble());
    return figures;
}

void AddRows(const Figures &figures, int speed, bool loaded, ResultTable &table)
{
    const QString size = u"%1 ppm, %2"_qs.arg(QString::number(speed), loaded ? u"loaded"_qs : u"quiet"_qs);
    const auto limit = [&](const QString &what, const QString &name, double goal) {
        table.AddLimit(what, size, figures.value(name), goal, Unit::Microseconds);
    };
    // Without a real-time rank a loaded machine gives what it gives.
    const bool granted = figures.value(u"realtime"_qs) != 0;
    const double largest = !loaded ? quietGoal : granted ? loadedGoal : 1e9;
    limit(u"keyer: median error of %1 edges"_qs.arg(figures.value(u"edges"_qs)), u"median"_qs,
        loaded && !granted ? 1e9 : medianGoal);
    limit(granted ? u"keyer: largest error"_qs : u"keyer: largest error, no real-time rank"_qs, u"largest"_qs, largest);
    limit(u"keyer: drift over 60 s"_qs, u"drift"_qs, driftGoal);
    limit(u"keyer: from key to field while sending"_qs, u"key"_qs, keyGoal);
    if (loaded)
        return;
    table.AddLimit(u"keyer: processor, per cent"_qs, size, figures.value(u"processor"_qs), processorGoal, Unit::Count);
    table.AddRatio(
        u"keyer: stop / character in hand"_qs, size, figures.value(u"stop"_qs), figures.value(u"character"_qs), 1);
}

} // namespace

void BenchKeyer(const BenchSetting &setting, ResultTable &table)
{
    for (const bool loaded : {false, true}) {
        std::unique_ptr<Load> load;
        if (loaded)
            load = std::make_unique<Load>();
        for (const int speed : {20, 30, 40})
            AddRows(Keyed(setting, speed), speed, loaded, table);
    }
}
