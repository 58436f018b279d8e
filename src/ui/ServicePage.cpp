// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ServicePage.h"

#include "ui/Dialogs.h"
#include "ui/Program.h"

#include <QUrl>

void OpenServicePage(Program &program, QWidget *owner, Service service)
{
    const QString address = ServiceAddress(program.logbook, service);
    if (!program.launcher->Open(QUrl(address)))
        program.dialogs.Message(owner, u"No se pudo abrir el navegador con:\n"_qs + address);
}
