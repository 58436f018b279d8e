// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "interchange/AdifFile.h"
#include "interchange/AdifImport.h"
#include "support/MemoryFiles.h"
#include "support/TestRegistry.h"

#include <QTest>

// The whole road of a file up to its contacts, as the window of the import goes it.
struct Reading {
    bool copied = false;
    AdifFile::Repaired repaired;
    AdifFile::Records records;
    QList<AdifImport::Contact> contacts;
    QMap<AdifImport::Trouble, int> troubles;
    QStringList reports, shown;
    std::optional<Failure> failure;
};

inline const QString chosenPath = u"/archivo.adi"_qs, copyPath = u"/copia"_qs, repairedPath = u"/modificado"_qs;

inline Reading ReadAdif(FileSystem &files, Run &run, AdifImport::Settings settings = {})
{
    Reading reading;
    const auto show = [&](const QString &text) { reading.shown << text; };
    const auto report = [&](qint64 line, const QString &reason) {
        reading.reports << u"%1: %2"_qs.arg(line).arg(reason);
    };
    const auto failed = [&](const auto &result) {
        if (!result)
            reading.failure = result.failure();
        return !result;
    };
    const auto split = AdifFile::SplitSingleLineFile(files, chosenPath, copyPath, run, show);
    if (failed(split))
        return reading;
    reading.copied = *split;
    const QString &path = *split ? copyPath : chosenPath;
    const auto repaired = AdifFile::JoinRecordLines(files, path, repairedPath, run, show, report);
    if (failed(repaired))
        return reading;
    reading.repaired = *repaired;
    auto records = AdifFile::ReadRecords(files, *repaired, run, show);
    if (failed(records))
        return reading;
    reading.records = *std::move(records);
    settings.fromLda = repaired->program.contains(u"LdA");
    for (const QByteArray &record : reading.records.records) {
        reading.contacts << AdifImport::ParseRecord(record, settings);
        for (const AdifImport::Trouble trouble : reading.contacts.last().troubles)
            ++reading.troubles[trouble];
    }
    return reading;
}

inline Reading ReadAdif(FileSystem &files, const AdifImport::Settings &settings = {})
{
    Runs runs;
    Run run(runs, {});
    return ReadAdif(files, run, settings);
}

inline Reading ReadAdif(const QByteArray &content, const AdifImport::Settings &settings = {})
{
    MemoryFiles files;
    files.content[chosenPath] = content;
    return ReadAdif(files, settings);
}

// One field of a record, its length in bytes.
inline QByteArray Field(const char *tag, const QByteArray &value)
{
    return QByteArray("<") + tag + ':' + QByteArray::number(value.size()) + '>' + value;
}

// A record of a contact, `more` in front of its end.
inline QByteArray Record(const QByteArray &call, const QByteArray &time = "2115", const QByteArray &more = {})
{
    return Field("CALL", call) + Field("QSO_DATE", "20261124") + Field("TIME_ON", time) + Field("BAND", "20m")
        + Field("FREQ", "14.250") + Field("MODE", "SSB") + Field("STATION_CALLSIGN", "LU9ZZZ") + more + "<EOR>";
}
