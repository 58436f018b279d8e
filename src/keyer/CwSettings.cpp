// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/CwSettings.h"

#include "core/Conversions.h"
#include "core/Logbook.h"
#include "core/TextFile.h"
#include "keyer/PortDevice.h"

namespace {

QString PathOf(const Logbook &logbook) { return logbook.PathOf(u"varCW.cfg"_qs); }

} // namespace

const QStringList &KeyerPorts()
{
    static const QStringList list = [] {
        QStringList made{u"Ninguno"_qs};
        for (int i = 1; i <= comPorts; ++i)
            made << u"COM%1"_qs.arg(i);
        return made;
    }();
    return list;
}

CwSettings ReadCwSettings(const Logbook &logbook)
{
    CwSettings settings;
    const auto lines = TextFile::ReadLines(logbook.Files(), PathOf(logbook));
    if (!lines)
        return settings;
    const QString port = lines->value(0).trimmed();
    const qsizetype place = KeyerPorts().indexOf(port, 0);
    if (place >= 0)
        settings.port = KeyerPorts().at(place);
    settings.dtr = Conversions::LeadingNumber(lines->value(1)) == 1;
    return settings;
}

Result<void> SaveKeyerSettings(Logbook &logbook, const CwSettings &settings)
{
    // Numbers stand between blanks, as the files have always held them.
    return TextFile::WriteLines(
        logbook.Files(), PathOf(logbook), {settings.port, settings.dtr ? u" 1 "_qs : u" 0 "_qs}, FileSystem::Sync::No);
}

QString CwSpeed::Text(int speed) { return u"Vel "_qs + QString::number(speed) + u" ppm"_qs; }

QString CwSpeed::MarkText(int speed) { return u"Vel="_qs + QString::number(speed) + u" ppm"_qs; }
