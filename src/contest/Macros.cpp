// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/Macros.h"

#include "core/Logbook.h"
#include "core/TextFile.h"

namespace {

QString PathOf(const Logbook &logbook) { return logbook.PathOf(u"macros_concurso_3.cfg"_qs); }

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
    for (const QString &line : lines.value_or(QStringList()))
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

std::array<QString, macroCount> MacroCaptions(const QString &ownCall, const QString &call, const QString &rse)
{
    const QString typed = call.isEmpty() || !rse.isEmpty() ? u"SuCall"_qs : call;
    return {u"F1-CQ"_qs, u"F2-Serie"_qs, u"F3-TU"_qs, QString(u"F4-"_qs + ownCall), QString(u"F5-"_qs + typed),
        u"F6-AGN?"_qs, u"F7- NR?"_qs};
}
