// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzzing.h"
#include "contest/Macros.h"
#include "core/Conversions.h"
#include "core/FieldMemory.h"
#include "core/Profiles.h"
#include "interchange/CabrilloWriter.h"
#include "keyer/CwSettings.h"
#include "keyer/Morse.h"

#include <algorithm>
#include <cmath>

// Any bytes at all are read as each of the small files that the program keeps for itself. What was read is saved and
// read again.

namespace {

bool FitsField(const std::optional<QString> &text, qsizetype longest = 40)
{
    return !text
        || (text->size() <= longest && std::all_of(text->begin(), text->end(), [](QChar c) { return c.isPrint(); }));
}

void CheckFields(const QByteArray &content)
{
    MemoryFolder folder;
    folder.File(u"mem.ini"_qs) = content;
    const FieldMemory memory = ReadFieldMemory(folder.logbook);
    Require(memory.present && memory.mhz.has_value() == memory.khz.has_value(), "both halves of the frequency");
    Require(FitsField(memory.mhz) && FitsField(memory.khz, 3) && FitsField(memory.band), "remembered fields");
    if (!memory.mhz || !memory.band || !memory.qtrManual)
        return;
    Require(bool(SaveFieldMemory(folder.logbook, *memory.mhz, *memory.khz, *memory.band, *memory.qtrManual)), "saving");
    const FieldMemory again = ReadFieldMemory(folder.logbook);
    Require(again.mhz == memory.mhz && again.khz == memory.khz && again.band == memory.band
            && again.qtrManual == memory.qtrManual,
        "remembered fields come back");
}

void CheckExit(const QByteArray &content)
{
    MemoryFolder folder;
    for (const QString &name : {u"memModo.cfg"_qs, u"memMhz.cfg"_qs, u"memKhz.cfg"_qs, u"memqSat.cfg"_qs})
        folder.File(name) = content;
    folder.File(u"memsat.ini"_qs) = content;
    const ExitMemory memory = ReadExitMemory(folder.logbook);
    Require(FitsField(memory.modo) && memory.modo == memory.mhz && memory.modo == memory.khz, "fields of the exit");
    const QString satellite = ReadSatelliteMemory(folder.logbook);
    Require(satellite == memory.modo.value_or(QString()), "the satellite");
    if (!memory.modo)
        return;
    Require(SaveExitMemory(folder.logbook, *memory.modo, *memory.mhz, *memory.khz, memory.viaSatelite.value_or(false))
            && SaveSatelliteMemory(folder.logbook, satellite),
        "saving at the exit");
    const ExitMemory again = ReadExitMemory(folder.logbook);
    Require(again.modo == memory.modo && again.mhz == memory.mhz && again.khz == memory.khz
            && again.viaSatelite == memory.viaSatelite,
        "fields of the exit come back");
    Require(ReadSatelliteMemory(folder.logbook) == satellite, "the satellite comes back");
}

void CheckProfiles(const QByteArray &content)
{
    MemoryFolder folder;
    folder.File(u"Perfiles.cfg"_qs) = content;
    const ProfileNames names = ReadProfiles(folder.logbook);
    Require(bool(SaveProfiles(folder.logbook, names)), "saving profiles");
    const ProfileNames again = ReadProfiles(folder.logbook);
    for (size_t i = 0; i < names.size(); ++i)
        Require(again[i] == Filed(names[i].toUpper()), "profiles come back");
}

void CheckKeyer(const QByteArray &content)
{
    MemoryFolder folder;
    folder.File(u"varCW.cfg"_qs) = content;
    const CwSettings settings = ReadCwSettings(folder.logbook);
    Require(KeyerPorts().contains(settings.port), "the port of the keyer");
    Require(bool(SaveKeyerSettings(folder.logbook, settings)), "saving the keyer");
    Require(ReadCwSettings(folder.logbook) == settings, "the keyer's settings come back");
}

// What the keyer makes of a message: the line never stays closed, and each change comes behind the one before.
void CheckSending(const QString &text)
{
    CwState state;
    for (const QChar character : text.left(100)) {
        const CwChar made = CwSendChar(character, state);
        qint64 last = -1;
        bool on = false;
        for (const LineChange &change : made.changes) {
            Require(change.at > last && change.on != on, "changes of the line");
            last = change.at;
            on = change.on;
        }
        Require(!on && made.duration >= last, "the line is open at the end");
        Require(made.after.speed >= CwSpeed::slowest && made.after.speed <= CwSpeed::fastest, "speed");
        state = made.after;
    }
}

void CheckMacros(const QByteArray &content, size_t size)
{
    MemoryFolder folder;
    folder.File(u"macros_concurso_3.cfg"_qs) = content;
    MacroTexts macros = DefaultMacros();
    Require(bool(LoadMacros(folder.logbook, macros)), "macros are read");
    const auto holdsKey = [](const QString &text) { return text.contains(u"macro") && text.contains(u'='); };
    if (std::none_of(macros.begin(), macros.end(), holdsKey)) {
        Require(bool(SaveMacros(folder.logbook, macros)), "saving macros");
        MacroTexts again;
        Require(LoadMacros(folder.logbook, again) && again == macros, "macros come back");
    }
    MacroFields fields{u"LU9ZZZ"_qs, u"LU1ABC"_qs, macros[0].left(5), u"Incremental"_qs, size % 2 == 0, {}, {}};
    for (int macro = 0; macro <= MacroExchange; ++macro)
        CheckSending(MacroMessage(macros, macro, fields));
}

void CheckHeader(const QByteArray &content)
{
    MemoryFolder folder;
    const QString path = folder.logbook.PathOf(u"datos.cbr"_qs);
    folder.File(u"datos.cbr"_qs) = content;
    CabrilloWriter::Header header, again;
    CabrilloWriter::LoadPersonalData(folder.files, path, header);
    Require(bool(CabrilloWriter::SavePersonalData(folder.files, path, header)), "saving the header");
    CabrilloWriter::LoadPersonalData(folder.files, path, again);
    Require(again.name == header.name && again.address1 == header.address1 && again.address2 == header.address2
            && again.address3 == header.address3 && again.email == header.email,
        "the header comes back");
    const QString text = CabrilloWriter::HeaderText(header);
    Require(text.count(u'\n') == 15 && text.count(u'\r') == 15, "fifteen lines");
}

// The values that such files, and foreign rows of the database, hold.
void CheckValue(const QString &text)
{
    using namespace Conversions;
    const double number = LeadingNumber(text);
    Require(!std::isnan(number), "a number");
    if (std::abs(number) < 1e9)
        Require(std::abs(number - LeadingInteger(text)) <= 0.5, "a whole number");
    if (const auto date = ParseDate(text)) {
        Require(ParseDate(DateText(*date)) == date && ParseDate(StoredDate(text)) == date, "a date");
        Require(ShownDate(StoredDate(text)) == DateText(*date), "a date that is shown");
    }
    if (const auto time = ParseTime(text)) {
        Require(ParseTime(LongTimeText(*time)) == time && ParseTime(StoredTime(text)) == time, "a time");
        Require(ShownTime(StoredTime(text)) == TimeText(*time), "a time that is shown");
    }
    Require(ShownTime(ShownTime(text)) == ShownTime(text), "a time shown once more");
    Require(ShownDate(text).count(u' ') == 0 || ParseDate(text), "blanks of a date");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray content = BytesOf(data, size);
    CheckFields(content);
    CheckExit(content);
    CheckProfiles(content);
    CheckKeyer(content);
    CheckMacros(content, size);
    CheckHeader(content);
    MemoryFolder folder;
    folder.File(u"valores"_qs) = content;
    for (const QString &line : folder.Lines(u"valores"_qs).mid(0, 10))
        CheckValue(line.left(100));
    return 0;
}
