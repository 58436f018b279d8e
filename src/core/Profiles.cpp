// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Profiles.h"

#include "core/Logbook.h"
#include "core/TextFile.h"

namespace {

const QString fileName = u"Perfiles.cfg"_qs;

QString Key(size_t number) { return u"Perfil"_qs + QString::number(number + 1) + u'='; }

} // namespace

ProfileNames ReadProfiles(const Logbook &logbook)
{
    ProfileNames names;
    const auto lines = TextFile::ReadLines(logbook.Files(), logbook.PathOf(fileName));
    for (const QString &line : lines.value_or(QStringList()))
        for (size_t i = 0; i < names.size(); ++i)
            if (line.contains(Key(i)))
                names[i] = QString(line).remove(Key(i));
    return names;
}

Result<void> SaveProfiles(Logbook &logbook, const ProfileNames &names)
{
    QStringList lines;
    for (size_t i = 0; i < names.size(); ++i)
        lines << Key(i) + names[i].toUpper();
    return TextFile::WriteLines(logbook.Files(), logbook.PathOf(fileName), lines, FileSystem::Sync::Yes);
}
