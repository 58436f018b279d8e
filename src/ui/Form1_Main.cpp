// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form1_Main.h"

#include "core/Conversions.h"
#include "core/Schema.h"
#include "keyer/CqCaller.h"
#include "logging/EntryTime.h"
#include "ui/CallerPanel.h"
#include "ui/EntryPanel.h"
#include "ui/Form10_About.h"
#include "ui/Form11_Satellites.h"
#include "ui/Form12_AdifImport.h"
#include "ui/Form13_Analysis.h"
#include "ui/Form15_Backup.h"
#include "ui/Form16_Profiles.h"
#include "ui/Form17_CallQsos.h"
#include "ui/Form2_Settings.h"
#include "ui/Form4_Contest.h"
#include "ui/Form5_EditQso.h"
#include "ui/Form6_Search.h"
#include "ui/Form8_ContestLogs.h"
#include "ui/LdaCommands.h"
#include "ui/LogCommands.h"
#include "ui/LogListPanel.h"
#include "ui/LookupCommands.h"
#include "ui/MainMenu.h"
#include "ui/Program.h"
#include "ui/ProvinceCommands.h"
#include "ui/SatellitePanel.h"
#include "ui/SiteCommands.h"
#include "ui/StartUp.h"
#include "ui/TextViewer.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

namespace {

// Shorter calls are not worth a lookup by key.
constexpr int shortestLookup = 4;

const QString summitsName = u"summitslist_Arg.csv"_qs;

// Larger than this the window is drawn for; the scaler fits it to the screen.
constexpr QSize drawnSize(1340, 700);

bool IsCommand(const QKeyEvent *event)
{
    const int keys[] = {Qt::Key_L, Qt::Key_Q, Qt::Key_X, Qt::Key_W};
    return event->modifiers() == Qt::ControlModifier
        && std::find(std::begin(keys), std::end(keys), event->key()) != std::end(keys);
}

bool IsEnter(const QKeyEvent *event) { return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter; }

} // namespace

Form1::Form1(Program &program)
    : Window(u"Form1"_qs, program.dialogs)
    , program_(program)
    , menu_(new MainMenu(this))
    , entry_(new EntryPanel(program, this))
    , satellite_(new SatellitePanel(program, this))
    , caller_(new CallerPanel(program.caller, entry_))
    , list_(new LogListPanel(program, this))
    , lookups_(new LookupCommands(program, *this, LookupCommands::From::Entry))
    , startUp_(std::make_unique<StartUp>(program, *this, *entry_, *satellite_))
{
    setWindowTitle(u"Tordillo Compact V"_qs + Logbook::AppVersion);
    setWindowIcon(QIcon(u":/icons/tordillo.svg"_qs));
    BuildLayout();
    BuildHiddenButtons();
    ConnectPanels();
    ConnectMenu();
}

Form1::~Form1() = default;

void Form1::BuildLayout()
{
    auto *rows = new QVBoxLayout(this);
    rows->setMenuBar(menu_);
    rows->setContentsMargins(8, 4, 8, 8);
    rows->setSpacing(4);
    entry_->PlaceCaller(caller_);
    rows->addWidget(entry_);
    rows->addWidget(satellite_);
    rows->addWidget(list_, 1);
    setMinimumSize(900, 560);
    resize(drawnSize);
}

// Maintenance commands that no menu offers.
void Form1::BuildHiddenButtons()
{
    const auto make = [this](const QString &name, const QString &caption) {
        auto *button = new QPushButton(caption, this);
        button->setObjectName(name);
        button->setAccessibleName(caption);
        button->hide();
        return button;
    };
    connect(make(u"Command3"_qs, u"Command3"_qs), &QPushButton::clicked, this, [this] {
        if (const Result<void> upgraded = UpgradeSchema(program_.logbook.Store()); !upgraded)
            dialogs().Message(this, upgraded.failure().text, Dialogs::Icon::Critical);
    });
    connect(make(u"Command5"_qs, u"Hacer Tabla!"_qs), &QPushButton::clicked, this, [this] {
        if (const Result<void> wiped = WipeAllTables(program_.logbook.Store()); !wiped)
            dialogs().Message(this, wiped.failure().text, Dialogs::Icon::Critical);
    });
    make(u"Command9"_qs, u"Command9"_qs);
    connect(make(u"Command17"_qs, u"Armar lista MasterCheck"_qs), &QPushButton::clicked, this, &Form1::BuildMaster);
}

// Joins the calls of datos6.txt to the present list, for whoever prepares the list that all stations get.
void Form1::BuildMaster()
{
    const Logbook &logbook = program_.logbook;
    const Result<MasterBuild> built = BuildMasterList(logbook.Files(), logbook.PathOf(u"datos6.txt"_qs),
        program_.master.Calls(), logbook.PathOf(u"master_hoy.txt"_qs));
    if (!built) {
        dialogs().Message(this, built.failure().text, Dialogs::Icon::Critical);
        return;
    }
    const QStringList texts = MasterBuildTexts(*built);
    for (int i = 0; i < texts.size(); ++i) {
        const QString name = u"Label"_qs + QString::number(14 + i); // Label14 to Label17
        auto *label = findChild<QLabel *>(name);
        if (!label) {
            label = new QLabel(this);
            label->setObjectName(name);
            label->hide();
        }
        label->setText(texts[i]);
    }
}

void Form1::ConnectPanels()
{
    connect(entry_, &EntryPanel::StoreClicked, this, &Form1::StoreQso);
    connect(entry_, &EntryPanel::CallQsosClicked, this, &Form1::ShowCallQsos);
    connect(entry_, &EntryPanel::QrzClicked, this, [this] { lookups_->SearchQrz(entry_->Call()); });
    connect(entry_, &EntryPanel::LdaClicked, this, [this] { lookups_->SearchLda(entry_->Call()); });
    connect(lookups_, &LookupCommands::RemarksChosen, entry_, &EntryPanel::PutRemarks);
    connect(lookups_, &LookupCommands::GridChosen, entry_, &EntryPanel::PutGrid);
    connect(entry_, &EntryPanel::SummitsClicked, this, &Form1::OpenSummits);
    connect(entry_, &EntryPanel::ViaSatelliteClicked, this, &Form1::SetViaSatellite);
    connect(entry_, &EntryPanel::FieldRefused, this,
        [this](QWidget *field, const QString &message) { QueueFieldMessage(field, message); });
    connect(satellite_, &SatellitePanel::SatelliteClicked, this, [this] {
        entry_->ApplySatellite(satellite_->Uplink(), satellite_->Mode());
        entry_->FocusCorresponsal();
    });
    connect(list_, &LogListPanel::PageFailed, this,
        [this](const Failure &failure) { startUp_->Care().PageFailed(failure); });
    connect(list_, &LogListPanel::QsoChosen, this, [this](const QsoRow &row) {
        if (QsoCountShown() > 0)
            program_.windows.EditQso().OpenEditFromList(row, Form5::EditCaller::Form1);
    });
    connect(list_, &LogListPanel::PageMoved, this, [this] { entry_->FocusCorresponsal(); });
}

void Form1::ConnectMenu()
{
    new LogCommands(program_, *this, *menu_);
    new LdaCommands(program_, *this, *menu_);
    new SiteCommands(program_, *this, *menu_);
    new ProvinceCommands(program_, *this, *menu_, *list_);
    menu_->On("conf", this, &Form1::OpenSettings);
    menu_->On("ppeerr", this, [this] { program_.windows.Profiles().ShowProfiles(); });
    menu_->On("eadif", this, [this] { program_.windows.Search().ShowSearch(); });
    menu_->On("cabro", this, &Form1::OpenContest);
    menu_->On("anali", this, [this] { program_.windows.Analysis().ShowAnalysis(); });
    menu_->On("iadif", this, [this] { program_.windows.AdifImport().ShowImport(); });
    menu_->On("badif", this, [this] { program_.windows.Backup().OpenBackupWindow(); });
    menu_->On("satel", this, &Form1::OpenSatellites);
    menu_->On("manual", this, &Form1::HelpWanted);
    menu_->On("acerca", this, [this] { program_.windows.About().ShowModal(); });
    menu_->On("cumbres", this, &Form1::OpenSummits);
    menu_->On("salir", this, [this] {
        if (ConfirmLeaving())
            Leave();
    });
}

bool Form1::Load()
{
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
    SetArchivoMenu(false);
    const bool usable = startUp_->Load();
    entry_->FocusCorresponsal();
    return usable;
}

void Form1::showEvent(QShowEvent *event)
{
    Window::showEvent(event);
    startUp_->Begin();
}

void Form1::LoadLogPage(qint64 firstRow) { list_->LoadLogPage(firstRow); }

void Form1::ReloadPage() { list_->ReloadPage(); }

qint64 Form1::QsoCountShown() const { return list_->QsoCountShown(); }

void Form1::RememberQso(qint64 id) { entry_->RememberQso(id); }

void Form1::ForgetQso(qint64 id) { entry_->ForgetQso(id); }

void Form1::ShowActivity(const QString &text) { entry_->ShowActivity(text); }

void Form1::EndActivity(const QString &text) { entry_->EndActivity(text); }

void Form1::SetBusy(bool busy) { menu_->setEnabled(!busy); }

void Form1::SetArchivoMenu(bool enabled) { menu_->SetArchivoEnabled(enabled); }

void Form1::ShowConfiguration() { entry_->ShowConfiguration(); }

void Form1::ShowCaptions() { entry_->ShowCaptions(); }

void Form1::StartTimer7() { startUp_->StartTimer7(); }

void Form1::StopTimer7() { startUp_->StopTimer7(); }

bool Form1::ClaimsShortcut(const QKeyEvent *event) const
{
    switch (event->key()) {
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        return IsCommand(event);
    }
}

bool Form1::PreviewKey(QKeyEvent *event)
{
    if (PreviewControlKey(event))
        return true;
    switch (event->key()) {
    case Qt::Key_PageDown:
        list_->PageDown();
        return true;
    case Qt::Key_PageUp:
        list_->PageUp();
        return true;
    case Qt::Key_Home:
        list_->FirstPage();
        return true;
    case Qt::Key_End:
        list_->LastPage();
        return true;
    case Qt::Key_F1:
        if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
            return false;
        if (!event->isAutoRepeat())
            program_.caller.Start(CqCaller::From::Main);
        return true;
    case Qt::Key_F5:
        if (!event->isAutoRepeat())
            OpenEditLast();
        return true;
    case Qt::Key_Escape:
        program_.logbook.LongWork().CancelAll();
        program_.caller.Escape();
        return true;
    default:
        break;
    }
    if (!IsEnter(event))
        return false;
    // A key that is held must not run through the fields and store half a contact.
    if (!event->isAutoRepeat())
        Walk();
    return true;
}

bool Form1::PreviewControlKey(QKeyEvent *event)
{
    if (!IsCommand(event))
        return false;
    if (event->isAutoRepeat())
        return true;
    const QString call = entry_->Call();
    if (event->key() == Qt::Key_W)
        entry_->WipeCall();
    else if (call.size() < shortestLookup)
        return true;
    else if (event->key() == Qt::Key_X)
        ShowCallQsos();
    else if (event->key() == Qt::Key_Q)
        lookups_->SearchQrz(call);
    else
        lookups_->SearchLda(call);
    return true;
}

void Form1::Walk()
{
    if (FieldMessagePending())
        return;
    EntryRules::EntryFields fields = entry_->Fields();
    fields.satellite = satellite_->Satellite();
    if (const auto refusal = EntryRules::RefuseWalk(fields)) {
        const bool critical = refusal->icon == EntryRules::WalkRefusal::Icon::Critical;
        dialogs().Message(this, refusal->message, critical ? Dialogs::Icon::Critical : Dialogs::Icon::Exclamation);
        QWidget *field = refusal->focus == EntryRules::EntryFocus::Satellite ? satellite_->NameField()
                                                                             : entry_->FieldOf(refusal->focus);
        GiveFocusTo(field);
        entry_->Entered(field); // selects again what is to be typed anew, also where the focus never left
        return;
    }
    const auto next = EntryRules::NextEntryField(entry_->EntryField(), entry_->QtrManual(), entry_->ViaSatellite());
    if (next)
        entry_->FocusField(*next);
    else
        StoreQso();
}

void Form1::StoreQso()
{
    // The click that brought us here may have left a field that has something to say first.
    if (FieldMessagePending() || !EnsureOpenLog())
        return;
    NewQso qso = entry_->ReadQso();
    if (satellite_->IsActive()) {
        qso.satellite = satellite_->Satellite();
        qso.mode = satellite_->Mode();
    }
    if (qso.mode.isEmpty()) {
        // A row without a mode is the marker of a log: no list would ever show this contact.
        dialogs().Message(this, u"Falta el Modo!"_qs);
        GiveFocusTo(entry_->ModeField());
        return;
    }
    entry_->SaveFieldMemory();
    const auto corrected = EntryTime::CorrectedAtEntry(
        qso.date, qso.time, entry_->ZoneVisible(), entry_->ZoneCaption(), program_.logbook.configuration.DiferUTC);
    if (!corrected) {
        dialogs().Message(
            this, u"La fecha %1 o la hora %2 no se pueden leer.\nEl QSO no fue guardado."_qs.arg(qso.date, qso.time));
        entry_->FocusCorresponsal();
        return;
    }
    qso.date = corrected->fecha;
    qso.time = corrected->hora;
    const Result<qint64> id = AddQso(program_.logbook.Store(), program_.logbook.LogInUse, qso);
    if (!id) {
        TellStoreFailure(id.failure());
        return;
    }
    entry_->ClearAfterStore(*id);
    LoadLogPage(1);
    entry_->FocusCorresponsal();
}

// In a log without a name nobody would look for the contact: the configuration is not read yet, or it lost the line.
bool Form1::EnsureOpenLog()
{
    startUp_->Hurry();
    if (!entry_->ClockRunning())
        entry_->Tick();
    if (!program_.logbook.LogInUse.isEmpty())
        return true;
    if (!startUp_->IsConfigured())
        return false;
    const Result<void> opened = SaveConfig(program_.logbook, program_.FirstRun);
    if (opened)
        ShowCaptions();
    else
        TellStoreFailure(opened.failure());
    return bool(opened);
}

void Form1::TellStoreFailure(const Failure &failure)
{
    dialogs().Message(this, u"El QSO no fue guardado. Sus datos siguen en los campos.\n\n"_qs + failure.text,
        Dialogs::Icon::Critical);
    entry_->FocusCorresponsal();
}

void Form1::ShowCallQsos()
{
    const QString call = entry_->Call();
    const Result<QList<QsoRow>> rows = QsosWithCall(program_.logbook.Store(), program_.logbook.LogInUse, call);
    if (!rows) {
        dialogs().Message(this, rows.failure().text, Dialogs::Icon::Critical);
    } else if (rows->isEmpty()) {
        dialogs().Message(this, u"Sin QSOs con "_qs + call);
    } else {
        program_.windows.CallQsos().Show(call, *rows);
    }
}

void Form1::OpenSummits()
{
    const QString path = program_.logbook.PathOf(summitsName);
    if (program_.logbook.Files().Exists(path))
        ShowTextFile(program_, this, path);
}

void Form1::SetViaSatellite(bool on)
{
    if (on)
        entry_->EnterSatelliteMode(satellite_->Uplink());
    else
        entry_->LeaveSatelliteMode();
    satellite_->SetActive(on);
    entry_->FocusCorresponsal();
}

void Form1::OpenSettings()
{
    const bool themeTold = LoadConfig(program_.logbook);
    ShowConfiguration();
    program_.windows.Settings().FillLists();
    if (themeTold)
        program_.windows.Settings().ApplyTheme();
    program_.windows.Settings().OpenPort(this);
    program_.windows.Settings().ShowSettings();
    ShowCaptions();
}

void Form1::OpenEditLast()
{
    if (QsoCountShown() == 0) {
        dialogs().Message(this, u"No hay QSOs para Editar!"_qs);
        return;
    }
    LogStore &store = program_.logbook.Store();
    auto row = QsoEdit::FindQso(store, program_.logbook.LogInUse, entry_->LastId());
    if (row && !*row) // gone, or in a log that was open before
        row = QsoEdit::FindQso(store, program_.logbook.LogInUse, std::nullopt);
    if (!row)
        dialogs().Message(this, row.failure().text, Dialogs::Icon::Critical);
    else if (*row)
        program_.windows.EditQso().EditByKey(**row);
}

void Form1::OpenSatellites()
{
    program_.windows.Satellites([this] { satellite_->LoadSatellites(); }).ShowEditor();
}

void Form1::OpenContest()
{
    if (const Result<void> upgraded = UpgradeSchema(program_.logbook.Store()); !upgraded) {
        dialogs().Message(this, upgraded.failure().text, Dialogs::Icon::Critical);
        return;
    }
    if (const auto contest = program_.windows.ContestLogs().Choose())
        program_.windows.Contest().Enter(*contest);
}

void Form1::FieldEntered(QWidget *field) { entry_->Entered(field); }

void Form1::FieldLeft(QWidget *field) { entry_->Left(field); }

QWidget *Form1::FocusFallback() const { return entry_->FieldOf(EntryRules::EntryFocus::Corresponsal); }

bool Form1::ConfirmLeaving()
{
    program_.logbook.LongWork().CancelAll();
    return dialogs().Ask(this, u"Sale de Tordillo Compacto?"_qs, Dialogs::Icon::Question, Dialogs::Button::No);
}

bool Form1::MayClose()
{
    if (leaving_)
        return true;
    if (!closingAllowed_ && !ConfirmLeaving())
        return false;
    program_.caller.Escape(); // nothing is on the air while a box waits
    if (startUp_->IsConfigured())
        if (const Result<void> saved = SaveConfig(program_.logbook, program_.FirstRun); !saved)
            dialogs().Message(this, saved.failure().text, Dialogs::Icon::Critical);
    Leave();
    return true;
}

void Form1::Leave()
{
    leaving_ = true;
    program_.caller.Escape();
    program_.processEvents();
    entry_->SaveExitMemory();
    program_.end(0);
}
