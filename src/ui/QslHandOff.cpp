// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/QslHandOff.h"

#include "stats/QslCard.h"
#include "ui/Dialogs.h"
#include "ui/Launcher.h"
#include "ui/Program.h"

#include <QUrl>

void DrawQslCard(const Program &program, QWidget *owner, const QslCard &card)
{
    Dialogs &dialogs = program.dialogs;
    const QString folder = QslFolder(program.logbook);
    const QString drawing = QslProgram(folder);
    if (drawing.isEmpty()) {
        dialogs.Message(owner, u"No se encuentra programa Bagual"_qs);
        return;
    }
    const QslDesign design = FindQslDesign(program.logbook.Files(), folder, card.ownCall);
    if (!design.path) {
        dialogs.Message(owner, u"El programa Bagual no tiene Diseño de QSL para "_qs + card.ownCall);
        if (!design.unreadable.isEmpty())
            dialogs.Message(owner, u"No se pudieron leer estos diseños:\n"_qs + design.unreadable.join(u'\n'));
        return;
    }
    if (!program.launcher->Start(drawing, QslArgument(card))) {
        dialogs.Message(owner, u"No se pudo iniciar el programa Bagual:\n"_qs + drawing, Dialogs::Icon::Critical);
        return;
    }
    const QString told = u"QSL "_qs + QslPictureShown(card) + u" guardada en C:/Bagual/Salida/\n\nDesea verla?";
    // The picture may still be on its way; where there is none to show, nothing is shown.
    if (dialogs.Ask(owner, told))
        program.launcher->Open(QUrl::fromLocalFile(QslPictureFile(folder, card)));
}
