// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later

// keyer_line <speed> <seconds>: keys text on a pseudo terminal whose lines are recorded (TORDILLO_MODEM_LINES), with
// the contest window open, and prints how far the edges came from their computed times, how they drifted, what the
// processor had to do, how long a stop and a typed key took. Microseconds; one "name value" a line.
#include "BenchProgram.h"

#include "contest/ContestLogs.h"
#include "core/QsoTable.h"
#include "keyer/CwKeyer.h"
#include "ui/Form4_Contest.h"
#include "ui/KeyerPanel.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

struct Line {
    double at; // microseconds of the monotonic clock
    bool on;
};

QList<Line> Recorded(const QString &line)
{
    QFile file(qEnvironmentVariable("TORDILLO_MODEM_LINES"));
    QList<Line> changes;
    if (file.open(QIODevice::ReadOnly))
        for (const QByteArray &text : file.readAll().split('\n'))
            if (const QList<QByteArray> words = text.split(' '); QString::fromLatin1(words.value(2)) == line)
                changes << Line{words[0].toDouble() / 1000, words[3] == "1"};
    return changes;
}

double ProcessorTime()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto micros = [](const timeval &time) { return double(time.tv_sec) * 1e6 + double(time.tv_usec); };
    return micros(usage.ru_utime) + micros(usage.ru_stime);
}

// The text that fills the time, and the computed edges of it.
QString TextFor(int speed, double seconds, QList<double> &edges)
{
    const QString words = u"CQ LU9ZZZ LU9ZZZ TEST PARIS 599 007 "_qs;
    QString text;
    CwState state{speed, {}};
    qint64 at = 0;
    while (double(at) < seconds * 1e6) {
        const QChar character = words.at(text.size() % words.size());
        text += character;
        const CwChar sent = CwSendChar(character, state);
        for (const LineChange &change : sent.changes)
            edges << double(at + change.at);
        at += sent.duration;
        state = sent.after;
    }
    return text;
}

void Tell(const char *name, double value) { std::printf("%s %.1f\n", name, value); }

void TellEdges(const QList<Line> &recorded, const QList<double> &computed, double start)
{
    if (recorded.size() != computed.size()) {
        std::fprintf(stderr, "%lld edges recorded, %lld computed\n", static_cast<long long>(recorded.size()),
            static_cast<long long>(computed.size()));
        std::exit(1);
    }
    QList<double> errors, sizes;
    for (qsizetype i = 0; i < computed.size(); ++i) {
        errors << recorded[i].at - start - computed[i];
        sizes << std::abs(errors.last());
    }
    const auto median = [](QList<double> values) {
        std::sort(values.begin(), values.end());
        return values[values.size() / 2];
    };
    const qsizetype tenth = errors.size() / 10;
    Tell("edges", double(computed.size()));
    Tell("median", median(sizes));
    Tell("largest", *std::max_element(sizes.begin(), sizes.end()));
    Tell("drift", std::abs(median(errors.last(tenth)) - median(errors.first(tenth))));
}

// Types into the window while the text goes out; the longest time from the key to the text in the field.
class Typist {
public:
    explicit Typist(QLineEdit *field)
        : field_(field)
    {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Type(); });
        timer_.start(250);
    }
    double Longest() const { return longest_; }

private:
    void Type()
    {
        // Posted like a key of the window system, behind whatever waits already.
        QElapsedTimer timer;
        timer.start();
        const int key = field_->text().size() < 6 ? Qt::Key_A : Qt::Key_Backspace;
        QMetaObject::invokeMethod(
            field_,
            [this, key, timer] {
                QTest::keyClick(field_, Qt::Key(key));
                longest_ = std::max(longest_, double(timer.nsecsElapsed()) / 1000);
            },
            Qt::QueuedConnection);
    }

    QLineEdit *field_;
    QTimer timer_;
    double longest_ = 0;
};

void Measure(Form4 &contest, int speed, double seconds)
{
    CwKeyer &keyer = contest.findChild<KeyerPanel *>()->Keyer();
    keyer.SetSpeed(speed);
    QList<double> computed;
    const QString text = TextFor(speed, seconds, computed);
    const qsizetype before = Recorded(u"DTR"_qs).size();
    const double processor = ProcessorTime();
    Typist typist(contest.findChild<QLineEdit *>(u"Corresponsal"_qs));
    keyer.Append(text);
    QElapsedTimer clock;
    clock.start();
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const double began = double(now.tv_sec) * 1e6 + double(now.tv_nsec) / 1000;
    keyer.CwSendPending();
    while (keyer.IsRunning())
        QTest::qWait(50);
    const double passed = double(clock.nsecsElapsed()) / 1000;
    Tell("realtime", keyer.IsRealTime() ? 1 : 0);
    Tell("processor", (ProcessorTime() - processor) / passed * 100);
    Tell("key", typist.Longest());
    TellEdges(Recorded(u"DTR"_qs).mid(before), computed, began);

    // A stop in the middle of the longest figure: the key is up when its character ends.
    keyer.Append(u"0000"_qs);
    keyer.CwSendPending();
    QTest::qWait(100);
    clock.restart();
    keyer.Stop();
    while (keyer.IsRunning())
        QTest::qWait(1);
    Tell("stop", double(clock.nsecsElapsed()) / 1000);
    Tell("character", double(CwSendChar(u'0', {speed, {}}).duration));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc != 3)
        return 2;
    const int speed = QByteArray(argv[1]).toInt();
    const double seconds = QByteArray(argv[2]).toDouble();
    SetUpLook(application);
    const QTemporaryDir folder;
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
        return 2;
    const auto write = [&folder](const QString &name, const QByteArray &content) {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    };
    if (!write(u"puertos.ini"_qs, "[puertos]\r\nCOM1=" + QByteArray(ptsname(master)) + "\r\n")
        || !write(u"config.ini"_qs, "Estacion=LU9ZZZ\r\nLogenUso=Log inicial\r\n"))
        return 2;

    BenchProgram bench(folder.path());
    Logbook &logbook = bench.logbook;
    Windows &windows = bench.windows;
    if (!logbook.Store().CreateEmpty() || !CreateContest(logbook.Store(), u"CQ"_qs, SerieType::Incremental))
        return 2;
    QTimer::singleShot(0, &application, [&] {
        QTimer::singleShot(300, &application, [&] {
            Form4 &contest = windows.Contest();
            contest.findChild<QComboBox *>(u"Combo1"_qs)->setCurrentText(u"CW"_qs);
            Measure(contest, speed, seconds);
            std::fflush(stdout);
            std::_Exit(0);
        });
        windows.Contest().Enter({u"CQ"_qs, SerieType::Incremental});
    });
    return QApplication::exec();
}
