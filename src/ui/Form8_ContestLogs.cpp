// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form8_ContestLogs.h"

#include "ui/FieldFilter.h"
#include "ui/Form1_Main.h"
#include "ui/Program.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"
#include "ui_Form8_ContestLogs.h"

#include <QKeyEvent>
#include <QMenu>
#include <QScreen>

Form8::Form8(Program &program, QWidget *owner)
    : Window(u"Form8"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form8>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Logs de Concursos ..."_qs);
    SetUpList(model_);
    ui_->ListView1->setModel(&model_);
    ui_->ListView1->SetColumnTwips({0, 4000, 1500, 750});
    FieldFilter::Attach(ui_->Text1, {}, LetterCase::Upper);
    ShowFocusOn({ui_->Text1});
    ui_->ListView1->OpenRows(this, [this](const QModelIndex &row) { Take(row); });
    connect(ui_->ListView1, &QWidget::customContextMenuRequested, this, &Form8::ShowMenu);
    connect(ui_->Command1, &QPushButton::clicked, this, &Form8::Create);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form8::~Form8() = default;

void Form8::SetUpList(QStandardItemModel &model)
{
    model.setHorizontalHeaderLabels({u"Nombref"_qs, u"Nombre"_qs, u"Tipo"_qs, u"QSOSs"_qs});
}

void Form8::FillList(QStandardItemModel &model, const QList<ContestLog> &contests)
{
    model.removeRows(0, model.rowCount());
    for (const ContestLog &contest : contests)
        model.appendRow({new QStandardItem(u"nombre1"_qs), new QStandardItem(contest.name.trimmed()),
            new QStandardItem(contest.type), new QStandardItem(QString::number(contest.count))});
}

void Form8::FillContestList()
{
    const Result<QList<ContestLog>> contests = ListContests(program_.logbook.Store());
    if (!contests) {
        dialogs().Message(this, contests.failure().text, Dialogs::Icon::Critical);
        return;
    }
    contests_ = *contests;
    FillList(model_, contests_);
}

std::optional<ContestLog> Form8::Choose()
{
    chosen_.reset();
    ui_->Text1->clear();
    ui_->Option1->setChecked(true); // the type cannot be changed later, so it is not carried over
    FillContestList();
    if (model_.rowCount() > 0)
        ui_->ListView1->setCurrentIndex(model_.index(0, 1));
    ui_->ListView1->setFocus();
    ShowModal();
    return chosen_;
}

void Form8::Take(const QModelIndex &row)
{
    if (!row.isValid())
        return;
    chosen_ = contests_[row.row()];
    hide();
}

void Form8::Create()
{
    if (ui_->Text1->text().isEmpty()) {
        ui_->Text1->setFocus();
        return;
    }
    const QString name = CleanContestName(ui_->Text1->text());
    ui_->Text1->setText(name);
    LogStore &store = program_.logbook.Store();
    const Result<bool> exists = ContestExists(store, name);
    if (exists && *exists) {
        dialogs().Message(this, ContestExistsMessage(name));
        return;
    }
    const ContestLog contest{name, ui_->Option1->isChecked() ? SerieType::Incremental : SerieType::Fija, 0};
    const Result<qint64> created = exists ? CreateContest(store, contest.name, contest.type) : exists.failure();
    if (!created) {
        dialogs().Message(this, created.failure().text, Dialogs::Icon::Critical);
        return;
    }
    program_.windows.Main().RememberQso(*created);
    chosen_ = contest;
    hide();
}

void Form8::ShowMenu(const QPoint &at)
{
    const QModelIndex row = ui_->ListView1->indexAt(at);
    if (!row.isValid())
        return;
    QMenu mnuMenu(this);
    mnuMenu.setObjectName(u"mnuMenu"_qs);
    const QString caption = DeleteContestCaption(contests_[row.row()].name);
    QAction *mnuBorrar = mnuMenu.addAction(QString(caption).replace(u'&', u"&&"_qs));
    mnuBorrar->setObjectName(u"mnuBorrar"_qs);
    if (mnuMenu.exec(ui_->ListView1->viewport()->mapToGlobal(at)) == mnuBorrar)
        Remove(contests_[row.row()].name);
}

void Form8::Remove(const QString &name)
{
    if (!dialogs().Ask(this, DeleteContestQuestion(name), Dialogs::Icon::Question, Dialogs::Button::No))
        return;
    if (const Result<void> deleted = DeleteContest(program_.logbook.Store(), name); !deleted)
        dialogs().Message(this, deleted.failure().text, Dialogs::Icon::Critical);
    FillContestList();
}

bool Form8::PreviewKey(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        close();
    else if (enter && ui_->ListView1->hasFocus() && !event->isAutoRepeat())
        Take(ui_->ListView1->currentIndex());
    else if (enter && ui_->Text1->hasFocus() && !event->isAutoRepeat())
        Create();
    else
        return false;
    return true;
}
