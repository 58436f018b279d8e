// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzzing.h"
#include "core/OptionFile.h"
#include "core/Services.h"
#include "keyer/PortDevice.h"
#include "stats/QslCard.h"

#include <QDir>
#include <algorithm>

// Any bytes at all are read as config.ini and as the option files. What was read is saved and read again.

namespace {

constexpr QString Configuration::*passwords[] = {
    &Configuration::HAMQpass, &Configuration::LDAQpass, &Configuration::eQSLpass};
constexpr QString Configuration::*texts[] = {&Configuration::Estacion, &Configuration::Operador,
    &Configuration::DiferUTC, &Configuration::LogenUso, &Configuration::GridLoca, &Configuration::UserLdA,
    &Configuration::PassLdA, &Configuration::MySOTA, &Configuration::MyPOTA, &Configuration::HAMQuser,
    &Configuration::LDAQ_web, &Configuration::LDAQuser, &Configuration::eQSLuser, &Configuration::Puerto,
    &Configuration::TAntes, &Configuration::TDespues};

// The scrambling has no code for the last character, and a line end ends the line of a password.
bool CanBeKept(const QString &password)
{
    return !password.contains(u'ÿ') && !ScrambleText(password, passwordKey, 0).contains(u'\r');
}

// Whether a value, upper-cased or not, stands in a line of its own without being taken for another one's.
bool IsPlain(const QString &value)
{
    return SurvivesFile(value) && SurvivesFile(value.toUpper()) && value.toUpper().size() == value.size()
        && !value.contains(u'=');
}

bool IsPlain(const Configuration &configuration)
{
    const auto plain = [&](QString Configuration::*field) { return IsPlain(configuration.*field); };
    const auto kept = [&](QString Configuration::*field) {
        return CanBeKept(configuration.*field) && !ScrambleText(configuration.*field, passwordKey, 0).contains(u'=');
    };
    return std::all_of(std::begin(texts), std::end(texts), plain) && IsPlain(configuration.ArcAudio)
        && std::all_of(std::begin(passwords), std::end(passwords), kept);
}

void CheckWidths(const Configuration &configuration)
{
    for (const auto field : texts)
        Require((configuration.*field).size() <= 100, "widths");
    for (const auto field : passwords)
        Require((configuration.*field).size() <= 100, "widths of passwords");
    Require(configuration.ArcAudio.size() <= 1000, "width of the path");
}

void CheckConfiguration(const QByteArray &content)
{
    MemoryFolder folder;
    folder.File(u"config.ini"_qs) = content;
    Logbook &logbook = folder.logbook;
    logbook.LogInUse = u"Base 1"_qs;
    const bool themeTold = LoadConfig(logbook);
    Require(themeTold == content.contains("Pantalla="), "the theme");
    CheckWidths(logbook.configuration);
    Require(logbook.captions.station == logbook.configuration.Estacion.toUpper(), "captions");
    if (logbook.LogInUse.isEmpty())
        logbook.LogInUse = u"Base 1"_qs;
    Require(bool(SaveConfig(logbook, false)), "saving");
    if (!IsPlain(logbook.configuration))
        return;
    Configuration expected = logbook.configuration;
    expected.Estacion = expected.Estacion.toUpper();
    expected.Operador = expected.Operador.toUpper();
    expected.LogenUso = logbook.LogInUse;
    MemoryFolder next;
    next.files = folder.files;
    Require(LoadConfig(next.logbook), "the theme is saved");
    Require(next.logbook.configuration == expected, "a configuration that is saved and read again");
    Require(next.logbook.LogInUse == expected.LogenUso, "the open log");
}

void CheckNameOfLog(const QString &name)
{
    if (!FitsConfiguration(name) || name.isEmpty())
        return;
    MemoryFolder folder;
    folder.logbook.LogInUse = name;
    Require(bool(SaveConfig(folder.logbook, false)), "saving a name");
    folder.logbook.LogInUse.clear();
    static_cast<void>(LoadConfig(folder.logbook));
    Require(folder.logbook.LogInUse == name, "a name that fits comes back");
}

void CheckScrambling(const QString &text)
{
    const QString scrambled = ScrambleText(text, passwordKey, 0);
    Require(scrambled.size() == text.size() && SurvivesFile(scrambled), "scrambled text");
    if (!text.contains(u'ÿ'))
        Require(ScrambleText(scrambled, passwordKey, -1) == text, "scrambled text comes back");
}

void CheckOptions(const QByteArray &content, size_t size)
{
    MemoryFolder folder;
    for (const QString &name : {u"servicios.ini"_qs, u"puertos.ini"_qs, u"programas.ini"_qs})
        folder.File(name) = content;
    const QString address = ServiceAddress(folder.logbook, Service(size % (size_t(Service::LdaSite) + 1)));
    Require(!address.isEmpty() && !address.endsWith(u'/') && address.trimmed() == address, "the address of a service");
    const QString com = u"COM%1"_qs.arg(size % (comPorts + 2));
    Require(size % (comPorts + 2) % (comPorts + 1) != 0 || PortDevice(folder.logbook, com).isEmpty(), "no such port");
    Require(PortDevice(folder.logbook, com).trimmed() == PortDevice(folder.logbook, com), "a device");
    Require(QDir::isAbsolutePath(QslFolder(folder.logbook)), "the folder of the cards");
    const OptionFile options(folder.logbook, u"programas.ini"_qs, u"PROGRAMAS"_qs);
    Require(options.Value(u"editor"_qs) == options.Value(u"EDITOR"_qs), "keys in either case");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray content = BytesOf(data, size);
    CheckConfiguration(content);
    const QString head = CodePage::ToText(content.left(120));
    CheckNameOfLog(head.section(u'\r', 0, 0));
    CheckScrambling(head);
    CheckOptions(content, size);
    return 0;
}
