// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/LogListPanel.h"

#include "core/Conversions.h"
#include "logging/EntryRules.h"
#include "ui/Dialogs.h"
#include "ui/FieldFilter.h"
#include "ui/Program.h"
#include "ui/Window.h"
#include "ui_LogListPanel.h"

namespace {

// Room for the caption of an ordinary log; a longer one is cut where the window has no more, and does not widen it.
constexpr int captionWidth = 320;

constexpr int processingSteps = 500;

} // namespace

LogListPanel::LogListPanel(Program &program, QWidget *parent)
    : QWidget(parent)
    , program_(program)
    , ui_(std::make_unique<Ui::LogListPanel>())
{
    ui_->setupUi(this);
    ui_->ListView2->setModel(&model_);
    ui_->ListView2->SetColumnTwips(LogListModel::Widths(), {{}, {}, u"WW9WWWW"_qs});
    // A click on a row or a title must not take the keyboard away from the call.
    ui_->ListView2->setFocusPolicy(Qt::TabFocus);
    FieldFilter::Attach(
        ui_->Text3, [](QChar key) { return EntryRules::FilterKey(key, EntryRules::KeyFilter::Digits); });
    Window::ShowFocusOn({ui_->Text3});
    ui_->Label6->setMinimumWidth(captionWidth);
    QSizePolicy kept = ui_->ListView2->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    ui_->ListView2->setSizePolicy(kept);
    ui_->ListView2->SortBy(this, [this](int column) { model_.SortByColumn(column); });
    connect(ui_->anterior, &QPushButton::clicked, this, &LogListPanel::FirstPage);
    connect(ui_->menos, &QPushButton::clicked, this, &LogListPanel::PageUp);
    connect(ui_->mas, &QPushButton::clicked, this, &LogListPanel::PageDown);
    connect(ui_->ultima, &QPushButton::clicked, this, &LogListPanel::LastPage);
    connect(ui_->Command8, &QPushButton::clicked, this, &LogListPanel::GoToPage);
    connect(ui_->Command11, &QPushButton::clicked, this, [this] {
        ReloadPage();
        Q_EMIT PageMoved();
    });
    ui_->ListView2->OpenRows(this, [this](const QModelIndex &index) { Q_EMIT QsoChosen(model_.RowAt(index.row())); });
    ShowPaging();
}

LogListPanel::~LogListPanel() = default;

void LogListPanel::LoadLogPage(qint64 firstRow)
{
    Logbook &logbook = program_.logbook;
    logbook.LogInUse.remove(u'\'');
    const Result<LogPage> page = ReadLogPage(logbook.Store(), logbook.LogInUse, firstRow);
    if (!page) {
        paging_ = shown_;
        Q_EMIT PageFailed(page.failure());
        return;
    }
    count_ = page->count;
    paging_.Loaded(page->count, firstRow);
    shown_ = paging_;
    model_.SetRows(page->rows);
    const QString caption = LogCaption(logbook.LogInUse, count_);
    ui_->Label6->setText(caption);
    ui_->Label6->setToolTip(caption);
    ShowPaging();
}

void LogListPanel::ReloadPage()
{
    LoadLogPage(paging_.PageFirstRow);
    if (paging_.PageNumber > 1 && count_ > 0 && paging_.PageFirstRow > count_) {
        paging_.Previous();
        LoadLogPage(paging_.PageFirstRow);
    } else if (count_ == 0 && paging_.PageFirstRow != 1) {
        LoadLogPage(1);
    }
}

void LogListPanel::BeginProcessing()
{
    ui_->Label6->setText(u"Procesando ..."_qs);
    ui_->ListView2->hide();
    ui_->ProgressBar1->setMaximum(processingSteps);
    ui_->ProgressBar1->setValue(0);
    ui_->ProgressBar1->show();
}

void LogListPanel::ShowProcessed(qint64 done, qint64 total)
{
    ui_->ProgressBar1->setValue(int(done * processingSteps / std::max<qint64>(1, total)));
}

void LogListPanel::EndProcessing()
{
    ui_->ProgressBar1->hide();
    ui_->ListView2->show();
    ui_->Label6->setText(LogCaption(program_.logbook.LogInUse, count_));
}

void LogListPanel::ShowPaging()
{
    ui_->txt_pagina->setText(QString::number(paging_.PageNumber));
    ui_->txt_total->setText(QString::number(std::max<qint64>(1, paging_.PageCount)));
    const Paging::Buttons enabled = paging_.Enabled(count_);
    ui_->anterior->setEnabled(enabled.first);
    ui_->menos->setEnabled(enabled.previous);
    ui_->mas->setEnabled(enabled.next);
    ui_->ultima->setEnabled(enabled.last);
}

void LogListPanel::Move(void (Paging::*step)())
{
    (paging_.*step)();
    ReloadPage();
    Q_EMIT PageMoved();
}

void LogListPanel::PageDown()
{
    if (ui_->mas->isEnabled())
        Move(&Paging::Next);
}

void LogListPanel::PageUp()
{
    if (ui_->menos->isEnabled())
        Move(&Paging::Previous);
}

void LogListPanel::FirstPage()
{
    if (ui_->anterior->isEnabled())
        Move(&Paging::First);
}

void LogListPanel::LastPage()
{
    if (!ui_->ultima->isEnabled())
        return;
    paging_.Last(count_);
    ReloadPage();
    Q_EMIT PageMoved();
}

void LogListPanel::GoToPage()
{
    const QString typed = ui_->Text3->text();
    const qint64 wanted = Conversions::LeadingInteger(typed);
    const qint64 page = paging_.GoTo(wanted);
    if (page != wanted)
        ui_->Text3->setText(QString::number(page));
    ReloadPage();
    Q_EMIT PageMoved();
}
