// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form6_Search.h"

#include "interchange/AdifWriter.h"
#include "logging/EntryRules.h"
#include "stats/ProvinceStatistics.h"
#include "ui/AdifExport.h"
#include "ui/FieldFilter.h"
#include "ui/Form14_Provinces.h"
#include "ui/Form1_Main.h"
#include "ui/Form5_EditQso.h"
#include "ui/ListUploads.h"
#include "ui/Program.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"
#include "ui_Form6_Search.h"

#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QScreen>

using EntryRules::KeyFilter;

namespace {

constexpr int blinkMilliseconds = 500;
constexpr int idColumn = 1, bandColumn = 3;
constexpr qsizetype exportBlock = 500;

std::optional<QChar> CallPatternKey(QChar key)
{
    return key == u'*' ? std::optional(key) : EntryRules::FilterKey(key, KeyFilter::Callsign);
}

constexpr int pictureSide = 128; // drawn large, so that it can be shown at any scale

// Shows how far a run is. `spare` leaves the bar that much short of its end while the work lasts.
Run::Progress ProgressOf(QProgressBar &bar, int spare = 0)
{
    return [&bar, spare](qint64 done, qint64 all) {
        bar.setMaximum(int(all) + spare);
        bar.setValue(int(std::min(done, all)));
    };
}

// The records of a search's rows, block by block.
AdifExport::Next RecordsOf(const SearchList &list, qsizetype &place, bool remarksAsQslMessage)
{
    return [&list, &place, remarksAsQslMessage]() -> Result<QByteArray> {
        QByteArray block;
        while (block.isEmpty() && place < list.Size()) {
            const Result<QList<QsoRow>> rows = list.Rows(place, exportBlock);
            if (!rows)
                return rows.failure();
            for (const QsoRow &row : *rows)
                if (row.id != 0) // one that has gone meanwhile
                    block += AdifWriter::SearchRecord(SearchList::Texts(row, 0), remarksAsQslMessage);
            place += rows->size();
        }
        return block;
    };
}

} // namespace

Form6::Form6(Program &program, QWidget *owner)
    : Window(u"Form6"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form6>())
    , model_(program.logbook.Store())
    , Timer1_(program.scheduler.Make(blinkMilliseconds, [this] { ui_->Image2->setVisible(ui_->Image2->isHidden()); }))
{
    ui_->setupUi(this);
    setWindowTitle(u"Exportar ..."_qs);
    ui_->ListView2->setModel(&model_);
    ui_->ListView2->SetColumnTwips(SearchModel::Widths(), {u"000000"_qs, u"000000"_qs, u"WW9WWWW"_qs});
    ui_->Image1->setPixmap(QIcon(u":/icons/bandera.svg"_qs).pixmap(pictureSide, pictureSide * 2 / 3));
    ui_->Image2->setPixmap(QIcon(u":/icons/satelite.svg"_qs).pixmap(pictureSide));
    for (QLabel *image : {ui_->Image1, ui_->Image2}) {
        QSizePolicy kept = image->sizePolicy();
        kept.setRetainSizeWhenHidden(true);
        image->setSizePolicy(kept);
    }
    ui_->Option4->setChecked(true);
    ui_->Command4->setEnabled(false);
    ArgentinesTicked(false);
    AttachFilters();
    Connect();
    ConnectUploads();
    resize(1280, 680);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form6::~Form6() = default;

void Form6::AttachFilters()
{
    for (QLineEdit *date : {ui_->Text1, ui_->Text2})
        FieldFilter::Attach(date, [](QChar key) { return EntryRules::FilterKey(key, KeyFilter::Date); });
    for (QLineEdit *call : {ui_->Text3, ui_->Text4, ui_->Text5})
        FieldFilter::Attach(call, CallPatternKey);
    ShowFocusOn({ui_->Text1, ui_->Text2, ui_->Text3, ui_->Text4, ui_->Text5, ui_->Text6, ui_->Text7, ui_->Text8});
}

void Form6::Connect()
{
    for (QLineEdit *field : {ui_->Text1, ui_->Text3, ui_->Text5, ui_->Text7})
        connect(field, &QLineEdit::textChanged, this, &Form6::UpdateClearButton);
    for (QCheckBox *box : {ui_->Check1, ui_->SOTA, ui_->POTA})
        connect(box, &QCheckBox::clicked, this, &Form6::UpdateClearButton);
    for (QCheckBox *box : {ui_->IOTA, ui_->MYSOTA, ui_->S2S, ui_->P2P})
        connect(box, &QCheckBox::clicked, this, [this] { ui_->Command4->setEnabled(true); });
    connect(ui_->Check1, &QCheckBox::toggled, this, &Form6::SatelliteTicked);
    connect(ui_->Check2, &QCheckBox::toggled, this, &Form6::ArgentinesTicked);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form6::RunSearch);
    connect(ui_->Command4, &QPushButton::clicked, this, &Form6::ClearSearchFilters);
    connect(ui_->Command1, &QPushButton::clicked, this, &Form6::ExportSearchResultsAdif);
    connect(ui_->Command5, &QPushButton::clicked, this, &Form6::ShowProvinces);
    ui_->ListView2->SortBy(this, [this](int column) { SortBy(column); });
    ui_->ListView2->OpenRows(this, [this](const QModelIndex &row) { EditRow(row); });
}

void Form6::ConnectUploads()
{
    uploads_ = new ListUploads(
        program_, *this, {ui_->Frame5, ui_->RichTextBox1, ui_->ProgressBar1, ui_->estado, ui_->detener, ui_->Command7});
    const auto row = [this](qsizetype place) -> std::optional<QStringList> {
        const QsoRow qso = model_.RowAt(int(place));
        return qso.id != 0 ? std::optional(SearchList::Texts(qso, place + 1)) : std::nullopt;
    };
    const std::pair<QPushButton *, ListUpload::Target> buttons[] = {
        {ui_->Command6, ListUpload::Target::Lda}, {ui_->Command8, ListUpload::Target::Eqsl}};
    for (const auto &[button, target] : buttons)
        connect(button, &QPushButton::clicked, this, [this, row, service = target] {
            if (!working_)
                uploads_->Upload(service, model_.List().Size(), row);
        });
    connect(uploads_, &ListUploads::Working, this, [this](bool working) {
        SetWorking(working);
        ui_->ProgressBar2->hide();
        if (!working)
            ShowCount();
    });
}

void Form6::ShowSearch()
{
    if (program_.windows.Main().QsoCountShown() == 0) {
        dialogs().Message(parentWidget(), u"No Hay QSOs para Buscar!"_qs);
        return;
    }
    ui_->Label5->setText(QStringList{ui_->Label5->text(), ui_->Text1->text(), ui_->Text2->text()}.join(u'@'));
    ui_->Text1->clear();
    ui_->Text2->clear();
    ui_->Text5->setFocus();
    program_.scheduler.WhenIdle([this] { FillSearchList(); });
    ShowModal();
    program_.windows.Main().ReloadPage();
}

void Form6::FillSearchList()
{
    slices_ = {};
    if (isVisible())
        Fill({}, ListStatement(program_.logbook.LogInUse));
}

void Form6::RunSearch()
{
    if (working_ || FieldMessagePending())
        return;
    ui_->Text7->setText(TidyBandFilter(ui_->Text7->text()));
    const SearchFilters filters = ReadFilters();
    Fill(filters, SearchStatement(program_.logbook.LogInUse, filters));
}

SearchFilters Form6::ReadFilters() const
{
    SearchFilters filters;
    filters.from = ui_->Text1->text().toUpper();
    filters.to = ui_->Text2->text().toUpper();
    filters.myCall = ui_->Text3->text().toUpper();
    filters.operatorCall = ui_->Text4->text().toUpper();
    filters.call = ui_->Text5->text().toUpper();
    filters.mode = ui_->Text6->text().toUpper();
    filters.band = ui_->Text7->text().toUpper();
    filters.remarks = ui_->Text8->text().toUpper();
    filters.satellite = ui_->Check1->isChecked();
    filters.argentinesOnly = ui_->Check2->isChecked();
    using Lda = SearchFilters::Lda;
    filters.lda = ui_->Option1->isChecked() ? Lda::NotUploaded
        : ui_->Option2->isChecked()         ? Lda::Uploaded
        : ui_->Option3->isChecked()         ? Lda::Confirmed
                                            : Lda::All;
    filters.POTA = ui_->POTA->isChecked();
    filters.IOTA = ui_->IOTA->isChecked();
    filters.SOTA = ui_->SOTA->isChecked();
    filters.MYSOTA = ui_->MYSOTA->isChecked();
    filters.S2S = ui_->S2S->isChecked();
    filters.P2P = ui_->P2P->isChecked();
    return filters;
}

void Form6::Fill(const SearchFilters &filters, const QString &statement)
{
    SetWorking(true);
    ui_->Label13->show();
    model_.Clear();
    ui_->Label6->setText(u"?"_qs);
    ui_->ListView2->header()->setSortIndicatorShown(false);
    const qint64 total = program_.windows.Main().QsoCountShown();
    SearchCursor cursor(program_.logbook.Store(), program_.logbook.LogInUse, filters, &slices_);
    Result<void> read;
    {
        qint64 looked = 0;
        Run run(program_.logbook.LongWork(), program_.processEvents, ProgressOf(*ui_->ProgressBar2, 1));
        std::vector<qint64> ids;
        while (!cursor.AtEnd() && run.Step(looked, total)) {
            read = cursor.Next(ids);
            if (!read)
                break;
            looked += SearchCursor::sliceRows;
            // The view lays out all its rows for each batch, so batches grow with the list.
            if (ids.size() * 2 >= size_t(model_.List().Size())) {
                model_.Append(ids);
                ids.clear();
            }
        }
        model_.Append(ids);
    }
    ui_->Label13->hide();
    SetWorking(false);
    ShowCount();
    ui_->Label7->setText(statement);
    ui_->Label7->setToolTip(statement);
    if (!read)
        dialogs().Message(this, read.failure().text, Dialogs::Icon::Critical);
    else if (cursor.badDate() != SearchCursor::BadDate::None)
        TellBadDate(cursor.badDate());
}

void Form6::TellBadDate(SearchCursor::BadDate which)
{
    QLineEdit *field = which == SearchCursor::BadDate::From ? ui_->Text1 : ui_->Text2;
    dialogs().Message(this, field->text() + u"\nformato de fecha no válido!"_qs);
    GiveFocusTo(field);
}

void Form6::ShowCount()
{
    const qsizetype count = model_.List().Size();
    ui_->Label6->setText(QString::number(count));
    for (QPushButton *action : {ui_->Command1, ui_->Command6, ui_->Command8})
        action->setEnabled(count > 0);
}

void Form6::SetWorking(bool working)
{
    // A field with the focus keeps it: only what could be started twice is greyed. A button lends it to the list
    // meanwhile and gets it back, unless the operator has gone elsewhere.
    if (working)
        startedFrom_ = CurrentField();
    working_ = working;
    for (QPushButton *action : {ui_->Command1, ui_->Command3, ui_->Command5, ui_->Command6, ui_->Command8})
        action->setEnabled(!working);
    ui_->Command4->setEnabled(!working);
    ui_->ProgressBar2->setVisible(working);
    if (!working && CurrentField() == FocusFallback())
        GiveFocusTo(startedFrom_);
}

void Form6::ClearSearchFilters()
{
    const QPointer<QWidget> from = CurrentField(); // with nothing left to empty the button is greyed before the work
    for (QLineEdit *field : {ui_->Text1, ui_->Text2, ui_->Text3, ui_->Text4, ui_->Text5, ui_->Text6, ui_->Text7})
        field->clear();
    ui_->Text8->clear();
    for (QCheckBox *box :
        {ui_->Check1, ui_->Check2, ui_->Check3, ui_->SOTA, ui_->IOTA, ui_->POTA, ui_->MYSOTA, ui_->S2S, ui_->P2P})
        box->setChecked(false);
    RunSearch();
    if (CurrentField() == FocusFallback())
        GiveFocusTo(from);
}

void Form6::UpdateClearButton()
{
    const bool filtered = !ui_->Text1->text().isEmpty() || !ui_->Text3->text().isEmpty()
        || !ui_->Text5->text().isEmpty() || !ui_->Text7->text().isEmpty() || ui_->Check1->isChecked()
        || ui_->SOTA->isChecked() || ui_->POTA->isChecked();
    ui_->Command4->setEnabled(filtered && !working_);
}

void Form6::ArgentinesTicked(bool on)
{
    for (QRadioButton *option : {ui_->Option1, ui_->Option2, ui_->Option3, ui_->Option4})
        option->setEnabled(on);
    ui_->Image1->setVisible(on);
}

void Form6::SatelliteTicked(bool on)
{
    ui_->Image2->show();
    if (on)
        Timer1_->Start();
    else
        Timer1_->Stop();
}

void Form6::SortBy(int column)
{
    if (working_)
        return;
    ascending_ = !ascending_;
    SetWorking(true);
    Run run(program_.logbook.LongWork(), program_.processEvents);
    const Result<void> sorted = model_.Sort(column == idColumn ? bandColumn : column, ascending_, run);
    SetWorking(false);
    ShowCount();
    if (!sorted && sorted.failure().kind != Failure::Kind::Cancelled)
        dialogs().Message(this, sorted.failure().text, Dialogs::Icon::Critical);
}

void Form6::EditRow(const QModelIndex &row)
{
    if (working_ || !row.isValid())
        return;
    if (program_.windows.Main().QsoCountShown() == 0) {
        dialogs().Message(this, u"No hay QSOs para exportar!"_qs);
        return;
    }
    editedRow_ = row.row();
    const QsoRow qso = model_.RowAt(editedRow_);
    if (qso.id != 0) {
        program_.windows.EditQso().OpenEditFromList(qso, Form5::EditCaller::Form6);
        return;
    }
    dialogs().Message(this, u"El QSO ya no está en el log: otro programa lo borró."_qs);
    RefreshEditedRow();
}

void Form6::ExportSearchResultsAdif()
{
    if (working_)
        return;
    const bool remarksAsQslMessage = dialogs().Ask(this, u"Desea usar el campo COMMENT como QSLMSG?"_qs);
    if (model_.List().Size() == 0) {
        dialogs().Message(this, u"No hay QSOs para exportar!"_qs);
        return;
    }
    AdifExport command(program_, this);
    const auto path = command.ChooseFile();
    if (!path)
        return;
    SetWorking(true);
    qsizetype place = 0;
    const SearchList &list = model_.List();
    const AdifExport::Next next = RecordsOf(list, place, remarksAsQslMessage);
    bool complete = false;
    {
        Run run(program_.logbook.LongWork(), program_.processEvents, ProgressOf(*ui_->ProgressBar2));
        complete = command.Write(*path, next, true, [&] { return run.Step(place, list.Size()); });
    }
    SetWorking(false);
    ShowCount();
    if (!complete)
        return;
    hide();
    AdifExport(program_, parentWidget()).AskToView(*path);
}

void Form6::ShowProvinces()
{
    if (working_)
        return;
    if (model_.List().Size() == 0) {
        dialogs().Message(this, u"No hay QSOs para mostrar!"_qs);
        return;
    }
    SetWorking(true);
    Result<ProvinceStatistics> statistics = ProvinceStatistics();
    {
        Run run(program_.logbook.LongWork(), program_.processEvents, ProgressOf(*ui_->ProgressBar2));
        statistics = StatisticsOfList(program_.logbook.Store(), model_.List(), run);
    }
    SetWorking(false);
    ShowCount();
    if (statistics)
        program_.windows.Provinces().ShowStatistics(
            *this, u"QSOs de la búsqueda en "_qs + program_.logbook.LogInUse, *statistics);
    else if (statistics.failure().kind != Failure::Kind::Cancelled)
        dialogs().Message(this, statistics.failure().text, Dialogs::Icon::Critical);
}

void Form6::RefreshEditedRow()
{
    model_.Refresh(editedRow_);
    ShowCount();
}

bool Form6::PreviewKey(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        program_.logbook.LongWork().CancelAll();
        return true;
    }
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return false;
    if (!event->isAutoRepeat())
        RunSearch();
    return true;
}

void Form6::FieldLeft(QWidget *field)
{
    if (field == ui_->Text7)
        ui_->Text7->setText(TidyBandFilter(ui_->Text7->text()));
    if (field != ui_->Text1 && field != ui_->Text2)
        return;
    if (const QString message = CheckSearchDate(static_cast<QLineEdit *>(field)->text()); !message.isEmpty())
        QueueFieldMessage(CurrentField(), message);
}

bool Form6::MayClose()
{
    program_.logbook.LongWork().CancelAll();
    return true;
}

QWidget *Form6::FocusFallback() const { return ui_->ListView2; }
