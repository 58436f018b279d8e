// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form33_LookupResult.h"

#include "ui/WindowScaler.h"
#include "ui_Form33_LookupResult.h"

#include <QKeyEvent>
#include <QScreen>

namespace {

// In twips, 15 a pixel.
constexpr int qrzHeight = 5910 / 15, ldaHeight = 8000 / 15, ldaFromEditHeight = 5800 / 15;
constexpr int drawnWidth = 520;

QString OneLine(QString text) { return text.remove(u'\r').remove(u'\n'); }

} // namespace

Form33::Form33(Dialogs &dialogs, QWidget *owner)
    : Window(u"Form33"_qs, dialogs, owner)
    , ui_(std::make_unique<Ui::Form33>())
{
    ui_->setupUi(this);
    // The scale is reckoned from the lowest of the heights: else to show that one would shrink all that is in it.
    for (QWidget *frame : {ui_->Frame1, ui_->Frame2})
        frame->hide();
    resize(drawnWidth, ldaFromEditHeight);
    // Each button works once a showing.
    const auto once = [this](QPushButton *button, QLabel *label, void (Form33::*chosen)(const QString &)) {
        connect(button, &QPushButton::clicked, this, [this, button, label, chosen] {
            button->setEnabled(false);
            (this->*chosen)(OneLine(label->text()));
        });
    };
    once(ui_->Command1, ui_->Label1, &Form33::RemarksChosen);
    once(ui_->Command2, ui_->Label2, &Form33::RemarksChosen);
    once(ui_->Command4, ui_->Label3, &Form33::GridChosen);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form33::~Form33() = default;

void Form33::ShowResult(QWidget &owner, const LookupResult &result, bool forEntry)
{
    const bool lda = result.service == LookupResult::Service::Lda, taken = lda && forEntry;
    if (parentWidget() != &owner)
        setParent(&owner, windowFlags());
    setWindowTitle(result.title);
    ui_->Text1->setPlainText(result.text);
    if (lda) {
        ui_->Label1->setText(result.name);
        ui_->Label2->setText(result.email);
        ui_->Label3->setText(result.grid);
    }
    for (QPushButton *button : {ui_->Command1, ui_->Command2, ui_->Command4})
        button->setEnabled(true);
    ui_->Frame1->setVisible(taken);
    ui_->Frame2->setVisible(taken);
    const int height = !lda ? qrzHeight : forEntry ? ldaHeight : ldaFromEditHeight;
    const double scale = ScaleOf(this);
    resize(qRound(drawnWidth * scale), qRound(height * scale));
    ui_->Text1->setFocus();
    ShowModal();
}

bool Form33::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    close();
    return true;
}
