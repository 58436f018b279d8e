// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form2_Settings.h"

#include "keyer/CqCaller.h"
#include "logging/CallInfo.h"
#include "logging/EntryRules.h"
#include "ui/AccountCheck.h"
#include "ui/CallerView.h"
#include "ui/FieldFilter.h"
#include "ui/Form1_Main.h"
#include "ui/GridField.h"
#include "ui/KeyerTest.h"
#include "ui/Program.h"
#include "ui/Theme.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"
#include "ui_Form2_Settings.h"

#include <QIcon>
#include <QKeyEvent>
#include <QScreen>
#include <utility>

using EntryRules::KeyFilter;

namespace {

struct TextSetting {
    Field *Ui::Form2::*field;
    QString Configuration::*value;
};

constexpr TextSetting texts[] = {
    {&Ui::Form2::Text1, &Configuration::Estacion},
    {&Ui::Form2::Text2, &Configuration::Operador},
    {&Ui::Form2::Text3, &Configuration::DiferUTC},
    {&Ui::Form2::Text4, &Configuration::GridLoca},
    {&Ui::Form2::user_lda, &Configuration::UserLdA},
    {&Ui::Form2::pass_lda, &Configuration::PassLdA},
    {&Ui::Form2::Text5, &Configuration::HAMQuser},
    {&Ui::Form2::Text6, &Configuration::HAMQpass},
    {&Ui::Form2::Text8, &Configuration::LDAQuser},
    {&Ui::Form2::Text7, &Configuration::LDAQpass},
    {&Ui::Form2::Text9, &Configuration::eQSLuser},
    {&Ui::Form2::Text10, &Configuration::eQSLpass},
};

struct ListSetting {
    QComboBox *Ui::Form2::*list;
    QString Configuration::*value;
};

constexpr ListSetting lists[] = {
    {&Ui::Form2::Puerto, &Configuration::Puerto},
    {&Ui::Form2::Combo1, &Configuration::TAntes},
    {&Ui::Form2::Combo2, &Configuration::TDespues},
};

} // namespace

Form2::Form2(Program &program, QWidget *owner)
    : Window(u"Form2"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form2>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Configuración"_qs);
    const auto filter = [](Field *field, KeyFilter keys) {
        FieldFilter::Attach(field, [keys](QChar key) { return EntryRules::FilterKey(key, keys); });
    };
    filter(ui_->Text1, KeyFilter::Callsign);
    filter(ui_->Text2, KeyFilter::Callsign);
    filter(ui_->Text3, KeyFilter::UtcOffset);
    KeepGridShape(ui_->Text4);
    for (const TextSetting &setting : texts)
        ShowFocusOn({ui_.get()->*setting.field});
    Bind();
    BindLines();
    BindCaller();
    BindPasswords();
    new AccountCheck(program, *this, {ui_->Command4, ui_->ProgressBar1, ui_->Label3});
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form2::~Form2() = default;

void Form2::Bind()
{
    Configuration &configuration = program_.logbook.configuration;
    for (const TextSetting &setting : texts)
        connect(ui_.get()->*setting.field, &QLineEdit::textChanged, this,
            [this, setting, &configuration](const QString &text) {
                if (!showing_)
                    configuration.*setting.value = text;
            });
    for (const ListSetting &setting : lists)
        connect(ui_.get()->*setting.list, &QComboBox::currentTextChanged, this,
            [this, setting, &configuration](const QString &text) {
                if (!showing_)
                    configuration.*setting.value = text;
            });
    connect(ui_->Check1, &QCheckBox::toggled, this, [&configuration](bool on) { configuration.BuscaE = on; });
    connect(ui_->panta, &QCheckBox::clicked, this, [this, &configuration](bool on) {
        configuration.Pantalla = on;
        ApplyTheme();
    });
    connect(ui_->Command1, &QPushButton::clicked, this, &Form2::Save);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form2::Cancel);
    connect(ui_->Command5, &QPushButton::clicked, this, &Form2::ChooseAudio);
    connect(
        ui_->ProbarManipulador, &QPushButton::clicked, this, [this] { program_.windows.TestKeyer(*this).ShowTest(); });
}

void Form2::BindLines()
{
    // One of the two lines is always ticked.
    const auto choose = [this](bool rts) {
        program_.logbook.configuration.PinPTT = rts;
        ui_->RTS->setChecked(rts);
        ui_->DTR->setChecked(!rts);
    };
    connect(ui_->RTS, &QCheckBox::clicked, this, choose);
    connect(ui_->DTR, &QCheckBox::clicked, this, [choose](bool on) { choose(!on); });
}

void Form2::BindCaller()
{
    CqCaller &caller = program_.caller;
    new CallerView(caller, ui_->sFondo, nullptr);
    ui_->AvisoAudio->hide();
    connect(ui_->Command6, &QPushButton::clicked, this, [this, &caller] {
        ui_->AvisoAudio->hide();
        ui_->Command7->setEnabled(true);
        stopHadFocus_ = false;
        caller.Start(CqCaller::From::Test);
    });
    connect(ui_->Command7, &QPushButton::clicked, this, [this, &caller] {
        if (!caller.StopTest())
            return;
        stopHadFocus_ = ui_->Command7->hasFocus();
        ui_->Command7->setEnabled(false);
    });
    connect(&caller, &CqCaller::Done, this, [this](CqCaller::From from) {
        if (from != CqCaller::From::Test)
            return;
        ui_->Command7->setEnabled(true);
        if (std::exchange(stopHadFocus_, false))
            ui_->Command7->setFocus();
    });
    connect(&caller, &CqCaller::Refused, this, [this](const QString &why) {
        ui_->AvisoAudio->setText(why);
        ui_->AvisoAudio->setVisible(isVisible());
    });
    connect(ui_->Puerto, &QComboBox::activated, this, [this] { OpenPort(this); });
    connect(ui_->Command8, &QPushButton::pressed, this, [this, &caller] {
        pttTest_ = true;
        caller.PttOn(caller.Line());
    });
    connect(ui_->Command8, &QPushButton::released, this, [this, &caller] {
        pttTest_ = false;
        caller.PttOff(caller.Line());
    });
}

void Form2::OpenPort(QWidget *owner)
{
    QString &port = program_.logbook.configuration.Puerto;
    if (program_.LoadingMainWindow || port.isEmpty())
        return;
    const QString wanted = port;
    if (const Result<void> opened = program_.caller.OpenPort(); !opened) {
        port = u"NINGUNO"_qs;
        ui_->Puerto->setCurrentText(port);
        dialogs().Message(owner,
            u"%1: %2\n\nEl PTT del llamador queda en NINGUNO. "
            u"Cuando el puerto esté listo, elíjalo de nuevo en Configuración."_qs.arg(wanted, opened.failure().text));
    }
}

void Form2::hideEvent(QHideEvent *event)
{
    if (std::exchange(pttTest_, false))
        program_.caller.PttOff(program_.caller.Line());
    program_.caller.Leave(CqCaller::From::Test);
    ui_->Command7->setEnabled(true);
    stopHadFocus_ = false;
    // The release of an eye that is held goes elsewhere now.
    for (QToolButton *eye : {ui_->Command3, ui_->Image1, ui_->Image2, ui_->Image3})
        eye->setDown(false);
    for (QLineEdit *password : {ui_->pass_lda, ui_->Text6, ui_->Text7, ui_->Text10})
        password->setEchoMode(QLineEdit::Password);
    ui_->AvisoAudio->hide();
    Window::hideEvent(event);
}

void Form2::BindPasswords()
{
    const std::pair<QToolButton *, QLineEdit *> eyes[] = {{ui_->Command3, ui_->pass_lda}, {ui_->Image1, ui_->Text6},
        {ui_->Image2, ui_->Text7}, {ui_->Image3, ui_->Text10}};
    for (const auto &[eye, field] : eyes) {
        eye->setIcon(QIcon(u":/icons/ojo.svg"_qs));
        QLineEdit *shown = field;
        connect(eye, &QToolButton::pressed, shown, [shown] { shown->setEchoMode(QLineEdit::Normal); });
        connect(eye, &QToolButton::released, shown, [shown] { shown->setEchoMode(QLineEdit::Password); });
    }
}

void Form2::FillLists()
{
    showing_ = true;
    for (const ListSetting &setting : lists)
        (ui_.get()->*setting.list)->clear();
    ui_->Puerto->addItem(u"NINGUNO"_qs);
    for (int port = 1; port <= 20; ++port)
        ui_->Puerto->addItem(u"COM"_qs + QString::number(port));
    for (QComboBox *delays : {ui_->Combo1, ui_->Combo2})
        for (int delay = 0; delay <= 500; delay += 100)
            delays->addItem(QString::number(delay));
    showing_ = false;
    ShowConfiguration();
}

void Form2::ShowConfiguration()
{
    const Configuration &configuration = program_.logbook.configuration;
    showing_ = true;
    for (const TextSetting &setting : texts)
        (ui_.get()->*setting.field)->setText(configuration.*setting.value);
    for (const ListSetting &setting : lists)
        (ui_.get()->*setting.list)->setCurrentIndex((ui_.get()->*setting.list)->findText(configuration.*setting.value));
    ui_->Check1->setChecked(configuration.BuscaE);
    ui_->panta->setChecked(configuration.Pantalla);
    ui_->RTS->setChecked(configuration.PinPTT);
    ui_->DTR->setChecked(!configuration.PinPTT);
    ui_->Label6->setText(configuration.ArcAudio);
    ui_->Label6->setToolTip(configuration.ArcAudio);
    showing_ = false;
}

void Form2::ShowSettings()
{
    ShowConfiguration();
    ui_->Text1->setFocus();
    ShowModal();
}

void Form2::ApplyTheme() { ApplyWindowTheme(program_.logbook.configuration.Pantalla ? Theme::Dark : Theme::Light); }

bool Form2::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return event->key() == Qt::Key_Escape;
    if (!event->isAutoRepeat())
        Save();
    return true;
}

void Form2::FieldEntered(QWidget *field)
{
    if (auto *line = qobject_cast<QLineEdit *>(field))
        line->end(false);
}

void Form2::FieldLeft(QWidget *field)
{
    if (field == ui_->Text4
        && !EntryRules::GridLengthAllowed(ui_->Text4->text().size(), EntryRules::GridOf::OwnStation))
        QueueFieldMessage(field, EntryRules::BadGridMessage());
}

bool Form2::FieldsAreGood()
{
    if (FieldMessagePending())
        return false;
    if (ui_->Text1->text().isEmpty()) {
        dialogs().Message(this, u"La Señal Distintiva de la Estación es obligatiria!"_qs);
        GiveFocusTo(ui_->Text1);
        return false;
    }
    for (Field *field : {ui_->Text1, ui_->Text2}) {
        const QString call = field->text();
        if (call.isEmpty() || IsCallsignShape(call))
            continue;
        dialogs().Message(this, NotACallsignMessage(call), Dialogs::Icon::Critical);
        GiveFocusTo(field);
        return false;
    }
    return true;
}

void Form2::Save()
{
    if (!FieldsAreGood())
        return;
    SaveAndHide();
    if (isHidden())
        program_.windows.Main().StartTimer7();
}

void Form2::Cancel()
{
    if (program_.FirstRun) {
        hide();
        program_.end(0);
        return;
    }
    if (!FieldsAreGood())
        return;
    if (!program_.LoadingMainWindow)
        program_.windows.Main().StopTimer7();
    SaveAndHide();
}

void Form2::SaveAndHide()
{
    if (const Result<void> saved = SaveConfig(program_.logbook, program_.FirstRun); !saved) {
        dialogs().Message(this, saved.failure().text, Dialogs::Icon::Critical);
        // The settings hold for this run all the same; only a first run has nothing to go on with.
        if (program_.FirstRun)
            return;
    }
    program_.FirstRun = false;
    hide();
}

void Form2::ChooseAudio()
{
    const auto path = dialogs().OpenFile(
        this, u"Abrir Archivo de Audio ..."_qs, u"Audio (*.mp3 *.wav)"_qs, program_.logbook.Folder());
    if (!path)
        return;
    program_.logbook.configuration.ArcAudio = *path;
    ui_->Label6->setText(*path);
    ui_->Label6->setToolTip(*path);
}
