// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/RealDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace {

QMessageBox::Icon BoxIcon(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::Information:
        return QMessageBox::Information;
    case Dialogs::Icon::Exclamation:
        return QMessageBox::Warning;
    case Dialogs::Icon::Critical:
        return QMessageBox::Critical;
    case Dialogs::Icon::Question:
        return QMessageBox::Question;
    case Dialogs::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

void Prepare(QMessageBox &box, const QString &text, Dialogs::Icon icon, const QString &title)
{
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setIcon(BoxIcon(icon));
}

int Execute(QDialog &dialog, QWidget *owner)
{
    const QPointer<QWidget> below(owner ? owner->window() : QApplication::activeWindow());
    const int result = dialog.exec();
    // Not every window system hands the activation back.
    if (below && below->isVisible() && !below->isMinimized() && !QApplication::activeWindow())
        below->activateWindow();
    return result;
}

bool Choose(QMessageBox &box, QWidget *owner, QPushButton *yes, QPushButton *no, Dialogs::Button preset)
{
    box.setDefaultButton(preset == Dialogs::Button::Yes ? yes : no);
    box.setEscapeButton(no);
    Execute(box, owner);
    return box.clickedButton() == yes;
}

std::optional<QString> ChooseFile(QFileDialog &dialog, QWidget *owner)
{
    const bool saves = dialog.acceptMode() == QFileDialog::AcceptSave;
    dialog.setLabelText(QFileDialog::LookIn, saves ? u"Guardar en:"_qs : u"Buscar en:"_qs);
    dialog.setLabelText(QFileDialog::FileName, u"&Nombre:"_qs);
    dialog.setLabelText(QFileDialog::FileType, u"Tipo:"_qs);
    dialog.setLabelText(QFileDialog::Accept, saves ? u"&Guardar"_qs : u"&Abrir"_qs);
    dialog.setLabelText(QFileDialog::Reject, u"Cancelar"_qs);
    if (Execute(dialog, owner) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

} // namespace

void RealDialogs::Message(QWidget *owner, const QString &text, Icon icon, const QString &title)
{
    QMessageBox box(owner);
    Prepare(box, text, icon, title);
    // No letter of its own: an operator who types on must not answer the box.
    QPushButton *accept = box.addButton(u"Aceptar"_qs, QMessageBox::AcceptRole);
    box.setDefaultButton(accept);
    box.setEscapeButton(accept);
    Execute(box, owner);
}

bool RealDialogs::Ask(QWidget *owner, const QString &text, Icon icon, Button preset, const QString &title)
{
    QMessageBox box(owner);
    Prepare(box, text, icon, title);
    QPushButton *yes = box.addButton(u"&Sí"_qs, QMessageBox::YesRole);
    QPushButton *no = box.addButton(u"&No"_qs, QMessageBox::NoRole);
    return Choose(box, owner, yes, no, preset);
}

bool RealDialogs::Confirm(QWidget *owner, const QString &text, Icon icon, Button preset, const QString &title)
{
    QMessageBox box(owner);
    Prepare(box, text, icon, title);
    QPushButton *accept = box.addButton(u"Aceptar"_qs, QMessageBox::AcceptRole);
    QPushButton *cancel = box.addButton(u"Cancelar"_qs, QMessageBox::RejectRole);
    return Choose(box, owner, accept, cancel, preset);
}

std::optional<QString> RealDialogs::Input(
    QWidget *owner, const QString &prompt, const QString &preset, const QString &title)
{
    QInputDialog dialog(owner);
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(preset);
    dialog.setOkButtonText(u"Aceptar"_qs);
    dialog.setCancelButtonText(u"Cancelar"_qs);
    for (QLabel *label : dialog.findChildren<QLabel *>())
        label->setTextFormat(Qt::PlainText);
    if (Execute(dialog, owner) != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

std::optional<QString> RealDialogs::OpenFile(
    QWidget *owner, const QString &title, const QString &filter, const QString &folder)
{
    QFileDialog dialog(owner, title, folder, filter);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return ChooseFile(dialog, owner);
}

std::optional<QString> RealDialogs::SaveFile(
    QWidget *owner, const QString &title, const QString &filter, const QString &folder, const QString &name)
{
    QFileDialog dialog(owner, title, folder, filter);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    if (!name.isEmpty())
        dialog.selectFile(name);
    return ChooseFile(dialog, owner);
}
