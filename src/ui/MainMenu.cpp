// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainMenu.h"

#include <QMenu>
#include <vector>

namespace {

struct EntryText {
    const char *name; // null: a separator
    const char16_t *text;
};

struct MenuText {
    const char *name;
    const char16_t *title;
    std::vector<EntryText> entries;
};

const std::vector<MenuText> &Menus()
{
    static const std::vector<MenuText> menus{
        {"archivo", u"&Archivo",
            {{"alog", u"&Abrir Log"}, {"nuevo", u"&Nuevo Log"}, {"borralog", u"&Borrar Log"}, {nullptr, nullptr},
                {"iadif", u"&Importar ADIF ..."}}},
        {"menuBuscar", u"&Buscar", {{"eadif", u"&Buscar / Exportar ..."}}},
        {"lda2", u"&Log de Argentina",
            {{"suych", u"Subir y &Chequear Confirmaciones"}, {"ssub", u"&Sólo Subir"}, {nullptr, nullptr},
                {"parg", u"&Provincias Argentinas"}}},
        {"menuConcursos", u"C&oncursos",
            {{"cabro", u"&Concursos"}, {"anali", u"&Análisis de Concursos"}, {nullptr, nullptr},
                {"amc", u"Actualización &MasterCheck"}}},
        {"menuSatelites", u"Sa&télites", {{"satel", u"&Editar Satélites ..."}}},
        {"hbdd", u"&Hacer BackUp", {{"badeda", u"&Base de Datos"}, {"badif", u"&ADIF"}}},
        {"menuConfiguracion", u"&Configuración", {{"conf", u"&Configuración"}, {"ppeerr", u"&Perfiles"}}},
        {"menuAyuda", u"A&yuda",
            {{"manual", u"&Manual"}, {nullptr, nullptr}, {"ac", u"Act&ualizaciones"},
                {"cumbres", u"Lista de &cumbres SOTA"}, {nullptr, nullptr},
                {"acerca", u"&Acerca de Tordillo Compact"}}},
    };
    return menus;
}

} // namespace

MainMenu::MainMenu(QWidget *parent)
    : QMenuBar(parent)
{
    for (const MenuText &menu : Menus()) {
        QMenu *made = addMenu(QString::fromUtf16(menu.title));
        made->setObjectName(QString::fromLatin1(menu.name));
        for (const EntryText &entry : menu.entries) {
            if (!entry.name) {
                made->addSeparator();
                continue;
            }
            QAction *action = made->addAction(QString::fromUtf16(entry.text));
            action->setObjectName(QString::fromLatin1(entry.name));
            action->setEnabled(false);
        }
    }
    archivo_ = findChild<QMenu *>(u"archivo"_qs);
    QAction *leave = addAction(u"&Salir"_qs);
    leave->setObjectName(u"salir"_qs);
}

QAction *MainMenu::Entry(const char *name) const
{
    auto *action = findChild<QAction *>(QString::fromLatin1(name));
    Q_ASSERT(action);
    return action;
}

void MainMenu::SetArchivoEnabled(bool enabled) { archivo_->setEnabled(enabled); }
