// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form22_Keyboard.h"

#include "keyer/CwKeyer.h"
#include "ui/WindowScaler.h"
#include "ui_Form22_Keyboard.h"

#include <QKeyEvent>
#include <QScreen>

Form22::Form22(Dialogs &dialogs, QWidget *owner)
    : Window(u"Form22"_qs, dialogs, owner)
    , ui_(std::make_unique<Ui::Form22>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Tx por teclado"_qs);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form22::~Form22() = default;

Form22::Outcome Form22::Send(CwKeyer &keyer)
{
    keyer_ = &keyer;
    outcome_ = Outcome::Closed;
    const auto shown = connect(&keyer, &CwKeyer::Changed, this,
        [this] { ui_->enviado->setText(CwKeyer::OnOneLine(keyer_->Shown().sent.right(40))); });
    ui_->enviado->clear();
    ui_->Text1->setFocus();
    ShowModal();
    disconnect(shown);
    return outcome_;
}

bool Form22::PreviewKey(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat()) {
            // Lines end as they do in a file: the return is a pause, the feed is none.
            keyer_->Replace(ui_->Text1->toPlainText().replace(u'\n', u"\r\n"_qs));
            keyer_->CwSendPending();
        }
        return true;
    case Qt::Key_Escape:
        outcome_ = Outcome::Escaped;
        keyer_->Stop();
        keyer_->Replace({});
        close();
        return true;
    default:
        return false;
    }
}
