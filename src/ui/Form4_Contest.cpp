// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form4_Contest.h"

#include "contest/ContestLookup.h"
#include "logging/BandPlan.h"
#include "logging/EntryRules.h"
#include "ui/Choice.h"
#include "ui/ContestClock.h"
#include "ui/ContestCommands.h"
#include "ui/FieldFilter.h"
#include "ui/Form1_Main.h"
#include "ui/Form7_EditContestQso.h"
#include "ui/MasterView.h"
#include "ui/Program.h"
#include "ui/Theme.h"
#include "ui/Transmission.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"
#include "ui_Form4_Contest.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>

namespace {

// Country and MasterCheck begin here.
constexpr qsizetype shortestLookup = 3;

void PaintWarning(QLabel *label)
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xC00000));
    palette.setColor(QPalette::WindowText, Qt::white);
    label->setPalette(palette);
    label->setAutoFillBackground(true);
    label->setMargin(4);
}

} // namespace

Form4::Form4(Program &program)
    : Window(u"Form4"_qs, program.dialogs)
    , program_(program)
    , ui_(std::make_unique<Ui::Form4>())
    , log_(ContestListModel::Columns::Log)
    , duplicates_(ContestListModel::Columns::Duplicates)
{
    ui_->setupUi(this);
    setWindowTitle(u"Concurso"_qs);
    setWindowIcon(QIcon(u":/icons/tordillo.svg"_qs));
    ui_->ListView2->setModel(&log_);
    ui_->ListView2->SetColumnTwips(log_.Widths(), {});
    ui_->ListView2->setFocusPolicy(Qt::TabFocus);
    ui_->ListView1->setModel(&duplicates_);
    ui_->ListView1->SetColumnTwips(duplicates_.Widths(), {});
    ui_->ListView1->setFocusPolicy(Qt::NoFocus);
    // What a click does here is done at once; the keyboard stays with the call.
    for (QWidget *control :
        std::initializer_list<QWidget *>{ui_->Command1, ui_->Command2, ui_->Command4, ui_->IMP_C_FT8, ui_->Check2,
            ui_->Check3, ui_->Check4, ui_->Check5, ui_->Check8, ui_->Check9, ui_->ESM, ui_->RUN, ui_->SYP, ui_->Combo3})
        control->setFocusPolicy(Qt::TabFocus);
    PaintWarning(ui_->Label7);
    for (QWidget *panel : std::initializer_list<QWidget *>{ui_->Label7, ui_->Frame4}) {
        QSizePolicy kept = panel->sizePolicy();
        kept.setRetainSizeWhenHidden(true);
        panel->setSizePolicy(kept);
        panel->hide();
    }
    master_ = new MasterView(ui_->MCheck, ui_->List1, ui_->List2, this);
    commands_ = new ContestCommands(program, *this);
    transmission_ = new Transmission(program, *ui_, this);
    connect(transmission_, &Transmission::Used, this, [this] { ui_->Corresponsal->setFocus(); });
    clock_ = new ContestClock(program, {ui_->Check2, ui_->Fecha, ui_->Hora}, this);
    FillLists();
    AttachFilters();
    Connect();
    BuildMenu();
    resize(1320, 690);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form4::~Form4() = default;

void Form4::FillLists()
{
    ContestLoading_ = true;
    ui_->Combo1->addItems(ContestModes());
    ui_->Combo1->setCurrentText(u"SSB"_qs);
    ui_->Combo2->addItems(ContestBands());
    ui_->Combo2->setCurrentText(u"80m"_qs);
    ui_->mhz->addItems(ContestMegahertz());
    ui_->mhz->setCurrentText(u"3"_qs);
    ui_->Text1->setText(u"650"_qs);
    ContestLoading_ = false;
}

void Form4::AttachFilters()
{
    const auto contest = [](QLineEdit *field, ContestFilter filter) {
        FieldFilter::Attach(field, [filter](QChar key) { return FilterContestKey(key, filter); });
    };
    const auto entry = [](QLineEdit *field, EntryRules::KeyFilter filter) {
        FieldFilter::Attach(field, [filter](QChar key) { return EntryRules::FilterKey(key, filter); });
    };
    contest(ui_->Text2, ContestFilter::OwnCall);
    contest(ui_->RSR, ContestFilter::SerieText);
    entry(ui_->Corresponsal, EntryRules::KeyFilter::Callsign);
    entry(ui_->Fecha, EntryRules::KeyFilter::Date);
    entry(ui_->Hora, EntryRules::KeyFilter::Time);
    entry(ui_->Text1, EntryRules::KeyFilter::Digits);
    FieldFilter::Attach(
        ui_->RSE, [this](QChar key) { return FilterContestKey(key, SentSerieFilter(ui_->Label3->text())); });
    ShowFocusOn({ui_->Corresponsal, ui_->RSE, ui_->RSR, ui_->Text2, ui_->Fecha, ui_->Hora, ui_->Text1});
}

void Form4::Connect()
{
    connect(ui_->Corresponsal, &QLineEdit::textChanged, this, &Form4::CallChanged);
    for (QComboBox *list : {ui_->Combo1, ui_->Combo2, ui_->mhz}) {
        connect(list, &QComboBox::activated, this, [this, list] { Chosen(list); });
    }
    connect(ui_->Check2, &QCheckBox::clicked, ui_->Corresponsal, qOverload<>(&QWidget::setFocus));
    connect(ui_->Check8, &QCheckBox::toggled, this, [this](bool on) {
        ui_->Frame2->setVisible(on);
        CallChanged();
    });
    connect(master_, &MasterView::Chosen, this, [this](const QString &call) {
        ui_->Corresponsal->setText(call);
        ui_->RSR->setFocus();
    });
    connect(ui_->ListView2, &QAbstractItemView::doubleClicked, this,
        [this](const QModelIndex &index) { EditRow(log_.RowAt(index.row()), index.row()); });
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

void Form4::Transfer() { commands_->TransferToGeneralLog(count_); }

void Form4::ImportCabrillo()
{
    if (!commands_->ImportContestCabrillo(ui_->Text2->text()))
        return;
    LoadList();
    ui_->Label9->setText(QString::number(count_) + u" QSOs");
}

void Form4::BuildMenu()
{
    auto *bar = new QMenuBar(this);
    QMenu *menu = bar->addMenu(u"&Concurso"_qs);
    const auto add = [&](const QString &name, const QString &text) {
        QAction *action = menu->addAction(text);
        action->setObjectName(name);
        return action;
    };
    connect(add(u"tbp"_qs, u"&Transferir a Base Principal"_qs), &QAction::triggered, this,
        [this] { RunCommand(&Form4::Transfer); });
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
    ui_->Text2->setText(program_.logbook.captions.station);
    // A contest before this one leaves nothing behind but the band.
    Choice::Show(ui_->Combo1, u"SSB"_qs);
    Choice::Show(ui_->mhz, u"3"_qs);
    ui_->Text1->setText(u"650"_qs);
    ui_->Label6->setText(u"80m"_qs);
    const StartValues start = StartOfContest(contest.type);
    ui_->RSE->setText(start.rse);
    ui_->Label4->setText(start.label4);
    ui_->Corresponsal->clear();
    ui_->RSR->clear();
    commands_->SetContest(contest.name, contest.type);
    LoadList();
    Activate();
    leaving_ = false;
    ui_->Corresponsal->setFocus();
    clock_->Start();
    program_.windows.Main().showMinimized();
    ShowModal();
    clock_->Stop();
    transmission_->Rest();
    Form1 &main = program_.windows.Main();
    main.showMaximized();
    main.activateWindow();
}

// What the window takes up again each time it is opened.
void Form4::Activate()
{
    if (const QString trouble = transmission_->Open(); !trouble.isEmpty())
        dialogs().Message(this, trouble);
    ui_->Frame2->setTitle(MasterCheckCaption(program_.master.Calls().size()));
    ShowLastValues();
    transmission_->Follow();
    ui_->Frame3->setTitle(QString(u"Log Concurso: " + ui_->Label2->text()).replace(u'&', u"&&"_qs));
    transmission_->ShowPanels();
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

bool Form4::TellIfFailed(const Failure *failure)
{
    if (failure)
        dialogs().Message(this, failure->text, Dialogs::Icon::Critical);
    return failure != nullptr;
}

void Form4::LoadList()
{
    const Result<QList<QsoRow>> rows = ContestListLoad(program_.logbook.Store(), ui_->Label2->text());
    if (TellIfFailed(rows ? nullptr : &rows.failure()))
        return;
    log_.SetRows(*rows);
    count_ = rows->size();
    ui_->Label9->setText(ContestCountText(count_));
}

ContestFields Form4::ReadFields() const
{
    return {ui_->Text2->text(), ui_->Fecha->text(), ui_->Hora->text(), ui_->Corresponsal->text(),
        ui_->Combo1->currentText(), ui_->Combo2->currentText(), ui_->mhz->currentText(), ui_->Text1->text(),
        ui_->RSE->text(), ui_->RSR->text(), ui_->Label2->text(), ui_->Label3->text()};
}

QWidget *Form4::FieldOf(ContestFocus focus) const
{
    switch (focus) {
    case ContestFocus::OwnCall:
        return ui_->Text2;
    case ContestFocus::Fecha:
        return ui_->Fecha;
    case ContestFocus::Hora:
        return ui_->Hora;
    case ContestFocus::Rse:
        return ui_->RSE;
    case ContestFocus::Rsr:
        return ui_->RSR;
    default:
        return ui_->Corresponsal;
    }
}

void Form4::Store()
{
    const ContestFields fields = ReadFields();
    if (const auto refusal = CheckContestEntry(fields)) {
        if (!refusal->message.isEmpty())
            dialogs().Message(this, refusal->message);
        GiveFocusTo(FieldOf(refusal->focus));
        return;
    }
    master_->Clear();
    ui_->lcontrol->setText(u"0"_qs);
    QsoRow row = BuildContestRow(fields);
    const auto id = StoreContestQso(program_.logbook.Store(), row);
    if (!id) {
        dialogs().Message(this, u"El QSO no fue guardado. Sus datos siguen en los campos.\n\n"_qs + id.failure().text,
            Dialogs::Icon::Critical);
        return;
    }
    if (!*id)
        return; // the very same contact stands there already
    row.id = **id;
    Stored(row);
}

void Form4::Stored(const QsoRow &row)
{
    program_.windows.Main().RememberQso(row.id);
    ui_->lcontrol->setText(u"1"_qs);
    log_.AddNewest(row);
    ++count_;
    ui_->Label9->setText(ContestCountAfterStore(ui_->Label9->text()));
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
    ShowDuplicates();
    if (call.size() >= shortestLookup) {
        ui_->Label11->setText(program_.dxcc.CountryOf(call));
        if (ui_->Check8->isChecked())
            master_->Show(program_.master.Search(call));
    } else {
        master_->Clear();
    }
    if (call.isEmpty())
        ui_->Label11->clear();
    if (!call.isEmpty() && ui_->RSE->text().isEmpty()) {
        SavedCall_ = call;
        SavedSerie_.clear();
    }
}

void Form4::ShowDuplicates()
{
    const QString call = ui_->Corresponsal->text();
    const Result<QList<QsoRow>> rows = call.isEmpty()
        ? QList<QsoRow>()
        : FindContestDuplicates(program_.logbook.Store(), ui_->Label2->text(), call, ui_->Combo1->currentText(),
            ui_->Combo2->currentText());
    // An unreadable database is told when the contact is stored.
    const bool duplicate = rows && !rows->isEmpty();
    if (duplicate)
        duplicates_.SetRows(*rows);
    ui_->Label7->setVisible(duplicate);
    ui_->Frame4->setVisible(duplicate);
}

// An entry was taken. By mouse the operator goes on with the call; by keys he may still be on the way to the entry he
// wants, and what he types next must not land in the call.
void Form4::Chosen(const QComboBox *list)
{
    if (ContestLoading_)
        return;
    if (list == ui_->Combo1)
        ModeChosen();
    else if (list == ui_->Combo2)
        ShowDuplicates();
    else if (const auto band = ContestBandOfMegahertz(ui_->mhz->currentText()))
        ui_->Label6->setText(*band);
    if (list != ui_->Combo2 && !byKey_)
        ui_->Corresponsal->setFocus();
}

void Form4::ModeChosen()
{
    transmission_->ShowPanels();
    ShowDuplicates();
    if (IsIncremental())
        NextSerial();
}

void Form4::EditLastContestQso()
{
    const auto row = LastContestQso(program_.logbook.Store(), ui_->Label2->text());
    if (TellIfFailed(row ? nullptr : &row.failure()) || !*row)
        return;
    EditRow(**row, 0);
}

void Form4::EditRow(const QsoRow &row, int place)
{
    const auto stored = FindContestQso(program_.logbook.Store(), row.id);
    if (TellIfFailed(stored ? nullptr : &stored.failure()))
        return;
    const bool changed = !*stored || program_.windows.EditContestQso(*this).Edit(**stored, place);
    if (!changed)
        return;
    LoadList();
    const QModelIndex kept = log_.index(std::min(place, log_.rowCount() - 1), 2);
    ui_->ListView2->setCurrentIndex(kept);
    ui_->ListView2->scrollTo(kept);
}

void Form4::FieldEntered(QWidget *field)
{
    if (auto *line = qobject_cast<QLineEdit *>(field))
        line->end(false);
}

void Form4::FieldLeft(QWidget *field)
{
    QString message;
    if (field == ui_->Text1) {
        ui_->Text1->setText(BandPlan::PadKilohertz(ui_->Text1->text()));
    } else if (field == ui_->Text2) {
        message = CheckContestOwnCall(ui_->Text2->text());
    } else if (field == ui_->Fecha || field == ui_->Hora) {
        auto *line = static_cast<QLineEdit *>(field);
        const EntryRules::FieldCheck check =
            field == ui_->Fecha ? CheckContestFecha(line->text()) : CheckContestHora(line->text());
        line->setText(check.text);
        message = check.message;
    } else if (field == ui_->Corresponsal) {
        // It warns, and the operator goes on where he is.
        if (const QString warning = OwnCallWarning(ui_->Corresponsal->text(), ui_->Text2->text()); !warning.isEmpty())
            QueueFieldMessage(CurrentField(), warning);
        else
            ShowDuplicates();
    }
    if (!message.isEmpty())
        QueueFieldMessage(field, message);
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
            Store();
        return true;
    case Qt::Key_Space:
        (CurrentField() == ui_->Corresponsal ? ui_->RSR : ui_->Corresponsal)->setFocus();
        return true;
    case Qt::Key_F8:
        ui_->ListView2->viewport()->update();
        return true;
    case Qt::Key_F12:
        if (!event->isAutoRepeat())
            EditLastContestQso();
        return true;
    case Qt::Key_PageDown:
        transmission_->ChangeSpeed(1);
        return true;
    case Qt::Key_PageUp:
        transmission_->ChangeSpeed(-1);
        return true;
    case Qt::Key_Escape:
        program_.logbook.LongWork().CancelAll();
        if (ui_->Combo1->currentText() == u"CW") {
            ui_->Label7->hide();
            ui_->Frame4->hide();
        }
        return true;
    case Qt::Key_W:
        if (!CtrlHeld())
            return false;
        ui_->Corresponsal->clear();
        ui_->Corresponsal->setFocus();
        return true;
    default:
        return false;
    }
}

bool Form4::Leave(bool askForCall)
{
    if (working_)
        return false;
    ui_->ESM->setChecked(false);
    const QString call = ui_->Corresponsal->text();
    if (askForCall && !call.isEmpty()
        && !dialogs().Ask(
            this, call + u" sin registrar, lo descarta?"_qs, Dialogs::Icon::Question, Dialogs::Button::No))
        return false;
    if (!dialogs().Ask(this, u" Sale del concurso?"_qs))
        return false;
    if (const QString trouble = transmission_->Close(); !trouble.isEmpty())
        dialogs().Message(this, trouble);
    leaving_ = true;
    return true;
}

bool Form4::MayClose() { return leaving_ || Leave(true); }
