// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form15_Backup.h"

#include "interchange/AdifWriter.h"
#include "ui/AdifExport.h"
#include "ui/Form1_Main.h"
#include "ui/Program.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"
#include "ui_Form15_Backup.h"

#include <QKeyEvent>
#include <QScreen>

namespace {

constexpr qint64 importable = 10000;
constexpr int countColumn = 1;
constexpr int sortRole = Qt::UserRole; // the place in alphabetical order, which is not that of the letters' codes
constexpr int rowsABlock = 500;

// All contacts in the order of the table, a block at a time; rows without an own call are left out.
class BackupRows {
public:
    explicit BackupRows(LogStore &store)
        : store_(store)
    {
    }

    Result<QByteArray> Next()
    {
        return store_.Read([this](Session &session) {
            Query query = session.Prepare(
                u"SELECT " + QsoColumns::SelectList() + u" FROM Tabla1 WHERE id>? AND MyCall<>'' ORDER BY id LIMIT ?");
            query.Bind(1, lastId_).Bind(2, qint64(rowsABlock));
            QByteArray block;
            while (query.Next()) {
                const QsoRow row = query.Row();
                lastId_ = row.id;
                block += AdifWriter::BackupRecord(row);
                ++done_;
            }
            return block;
        });
    }
    qint64 Done() const { return done_; }

private:
    LogStore &store_;
    qint64 lastId_ = std::numeric_limits<qint64>::min();
    qint64 done_ = 0;
};

} // namespace

Form15::Form15(Program &program, QWidget *owner)
    : Window(u"Form15"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form15>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Back Up ..."_qs);
    model_.setHorizontalHeaderLabels({u"Log"_qs, u"QSOs"_qs});
    model_.setSortRole(sortRole);
    ui_->ListView1->setModel(&model_);
    ui_->ListView1->SetColumnTwips({5000, 1300});
    ui_->ListView1->SortBy(this, [this](int column) { SortBy(column); });
    connect(ui_->Command1, &QPushButton::clicked, this, &Form15::ExportAllLogsAdif);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form15::~Form15() = default;

void Form15::OpenBackupWindow()
{
    const Result<QList<LogEntry>> logs = ListLogs(program_.logbook.Store());
    if (!logs) {
        dialogs().Message(parentWidget(), logs.failure().text, Dialogs::Icon::Critical);
        return;
    }
    FillList(*logs);
    ui_->ProgressBar1->setValue(0);
    ui_->Command1->setEnabled(true);
    ui_->ListView1->setFocus();
    if (total_ > importable)
        program_.scheduler.WhenIdle([this] {
            dialogs().Message(this,
                u"El ADIF tiene mas de 10.000 QSOs!\nNo podrá ser importado a Tordillo Compact, si para\n"
                "algún otro logger. Haga BackUp de la base."_qs);
        });
    ShowModal();
}

void Form15::FillList(const QList<LogEntry> &logs)
{
    ui_->List1->clear();
    model_.removeRows(0, model_.rowCount());
    total_ = 0;
    for (const LogEntry &entry : logs) {
        if (entry.name.isEmpty())
            continue;
        ui_->List1->addItem(LogListText(entry));
        auto *name = new QStandardItem(entry.name);
        name->setData(model_.rowCount(), sortRole);
        model_.appendRow({name, new QStandardItem(QString::number(entry.count))});
        total_ += entry.count;
    }
    ui_->Label1->setText(QString::number(model_.rowCount()));
    ui_->Label2->setText(QString::number(total_));
}

void Form15::SortBy(int column)
{
    ascending_ = !ascending_;
    // The numbers are no texts to sort by: a click on them changes the direction and nothing else.
    if (column != countColumn)
        model_.sort(column, ascending_ ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void Form15::ExportAllLogsAdif()
{
    ui_->ProgressBar1->setValue(0);
    ui_->ProgressBar1->setMaximum(int(std::max<qint64>(1, total_)));
    AdifExport command(program_, this);
    const auto path = command.ChooseFile();
    if (!path)
        return;
    writing_ = true;
    ui_->Command1->setEnabled(false);
    BackupRows rows(program_.logbook.Store());
    bool complete = false;
    {
        Run run(program_.logbook.LongWork(), program_.processEvents,
            [this](qint64 done, qint64) { ui_->ProgressBar1->setValue(int(done)); });
        complete = command.Write(
            *path, [&] { return rows.Next(); }, true, [&] { return run.Step(rows.Done()); });
    }
    writing_ = false;
    ui_->Command1->setEnabled(true);
    if (!complete)
        return;
    hide();
    AdifExport(program_, parentWidget()).AskToView(*path);
}

bool Form15::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    if (writing_)
        program_.logbook.LongWork().CancelAll();
    else
        close();
    return true;
}

bool Form15::MayClose()
{
    if (writing_)
        program_.logbook.LongWork().CancelAll();
    return true;
}
