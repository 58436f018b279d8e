// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/SyncPanel.h"

#include "ui/AnswerColours.h"
#include "ui/Form1_Main.h"
#include "ui/Program.h"
#include "ui/Windows.h"
#include "ui_SyncPanel.h"

using Kind = SyncRules::Judgement::Kind;

SyncPanel::SyncPanel(Program &program, Window &window)
    : QWidget(&window)
    , program_(program)
    , window_(window)
    , ui_(std::make_unique<Ui::SyncPanel>())
{
    ui_->setupUi(this);
    connect(ui_->detener, &QPushButton::clicked, this, [this] {
        if (run_)
            run_->Cancel();
    });
}

SyncPanel::~SyncPanel() = default;

void SyncPanel::Clear()
{
    ui_->List1->clear();
    ui_->estado->clear();
    ui_->ProgressBar1->setValue(0);
    ui_->detener->setEnabled(false);
    ui_->List1->setFocus();
}

void SyncPanel::Begin(const QList<SyncQso> &qsos, const SyncRules::Account &account, std::function<void()> lost)
{
    lost_ = std::move(lost);
    run_ = std::make_unique<Run>(program_.logbook.LongWork(), Pump());
    run_->WhenCancelled([this] { sync_->Cancel(); });
    SyncLda::Listener listener;
    listener.listed = [this](Kind kind, const QString &line, const SyncLda::Counts &counts) {
        auto *item = new QListWidgetItem(line, ui_->List1);
        if (kind == Kind::Error || kind == Kind::NotUnderstood)
            item->setForeground(AnswerColours::Bad());
        else if (kind == Kind::Confirmed)
            item->setForeground(AnswerColours::Good());
        ui_->List1->setCurrentItem(item);
        ShowCounts(counts);
    };
    listener.storeFailed = [this](const Failure &failure) {
        program_.dialogs.Message(&window_, failure.text, Dialogs::Icon::Critical);
    };
    listener.ended = [this](SyncLda::End end, const SyncLda::Counts &counts, const QString &cause) {
        Ended(end, counts, cause);
    };
    sync_ = std::make_unique<SyncLda>(program_.scheduler, program_.logbook.Store(), account, qsos, listener);
    ui_->ProgressBar1->setMaximum(int(qsos.size()));
    ui_->detener->setEnabled(true);
    SyncLda::Counts none;
    none.total = qsos.size();
    ShowCounts(none);
    sync_->Start();
}

void SyncPanel::ShowCounts(const SyncLda::Counts &counts)
{
    ui_->ProgressBar1->setValue(int(counts.done));
    QString text = u"Enviados %1 de %2"_qs.arg(counts.done).arg(counts.total);
    const std::pair<qsizetype, QString> parts[] = {{counts.uploaded, u"subidos"_qs},
        {counts.checked, u"por confirmar"_qs}, {counts.confirmed, u"confirmados"_qs}, {counts.errors, u"con error"_qs},
        {counts.notUnderstood, u"sin entender"_qs}};
    for (const auto &[count, name] : parts)
        if (count > 0)
            text += u"  ·  "_qs + name + u' ' + QString::number(count);
    ui_->estado->setText(text);
}

void SyncPanel::Ended(SyncLda::End end, const SyncLda::Counts &counts, const QString &cause)
{
    run_.reset();
    ui_->detener->setEnabled(false);
    if (end == SyncLda::End::NoConnection)
        program_.dialogs.Message(&window_, NoConnectionText::polled);
    else if (end == SyncLda::End::Cancelled)
        program_.dialogs.Message(&window_, u"Subida a LdA abortada!"_qs);
    const QString remainder = SyncRemainder(counts);
    if (!remainder.isEmpty() || !cause.isEmpty())
        program_.dialogs.Message(&window_, QString(remainder + u'\n' + cause).trimmed(), Dialogs::Icon::Information);
    program_.windows.Main().ReloadPage();
    if (end == SyncLda::End::NoConnection && lost_)
        lost_();
}
