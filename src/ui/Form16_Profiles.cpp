// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form16_Profiles.h"

#include "core/Profiles.h"
#include "ui/WindowScaler.h"
#include "ui_Form16_Profiles.h"

#include <QKeyEvent>
#include <QScreen>

Form16::Form16(Logbook &logbook, Dialogs &dialogs, QWidget *owner)
    : Window(u"Form16"_qs, dialogs, owner)
    , logbook_(logbook)
    , ui_(std::make_unique<Ui::Form16>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Perfiles"_qs);
    for (QPushButton *create : {ui_->Crear1, ui_->Crear2, ui_->Crear3})
        connect(create, &QPushButton::clicked, this, &Form16::Create);
    ShowFocusOn({ui_->Perfil1_0, ui_->Perfil1_1, ui_->Perfil1_2});
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form16::~Form16() = default;

void Form16::ShowProfiles()
{
    const ProfileNames names = ReadProfiles(logbook_);
    const struct {
        Field *name;
        QPushButton *create, *load;
    } rows[] = {{ui_->Perfil1_0, ui_->Crear1, ui_->Cargar1}, {ui_->Perfil1_1, ui_->Crear2, ui_->Cargar2},
        {ui_->Perfil1_2, ui_->Crear3, ui_->Cargar3}};
    for (size_t i = 0; i < names.size(); ++i) {
        rows[i].name->setText(names[i]);
        rows[i].create->setEnabled(names[i].isEmpty());
        rows[i].load->setEnabled(!names[i].isEmpty());
    }
    ui_->Perfil1_0->setFocus();
    ShowModal();
}

void Form16::Create()
{
    const Result<void> saved =
        SaveProfiles(logbook_, {ui_->Perfil1_0->text(), ui_->Perfil1_1->text(), ui_->Perfil1_2->text()});
    if (!saved)
        dialogs().Message(this, saved.failure().text, Dialogs::Icon::Critical);
}

bool Form16::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    close();
    return true;
}
