// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form5_EditQso.h"

#include "logging/BandPlan.h"
#include "logging/EntryRules.h"
#include "stats/QslCard.h"
#include "ui/Choice.h"
#include "ui/FieldFilter.h"
#include "ui/Form1_Main.h"
#include "ui/Form6_Search.h"
#include "ui/GridField.h"
#include "ui/LookupCommands.h"
#include "ui/Program.h"
#include "ui/QslHandOff.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"
#include "ui_Form5_EditQso.h"

#include <QKeyEvent>
#include <QScreen>

using EntryRules::KeyFilter;

namespace {

const QString titleHead = u"Edición de QSO #"_qs;

} // namespace

Form5::Form5(Program &program, QWidget *owner)
    : Window(u"Form5"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form5>())
{
    ui_->setupUi(this);
    ui_->mhz->addItems(BandPlan::EntryMegahertz());
    Choice::Show(ui_->mhz, {});
    for (QComboBox *combo : {ui_->mhz, ui_->Combo2})
        Choice::OnlyByClick(combo);
    AttachFilters();
    Connect();
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form5::~Form5() = default;

void Form5::AttachFilters()
{
    const auto filter = [](QLineEdit *field, KeyFilter keys) {
        FieldFilter::Attach(field, [keys](QChar key) { return EntryRules::FilterKey(key, keys); });
    };
    for (QLineEdit *call : {ui_->Text1, ui_->Text2, ui_->Text3})
        filter(call, KeyFilter::Callsign);
    filter(ui_->Text4, KeyFilter::Date);
    filter(ui_->Text5, KeyFilter::Time);
    filter(ui_->Text9, KeyFilter::Digits);
    for (QLineEdit *grid : {ui_->Text10, ui_->Text11})
        KeepGridShape(grid);
    for (QLineEdit *reference : {ui_->SOTA, ui_->POTA, ui_->MYSOTA, ui_->IOTA})
        FieldFilter::Attach(reference, {}, LetterCase::Upper);
    for (auto *field : findChildren<QLineEdit *>())
        if (field->objectName() != u"qt_spinbox_lineedit")
            ShowFocusOn({field});
}

void Form5::Connect()
{
    for (QLineEdit *reference : {ui_->SOTA, ui_->POTA, ui_->MYSOTA, ui_->IOTA})
        connect(reference, &QLineEdit::textChanged, this, &Form5::ShowReferenceMarks);
    connect(ui_->Check1, &QCheckBox::toggled, this, [this](bool on) {
        ui_->Text12->setVisible(on);
        ui_->rotuloText12->setVisible(on);
    });
    connect(ui_->mhz, &QComboBox::activated, this, &Form5::KilohertzLeft);
    auto *lookups = new LookupCommands(program_, *this, LookupCommands::From::EditWindow);
    connect(ui_->Command13, &QPushButton::clicked, this, [this, lookups] { lookups->SearchQrz(ui_->Text2->text()); });
    connect(ui_->Command3, &QPushButton::clicked, this, [this, lookups] { lookups->SearchLda(ui_->Text2->text()); });
    connect(ui_->Command1, &QPushButton::clicked, this, &Form5::Save);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form5::Delete);
    connect(ui_->Command4, &QPushButton::clicked, this, &Form5::HaveCardDrawn);
}

void Form5::OpenEditFromList(const QsoRow &row, EditCaller caller)
{
    caller_ = caller;
    const EditFields fields = QsoEdit::FromRow(row);
    ShowCommon(fields);
    ShowRest(fields);
    ShowModes(QsoEdit::ModesForList(fields.mode), fields.mode);
    ui_->avisoF5->hide();
    Open(ReadFields());
}

void Form5::EditByKey(const QsoRow &row)
{
    const EditFields fields = QsoEdit::FromRow(row);
    ShowCommon(fields);
    ShowModes(QsoEdit::ModesForKey(fields.mode), fields.mode);
    ui_->avisoF5->setText(
        u"Abierto con F5: frecuencia, banda, grillas, satélite, referencias y estado en LdA no son los de este QSO. "
        "Al guardar se escribe en él lo que esos campos muestran."_qs);
    ui_->avisoF5->show();
    const EditFields shown = ReadFields();
    EditFields stored = fields;
    stored.date = shown.date;
    stored.time = shown.time;
    Open(stored);
}

void Form5::ShowCommon(const EditFields &fields)
{
    FillingEditWindow_ = true;
    setWindowTitle(titleHead + QString::number(fields.id));
    ui_->Text1->setText(fields.station);
    ui_->Text2->setText(fields.call);
    ui_->Text3->setText(fields.operatorCall);
    ui_->Text4->setText(fields.date);
    ui_->Text5->setText(fields.time);
    ui_->Text6->setText(fields.reportSent);
    ui_->Text7->setText(fields.reportReceived);
    ui_->Text8->setText(fields.remarks);
    FillingEditWindow_ = false;
}

void Form5::ShowRest(const EditFields &fields)
{
    FillingEditWindow_ = true;
    Choice::Show(ui_->mhz, fields.mhz);
    ui_->Text9->setText(fields.khz);
    ui_->Label11->setText(fields.band);
    ui_->Text10->setText(fields.ownGrid);
    ui_->Text11->setText(fields.grid);
    ui_->Text12->setText(fields.satellite);
    ui_->SOTA->setText(fields.SOTA);
    ui_->POTA->setText(fields.POTA);
    ui_->MYSOTA->setText(fields.MYSOTA);
    ui_->IOTA->setText(fields.IOTA);
    ui_->subidoALda->setText(QsoEdit::Uploaded(fields.lda));
    ui_->ConfALda->setText(QsoEdit::Confirmed(fields.lda));
    ui_->Check1->setChecked(!fields.satellite.isEmpty());
    FillingEditWindow_ = false;
}

void Form5::ShowModes(const QStringList &modes, const QString &mode)
{
    ui_->Combo2->clear();
    ui_->Combo2->addItems(modes);
    Choice::Show(ui_->Combo2, mode);
}

void Form5::ShowReferenceMarks()
{
    ui_->Label20->setVisible(!ui_->POTA->text().isEmpty() && !ui_->IOTA->text().isEmpty());
    ui_->Label21->setVisible(!ui_->SOTA->text().isEmpty() && !ui_->MYSOTA->text().isEmpty());
}

void Form5::Open(const EditFields &stored)
{
    stored_ = stored;
    warnedFrequency_.clear();
    ShowReferenceMarks();
    ui_->Text12->setVisible(ui_->Check1->isChecked());
    ui_->rotuloText12->setVisible(ui_->Check1->isChecked());
    ui_->Text2->setFocus();
    ShowModal();
}

EditFields Form5::ReadFields() const
{
    EditFields fields;
    fields.id = windowTitle().mid(titleHead.size()).toLongLong();
    fields.station = ui_->Text1->text();
    fields.call = ui_->Text2->text();
    fields.operatorCall = ui_->Text3->text();
    fields.date = ui_->Text4->text();
    fields.time = ui_->Text5->text();
    fields.reportSent = ui_->Text6->text();
    fields.reportReceived = ui_->Text7->text();
    fields.remarks = ui_->Text8->text();
    fields.mhz = ui_->mhz->currentText();
    fields.khz = ui_->Text9->text();
    fields.band = ui_->Label11->text();
    fields.mode = ui_->Combo2->currentText();
    fields.ownGrid = ui_->Text10->text();
    fields.grid = ui_->Text11->text();
    fields.satellite = ui_->Text12->text();
    fields.SOTA = ui_->SOTA->text();
    fields.POTA = ui_->POTA->text();
    fields.MYSOTA = ui_->MYSOTA->text();
    fields.IOTA = ui_->IOTA->text();
    return fields;
}

bool Form5::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    close();
    return true;
}

void Form5::FieldEntered(QWidget *field)
{
    if (auto *line = qobject_cast<QLineEdit *>(field))
        line->end(false);
}

void Form5::FieldLeft(QWidget *field)
{
    QString message;
    if (field == ui_->Text4)
        message = QsoEdit::CheckDate(ui_->Text4->text());
    else if (field == ui_->Text5)
        message = QsoEdit::CheckTime(ui_->Text5->text());
    else if (field == ui_->Text9)
        KilohertzLeft();
    else if (field == ui_->Text10 || field == ui_->Text11)
        message = EntryRules::GridLengthAllowed(static_cast<QLineEdit *>(field)->text().size(),
                      field == ui_->Text10 ? EntryRules::GridOf::OwnStation : EntryRules::GridOf::Correspondent)
            ? QString()
            : EntryRules::BadGridMessage();
    if (!message.isEmpty())
        QueueFieldMessage(field, message);
}

void Form5::KilohertzLeft()
{
    const QString padded = BandPlan::PadKilohertz(ui_->Text9->text());
    const bool touched = ui_->Text9->text() != stored_.khz || ui_->mhz->currentText() != stored_.mhz;
    if (!touched)
        return; // passing through must not change a frequency of another form
    ui_->Text9->setText(padded);
    UpdateBand();
}

void Form5::UpdateBand()
{
    if (FillingEditWindow_)
        return;
    const QString mhz = ui_->mhz->currentText(), khz = ui_->Text9->text();
    const BandPlan::FieldBand band = BandPlan::BandOfFields(mhz, khz, BandPlan::FieldsOf::EditWindow);
    ui_->Label11->setText(band.band);
    const QString frequency = mhz + u'.' + khz;
    if (!band.outOfBand) {
        warnedFrequency_.clear();
    } else if (frequency != warnedFrequency_) {
        warnedFrequency_ = frequency;
        QueueFieldMessage(ui_->Text9, band.message);
    }
}

QWidget *Form5::FieldOf(QsoEdit::Refusal::Field field) const
{
    switch (field) {
    case QsoEdit::Refusal::Field::Satellite:
        return ui_->Text12;
    case QsoEdit::Refusal::Field::Mode:
        return ui_->Combo2;
    case QsoEdit::Refusal::Field::ReportSent:
        return ui_->Text6;
    case QsoEdit::Refusal::Field::ReportReceived:
        return ui_->Text7;
    default:
        return ui_->Text2;
    }
}

void Form5::Save()
{
    if (FieldMessagePending())
        return;
    ui_->Text12->setText(ui_->Text12->text().toUpper());
    const EditFields fields = ReadFields();
    if (const auto refusal = QsoEdit::RefuseSave(fields)) {
        dialogs().Message(
            this, refusal->message, refusal->critical ? Dialogs::Icon::Critical : Dialogs::Icon::Exclamation);
        if (refusal->field == QsoEdit::Refusal::Field::Satellite)
            ui_->Check1->setChecked(true);
        GiveFocusTo(FieldOf(refusal->field));
        return;
    }
    const Result<bool> updated = QsoEdit::UpdateQso(program_.logbook.Store(), fields, stored_);
    if (!updated) {
        dialogs().Message(this, u"El QSO no fue guardado.\n\n"_qs + updated.failure().text, Dialogs::Icon::Critical);
        return;
    }
    if (!*updated)
        dialogs().Message(this,
            u"El QSO #%1 ya no está en el log: otro programa lo borró. No fue guardado."_qs.arg(fields.id),
            Dialogs::Icon::Critical);
    hide();
    RefreshCaller();
}

void Form5::Delete()
{
    const QString id = windowTitle().remove(titleHead);
    if (!dialogs().Ask(this, u"Elimina el QSO #"_qs + id + u"?\nLos datos no se podrán recuperar!"_qs,
            Dialogs::Icon::Question, Dialogs::Button::No))
        return;
    const Result<bool> deleted = QsoEdit::DeleteQso(program_.logbook.Store(), id.toLongLong());
    if (!deleted) {
        dialogs().Message(this, u"El QSO no fue eliminado.\n\n"_qs + deleted.failure().text, Dialogs::Icon::Critical);
        return;
    }
    hide();
    program_.windows.Main().ForgetQso(id.toLongLong());
    // A list that still shows the contact would open one that is not there, whoever opened the window.
    program_.windows.Main().ReloadPage();
    if (caller_ == EditCaller::Form6)
        program_.windows.Search().RefreshEditedRow();
}

// Of the contact as the window shows it, saved or not.
void Form5::HaveCardDrawn()
{
    if (FieldMessagePending())
        return;
    const EditFields qso = ReadFields();
    DrawQslCard(program_, this,
        {.ownCall = qso.station,
            .call = qso.call,
            .date = qso.date,
            .time = qso.time,
            .mode = qso.mode,
            .band = qso.band,
            .report = qso.reportSent,
            .satellite = qso.satellite,
            .remarks = qso.remarks});
}

void Form5::RefreshCaller()
{
    if (caller_ == EditCaller::Form1)
        program_.windows.Main().ReloadPage();
    else if (caller_ == EditCaller::Form6)
        program_.windows.Search().RefreshEditedRow();
}
