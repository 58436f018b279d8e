// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FieldMemory.h"

#include "core/Conversions.h"
#include "core/Logbook.h"
#include "core/TextFile.h"

#include <algorithm>

namespace {

// Values of the entry fields are short; a damaged file must not put a page of text into one of them.
constexpr qsizetype longestField = 40;

std::optional<QStringList> Lines(const Logbook &logbook, const QString &name)
{
    return TextFile::ReadLines(logbook.Files(), logbook.PathOf(name));
}

// What no key could have typed into a field comes from a damaged file.
bool IsTypable(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint(); });
}

std::optional<QString> FirstLine(const Logbook &logbook, const QString &name)
{
    const auto lines = Lines(logbook, name);
    if (!lines || lines->isEmpty() || !IsTypable(lines->first()))
        return std::nullopt;
    return lines->first().left(longestField);
}

Result<void> Write(Logbook &logbook, const QString &name, const QStringList &lines)
{
    return TextFile::WriteLines(logbook.Files(), logbook.PathOf(name), lines, FileSystem::Sync::No);
}

// Numbers stand between blanks, as the files have always held them.
QString NumberLine(bool value) { return value ? u" 1 "_qs : u" 0 "_qs; }

} // namespace

FieldMemory ReadFieldMemory(const Logbook &logbook)
{
    FieldMemory memory;
    const auto lines = Lines(logbook, u"mem.ini"_qs);
    if (!lines)
        return memory;
    memory.present = true;
    const QString frequency = lines->value(0);
    const qsizetype point = frequency.indexOf(u'.');
    if (point >= 0 && IsTypable(frequency)) {
        memory.mhz = frequency.left(std::min(point, longestField));
        memory.khz = frequency.mid(point + 1, 3);
    }
    if (lines->size() > 1 && IsTypable(lines->at(1)))
        memory.band = lines->at(1).left(longestField);
    if (lines->size() > 2)
        memory.qtrManual = Conversions::LeadingNumber(lines->at(2)) != 0;
    return memory;
}

Result<void> SaveFieldMemory(
    Logbook &logbook, const QString &mhz, const QString &khz, const QString &band, bool qtrManual)
{
    return Write(logbook, u"mem.ini"_qs, {mhz + u'.' + khz, band, NumberLine(qtrManual), QString()});
}

ExitMemory ReadExitMemory(const Logbook &logbook)
{
    ExitMemory memory{FirstLine(logbook, u"memModo.cfg"_qs), FirstLine(logbook, u"memMhz.cfg"_qs),
        FirstLine(logbook, u"memKhz.cfg"_qs), std::nullopt};
    if (const auto value = FirstLine(logbook, u"memqSat.cfg"_qs))
        memory.viaSatelite = Conversions::LeadingNumber(*value) != 0;
    return memory;
}

Result<void> SaveExitMemory(
    Logbook &logbook, const QString &modo, const QString &mhz, const QString &khz, bool viaSatelite)
{
    const std::pair<QString, QString> files[] = {{u"memModo.cfg"_qs, modo}, {u"memMhz.cfg"_qs, mhz},
        {u"memKhz.cfg"_qs, khz}, {u"memqSat.cfg"_qs, NumberLine(viaSatelite)}};
    Result<void> outcome;
    for (const auto &[name, value] : files)
        if (const Result<void> written = Write(logbook, name, {value}); !written)
            outcome = written;
    return outcome;
}

QString ReadSatelliteMemory(const Logbook &logbook) { return FirstLine(logbook, u"memsat.ini"_qs).value_or(QString()); }

Result<void> SaveSatelliteMemory(Logbook &logbook, const QString &name)
{
    return Write(logbook, u"memsat.ini"_qs, {name});
}
