// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TextViewer.h"

#include "core/OptionFile.h"
#include "ui/Dialogs.h"
#include "ui/Program.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

namespace {

bool OpenTextFile(const Logbook &logbook, const QString &path)
{
    const QString editor = OptionFile(logbook, u"programas.ini"_qs, u"programas"_qs).Value(u"editor"_qs);
    if (editor.isEmpty())
        return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    QStringList command = QProcess::splitCommand(editor) << path;
    const QString program = command.takeFirst();
    return QProcess::startDetached(program, command);
}

} // namespace

void ShowTextFile(Program &program, QWidget *owner, const QString &path)
{
    if (!OpenTextFile(program.logbook, path))
        program.dialogs.Message(owner, u"No se encontró un programa para ver el archivo\n%1"_qs.arg(path));
}
