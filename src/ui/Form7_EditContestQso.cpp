// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form7_EditContestQso.h"

#include "contest/ContestEntry.h"
#include "ui/FieldFilter.h"
#include "ui/Program.h"
#include "ui/WindowScaler.h"
#include "ui_Form7_EditContestQso.h"

#include <QKeyEvent>
#include <QScreen>

namespace {

std::optional<QChar> TextKey(QChar key) { return key == u'\'' ? std::nullopt : std::optional(key); }

} // namespace

Form7::Form7(Program &program, QWidget *owner)
    : Window(u"Form7"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form7>())
{
    ui_->setupUi(this);
    ui_->Combo1->addItems(ContestBands());
    ui_->Combo2->addItems(ContestModes());
    for (QLineEdit *number : {ui_->Text3, ui_->Text4, ui_->Text5})
        FieldFilter::Attach(number, [](QChar key) { return FilterContestKey(key, ContestFilter::Digits); });
    // A file may have brought calls and exchanges that the contest window would not take.
    for (QLineEdit *text : {ui_->Text1, ui_->Text2, ui_->Text6, ui_->Text7})
        FieldFilter::Attach(text, TextKey, LetterCase::Upper);
    ShowFocusOn({ui_->Text1, ui_->Text2, ui_->Text3, ui_->Text4, ui_->Text5, ui_->Text6, ui_->Text7});
    connect(ui_->Command1, &QPushButton::clicked, this, &Form7::Save);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form7::Delete);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form7::~Form7() = default;

bool Form7::Edit(const QsoRow &row, int place)
{
    stored_ = ContestEdit::FromRow(row);
    setWindowTitle(ContestEdit::Caption(stored_.id));
    for (const auto &[list, value] : {std::pair{ui_->Combo1, stored_.band}, std::pair{ui_->Combo2, stored_.mode}}) {
        if (list->findText(value) < 0)
            list->addItem(value); // of a file that knows more bands and modes
        list->setCurrentText(value);
    }
    ui_->Text1->setText(stored_.ownCall);
    ui_->Text2->setText(stored_.call);
    ui_->Text3->setText(stored_.frequency);
    ui_->Text4->setText(stored_.date);
    ui_->Text5->setText(stored_.time);
    ui_->Text6->setText(stored_.rse);
    ui_->Text7->setText(stored_.rsr);
    ui_->Label3->setText(stored_.contest);
    ui_->Label10->setText(stored_.type);
    ui_->Label11->setText(QString::number(place));
    changed_ = false;
    ui_->Text2->setFocus();
    ShowModal();
    return changed_;
}

ContestEditFields Form7::ReadFields() const
{
    ContestEditFields fields = stored_;
    fields.band = ui_->Combo1->currentText();
    fields.mode = ui_->Combo2->currentText();
    fields.ownCall = ui_->Text1->text();
    fields.call = ui_->Text2->text();
    fields.frequency = ui_->Text3->text();
    fields.date = ui_->Text4->text();
    fields.time = ui_->Text5->text();
    fields.rse = ui_->Text6->text();
    fields.rsr = ui_->Text7->text();
    return fields;
}

QString Form7::CheckOf(QWidget *field) const
{
    // What was not touched is not questioned: a file may have brought a contact without a frequency.
    const ContestEditFields fields = ReadFields();
    if (field == ui_->Text3 && fields.frequency != stored_.frequency)
        return ContestEdit::CheckFrequency(fields.frequency);
    if (field == ui_->Text4 && fields.date != stored_.date)
        return ContestEdit::CheckDate(fields.date);
    if (field == ui_->Text5 && fields.time != stored_.time)
        return ContestEdit::CheckTime(fields.time);
    return {};
}

void Form7::FieldEntered(QWidget *field)
{
    if (auto *line = qobject_cast<QLineEdit *>(field))
        line->end(false);
}

void Form7::FieldLeft(QWidget *field)
{
    if (const QString message = CheckOf(field); !message.isEmpty())
        QueueFieldMessage(field, message);
}

void Form7::Save()
{
    if (FieldMessagePending())
        return;
    // Enter saves from within a field, so the fields are looked at here as well.
    for (QLineEdit *field : {ui_->Text3, ui_->Text4, ui_->Text5}) {
        if (const QString message = CheckOf(field); !message.isEmpty()) {
            dialogs().Message(this, message);
            GiveFocusTo(field);
            return;
        }
    }
    const Result<bool> updated = ContestEdit::Update(program_.logbook.Store(), ReadFields());
    if (!updated) {
        dialogs().Message(this, u"El QSO no fue guardado.\n\n"_qs + updated.failure().text, Dialogs::Icon::Critical);
        return;
    }
    if (!*updated)
        dialogs().Message(
            this, u"El QSO ya no está en el concurso: otro programa lo borró."_qs, Dialogs::Icon::Critical);
    changed_ = true;
    hide();
}

void Form7::Delete()
{
    if (dialogs().Ask(
            this, ContestEdit::DeleteQuestion(ui_->Text2->text()), Dialogs::Icon::Question, Dialogs::Button::No)) {
        const Result<bool> deleted = ContestEdit::Delete(program_.logbook.Store(), stored_.id);
        if (!deleted)
            dialogs().Message(this, deleted.failure().text, Dialogs::Icon::Critical);
        changed_ = true;
    }
    hide();
}

bool Form7::PreviewKey(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        close();
    else if (enter && !event->isAutoRepeat())
        Save();
    else
        return enter;
    return true;
}
