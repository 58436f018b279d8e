// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form4_Contest.h"

#include "contest/ContestLookup.h"
#include "keyer/CqCaller.h"
#include "logging/BandPlan.h"
#include "logging/EntryRules.h"
#include "ui/CallerView.h"
#include "ui/Choice.h"
#include "ui/ContestClock.h"
#include "ui/ContestCommands.h"
#include "ui/ContestEntryFields.h"
#include "ui/ContestLogView.h"
#include "ui/FieldFilter.h"
#include "ui/Form1_Main.h"
#include "ui/Form20_Macros.h"
#include "ui/Form22_Keyboard.h"
#include "ui/KeyerPanel.h"
#include "ui/MacroPanel.h"
#include "ui/MasterView.h"
#include "ui/Program.h"
#include "ui/Theme.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"
#include "ui_Form4_Contest.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>

namespace {

// Country and MasterCheck begin here.
constexpr qsizetype shortestLookup = 3;

} // namespace

Form4::Form4(Program &program)
    : Window(u"Form4"_qs, program.dialogs)
    , program_(program)
    , ui_(std::make_unique<Ui::Form4>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Concurso"_qs);
    setWindowIcon(QIcon(u":/icons/tordillo.svg"_qs));
    // What a click does here is done at once; the keyboard stays with the call.
    for (QWidget *control :
        std::initializer_list<QWidget *>{ui_->Command1, ui_->Command2, ui_->Command4, ui_->IMP_C_FT8, ui_->Check2,
            ui_->Check3, ui_->Check4, ui_->Check5, ui_->Check8, ui_->Check9, ui_->ESM, ui_->RUN, ui_->SYP, ui_->Combo3})
        control->setFocusPolicy(Qt::TabFocus);
    fields_ = std::make_unique<ContestEntryFields>(*ui_);
    for (QWidget *display : std::initializer_list<QWidget *>{ui_->marcoImage1, ui_->Label10})
        display->setBackgroundRole(QPalette::Base);
    master_ = new MasterView(ui_->MCheck, ui_->List1, ui_->List2, this);
    commands_ = new ContestCommands(program, *this);
    log_ = new ContestLogView(program, *ui_, *this);
    new CallerView(program.caller, ui_->sFondo, ui_->Label8);
    keyer_ = new KeyerPanel(program, *ui_, *this);
    macros_ = new MacroPanel(
        program, *ui_, *keyer_, [this] { return Store(); }, this);
    clock_ = new ContestClock(program, {ui_->Check2, ui_->Fecha, ui_->Hora}, this);
    Timer2_ = program.scheduler.Make(500, [this] { ShowPanels(); });
    ShowFocusOn({ui_->Corresponsal, ui_->RSE, ui_->RSR, ui_->Text2, ui_->Fecha, ui_->Hora, ui_->Text1});
    Connect();
    BuildMenu();
    resize(1320, 690);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form4::~Form4() = default;

void Form4::Connect()
{
    const auto toCall = [this] { ui_->Corresponsal->setFocus(); };
    connect(keyer_, &KeyerPanel::Used, this, toCall);
    connect(macros_, &MacroPanel::Used, this, toCall);
    connect(qApp, &QApplication::focusChanged, keyer_, &KeyerPanel::ReleaseKey);
    connect(ui_->Command5, &QPushButton::clicked, this, &Form4::EditMacros);
    connect(ui_->Corresponsal, &QLineEdit::textChanged, this, &Form4::CallChanged);
    for (QComboBox *list : {ui_->Combo1, ui_->Combo2, ui_->mhz}) {
        connect(list, &QComboBox::activated, this, [this, list] { Chosen(list); });
    }
    connect(ui_->Check2, &QCheckBox::clicked, ui_->Corresponsal, qOverload<>(&QWidget::setFocus));
    connect(ui_->Check8, &QCheckBox::toggled, this, [this](bool on) {
        ui_->Frame2->setVisible(on);
        ShowMaster();
    });
    connect(master_, &MasterView::Chosen, this, [this](const QString &call) {
        ui_->Corresponsal->setText(call);
        ui_->RSR->setFocus();
    });
    const auto command = [this](QPushButton *button, void (Form4::*work)()) {
        connect(button, &QPushButton::clicked, this, [this, work] { RunCommand(work); });
    };
    command(ui_->Command1, &Form4::MakeCabrillo);
    command(ui_->Command2, &Form4::MakeAdif);
    command(ui_->Command4, &Form4::Transfer);
    command(ui_->IMP_C_FT8, &Form4::ImportCabrillo);
}

// One command at a time, and after it the operator goes on with the next call.
void Form4::RunCommand(void (Form4::*work)())
{
    if (working_)
        return;
    working_ = true;
    (this->*work)();
    working_ = false;
    if (isVisible())
        ui_->Corresponsal->setFocus();
}

void Form4::MakeCabrillo() { commands_->BuildCabrilloLines(ui_->Text2->text()); }

void Form4::MakeAdif() { commands_->ExportContestAdif(ui_->Text2->text()); }

void Form4::Transfer() { commands_->TransferToGeneralLog(log_->Count()); }

void Form4::ImportCabrillo()
{
    const qsizetype stored = commands_->ImportContestCabrillo(ui_->Text2->text());
    if (stored == 0)
        return;
    ui_->lcontrol->setText(QString::number(ui_->lcontrol->text().toInt() + stored));
    log_->LoadList();
    log_->ShowPlainCount();
}

void Form4::BuildMenu()
{
    auto *bar = new QMenuBar(this);
    QMenu *menu = bar->addMenu(u"&Concurso"_qs);
    connect(menu, &QMenu::aboutToShow, keyer_, &KeyerPanel::ReleaseKey);
    const auto add = [&](const QString &name, const QString &text) {
        QAction *action = menu->addAction(text);
        action->setObjectName(name);
        return action;
    };
    connect(add(u"tbp"_qs, u"&Transferir a Base Principal"_qs), &QAction::triggered, this,
        [this] { RunCommand(&Form4::Transfer); });
    menu->addSeparator();
    connect(add(u"manual"_qs, u"&Manual"_qs), &QAction::triggered, this, &Form4::HelpWanted);
    menu->addSeparator();
    connect(add(u"sdc"_qs, u"&Salir de Concurso"_qs), &QAction::triggered, this, [this] {
        if (Leave(false))
            close();
    });
    layout()->setMenuBar(bar);
}

void Form4::Enter(const ContestLog &contest)
{
    ui_->Label2->setText(contest.name);
    ui_->Label3->setText(contest.type);
    fields_->Reset(program_.logbook.captions.station);
    commands_->SetContest(contest.name, contest.type);
    log_->LoadList();
    Activate();
    leaving_ = false;
    ui_->Corresponsal->setFocus();
    clock_->Start();
    program_.windows.Main().showMinimized();
    ShowModal();
    clock_->Stop();
    Timer2_->Stop();
    Form1 &main = program_.windows.Main();
    main.showMaximized();
    main.activateWindow();
}

// What the window takes up again each time it is opened.
void Form4::Activate()
{
    keyer_->Open();
    if (const QString trouble = macros_->Load(); !trouble.isEmpty())
        dialogs().Message(this, trouble);
    ui_->Frame2->setTitle(MasterCheckCaption(program_.master.Calls().size()));
    ShowLastValues();
    Timer2_->Start();
    ui_->Frame3->setTitle(QString(u"Log Concurso: " + ui_->Label2->text()).replace(u'&', u"&&"_qs));
    ShowPanels();
}

bool Form4::InCw() const { return ui_->Combo1->currentText() == u"CW"; }

// The panels follow the mode, whoever changed it.
void Form4::ShowPanels()
{
    if (!InCw())
        ui_->ESM->setChecked(false);
    ui_->panelTransmision->setCurrentWidget(InCw() ? ui_->panelCw : ui_->panelFonia);
}

void Form4::ShowLastValues()
{
    LogStore &store = program_.logbook.Store();
    const Result<QString> mode = LastContestValue(store, ui_->Label2->text(), ContestValue::Mode);
    const Result<QString> band = LastContestValue(store, ui_->Label2->text(), ContestValue::Band);
    if (band && !band->isEmpty())
        ui_->Combo2->setCurrentText(*band);
    if (mode && !mode->isEmpty())
        ui_->Combo1->setCurrentText(*mode);
    else if (!IsIncremental())
        ui_->Combo1->setCurrentText(u"SSB"_qs);
    if (IsIncremental())
        NextSerial();
    else
        ui_->RSE->setText(ui_->Label4->text());
}

bool Form4::IsIncremental() const { return ui_->Label3->text() != SerieType::Fija; }

void Form4::NextSerial()
{
    const Result<QString> last =
        LastContestSerial(program_.logbook.Store(), ui_->Label2->text(), ui_->Combo1->currentText());
    if (last)
        ui_->RSE->setText(NextContestSerial(*last));
}

// False when something is missing or the database did not take it; that has been told.
bool Form4::Store()
{
    const ContestFields fields = fields_->Read();
    if (const auto refusal = CheckContestEntry(fields)) {
        if (!refusal->message.isEmpty())
            dialogs().Message(this, refusal->message);
        GiveFocusTo(fields_->FieldOf(refusal->focus));
        return false;
    }
    master_->Clear();
    ui_->lcontrol->setText(u"0"_qs);
    QsoRow row = BuildContestRow(fields);
    const auto id = StoreContestQso(program_.logbook.Store(), row);
    if (!id) {
        dialogs().Message(this, u"El QSO no fue guardado. Sus datos siguen en los campos.\n\n"_qs + id.failure().text,
            Dialogs::Icon::Critical);
        return false;
    }
    if (*id) { // else the very same contact stands there already
        row.id = **id;
        Stored(row);
    }
    return true;
}

void Form4::Stored(const QsoRow &row)
{
    program_.windows.Main().RememberQso(row.id);
    ui_->lcontrol->setText(u"1"_qs);
    log_->AddNewest(row);
    ui_->Corresponsal->clear();
    if (IsIncremental())
        ui_->RSE->setText(NextContestSerial(row.RSE));
    ui_->RSR->clear();
    if (ui_->Check2->isChecked())
        ui_->Hora->setFocus();
    else
        ui_->Corresponsal->setFocus();
}

void Form4::CallChanged()
{
    const QString call = ui_->Corresponsal->text();
    log_->ShowDuplicates();
    ShowMaster();
    if (call.size() >= shortestLookup)
        ui_->Label11->setText(program_.dxcc.CountryOf(call));
    if (call.isEmpty())
        ui_->Label11->clear();
    macros_->CallChanged();
}

void Form4::ShowMaster()
{
    const QString call = ui_->Corresponsal->text();
    if (call.size() >= shortestLookup && ui_->Check8->isChecked())
        master_->Show(program_.master.Search(call));
    else
        master_->Clear();
}

// An entry was taken. By mouse the operator goes on with the call; by keys he may still be on the way to the entry he
// wants, and what he types next must not land in the call.
void Form4::Chosen(const QComboBox *list)
{
    if (list == ui_->Combo1)
        ModeChosen();
    else if (list == ui_->Combo2)
        log_->ShowDuplicates();
    else if (const auto band = ContestBandOfMegahertz(ui_->mhz->currentText()))
        ui_->Label6->setText(*band);
    if (list != ui_->Combo2 && !byKey_)
        ui_->Corresponsal->setFocus();
}

void Form4::ModeChosen()
{
    if (!InCw()) {
        macros_->SwitchOff();
        keyer_->Stop();
        keyer_->ReleaseKey();
        program_.caller.PttOff(program_.caller.Line());
    }
    ShowPanels();
    log_->ShowDuplicates();
    if (IsIncremental())
        NextSerial();
}

void Form4::FieldEntered(QWidget *field)
{
    if (auto *line = qobject_cast<QLineEdit *>(field))
        line->end(false);
}

void Form4::FieldLeft(QWidget *field)
{
    if (field != ui_->Corresponsal) {
        if (const QString message = fields_->CheckLeft(field); !message.isEmpty())
            QueueFieldMessage(field, message);
        return;
    }
    // It warns, and the operator goes on where he is.
    if (const QString warning = OwnCallWarning(ui_->Corresponsal->text(), ui_->Text2->text()); !warning.isEmpty())
        QueueFieldMessage(CurrentField(), warning);
    else
        log_->ShowDuplicates();
}

QWidget *Form4::FocusFallback() const { return ui_->Corresponsal; }

bool Form4::ClaimsShortcut(const QKeyEvent *event) const
{
    const int key = event->key();
    return (key == Qt::Key_W && event->modifiers() == Qt::ControlModifier) || key == Qt::Key_PageUp
        || key == Qt::Key_PageDown || key == Qt::Key_Space;
}

bool Form4::PreviewKey(QKeyEvent *event)
{
    byKey_ = true;
    QMetaObject::invokeMethod(
        this, [this] { byKey_ = false; }, Qt::QueuedConnection);
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat() && !working_)
            EnterPressed();
        return true;
    case Qt::Key_Space:
        (CurrentField() == ui_->Corresponsal ? ui_->RSR : ui_->Corresponsal)->setFocus();
        return true;
    case Qt::Key_F8:
        ui_->ListView2->viewport()->update();
        return true;
    case Qt::Key_F12:
        if (!event->isAutoRepeat())
            log_->EditLastContestQso();
        return true;
    case Qt::Key_PageDown:
        keyer_->ChangeSpeed(1);
        return true;
    case Qt::Key_PageUp:
        keyer_->ChangeSpeed(-1);
        return true;
    case Qt::Key_Escape:
        Escape();
        return true;
    case Qt::Key_W:
        if (!CtrlHeld())
            return false;
        ui_->Corresponsal->clear();
        ui_->Corresponsal->setFocus();
        return true;
    default:
        return SendKey(event);
    }
}

void Form4::EnterPressed()
{
    if (!ui_->ESM->isChecked() || !InCw() || !macros_->Enter())
        Store();
}

// The keys that go on the air.
bool Form4::SendKey(QKeyEvent *event)
{
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    const int key = event->key();
    const bool manual = key == Qt::Key_Down && InCw();
    if (!manual && key != Qt::Key_F9 && (key < Qt::Key_F1 || key > Qt::Key_F7))
        return false;
    if (event->isAutoRepeat())
        return true;
    if (manual)
        keyer_->PressKey();
    else if (key == Qt::Key_F9)
        TypeText();
    else if (InCw())
        macros_->SendMacro(key - Qt::Key_F1);
    else if (key == Qt::Key_F1)
        program_.caller.Start(CqCaller::From::Contest);
    return true;
}

bool Form4::PreviewKeyRelease(QKeyEvent *event)
{
    keyer_->ReleaseKey();
    return event->key() == Qt::Key_Down && InCw();
}

// The release of a held key goes to whatever came in front, a list or a menu of this window included.
bool Form4::event(QEvent *event)
{
    if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::Hide)
        keyer_->ReleaseKey();
    return Window::event(event);
}

void Form4::Escape()
{
    program_.logbook.LongWork().CancelAll();
    if (!InCw()) {
        keyer_->Stop();
        program_.caller.Escape();
        return;
    }
    log_->HideDuplicates();
    macros_->StopAutoCq();
    keyer_->Escape();
    // A recorded CQ from before the mode was CW: Esc leaves no line closed.
    if (program_.caller.LineIsOn())
        program_.caller.Escape();
}

// After the editor's buttons the window goes on as it is; after its Esc it takes up everything anew.
void Form4::EditMacros()
{
    if (program_.windows.Macros(*this).Edit(macros_->Texts()) == Form20::Outcome::Escaped)
        Activate();
    ui_->Corresponsal->setFocus();
}

void Form4::TypeText()
{
    if (program_.windows.Keyboard(*this).Send(keyer_->Keyer()) == Form22::Outcome::Closed)
        Activate();
    else
        keyer_->Keyer().ClearStop();
    ui_->Corresponsal->setFocus();
}

bool Form4::Leave(bool askForCall)
{
    if (working_)
        return false;
    if (InCw()) {
        macros_->SwitchOff();
        keyer_->Stop();
    }
    const QString call = ui_->Corresponsal->text();
    if (askForCall && !call.isEmpty()
        && !dialogs().Ask(
            this, call + u" sin registrar, lo descarta?"_qs, Dialogs::Icon::Question, Dialogs::Button::No))
        return false;
    if (!dialogs().Ask(this, u" Sale del concurso?"_qs))
        return false;
    program_.caller.Leave(CqCaller::From::Contest);
    if (const QString trouble = keyer_->Close(); !trouble.isEmpty())
        dialogs().Message(this, trouble);
    leaving_ = true;
    return true;
}

bool Form4::MayClose() { return leaving_ || Leave(true); }
