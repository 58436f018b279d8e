// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form11_Satellites.h"

#include "core/Logbook.h"
#include "core/TextFile.h"
#include "ui/FieldFilter.h"
#include "ui/WindowScaler.h"
#include "ui_Form11_Satellites.h"

#include <QKeyEvent>
#include <QLayout>
#include <QScreen>

namespace {

const QString catalogueName = u"satelites.txt"_qs;

std::optional<QChar> FrequencyKey(QChar key)
{
    return (key >= u'0' && key <= u'9') || key == u'.' ? std::optional(key) : std::nullopt;
}

// The separator of the catalogue's fields is no part of one.
std::optional<QChar> FieldKey(QChar key) { return key == u';' ? std::nullopt : std::optional(key); }

// A value that somebody wrote into the file by hand is kept, not replaced by the nearest of ours.
void ShowValue(QComboBox *list, const QString &value)
{
    if (list->findText(value) < 0)
        list->addItem(value);
    list->setCurrentText(value);
}

} // namespace

Form11::Form11(Logbook &logbook, Dialogs &dialogs, QWidget *owner, std::function<void()> changed)
    : Window(u"Form11"_qs, dialogs, owner)
    , logbook_(logbook)
    , ui_(std::make_unique<Ui::Form11>())
    , changed_(std::move(changed))
{
    ui_->setupUi(this);
    setWindowTitle(u"Editar Satélites ..."_qs);
    for (QComboBox *bands : {ui_->Combo1, ui_->Combo2, ui_->Combo8, ui_->Combo7})
        bands->addItems(SatelliteEdit::Bands());
    for (QComboBox *modes : {ui_->Combo3, ui_->Combo6})
        modes->addItems(SatelliteEdit::Modes());
    for (QLineEdit *frequency : {ui_->Frec_new, ui_->Text5})
        FieldFilter::Attach(frequency, FrequencyKey);
    for (QLineEdit *text : {ui_->Text1, ui_->Text4, ui_->Text2, ui_->Text3})
        FieldFilter::Attach(text, FieldKey);
    ShowFocusOn({ui_->Text1, ui_->Text4, ui_->Frec_new, ui_->Text2, ui_->Text3, ui_->Text5});
    Connect();
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form11::~Form11() = default;

void Form11::Connect()
{
    const std::pair<QComboBox *, QLineEdit *> frequencies[] = {{ui_->Combo1, ui_->Frec_new}, {ui_->Combo8, ui_->Text5}};
    for (const auto &[band, frequency] : frequencies) {
        QLineEdit *field = frequency;
        connect(band, &QComboBox::currentTextChanged, field,
            [field](const QString &text) { field->setMaxLength(SatelliteEdit::FrequencyLength(text)); });
    }
    connect(ui_->Command1, &QPushButton::clicked, this, &Form11::Add);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form11::Accept);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form11::CloseEditing);
    connect(ui_->Command4, &QPushButton::clicked, this, &Form11::Remove);
    connect(ui_->List1, &QListWidget::itemClicked, this,
        [this](const QListWidgetItem *item) { EditLine(ui_->List1->row(item)); });
}

void Form11::ShowEditor()
{
    FillList(StoredLines().value_or(QStringList()));
    CloseEditing();
    for (QLineEdit *field : {ui_->Text1, ui_->Text4, ui_->Frec_new})
        field->clear();
    ui_->Combo1->setCurrentText(u"2m"_qs);
    ui_->Combo2->setCurrentText(u"70cm"_qs);
    ui_->Combo3->setCurrentText(u"FM"_qs);
    ui_->Text1->setFocus();
    ShowModal();
}

std::optional<QStringList> Form11::StoredLines() const
{
    return TextFile::ReadLines(logbook_.Files(), logbook_.PathOf(catalogueName));
}

QStringList Form11::Lines() const
{
    QStringList lines;
    for (int row = 0; row < ui_->List1->count(); ++row)
        lines << ui_->List1->item(row)->text();
    return lines;
}

void Form11::FillList(const QStringList &lines)
{
    ui_->List1->clear();
    ui_->List1->addItems(SatelliteEdit::ShownLines(lines));
}

bool Form11::WriteLines(const QStringList &lines)
{
    const Result<void> written =
        TextFile::WriteLines(logbook_.Files(), logbook_.PathOf(catalogueName), lines, FileSystem::Sync::Yes);
    if (!written)
        dialogs().Message(this, written.failure().text, Dialogs::Icon::Critical);
    else
        changed_();
    return bool(written);
}

void Form11::Add()
{
    if (FieldMessagePending())
        return;
    ui_->Text1->setText(ui_->Text1->text().toUpper());
    const SatelliteEdit::Fields fields{ui_->Text1->text(), ui_->Combo1->currentText(), ui_->Combo2->currentText(),
        ui_->Combo3->currentText(), ui_->Text4->text(), ui_->Frec_new->text()};
    if (const auto refusal = SatelliteEdit::RefuseAdding(fields, Lines())) {
        dialogs().Message(this, refusal->message);
        using Where = SatelliteEdit::Refusal::Field;
        if (refusal->field == Where::Name)
            GiveFocusTo(ui_->Text1);
        else if (refusal->field == Where::DownlinkBand)
            GiveFocusTo(ui_->Combo2);
        else if (refusal->field == Where::Frequency)
            GiveFocusTo(ui_->Frec_new);
        return;
    }
    // Behind what the file holds: the rows above stay as they are, also where the list shows a blank more.
    const QStringList lines = StoredLines().value_or(Lines()) << SatelliteEdit::Line(fields);
    if (!WriteLines(lines))
        return;
    FillList(lines);
    CloseEditing();
}

void Form11::EditLine(int row)
{
    if (row < 0)
        return;
    const SatelliteEdit::Fields fields = SatelliteEdit::Parse(ui_->List1->item(row)->text());
    ui_->Label2->setText(QString::number(row));
    ui_->Text2->setText(fields.name);
    ShowValue(ui_->Combo8, fields.uplinkBand);
    ShowValue(ui_->Combo7, fields.downlinkBand);
    ShowValue(ui_->Combo6, fields.mode);
    ui_->Text3->setText(fields.tone);
    ui_->Text5->setMaxLength(SatelliteEdit::FrequencyLength(fields.uplinkBand));
    ui_->Text5->setText(fields.frequency);
    ui_->Frame3->show();
    layout()->activate();
    ui_->List1->scrollToItem(ui_->List1->item(row)); // the list has less room now
    ui_->Text2->setFocus();
}

void Form11::Accept()
{
    if (FieldMessagePending())
        return;
    ui_->Text2->setText(ui_->Text2->text().toUpper());
    if (ui_->Text2->text().trimmed().isEmpty()) {
        dialogs().Message(this, u"Falta el nombre del Satélite!"_qs);
        GiveFocusTo(ui_->Text2);
        return;
    }
    QStringList lines = Lines();
    const qsizetype row = ui_->Label2->text().toInt();
    lines[row] = SatelliteEdit::Line({ui_->Text2->text(), ui_->Combo8->currentText(), ui_->Combo7->currentText(),
        ui_->Combo6->currentText(), ui_->Text3->text(), ui_->Text5->text()});
    if (!WriteLines(lines))
        return;
    FillList(lines);
    CloseEditing();
}

void Form11::Remove()
{
    const qsizetype row = ui_->Label2->text().toInt();
    QStringList lines = Lines();
    const QString name = lines[row].section(u';', 0, 0);
    if (!dialogs().Ask(this, u"Elimina Satélite "_qs + name + u"?"_qs, Dialogs::Icon::Question, Dialogs::Button::No))
        return;
    lines.removeAt(row);
    if (!WriteLines(lines))
        return;
    FillList(lines);
    CloseEditing();
}

void Form11::CloseEditing()
{
    for (QLineEdit *field : {ui_->Text2, ui_->Text3, ui_->Text5})
        field->clear();
    ui_->Frame3->hide();
}

void Form11::FieldLeft(QWidget *field)
{
    QString message;
    if (field == ui_->Frec_new)
        message = SatelliteEdit::CheckFrequency(ui_->Combo1->currentText(), ui_->Frec_new->text());
    else if (field == ui_->Text5)
        message = SatelliteEdit::CheckFrequency(ui_->Combo8->currentText(), ui_->Text5->text());
    if (!message.isEmpty())
        QueueFieldMessage(field, message);
}

QWidget *Form11::FocusFallback() const { return ui_->List1; }

bool Form11::PreviewKey(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        close();
    else if (enter && ui_->List1->hasFocus())
        EditLine(ui_->List1->currentRow());
    else
        return false;
    return true;
}
