// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form13_Analysis.h"

#include "contest/Analysis.h"
#include "ui/Form8_ContestLogs.h"
#include "ui/Program.h"
#include "ui/SyncPanel.h"
#include "ui/TextViewer.h"
#include "ui/WindowScaler.h"
#include "ui_Form13_Analysis.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

Form13::Form13(Program &program, QWidget *owner)
    : Window(u"Form13"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form13>())
    , upload_(new SyncPanel(program, *this))
{
    ui_->setupUi(this);
    setWindowTitle(u"Análisis"_qs);
    layout()->addWidget(upload_);
    ShowParts(false);
    Form8::SetUpList(model_);
    ui_->ListView1->setModel(&model_);
    ui_->ListView1->SetColumnTwips({0, 4000, 1500, 750});
    ui_->ListView1->OpenRows(this, [this](const QModelIndex &row) { Analyse(row); });
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form13::~Form13() = default;

void Form13::ShowAnalysis()
{
    const Result<QList<ContestLog>> contests = ListContests(program_.logbook.Store());
    if (!contests) {
        dialogs().Message(parentWidget(), contests.failure().text, Dialogs::Icon::Critical);
        return;
    }
    contests_ = ContestsWithQsos(*contests);
    Form8::FillList(model_, contests_);
    ShowParts(false);
    Tell(contests_.isEmpty() ? NoContestToAnalyseText() : QString());
    ui_->ListView1->setCurrentIndex(model_.index(0, 1));
    ui_->ListView1->setFocus();
    ShowModal();
}

void Form13::ShowUpload(const SyncSelection &selection, const SyncRules::Account &account)
{
    ShowParts(true);
    upload_->Clear();
    program_.scheduler.WhenIdle([this, selection, account] {
        if (!isVisible())
            return;
        if (dialogs().Ask(this, selection.Question(), Dialogs::Icon::Question, Dialogs::Button::No))
            upload_->Begin(selection.qsos, account, [this] { hide(); });
        else
            hide();
    });
    ShowModal();
}

void Form13::ShowParts(bool upload)
{
    for (QWidget *part : std::initializer_list<QWidget *>{ui_->rotuloListView1, ui_->ListView1})
        part->setVisible(!upload);
    Tell({});
    upload_->setVisible(upload);
}

// With nothing to tell the list takes the room.
void Form13::Tell(const QString &text)
{
    ui_->Label13->setText(text);
    ui_->Label13->setVisible(!text.isEmpty());
}

void Form13::Analyse(const QModelIndex &row)
{
    if (working_)
        return;
    if (!row.isValid()) {
        Tell(NoContestToAnalyseText());
        return;
    }
    const QString contest = contests_[row.row()].name;
    Tell(AnalysingText(contest));
    working_ = true;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    Logbook &logbook = program_.logbook;
    Result<QString> report = QString();
    {
        Run run(logbook.LongWork(), program_.processEvents);
        report = AnalyseContest(logbook.Store(), logbook.Files(), logbook.Folder(), program_.dxcc, contest, run);
    }
    QGuiApplication::restoreOverrideCursor();
    working_ = false;
    if (report) {
        Tell(*report);
        ShowTextFile(program_, this, *report);
    } else {
        Tell({});
        if (report.failure().kind != Failure::Kind::Cancelled)
            dialogs().Message(this, report.failure().text, Dialogs::Icon::Critical);
    }
}

bool Form13::PreviewKey(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape && upload_->IsRunning())
        program_.logbook.LongWork().CancelAll();
    else if (event->key() == Qt::Key_Escape)
        close();
    else if (enter && !event->isAutoRepeat() && ui_->ListView1->isVisible())
        Analyse(ui_->ListView1->currentIndex());
    else
        return false;
    return true;
}

bool Form13::MayClose()
{
    program_.logbook.LongWork().CancelAll();
    return true;
}
