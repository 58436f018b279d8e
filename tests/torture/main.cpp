// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Stores QSOs until it is killed, and says of each that it is stored, for script/torture.
//   torture_store <folder> <first>   stores QSO <first>, <first> + 1, ... and prints "<number> <id>" after each
//   torture_store <folder> check     opens the log as the program does, checks the whole file, prints "ok"
// What QSO <number> looks like is told again in the script, which compares it.
#include "core/LogStore.h"
#include "core/Schema.h"
#include "logging/QsoStore.h"

#include <cstdio>

namespace {

constexpr int most = 100000; // ends by itself when nobody kills it

int Complain(const Failure &failure)
{
    std::fprintf(stderr, "%s\n", failure.text.toUtf8().constData());
    return 1;
}

// Two neighbours share a call, and only the second has a grid: storing it changes the row of the first as well.
NewQso MakeQso(int number)
{
    const int pair = number / 2;
    const auto letter = [](int value) { return QString(QChar(u'A' + value % 26)); };
    NewQso qso;
    qso.call = u"LU%1M"_qs.arg(pair / 676 % 9 + 1) + letter(pair / 26) + letter(pair);
    qso.band = u"20m"_qs;
    qso.mode = number % 3 == 0 ? u"CW"_qs : u"SSB"_qs;
    qso.reportSent = number % 3 == 0 ? u"599"_qs : u"59"_qs;
    qso.reportReceived = u"57"_qs;
    qso.date = u"%1/11/2026"_qs.arg(number % 28 + 1, 2, 10, QChar(u'0'));
    qso.time = u"%1:%2:00"_qs.arg(number / 60 % 24, 2, 10, QChar(u'0')).arg(number % 60, 2, 10, QChar(u'0'));
    qso.station = u"LU9ZZZ"_qs;
    qso.operatorCall = u"LU1AAA"_qs;
    qso.remarks = u"%1 "_qs.arg(number) + QString(number * 37 % 400, QChar(u'ñ'));
    qso.frequency = u"14.%1"_qs.arg(number % 350, 3, 10, QChar(u'0'));
    qso.ownGrid = u"GF05AB"_qs;
    qso.grid = number % 2 == 1 ? u"FF57"_qs : QString();
    qso.SOTA = u"LUM/M-%1"_qs.arg(number % 1000);
    qso.MY_POTA = u"AR-0001"_qs;
    qso.POTA = u"AR-%1"_qs.arg(number % 100);
    qso.MYSOTA = u"LUH/H-001"_qs;
    return qso;
}

int Check(LogStore &store)
{
    const Result<void> whole = store.CheckIntegrity();
    if (!whole)
        return Complain(whole.failure());
    std::puts("ok");
    return 0;
}

int Store(LogStore &store, int first)
{
    if (!store.Exists()) {
        const Result<void> made = store.CreateEmpty();
        if (!made)
            return Complain(made.failure());
    }
    const Result<void> probed = ProbeSchema(store);
    if (!probed)
        return Complain(probed.failure());
    for (int number = first; number < first + most; ++number) {
        const Result<qint64> id = AddQso(store, u"Log inicial"_qs, MakeQso(number));
        if (!id)
            return Complain(id.failure());
        std::printf("%d %lld\n", number, *id);
        if (std::fflush(stdout) != 0)
            return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fputs("torture_store <folder> <first number>|check\n", stderr);
        return 2;
    }
    LogStore store(QString::fromLocal8Bit(argv[1]) + u"/base0.mdb"_qs);
    const QString task = QString::fromLocal8Bit(argv[2]);
    return task == u"check" ? Check(store) : Store(store, task.toInt());
}
