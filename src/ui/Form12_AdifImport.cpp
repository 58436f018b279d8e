// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form12_AdifImport.h"

#include "core/Schema.h"
#include "ui/Form1_Main.h"
#include "ui/Form21_PhoneImportHelp.h"
#include "ui/Program.h"
#include "ui/TextWindow.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"
#include "ui_Form12_AdifImport.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QScreen>

using AdifImport::Trouble;

namespace {

// The number of lines is not known beforehand: the bar goes round once in so many.
constexpr int linesARound = 1000;

const QString stationMark = u"<STATION_CALLSIGN:"_qs;

QString Reason(Trouble trouble)
{
    switch (trouble) {
    case Trouble::Date:
        return u"fecha no válida"_qs;
    case Trouble::Time:
        return u"hora no válida"_qs;
    case Trouble::Reports:
        return u"sin reportes"_qs;
    case Trouble::BandAndFrequency:
        return u"sin banda ni frecuencia"_qs;
    case Trouble::Incomplete:
        return u"falta la señal, la fecha o la hora"_qs;
    }
    return {};
}

} // namespace

Form12::Form12(Program &program, QWidget *owner)
    : Window(u"Form12"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form12>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Importar ADIF ..."_qs);
    // These show what stands in a foreign file, and that is text, whatever it looks like.
    for (QLabel *label : {ui_->Label2, ui_->Label3, ui_->Label4, ui_->Label7, ui_->Label8})
        label->setTextFormat(Qt::PlainText);
    Connect();
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form12::~Form12() = default;

void Form12::Connect()
{
    connect(ui_->Command1, &QPushButton::clicked, this, &Form12::Open);
    connect(ui_->Command5, &QPushButton::clicked, this, &Form12::Open);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form12::LoadStagedRows);
    connect(ui_->Command4, &QPushButton::clicked, this, [this] { ui_->Command3->setEnabled(true); });
    connect(
        ui_->Command6, &QPushButton::clicked, this, [this] { program_.windows.PhoneImportHelp(*this).ShowModal(); });
    connect(ui_->Detalle, &QPushButton::clicked, this, &Form12::ShowDetail);
    const std::pair<QCheckBox *, QCheckBox *> pairs[] = {{ui_->Check1, ui_->Check2}, {ui_->Check2, ui_->Check1}};
    for (const auto &[clicked, partner] : pairs) {
        QCheckBox *other = partner;
        connect(clicked, &QCheckBox::clicked, this, [this, other] {
            if (!other->isChecked())
                return;
            dialogs().Message(this, u"No puede ser SOTA y POTA simultaneamente!"_qs, Dialogs::Icon::Information);
            other->setChecked(false);
        });
    }
}

void Form12::ShowImport()
{
    ui_->Command1->setFocus();
    ShowModal();
}

// Who stopped the work by closing the window knows it.
void Form12::Tell(const Failure &failure, const QString &before)
{
    if (failure.kind != Failure::Kind::Cancelled)
        dialogs().Message(this, before + failure.text, Dialogs::Icon::Critical);
}

void Form12::ShowActivity(const QString &text) { ui_->Label8->setText(text); }

void Form12::ClearLabels()
{
    for (QLabel *label :
        {ui_->Label2, ui_->Label3, ui_->Label4, ui_->Label5, ui_->Label6, ui_->Label7, ui_->Label9, ui_->Label10})
        label->clear();
    for (QListWidget *list : {ui_->List1, ui_->List2, ui_->List3})
        list->clear();
    records_ = {};
    writtenBy_.clear();
    typedStation_.clear();
    prepared_.clear();
    newOnes_ = repeats_ = 0;
    troubles_.clear();
    details_.clear();
    ui_->Detalle->setEnabled(false);
}

void Form12::Open()
{
    if (ImportBusy_)
        return;
    LogStore &store = program_.logbook.Store();
    ui_->Command3->setEnabled(false);
    ClearLabels();
    ImportBusy_ = true;
    ImportCancel_ = false;
    const Result<void> upgraded = UpgradeSchema(store);
    const Result<void> cleared = upgraded ? AdifStaging::ClearStaging(store) : upgraded;
    if (!cleared) {
        Tell(cleared.failure());
        Finish();
        return;
    }
    const auto path = dialogs().OpenFile(this, u"Abrir Archivo de ADIF ..."_qs,
        u"ADIF (*.adi *.adif *.ADI *.ADIF);;Todos (*)"_qs, program_.logbook.Folder());
    if (path && !path->isEmpty())
        ReadFile(*path);
    Finish();
}

// The end of "Abrir", early or not.
void Form12::Finish()
{
    ShowActivity({});
    ui_->ProgressBar1->setValue(0);
    ui_->ProgressBar1->setMaximum(100);
    ImportBusy_ = false;
    ui_->Command1->setEnabled(true);
    ui_->Detalle->setEnabled(!details_.isEmpty() || !records_.otherTags.isEmpty());
}

void Form12::ReadFile(const QString &path)
{
    ui_->Label3->setText(path);
    ui_->Label3->setToolTip(path.toHtmlEscaped());
    ui_->Label2->setText(QFileInfo(path).fileName());
    ui_->Command1->setEnabled(false);
    ui_->ProgressBar1->setMaximum(linesARound);
    Run run(program_.logbook.LongWork(), program_.processEvents,
        [this](qint64 done, qint64 total) { ui_->ProgressBar1->setValue(int(total > 0 ? done : done % linesARound)); });
    if (!RepairAndRead(path, run) || !HasContacts(path) || !AskForStation())
        return;
    ParseAdifRecords(run);
}

bool Form12::RepairAndRead(const QString &path, Run &run)
{
    FileSystem &files = program_.logbook.Files();
    const QString stamp = program_.logbook.ClockInUse().Now().toString(u"hhmmss");
    const QString modified = program_.logbook.PathOf(u"modificado_"_qs + stamp);
    QString copy = path + u'_' + stamp;
    const auto failed = [&](const Failure &failure) {
        // What is half done would only take room that the log may need.
        files.Remove(copy);
        files.Remove(modified);
        Tell(failure);
        return false;
    };
    const auto show = [this](const QString &text) { ShowActivity(text); };
    Result<bool> split = AdifFile::SplitSingleLineFile(files, path, copy, run, show);
    if (!split && (split.failure().kind == Failure::Kind::ReadOnly || split.failure().kind == Failure::Kind::Full)) {
        // A disc, a full stick or somebody else's folder: the copy goes to our own.
        files.Remove(copy);
        copy = program_.logbook.PathOf(QFileInfo(path).fileName() + u'_' + stamp);
        split = AdifFile::SplitSingleLineFile(files, path, copy, run, show);
    }
    if (!split)
        return failed(split.failure());
    ShowActivity(u"Multi renglón2 ..."_qs);
    const auto repaired = AdifFile::JoinRecordLines(
        files, *split ? copy : path, modified, run, show, [this](qint64 line, const QString &reason) {
            details_ << (line > 0 ? u"Línea %1: %2"_qs.arg(line).arg(reason) : reason);
        });
    if (!repaired)
        return failed(repaired.failure());
    ui_->Label5->setText(QString::number(repaired->lines));
    writtenBy_ = repaired->program;
    ui_->Label4->setText(writtenBy_);
    ShowActivity(u"Volcando ..."_qs);
    auto records = AdifFile::ReadRecords(files, *repaired, run, show);
    if (!records)
        return failed(records.failure());
    records_ = *std::move(records);
    if (records_.records.isEmpty() && records_.withCall > 0 && !records_.tooMany)
        Rejoin(path);
    ShowActivity(u"Cargando ..."_qs);
    return true;
}

// A file whose records could not be told apart is written anew; nothing reads it, so it does not stay.
void Form12::Rejoin(const QString &path)
{
    ShowActivity(u"Rehaciendo ..."_qs);
    FileSystem &files = program_.logbook.Files();
    const QString target = path + u'_';
    if (files.Exists(target)) // not over a file of somebody else's
        return;
    static_cast<void>(AdifFile::RejoinRecords(files, path, target));
    files.Remove(target);
}

bool Form12::HasContacts(const QString &path)
{
    if (records_.tooMany) {
        dialogs().Message(
            this, u"El archivo:\n"_qs + path + u"\ntiene mas de 10.000 QSOs!"_qs, Dialogs::Icon::Critical);
        return false;
    }
    ui_->Label6->setText(QString::number(records_.records.size()));
    ui_->List1->addItems(records_.stations);
    QString stations;
    for (const QString &station : records_.stations)
        stations += station + u' ';
    ui_->Label7->setText(stations);
    ui_->Label7->setToolTip(stations.toHtmlEscaped());
    if (!records_.records.isEmpty())
        return true;
    dialogs().Message(this, u"El Archivo "_qs + ui_->Label2->text() + u" no tiene QSOss!"_qs);
    return false;
}

bool Form12::AskForStation()
{
    if (!records_.stations.isEmpty())
        return true;
    const QString name = ui_->Label2->text();
    if (!dialogs().Ask(
            this, u"El Archivo "_qs + name + u" no tiene el campo <STATION_CALLSIGN:\nContinua con la carga?"_qs))
        return false;
    const auto answer = dialogs().Input(this, u"Ingrese su Señal Distintiva"_qs, {}, u"SD"_qs);
    typedStation_ = answer.value_or(QString()).trimmed().toUpper();
    if (typedStation_.isEmpty()) {
        dialogs().Message(this, u"sin Señal Distintiva se anula la carga de "_qs + name + u" !"_qs);
        return false;
    }
    ui_->List2->addItem(stationMark + typedStation_);
    return true;
}

void Form12::ParseAdifRecords(Run &run)
{
    ShowActivity(u"Procesando ..."_qs);
    ui_->Label9->setText(u"0"_qs);
    ui_->Label10->setText(u"0"_qs);
    const AdifImport::Settings settings{
        writtenBy_.contains(u"LdA"), typedStation_, ui_->Check1->isChecked(), ui_->Check2->isChecked()};
    const qsizetype count = records_.records.size();
    ui_->ProgressBar1->setMaximum(int(count));
    for (qsizetype number = 0; number < count; ++number) {
        const QByteArray &record = records_.records[number];
        const AdifImport::Contact contact = AdifImport::ParseRecord(record, settings);
        Parsed(number, contact);
        if (ImportCancel_ && CancelAsked())
            return;
        if (!contact.dropped) {
            const auto staged = AdifStaging::Prepare(program_.logbook.Store(), program_.logbook.LogInUse, contact.row);
            if (!staged) {
                Tell(staged.failure());
                return;
            }
            ++(staged->IsNew() ? newOnes_ : repeats_);
            prepared_ << *staged;
        }
        if (number % 64 == 0 || number + 1 == count) {
            ui_->Label9->setText(QString::number(newOnes_));
            ui_->Label10->setText(QString::number(repeats_));
            ui_->ProgressBar1->setValue(int(number));
        }
        if (!run.Step(number, count)) {
            StageSoFar();
            return;
        }
    }
    if (!StageSoFar())
        return;
    ui_->List2->addItems(AdifImport::TroubleLines(troubles_));
    ui_->Command3->setEnabled(true);
}

// Counts what is wrong with a record, and keeps it for the operator.
void Form12::Parsed(qsizetype number, const AdifImport::Contact &contact)
{
    QStringList reasons = contact.changes;
    for (const Trouble trouble : contact.troubles) {
        ++troubles_[trouble];
        reasons << Reason(trouble);
    }
    if (reasons.isEmpty())
        return;
    details_ << u"Línea %1, %2: %3%4"_qs.arg(records_.lines.value(number))
                    .arg(contact.row.Estacion.isEmpty() ? u"sin señal"_qs : contact.row.Estacion,
                        contact.dropped ? u"descartado, "_qs : QString(), reasons.join(u"; "_qs));
}

bool Form12::StageSoFar()
{
    const Result<void> staged = AdifStaging::StageRows(program_.logbook.Store(), prepared_);
    if (staged)
        prepared_.clear();
    else
        Tell(staged.failure());
    return bool(staged);
}

// Esc came: what is done so far is kept, and the operator decides.
bool Form12::CancelAsked()
{
    ImportCancel_ = false;
    if (!StageSoFar())
        return true;
    if (!dialogs().Ask(this, u"Cancela el proceso?"_qs, Dialogs::Icon::Question, Dialogs::Button::No))
        return false;
    ImportBusy_ = false;
    hide();
    return true;
}

void Form12::LoadStagedRows()
{
    if (ImportBusy_)
        return;
    const QString repeats = ui_->Label10->text();
    if (repeats.toInt() != 0)
        ReplaceDuplicates_ = dialogs().Ask(this,
            u"de "_qs + ui_->Label6->text() + u" QSOs hay "_qs + repeats
                + u" DUPlLICADOS\n\nLos desea Reemplazar?\n\nNota:\nSe consideran DUPLICADOS los QSOs en un entorno de 10 minutos"_qs,
            Dialogs::Icon::Question, Dialogs::Button::No);
    ui_->Command1->setEnabled(false);
    ui_->Command3->setEnabled(false);
    ImportBusy_ = true;
    ShowActivity(u"Cargando ..."_qs);
    const auto rows = AdifStaging::StagedRows(program_.logbook.Store());
    const bool loaded = rows ? LoadRows(*rows) : (Tell(rows.failure()), false);
    ImportBusy_ = false;
    ImportCancel_ = false;
    ShowActivity({});
    ui_->Command1->setEnabled(true);
    if (!loaded) {
        // What is staged is still there: it can be loaded once the trouble is over.
        ui_->Command3->setEnabled(true);
        return;
    }
    program_.windows.Main().LoadLogPage(1);
    hide();
}

// The rows are gone through while Esc is listened to, and then written in one transaction: all, or those up to a
// cancel.
bool Form12::LoadRows(const QList<AdifStaging::Staged> &rows)
{
    ui_->ProgressBar1->setMaximum(int(std::max<qsizetype>(1, rows.size())));
    qsizetype count = 0;
    {
        Run run(program_.logbook.LongWork(), program_.processEvents);
        for (; count < rows.size(); ++count) {
            if (ImportCancel_) {
                ImportCancel_ = false;
                if (dialogs().Ask(this, u"Cancela el proceso?"_qs, Dialogs::Icon::Question, Dialogs::Button::No))
                    break;
            }
            ui_->ProgressBar1->setValue(int(count));
            if (!run.Step(count, rows.size()))
                break;
        }
    }
    const auto loaded =
        AdifStaging::LoadRows(program_.logbook.Store(), program_.logbook.LogInUse, rows, count, ReplaceDuplicates_);
    if (!loaded)
        Tell(loaded.failure(), u"Los QSOs no fueron cargados: el log quedó como estaba.\n\n"_qs);
    else if (loaded->lastId)
        program_.windows.Main().RememberQso(*loaded->lastId);
    return bool(loaded);
}

void Form12::ShowDetail()
{
    QString text =
        details_.isEmpty() ? u"Todos los registros se tomaron sin cambios.\n"_qs : details_.join(u'\n') + u'\n';
    if (!records_.otherTags.isEmpty()) {
        text += u"\nCampos del archivo que el log no guarda:\n"_qs;
        for (auto tag = records_.otherTags.begin(); tag != records_.otherTags.end(); ++tag)
            text += u"  %1: %2 veces\n"_qs.arg(QString::fromLatin1(tag.key())).arg(tag.value());
    }
    if (!detail_)
        detail_ = std::make_unique<TextWindow>(u"DetalleImportacion"_qs, dialogs(), this);
    detail_->ShowText(u"Detalle de la importación"_qs, text);
}

bool Form12::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    ImportCancel_ = true;
    return true;
}

bool Form12::MayClose()
{
    if (!ImportBusy_ && !ImportCancel_)
        return true;
    const bool cancel = dialogs().Ask(this, u"Cancela el proceso?"_qs, Dialogs::Icon::Question, Dialogs::Button::No);
    ImportCancel_ = false;
    if (cancel)
        program_.logbook.LongWork().CancelAll();
    return cancel;
}
