// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/OptionFile.h"

#include "core/Logbook.h"
#include "core/TextFile.h"

OptionFile::OptionFile(const Logbook &logbook, const QString &name, const QString &section)
{
    bool inside = false;
    // Some editors put three bytes in front that no reader of plain text expects.
    const QString mark = u"ï»¿"_qs;
    for (const QString &line : TextFile::ReadLines(logbook.Files(), logbook.PathOf(name)).value_or(QStringList())) {
        // These files are written by hand, with any editor.
        for (const QString &part : line.split(u'\n')) {
            const QString text = (part.startsWith(mark) ? part.mid(mark.size()) : part).trimmed();
            if (text.startsWith(u'['))
                inside = text.compare(u'[' + section + u']', Qt::CaseInsensitive) == 0;
            else if (inside && text.contains(u'=') && !text.startsWith(u';') && !text.startsWith(u'#'))
                values_.insert(text.section(u'=', 0, 0).trimmed().toLower(), text.section(u'=', 1).trimmed());
        }
    }
}

QString OptionFile::Value(const QString &key, const QString &preset) const
{
    return values_.value(key.toLower(), preset);
}
