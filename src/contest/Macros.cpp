// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/Macros.h"

#include "contest/ContestLogs.h"
#include "core/Conversions.h"
#include "core/Logbook.h"
#include "core/TextFile.h"

namespace {

QString PathOf(const Logbook &logbook) { return logbook.PathOf(u"macros_concurso_3.cfg"_qs); }

QString Cut(QString text) { return text.replace(u'0', u'T').replace(u'9', u'N'); }

QString CutIf(const QString &text, bool cut) { return cut ? Cut(text) : text; }

QString SavedSerial(const QString &serie)
{
    const qsizetype missing = serie.size() == 1 ? 2 : serie.size() == 2 ? 1 : 0;
    return QString(missing, u'0') + serie;
}

QString SerieMessage(const MacroTexts &macros, int macro, const MacroFields &fields)
{
    QString serial = SentSerial(fields.rse, fields.serieType);
    const bool wasSent = !fields.savedCall.isEmpty() && !fields.savedSerie.isEmpty();
    if (macro == MacroSerie && wasSent)
        serial = SavedSerial(fields.savedSerie);
    QString text = macros[MacroSerie];
    text.replace(u"#SUSD#"_qs, macro == MacroSerie ? fields.call : QString());
    text.replace(u"#RST#"_qs, CutIf(u" 599 "_qs, fields.cutNumbers));
    text.replace(u"#SERIE#"_qs, CutIf(serial, fields.cutNumbers));
    return macro == MacroSerie ? text : QString(fields.call + u' ' + text);
}

QString KeyOf(size_t macro) { return u"macro%1="_qs.arg(macro + 1); }

} // namespace

const MacroTexts &DefaultMacros()
{
    static const MacroTexts texts{u"CQ #MISD# #MISD# >>TEST<<"_qs, u"#SUSD# >>#RST#<< #SERIE# #SERIE#"_qs, u"TU"_qs,
        u"#MISD#"_qs, u"#SUSD#"_qs, u"AGN"_qs, u"NR?"_qs};
    return texts;
}

Result<void> LoadMacros(Logbook &logbook, MacroTexts &macros)
{
    if (!logbook.Files().Exists(PathOf(logbook))) {
        macros = DefaultMacros();
        return SaveMacros(logbook, macros);
    }
    const auto lines = TextFile::ReadLines(logbook.Files(), PathOf(logbook));
    if (!lines) {
        if (macros == MacroTexts())
            macros = DefaultMacros();
        return Failure{u"No se pueden leer las macros del archivo\n%1"_qs.arg(PathOf(logbook))};
    }
    for (const QString &line : *lines)
        for (size_t i = 0; i < macros.size(); ++i)
            if (const QString key = KeyOf(i); line.contains(key))
                macros[i] = QString(line).remove(key);
    return {};
}

Result<void> SaveMacros(Logbook &logbook, const MacroTexts &macros)
{
    QStringList lines;
    for (size_t i = 0; i < macros.size(); ++i)
        lines << QString(KeyOf(i) + macros[i]);
    return TextFile::WriteLines(logbook.Files(), PathOf(logbook), lines, FileSystem::Sync::No);
}

QString MacroMessage(MacroTexts &macros, int macro, const MacroFields &fields)
{
    const QString ownCall = u"#MISD#"_qs;
    switch (macro) {
    case MacroCq:
        return macros[MacroCq].replace(ownCall, fields.ownCall);
    case MacroSerie:
    case MacroExchange:
        return SerieMessage(macros, macro, fields);
    case MacroTu:
        return fields.call != fields.savedCall ? QString(fields.call + u" TU") : macros[MacroTu];
    case MacroOwnCall:
        return QString(macros[MacroOwnCall]).replace(ownCall, fields.ownCall);
    case MacroHisCall:
        return QString(macros[MacroHisCall]).replace(u"#SUSD#"_qs, fields.call);
    default:
        return macros[size_t(macro)];
    }
}

QString SentSerial(const QString &rse, const QString &serieType)
{
    if (serieType == SerieType::Fija)
        return rse;
    return (Conversions::LeadingNumber(rse) < 10 ? u"00"_qs : u"0"_qs) + rse;
}

QString ExchangeAgain(const QString &call, const QString &serial, bool cutNumbers)
{
    return call + u' ' + CutIf(u"599"_qs, cutNumbers) + u' ' + CutIf(serial, cutNumbers);
}

EsmStep StepOfEnter(bool run, bool hasCall, bool hasExchange, bool saved)
{
    using Focus = EsmStep::Focus;
    using Sends = EsmStep::Sends;
    if (hasExchange && !hasCall)
        return {};
    if (run && !hasCall)
        return {Sends::Message, MacroCq, false, false, Focus::Call};
    if (run)
        return hasExchange ? EsmStep{Sends::Message, MacroTu, false, true, Focus::Call}
                           : EsmStep{Sends::Message, MacroExchange, true, false, Focus::Exchange};
    if (hasExchange)
        return {Sends::Message, MacroSerie, true, false, Focus::Stays};
    if (!hasCall && saved)
        return {Sends::ExchangeAgain, MacroSerie, false, false, Focus::Stays};
    return {Sends::Message, MacroOwnCall, false, false, Focus::Stays};
}

std::array<QString, macroCount> MacroCaptions(const QString &ownCall, const QString &call, const QString &rse)
{
    const QString typed = call.isEmpty() || !rse.isEmpty() ? u"SuCall"_qs : call;
    return {u"F1-CQ"_qs, u"F2-Serie"_qs, u"F3-TU"_qs, QString(u"F4-"_qs + ownCall), QString(u"F5-"_qs + typed),
        u"F6-AGN?"_qs, u"F7- NR?"_qs};
}
