// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Spanish.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

bool InstallSpanish(QApplication &application)
{
    const QLocale locale(QLocale::Spanish, QLocale::Argentina);
    QLocale::setDefault(locale);
    const QString beside = QCoreApplication::applicationDirPath() + u"/translations";
    for (const QString &folder : {beside, QLibraryInfo::path(QLibraryInfo::TranslationsPath)}) {
        auto *translator = new QTranslator(&application);
        if (translator->load(locale, u"qtbase"_qs, u"_"_qs, folder))
            return QCoreApplication::installTranslator(translator);
        delete translator;
    }
    return false;
}
