// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ContestLogView.h"

#include "contest/ContestEntry.h"
#include "contest/ContestLookup.h"
#include "ui/Dialogs.h"
#include "ui/Form7_EditContestQso.h"
#include "ui/Program.h"
#include "ui/Window.h"
#include "ui/Windows.h"
#include "ui_Form4_Contest.h"

namespace {

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

ContestLogView::ContestLogView(Program &program, Ui::Form4 &ui, Window &window)
    : QObject(&window)
    , program_(program)
    , ui_(ui)
    , window_(window)
    , log_(ContestListModel::Columns::Log)
    , duplicates_(ContestListModel::Columns::Duplicates)
{
    ui_.ListView2->setModel(&log_);
    ui_.ListView2->SetColumnTwips(log_.Widths(), {});
    ui_.ListView2->setFocusPolicy(Qt::TabFocus);
    ui_.ListView1->setModel(&duplicates_);
    ui_.ListView1->SetColumnTwips(duplicates_.Widths(), {});
    ui_.ListView1->setFocusPolicy(Qt::NoFocus);
    PaintWarning(ui_.Label7);
    for (QWidget *panel : std::initializer_list<QWidget *>{ui_.Label7, ui_.Frame4}) {
        QSizePolicy kept = panel->sizePolicy();
        kept.setRetainSizeWhenHidden(true);
        panel->setSizePolicy(kept);
        panel->hide();
    }
    ui_.ListView2->OpenRows(this, [this](const QModelIndex &index) { EditRow(log_.RowAt(index.row()), index.row()); });
}

bool ContestLogView::TellIfFailed(const Failure *failure)
{
    if (failure)
        program_.dialogs.Message(&window_, failure->text, Dialogs::Icon::Critical);
    return failure != nullptr;
}

void ContestLogView::LoadList()
{
    const Result<QList<QsoRow>> rows = ContestListLoad(program_.logbook.Store(), ui_.Label2->text());
    if (TellIfFailed(rows ? nullptr : &rows.failure()))
        return;
    log_.SetRows(*rows);
    count_ = rows->size();
    ui_.Label9->setText(ContestCountText(count_));
}

void ContestLogView::AddNewest(const QsoRow &row)
{
    log_.AddNewest(row);
    ++count_;
    ui_.Label9->setText(ContestCountAfterStore(ui_.Label9->text()));
}

void ContestLogView::ShowPlainCount() { ui_.Label9->setText(QString::number(count_) + u" QSOs"); }

void ContestLogView::ShowDuplicates()
{
    const QString call = ui_.Corresponsal->text();
    const Result<QList<QsoRow>> rows = call.isEmpty()
        ? QList<QsoRow>()
        : FindContestDuplicates(
            program_.logbook.Store(), ui_.Label2->text(), call, ui_.Combo1->currentText(), ui_.Combo2->currentText());
    // An unreadable database is told when the contact is stored.
    const bool duplicate = rows && !rows->isEmpty();
    if (duplicate)
        duplicates_.SetRows(*rows);
    ui_.Label7->setVisible(duplicate);
    ui_.Frame4->setVisible(duplicate);
}

void ContestLogView::HideDuplicates()
{
    ui_.Label7->hide();
    ui_.Frame4->hide();
}

void ContestLogView::EditLastContestQso()
{
    const auto row = LastContestQso(program_.logbook.Store(), ui_.Label2->text());
    if (TellIfFailed(row ? nullptr : &row.failure()) || !*row)
        return;
    EditRow(**row, 0);
}

void ContestLogView::EditRow(const QsoRow &row, int place)
{
    const auto stored = FindContestQso(program_.logbook.Store(), row.id);
    if (TellIfFailed(stored ? nullptr : &stored.failure()))
        return;
    const bool changed = !*stored || program_.windows.EditContestQso(window_).Edit(**stored, place);
    if (!changed)
        return;
    LoadList();
    const QModelIndex kept = log_.index(std::min(place, log_.rowCount() - 1), 2);
    ui_.ListView2->setCurrentIndex(kept);
    ui_.ListView2->scrollTo(kept);
}
