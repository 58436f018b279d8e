// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

namespace {

struct Subject {
    const char *name;
    void (*run)(const BenchSetting &, ResultTable &);
};
constexpr Subject subjects[] = {
    {"store", BenchStore},
    {"pages", BenchPages},
    {"calls", BenchCalls},
    {"country", BenchCountry},
    {"start", BenchStart},
    {"logs", BenchLogs},
    {"search", BenchSearch},
    {"provinces", BenchProvinces},
    {"adif", BenchAdif},
    {"contest", BenchContest},
    {"copy", BenchCopy},
    {"keyer", BenchKeyer},
    {"online", BenchOnline},
};

QString SubjectNames()
{
    QStringList names;
    for (const Subject &subject : subjects)
        names << QString::fromLatin1(subject.name);
    return names.join(u", "_qs);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QString here = QCoreApplication::applicationDirPath();
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Measures the program and prints a table; fails when a goal is missed."_qs);
    parser.addHelpOption();
    parser.addOption({u"only"_qs, u"Only these subjects, may be given again: "_qs + SubjectNames(), u"subject"_qs});
    parser.addOption({u"cache"_qs, u"Folder of the logs that are made once."_qs, u"folder"_qs, here + u"/bench-data"});
    parser.addOption({u"dxcc"_qs, u"The prefix table."_qs, u"file"_qs});
    parser.addOption({u"program"_qs, u"The program whose start is measured."_qs, u"file"_qs});
    parser.addOption(
        {u"reference"_qs, u"The bare window it is measured against."_qs, u"file"_qs, here + u"/reference_window"});
    parser.addOption({u"output"_qs, u"Writes the table into this file too."_qs, u"file"_qs});
    parser.process(application);

    BenchSetting setting;
    setting.cacheFolder = QFileInfo(parser.value(u"cache"_qs)).absoluteFilePath();
    setting.dxccFile = parser.value(u"dxcc"_qs);
    setting.program = parser.value(u"program"_qs);
    setting.referenceWindow = parser.value(u"reference"_qs);
    setting.searchWindow = here + u"/search_window";
    setting.keyerLine = here + u"/keyer_line";
    setting.lookupWindow = here + u"/lookup_window";
    if (!QDir().mkpath(setting.cacheFolder))
        GiveUp(u"cannot make the folder "_qs + setting.cacheFolder);
    const QTemporaryDir work(setting.cacheFolder + u"/work-XXXXXX");
    if (!work.isValid())
        GiveUp(work.errorString());

    const QStringList only = parser.values(u"only"_qs);
    for (const QString &name : only)
        if (!SubjectNames().split(u", "_qs).contains(name))
            GiveUp(u"no such subject: "_qs + name);

    ResultTable table;
    for (const Subject &subject : subjects) {
        const QString name = QString::fromLatin1(subject.name);
        if (!only.isEmpty() && !only.contains(name))
            continue;
        setting.workFolder = work.filePath(name);
        QDir().mkpath(setting.workFolder);
        QElapsedTimer timer;
        timer.start();
        std::fprintf(stderr, "%s ...", subject.name);
        subject.run(setting, table);
        QDir(setting.workFolder).removeRecursively();
        std::fprintf(stderr, " %.1f s\n", static_cast<double>(timer.elapsed()) / 1000);
    }
    const QByteArray text = table.Markdown().toUtf8();
    std::fputs(text.constData(), stdout);
    if (const QString output = parser.value(u"output"_qs); !output.isEmpty()) {
        QFile file(output);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            GiveUp(u"cannot write "_qs + output);
    }
    return table.AllMet() ? 0 : 1;
}
