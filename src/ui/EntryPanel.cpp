// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EntryPanel.h"

#include "core/FieldMemory.h"
#include "logging/BandPlan.h"
#include "logging/CallInfo.h"
#include "ui/Choice.h"
#include "ui/EntryClock.h"
#include "ui/FieldFilter.h"
#include "ui/GridField.h"
#include "ui/Program.h"
#include "ui/Theme.h"
#include "ui/Window.h"
#include "ui_EntryPanel.h"

#include <QFocusEvent>
#include <utility>

using EntryRules::EntryFocus;
using EntryRules::KeyFilter;

namespace {

CharFilter KeysOf(KeyFilter filter)
{
    return [filter](QChar key) { return EntryRules::FilterKey(key, filter); };
}

// While a country is looked up at each key, shorter texts would only flicker.
constexpr int shortestLookup = 3;

constexpr qsizetype longestTitle = 60;
constexpr int entryFields = 8;

} // namespace

EntryPanel::EntryPanel(Program &program, QWidget *parent)
    : QWidget(parent)
    , program_(program)
    , ui_(std::make_unique<Ui::EntryPanel>())
{
    ui_->setupUi(this);
    clock_ = new EntryClock(program, {ui_->Check1, ui_->Label11, ui_->Fecha, ui_->Hora}, this);
    for (QLabel *label : {ui_->Label2, ui_->Label3, ui_->Label8})
        MarkAccent(label);
    // These act and give the focus back at once, so a click must not count as leaving the field.
    for (QWidget *control : std::initializer_list<QWidget *>{
             ui_->Check1, ui_->Check2, ui_->Check3, ui_->Check4, ui_->Command7, ui_->Command13, ui_->Command14})
        control->setFocusPolicy(Qt::TabFocus);
    for (QPushButton *button : {ui_->Command7, ui_->Command13, ui_->Command14})
        button->setEnabled(false);
    QSizePolicy kept = ui_->activador->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    ui_->activador->setSizePolicy(kept);
    ui_->activador->hide();
    ui_->Label20->hide();
    AttachFilters();
    Connect();
    ConnectChecks();
}

EntryPanel::~EntryPanel() = default;

void EntryPanel::AttachFilters()
{
    FieldFilter::Attach(ui_->Corresponsal, KeysOf(KeyFilter::Callsign));
    FieldFilter::Attach(ui_->Fecha, KeysOf(KeyFilter::Date));
    FieldFilter::Attach(ui_->Hora, KeysOf(KeyFilter::Time));
    FieldFilter::Attach(ui_->Text1, KeysOf(KeyFilter::Digits));
    KeepGridShape(ui_->Text2);
    for (QLineEdit *field : {ui_->SOTA, ui_->POTA_IN, ui_->MYSOTA, ui_->MY_POTA})
        FieldFilter::Attach(field, {}, LetterCase::Upper);
    for (QLineEdit *field : {ui_->Fecha, ui_->Hora, ui_->RSE, ui_->RSR, ui_->Text1})
        field->installEventFilter(this);
    Window::ShowFocusOn({ui_->Corresponsal, ui_->Fecha, ui_->Hora, ui_->RSE, ui_->RSR, ui_->mhz, ui_->Text1, ui_->Text2,
        ui_->Obs, ui_->Combo1, ui_->Combo2, ui_->SOTA, ui_->POTA_IN, ui_->MYSOTA, ui_->MY_POTA});
}

void EntryPanel::Connect()
{
    connect(ui_->Corresponsal, &QLineEdit::textChanged, this, &EntryPanel::CallChanged);
    connect(ui_->Text1, &QLineEdit::textEdited, this, [this](const QString &text) {
        if (text.size() == 3 && clock_->Running())
            ui_->Obs->setFocus();
    });
    connect(ui_->Combo1, &QComboBox::activated, this, &EntryPanel::ModeClicked);
    connect(ui_->mhz, &QComboBox::activated, this, &EntryPanel::MegahertzClicked);
    connect(ui_->Combo2, &QComboBox::activated, this, &EntryPanel::FocusCorresponsal);
    connect(ui_->Command2, &QPushButton::clicked, this, &EntryPanel::StoreClicked);
    connect(ui_->Command7, &QPushButton::clicked, this, &EntryPanel::CallQsosClicked);
    connect(ui_->Command13, &QPushButton::clicked, this, &EntryPanel::QrzClicked);
    connect(ui_->Command14, &QPushButton::clicked, this, &EntryPanel::LdaClicked);
    connect(ui_->Label19, &ClickLabel::DoubleClicked, this, &EntryPanel::SummitsClicked);
    for (QComboBox *combo : {ui_->mhz, ui_->Combo1})
        Choice::OnlyByClick(combo);
}

void EntryPanel::ConnectChecks()
{
    Configuration &configuration = program_.logbook.configuration;
    connect(clock_, &EntryClock::ManualClicked, this, [this] {
        ui_->Corresponsal->setFocus();
        SaveFieldMemory();
    });
    connect(ui_->Check2, &QCheckBox::clicked, this, &EntryPanel::ViaSatelliteClicked);
    connect(ui_->Check3, &QCheckBox::clicked, this, &EntryPanel::FocusCorresponsal);
    connect(ui_->Check3, &QCheckBox::toggled, this, [&configuration](bool on) { configuration.NoBorrar = on; });
    connect(ui_->Check4, &QCheckBox::toggled, this, [this, &configuration](bool on) {
        configuration.Activac = on;
        ShowActivation();
    });
    connect(ui_->MYSOTA, &QLineEdit::textChanged, this,
        [&configuration](const QString &text) { configuration.MySOTA = text; });
    connect(ui_->MY_POTA, &QLineEdit::textChanged, this,
        [&configuration](const QString &text) { configuration.MyPOTA = text; });
}

void EntryPanel::PlaceCaller(QWidget *caller) { ui_->lugarLlamador->addWidget(caller); }

void EntryPanel::FillLists()
{
    ui_->Combo1->addItems(BandPlan::EntryModes());
    Choice::Show(ui_->Combo1, u"SSB"_qs);
    ui_->Label7->setText(u"80m"_qs);
    ui_->mhz->addItems(BandPlan::EntryMegahertz());
    Choice::Show(ui_->mhz, u"3"_qs);
    ui_->Combo2->addItems(BandPlan::EntryBands());
    ui_->Combo2->setCurrentText(u"80m"_qs);
    ui_->RSE->setText(u"59"_qs);
    ui_->RSR->setText(u"59"_qs);
}

void EntryPanel::RestoreFieldMemory()
{
    const FieldMemory memory = ReadFieldMemory(program_.logbook);
    if (!memory.present)
        ui_->Text1->setText(u"650"_qs);
    if (memory.mhz) {
        Choice::Show(ui_->mhz, *memory.mhz);
        ui_->Text1->setText(*memory.khz);
    }
    if (memory.band)
        ui_->Label7->setText(*memory.band);
    if (memory.qtrManual)
        clock_->SetManual(*memory.qtrManual);
}

void EntryPanel::RestoreExitMemory()
{
    const ExitMemory memory = ReadExitMemory(program_.logbook);
    if (memory.modo && !memory.modo->isEmpty()) {
        Choice::Show(ui_->Combo1, *memory.modo);
        const QString report = EntryRules::ReportForMode(*memory.modo);
        ui_->RSE->setText(report);
        ui_->RSR->setText(report);
    }
    if (memory.mhz)
        Choice::Show(ui_->mhz, *memory.mhz);
    if (memory.khz)
        ui_->Text1->setText(*memory.khz);
    if (memory.mhz || memory.khz)
        ShowBand();
    if (memory.viaSatelite && *memory.viaSatelite) {
        TickViaSatellite(true);
        Q_EMIT ViaSatelliteClicked(true);
    }
}

void EntryPanel::ShowConfiguration()
{
    // A copy: the controls write back into the configuration while they are being set.
    const Configuration configuration = program_.logbook.configuration;
    ui_->Check3->setChecked(configuration.NoBorrar);
    ui_->MYSOTA->setText(configuration.MySOTA);
    ui_->MY_POTA->setText(configuration.MyPOTA);
    ui_->Check4->setChecked(configuration.Activac);
    ShowActivation();
    ShowCaptions();
}

void EntryPanel::ShowCaptions()
{
    const Logbook::Captions &captions = program_.logbook.captions;
    ui_->Label2->setText(captions.station);
    ui_->Label3->setText(captions.operador);
    ui_->Label8->setText(captions.grid);
    // A title is never cut by its frame: a very long one would widen the window beyond the screen.
    const bool fits = captions.log.size() <= longestTitle;
    const QString title = fits ? captions.log : captions.log.left(longestTitle) + u'…';
    ui_->Frame1->setTitle(QString(title).replace(u'&', u"&&"_qs));
}

EntryRules::EntryFields EntryPanel::Fields() const
{
    EntryRules::EntryFields fields;
    fields.corresponsal = ui_->Corresponsal->text();
    fields.modo = ui_->Combo1->currentText();
    fields.rse = ui_->RSE->text();
    fields.rsr = ui_->RSR->text();
    fields.viaSatellite = ui_->Check2->isChecked();
    fields.station = ui_->Label2->text();
    fields.operatorCall = ui_->Label3->text();
    return fields;
}

QWidget *EntryPanel::FieldOf(EntryFocus focus) const
{
    QWidget *const inOrder[] = {
        ui_->Corresponsal, ui_->Fecha, ui_->Hora, ui_->RSE, ui_->RSR, ui_->Text1, ui_->Text2, ui_->Obs};
    static_assert(std::size(inOrder) == entryFields);
    return focus == EntryFocus::Satellite ? ui_->Corresponsal : inOrder[int(focus)];
}

void EntryPanel::FocusField(EntryFocus focus) { FieldOf(focus)->setFocus(); }

QString EntryPanel::Call() const { return ui_->Corresponsal->text(); }
QWidget *EntryPanel::ModeField() const { return ui_->Combo1; }

NewQso EntryPanel::ReadQso() const
{
    NewQso qso;
    qso.call = ui_->Corresponsal->text();
    qso.band = ui_->Label7->text();
    qso.mode = ui_->Combo1->currentText();
    qso.reportSent = ui_->RSE->text();
    qso.reportReceived = ui_->RSR->text();
    qso.SOTA = ui_->SOTA->text();
    qso.POTA = ui_->POTA_IN->text();
    // The own summit counts only during an activation; the own park counts always.
    qso.MYSOTA = ui_->Check4->isChecked() ? ui_->MYSOTA->text() : QString();
    qso.MY_POTA = ui_->MY_POTA->text();
    qso.date = ui_->Fecha->text();
    qso.time = ui_->Hora->text();
    qso.station = ui_->Label2->text();
    qso.operatorCall = ui_->Label3->text();
    qso.remarks = ui_->Obs->text();
    qso.frequency = ui_->mhz->currentText() + u'.' + ui_->Text1->text();
    qso.grid = ui_->Text2->text();
    qso.ownGrid = ui_->Label8->text();
    return qso;
}

bool EntryPanel::ClockRunning() const { return clock_->Running(); }

bool EntryPanel::QtrManual() const { return clock_->IsManual(); }
bool EntryPanel::ViaSatellite() const { return ui_->Check2->isChecked(); }
bool EntryPanel::ZoneVisible() const { return !ui_->Label11->isHidden(); }
QString EntryPanel::ZoneCaption() const { return ui_->Label11->text(); }

void EntryPanel::ClearAfterStore(qint64 id)
{
    RememberQso(id);
    ui_->Corresponsal->clear();
    if (!ui_->Check3->isChecked())
        ui_->Obs->clear();
    ui_->Text2->clear();
    ui_->SOTA->clear();
    ui_->POTA_IN->clear();
}

std::optional<qint64> EntryPanel::LastId() const
{
    const QString id = ui_->Label4->text();
    return id.isEmpty() ? std::nullopt : std::optional(id.toLongLong());
}

void EntryPanel::RememberQso(qint64 id) { ui_->Label4->setText(QString::number(id)); }

void EntryPanel::ForgetQso(qint64 id)
{
    if (LastId() == id)
        ui_->Label4->clear();
}

void EntryPanel::WipeCall()
{
    ui_->Corresponsal->clear();
    ui_->Text2->clear();
    ui_->Corresponsal->setFocus();
}

// The memories are a convenience: that one cannot be written must not come between the operator and the next contact.
void EntryPanel::SaveFieldMemory()
{
    static_cast<void>(::SaveFieldMemory(
        program_.logbook, ui_->mhz->currentText(), ui_->Text1->text(), ui_->Label7->text(), ui_->Check1->isChecked()));
}

void EntryPanel::SaveExitMemory()
{
    static_cast<void>(::SaveExitMemory(program_.logbook, ui_->Combo1->currentText(), ui_->mhz->currentText(),
        ui_->Text1->text(), ui_->Check2->isChecked()));
}

void EntryPanel::EnterSatelliteMode(const UplinkFrequency &uplink)
{
    if (!beforeSatellite_)
        beforeSatellite_ = Saved{ui_->Combo1->currentText(), ui_->mhz->currentText(), ui_->Text1->text()};
    for (QWidget *field : std::initializer_list<QWidget *>{ui_->Combo1, ui_->mhz, ui_->Text1})
        field->setEnabled(false);
    SetFrequency(uplink.megahertz.isEmpty() ? ui_->mhz->currentText() : uplink.megahertz, uplink.kilohertz);
}

void EntryPanel::LeaveSatelliteMode()
{
    for (QWidget *field : std::initializer_list<QWidget *>{ui_->Combo1, ui_->mhz, ui_->Text1})
        field->setEnabled(true);
    if (!beforeSatellite_)
        return;
    const Saved before = *beforeSatellite_;
    beforeSatellite_.reset();
    Choice::Show(ui_->Combo1, before.mode);
    SetFrequency(before.mhz, before.khz);
}

void EntryPanel::ApplySatellite(const UplinkFrequency &uplink, const QString &mode)
{
    SetFrequency(uplink.megahertz, uplink.kilohertz);
    Choice::Show(ui_->Combo1, mode);
}

void EntryPanel::TickViaSatellite(bool ticked) { ui_->Check2->setChecked(ticked); }

void EntryPanel::PutRemarks(const QString &text) { ui_->Obs->setText(text); }

void EntryPanel::PutGrid(const QString &grid) { ui_->Text2->setText(grid); }

void EntryPanel::ShowActivity(const QString &text)
{
    ui_->Label20->setText(text);
    ui_->Label20->setVisible(!text.isEmpty());
}

void EntryPanel::EndActivity(const QString &text)
{
    if (ui_->Label20->text() == text)
        ShowActivity({});
}

void EntryPanel::Entered(QWidget *field)
{
    for (int i = 0; i < entryFields; ++i)
        if (field == FieldOf(EntryFocus(i)))
            entryField_ = i + 1;
    if (field == ui_->Fecha)
        ui_->Fecha->setSelection(0, 2);
    else if (field == ui_->Hora)
        ui_->Hora->setSelection(3, 2);
    else if (field == ui_->RSE || field == ui_->RSR || field == ui_->Text1)
        static_cast<QLineEdit *>(field)->selectAll();
    else if (auto *line = qobject_cast<QLineEdit *>(field))
        line->end(false); // a stray key must not replace what stands there
}

// A click that brings the focus sets the caret after it, so the selection is made anew when the button comes up, unless
// the operator has selected something by then.
bool EntryPanel::eventFilter(QObject *watched, QEvent *event)
{
    auto *field = static_cast<QLineEdit *>(watched);
    if (event->type() == QEvent::FocusIn)
        clickedInto_ = static_cast<QFocusEvent *>(event)->reason() == Qt::MouseFocusReason ? field : nullptr;
    else if (event->type() == QEvent::MouseButtonRelease && std::exchange(clickedInto_, nullptr) == field
        && !field->hasSelectedText())
        Entered(field);
    return false;
}

void EntryPanel::Left(QWidget *field)
{
    if (field == ui_->Corresponsal) {
        CallLeft();
    } else if (field == ui_->Fecha || field == ui_->Hora) {
        auto *line = static_cast<QLineEdit *>(field);
        const EntryRules::FieldCheck check =
            field == ui_->Fecha ? EntryRules::CheckFecha(line->text()) : EntryRules::CheckHora(line->text());
        line->setText(check.text);
        if (!check.message.isEmpty())
            Q_EMIT FieldRefused(field, check.message);
    } else if (field == ui_->RSE || field == ui_->RSR) {
        CheckReport(static_cast<QLineEdit *>(field));
    } else if (field == ui_->Text1) {
        KilohertzLeft();
    } else if (field == ui_->Text2) {
        if (!EntryRules::GridLengthAllowed(ui_->Text2->text().size(), EntryRules::GridOf::Correspondent))
            Q_EMIT FieldRefused(field, EntryRules::BadGridMessage());
    }
}

void EntryPanel::Tick() { clock_->Tick(); }

void EntryPanel::CallChanged()
{
    const QString call = ui_->Corresponsal->text();
    for (QPushButton *button : {ui_->Command7, ui_->Command13, ui_->Command14})
        button->setEnabled(!call.isEmpty());
    if (call.isEmpty())
        ui_->Label18->clear();
    else if (program_.logbook.configuration.BuscaE && call.size() >= shortestLookup)
        ShowCountry();
}

void EntryPanel::CallLeft()
{
    const QString call = ui_->Corresponsal->text();
    if (call.isEmpty())
        return;
    if (!LooksLikeCallsign(call)) {
        Q_EMIT FieldRefused(ui_->Corresponsal, DoubtfulCallMessage(call));
        return;
    }
    if (!call.contains(u'/') && ui_->Text2->text().isEmpty()) {
        // An unreadable database is told when the contact is to be stored; here it only costs the proposal.
        if (const Result<QString> grid = FindGridOfCall(program_.logbook.Store(), program_.logbook.LogInUse, call))
            ui_->Text2->setText(*grid);
    }
    if (!program_.logbook.configuration.BuscaE)
        ShowCountry();
}

void EntryPanel::ShowCountry() { ui_->Label18->setText(program_.dxcc.CountryLabel(ui_->Corresponsal->text())); }

void EntryPanel::CheckReport(QLineEdit *field)
{
    const QString text = field->text();
    if (EntryRules::ValidateReport(text, ui_->Combo1->currentText()) == 0)
        return;
    field->setText(u"59"_qs);
    Q_EMIT FieldRefused(field, EntryRules::BadReportMessage(text));
}

void EntryPanel::KilohertzLeft()
{
    ui_->Text1->setText(BandPlan::PadKilohertz(ui_->Text1->text()));
    if (const QString warning = UpdateBand(); !warning.isEmpty())
        Q_EMIT FieldRefused(ui_->Text1, warning);
}

// Shows the band of the present frequency; gives the warning to be told, once for each value out of band.
QString EntryPanel::UpdateBand()
{
    const QString mhz = ui_->mhz->currentText(), khz = ui_->Text1->text();
    const BandPlan::FieldBand band = BandPlan::BandOfFields(mhz, khz, BandPlan::FieldsOf::EntryWindow);
    ui_->Label7->setText(band.band);
    const QString frequency = band.outOfBand ? QString(mhz + u'.' + khz) : QString();
    const bool told = frequency == warnedFrequency_;
    warnedFrequency_ = frequency;
    return told ? QString() : band.message;
}

// The program's own changes of the frequency warn nobody, and the operator's next look at it still does.
void EntryPanel::ShowBand()
{
    UpdateBand();
    warnedFrequency_.clear();
}

void EntryPanel::ModeClicked()
{
    const QString report = EntryRules::ReportForMode(ui_->Combo1->currentText());
    ui_->RSE->setText(report);
    ui_->RSR->setText(report);
    ui_->Corresponsal->setFocus();
}

void EntryPanel::MegahertzClicked()
{
    if (ui_->Text1->text().isEmpty())
        return;
    if (const QString warning = UpdateBand(); !warning.isEmpty())
        program_.dialogs.Message(this, warning);
    ui_->Corresponsal->setFocus();
}

void EntryPanel::ShowActivation() { ui_->activador->setVisible(ui_->Check4->isChecked()); }

// A satellite whose frequency makes no band has to be corrected by hand.
void EntryPanel::UnlockWithoutBand()
{
    if (!beforeSatellite_)
        return;
    for (QWidget *field : std::initializer_list<QWidget *>{ui_->mhz, ui_->Text1})
        field->setEnabled(ui_->Label7->text().isEmpty());
}

void EntryPanel::SetFrequency(const QString &mhz, const QString &khz)
{
    Choice::Show(ui_->mhz, mhz);
    ui_->Text1->setText(khz);
    ShowBand();
    UnlockWithoutBand();
}
