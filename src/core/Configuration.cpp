// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Configuration.h"

#include "core/CodePage.h"
#include "core/Conversions.h"

#include <functional>

const QString passwordKey = u"ZQ7TRk36m"_qs;

namespace {

constexpr qsizetype keyLength = 9;
constexpr qsizetype longestValue = 100;
constexpr qsizetype longestPath = 1000;

struct Entry {
    QString key;
    std::function<QString(const Configuration &)> write;
    std::function<void(Configuration &, const QString &)> read;
    qsizetype longest = longestValue;
};

bool IsTicked(const QString &value) { return Conversions::LeadingNumber(value) != 0; }

QString Flag(bool value) { return value ? u"1"_qs : u"0"_qs; }

Entry Text(const QString &key, QString Configuration::*field, qsizetype longest = longestValue)
{
    return {key, [field](const Configuration &c) { return c.*field; },
        [field](Configuration &c, const QString &value) { c.*field = value; }, longest};
}

Entry UpperText(const QString &key, QString Configuration::*field)
{
    Entry entry = Text(key, field);
    entry.write = [field](const Configuration &c) { return (c.*field).toUpper(); };
    return entry;
}

// A line without a value says nothing: the first run writes these keys empty.
Entry FilledText(const QString &key, QString Configuration::*field)
{
    Entry entry = Text(key, field);
    entry.read = [field](Configuration &c, const QString &value) {
        if (!value.isEmpty())
            c.*field = value;
    };
    return entry;
}

Entry Password(const QString &key, QString Configuration::*field)
{
    return {key, [field](const Configuration &c) { return ScrambleText(c.*field, passwordKey, 0); },
        [field](Configuration &c, const QString &value) { c.*field = ScrambleText(value, passwordKey, -1); }};
}

Entry Tick(const QString &key, bool Configuration::*field)
{
    return {key, [field](const Configuration &c) { return Flag(c.*field); },
        [field](Configuration &c, const QString &value) { c.*field = IsTicked(value); }};
}

Entry ExactTick(const QString &key, bool Configuration::*field)
{
    Entry entry = Tick(key, field);
    entry.read = [field](Configuration &c, const QString &value) { c.*field = value == u"1"; };
    return entry;
}

Entry OneWayTick(const QString &key, bool Configuration::*field)
{
    Entry entry = Tick(key, field);
    entry.read = [field](Configuration &c, const QString &value) { c.*field = c.*field || value == u"1"; };
    return entry;
}

const QString themeKey = u"Pantalla="_qs;

const QList<Entry> &Entries()
{
    using C = Configuration;
    static const QList<Entry> entries{UpperText(u"Estacion="_qs, &C::Estacion),
        UpperText(u"Operador="_qs, &C::Operador), Text(u"DiferUTC="_qs, &C::DiferUTC),
        Text(u"LogenUso="_qs, &C::LogenUso), Text(u"GridLoca="_qs, &C::GridLoca), Text(u"UserLdA_="_qs, &C::UserLdA),
        Text(u"PassLdA_="_qs, &C::PassLdA), Tick(u"NoBorrar="_qs, &C::NoBorrar), Tick(themeKey, &C::Pantalla),
        Text(u"MySOTA__="_qs, &C::MySOTA), Text(u"MyPOTA__="_qs, &C::MyPOTA), OneWayTick(u"Activac_="_qs, &C::Activac),
        Text(u"HAMQuser="_qs, &C::HAMQuser), Password(u"HAMQpass="_qs, &C::HAMQpass),
        Text(u"LDAQ_web="_qs, &C::LDAQ_web), Text(u"LDAQuser="_qs, &C::LDAQuser),
        Password(u"LDAQpass="_qs, &C::LDAQpass), Text(u"eQSLuser="_qs, &C::eQSLuser),
        Password(u"eQSLpass="_qs, &C::eQSLpass), Text(u"ArcAudio="_qs, &C::ArcAudio, longestPath),
        FilledText(u"Puerto  ="_qs, &C::Puerto), ExactTick(u"PinPTT  ="_qs, &C::PinPTT),
        FilledText(u"TAntes  ="_qs, &C::TAntes), FilledText(u"TDespues="_qs, &C::TDespues),
        ExactTick(u"BuscaE  ="_qs, &C::BuscaE)};
    return entries;
}

} // namespace

bool ReadConfigLines(const QStringList &lines, Configuration &configuration)
{
    bool themeTold = false;
    for (const QString &line : lines) {
        for (const Entry &entry : Entries()) {
            if (!line.contains(entry.key))
                continue;
            entry.read(configuration, line.mid(keyLength, entry.longest));
            themeTold = themeTold || entry.key == themeKey;
        }
    }
    return themeTold;
}

QStringList ConfigLines(const Configuration &configuration, const QString &logInUse)
{
    Configuration written = configuration;
    written.LogenUso = logInUse;
    QStringList lines;
    for (const Entry &entry : Entries())
        lines << entry.key + entry.write(written);
    return lines;
}

bool FitsConfiguration(const QString &logName)
{
    Configuration read;
    const QByteArray line = CodePage::FromText(QString(u"LogenUso="_qs + logName));
    ReadConfigLines({CodePage::ToText(line)}, read);
    Configuration expected;
    expected.LogenUso = logName;
    return read == expected && !logName.contains(u'\r') && !logName.contains(u'\n');
}

QString ScrambleText(const QString &text, const QString &key, int direction)
{
    const QByteArray bytes = CodePage::FromText(text), keyBytes = CodePage::FromText(key);
    if ((direction != 0 && direction != -1) || keyBytes.isEmpty())
        return {};
    QString result;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const int code = static_cast<unsigned char>(bytes[i]);
        const int keyCode = static_cast<unsigned char>(keyBytes[i % keyBytes.size()]);
        int changed = direction == 0 ? code + keyCode : code - keyCode;
        if (changed > 255)
            changed -= 255;
        if (changed < 0)
            changed += 255;
        result += CodePage::CharacterOf(static_cast<unsigned char>(changed));
    }
    return result;
}
