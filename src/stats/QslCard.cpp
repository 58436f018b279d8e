// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "stats/QslCard.h"

#include "core/Logbook.h"
#include "core/OptionFile.h"
#include "core/TextFile.h"

#include <QDir>

namespace {

const QString callMark = u"SuCall="_qs;

// Nothing when the file cannot be read.
std::optional<bool> IsFor(const FileSystem &files, const QString &path, const QString &ownCall)
{
    const std::unique_ptr<QIODevice> file = files.OpenForReading(path);
    if (!file)
        return std::nullopt;
    LineReader lines(*file);
    while (auto line = lines.Next())
        if (line->contains(callMark) && line->remove(callMark) == ownCall)
            return true;
    return false;
}

} // namespace

QString QslFolder(const Logbook &logbook)
{
#ifdef Q_OS_WIN
    const QString preset = u"C:/Bagual"_qs;
#else
    const QString preset = QDir::home().filePath(u"Bagual"_qs);
#endif
    const QString told = OptionFile(logbook, u"programas.ini"_qs, u"programas"_qs).Value(u"bagual"_qs);
    return told.isEmpty() ? preset
                          : QDir::cleanPath(QDir(logbook.Folder()).absoluteFilePath(QDir::fromNativeSeparators(told)));
}

QString QslProgram(const QString &folder)
{
    // Name filters do not regard case.
    const QStringList found = QDir(folder).entryList({u"bagual.exe"_qs}, QDir::Files);
    return found.isEmpty() ? QString() : QDir(folder).filePath(found.first());
}

QslDesign FindQslDesign(const FileSystem &files, const QString &folder, const QString &ownCall)
{
    const QDir designs(folder + u"/MisQSLs");
    QslDesign result;
    for (const QString &name : designs.entryList({u"*.qsl"_qs}, QDir::Files, QDir::Name | QDir::IgnoreCase)) {
        const QString path = designs.filePath(name);
        const std::optional<bool> fits = IsFor(files, path, ownCall);
        if (!fits)
            result.unreadable << path;
        else if (*fits) {
            result.path = path;
            break;
        }
    }
    return result;
}

QString QslArgument(const QslCard &card)
{
    return u"Bagua$de="_qs + card.ownCall + u"$para=" + card.call + u"$fecha=" + card.date + u"$hora=" + card.time
        + u"$modo=" + card.mode + u"$banda=" + card.band + u"$reporte=" + card.report + u"$sat="
        + card.satellite.toUpper() + u"$nota=" + card.remarks;
}

QString QslPictureShown(const QslCard &card) { return card.call + u'_' + QString(card.date).remove(u'/') + u".jpg"; }

QString QslPictureFile(const QString &folder, const QslCard &card)
{
    return folder + u"/Salida/" + QslPictureShown(card).replace(u'/', u'_');
}
