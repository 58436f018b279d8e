// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form9_CabrilloHeader.h"

#include "interchange/CabrilloCheck.h"
#include "logging/EntryRules.h"
#include "ui/FieldFilter.h"
#include "ui/Program.h"
#include "ui/TextViewer.h"
#include "ui/WindowScaler.h"
#include "ui_Form9_CabrilloHeader.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QScreen>

Form9::Form9(Program &program, QWidget *owner)
    : Window(u"Form9"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form9>())
{
    ui_->setupUi(this);
    for (const auto &[list, choice] : Lists())
        list->addItems(choice.items);
    FieldFilter::Attach(
        ui_->Text1, [](QChar key) { return EntryRules::FilterKey(key, EntryRules::KeyFilter::Callsign); });
    ui_->Text8->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    ShowFocusOn({ui_->Text1, ui_->Text2, ui_->Text3, ui_->Text4, ui_->Text5, ui_->Text6, ui_->Text7, ui_->Text9});
    const auto operators = [this](const QString &category) {
        ui_->Text9->setEnabled(CabrilloWriter::HasOperators(category));
        ui_->rotuloText9->setEnabled(CabrilloWriter::HasOperators(category));
    };
    connect(ui_->Combo1, &QComboBox::currentTextChanged, this, operators);
    operators(ui_->Combo1->currentText());
    connect(ui_->Command1, &QPushButton::clicked, this, &Form9::WriteCabrilloFile);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form9::~Form9() = default;

std::array<std::pair<QComboBox *, CabrilloWriter::Choice>, 5> Form9::Lists() const
{
    const CabrilloWriter::Choices &choices = CabrilloWriter::HeaderChoices();
    return {{{ui_->Combo1, choices.category}, {ui_->Combo2, choices.power}, {ui_->Combo3, choices.band},
        {ui_->Combo4, choices.mode}, {ui_->Combo5, choices.overlay}}};
}

void Form9::ShowHeader(const QString &contest, const CabrilloWriter::QsoLines &lines, const QList<QsoRow> &rows)
{
    rows_ = rows;
    CabrilloWriter::Header header;
    CabrilloWriter::LoadPersonalData(program_.logbook.Files(), program_.logbook.PathOf(u"datos.cbr"_qs), header);
    ShowPersonalData(header);
    for (const auto &[list, choice] : Lists())
        list->setCurrentText(choice.start);
    ui_->Text1->clear();
    ui_->Text9->clear();
    ui_->Text3->setText(contest);
    ui_->Text8->setPlainText(lines.text);
    setWindowTitle(CabrilloWriter::HeaderTitle(contest, lines.rows.size()));
    ui_->Text1->setFocus();
    ShowModal();
}

void Form9::ShowPersonalData(const CabrilloWriter::Header &header)
{
    ui_->Text2->setText(header.name);
    ui_->Text4->setText(header.address1);
    ui_->Text5->setText(header.address2);
    ui_->Text6->setText(header.address3);
    ui_->Text7->setText(header.email);
}

CabrilloWriter::Header Form9::ReadHeader() const
{
    return {ui_->Text1->text(), ui_->Text3->text(), ui_->Combo1->currentText(), ui_->Combo2->currentText(),
        ui_->Combo3->currentText(), ui_->Combo4->currentText(), ui_->Combo5->currentText(), ui_->Text9->text(),
        ui_->Text2->text(), ui_->Text4->text(), ui_->Text5->text(), ui_->Text6->text(), ui_->Text7->text()};
}

void Form9::WriteCabrilloFile()
{
    const CabrilloWriter::Header header = ReadHeader();
    FileSystem &files = program_.logbook.Files();
    if (const Result<void> saved =
            CabrilloWriter::SavePersonalData(files, program_.logbook.PathOf(u"datos.cbr"_qs), header);
        !saved)
        dialogs().Message(this, saved.failure().text);
    if (const auto missing = CabrilloWriter::FirstMissing(header)) {
        dialogs().Message(this, missing->text);
        GiveFocusTo(missing->field == &CabrilloWriter::Header::callsign ? ui_->Text1 : ui_->Text2);
        return;
    }
    ui_->Text8->setPlainText(CabrilloWriter::HeaderText(header) + ui_->Text8->toPlainText());
    QString path;
    if (!ChooseFile(path))
        return;
    const QString text = CabrilloWriter::FileText(ui_->Text8->toPlainText());
    if (const Result<void> written = CabrilloWriter::WriteFile(files, path, text); !written) {
        dialogs().Message(this, written.failure().text, Dialogs::Icon::Critical);
        return;
    }
    CheckWrittenFile(path);
    const QString question = path + u"\nGuardado!\n\nDesea verlo?"_qs;
    if (dialogs().Ask(this, question, Dialogs::Icon::Exclamation, Dialogs::Button::No))
        ShowTextFile(program_, this, path);
    hide();
}

// After a No to overwriting, the dialog comes again.
bool Form9::ChooseFile(QString &path)
{
    while (true) {
        const auto chosen =
            dialogs().SaveFile(this, u"Exportar a Cabrillo ..."_qs, u"CABRILLO (*.log)"_qs, program_.logbook.Folder());
        if (!chosen || chosen->isEmpty())
            return false;
        path = QFileInfo(*chosen).suffix().isEmpty() ? QString(*chosen + u".log") : *chosen;
        const QString question = u"El archivo \n"_qs + path + u"\nya existe!\n\nsobregraba?"_qs;
        if (!program_.logbook.Files().Exists(path)
            || dialogs().Ask(this, question, Dialogs::Icon::Question, Dialogs::Button::No))
            return true;
    }
}

void Form9::CheckWrittenFile(const QString &path)
{
    const auto report = CabrilloCheck::CheckFile(program_.logbook.Files(), path, rows_);
    if (!report)
        dialogs().Message(this, report.failure().text, Dialogs::Icon::Critical);
    else if (!report->Agrees())
        dialogs().Message(
            this, u"El archivo no coincide con el concurso. Revíselo antes de enviarlo.\n\n"_qs + report->Text());
}

bool Form9::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    close();
    return true;
}
