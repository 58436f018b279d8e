// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ContestEntryFields.h"

#include "contest/ContestLogs.h"
#include "logging/BandPlan.h"
#include "logging/EntryRules.h"
#include "ui/Choice.h"
#include "ui/FieldFilter.h"
#include "ui_Form4_Contest.h"

ContestEntryFields::ContestEntryFields(Ui::Form4 &ui)
    : ui_(ui)
{
    FillLists();
    AttachFilters();
}

void ContestEntryFields::FillLists()
{
    ui_.Combo1->addItems(ContestModes());
    ui_.Combo1->setCurrentText(u"SSB"_qs);
    ui_.Combo2->addItems(ContestBands());
    ui_.Combo2->setCurrentText(u"80m"_qs);
    ui_.mhz->addItems(ContestMegahertz());
    ui_.mhz->setCurrentText(u"3"_qs);
    ui_.Text1->setText(u"650"_qs);
}

void ContestEntryFields::AttachFilters()
{
    const auto contest = [](QLineEdit *field, ContestFilter filter) {
        FieldFilter::Attach(field, [filter](QChar key) { return FilterContestKey(key, filter); });
    };
    contest(ui_.Text2, ContestFilter::OwnCall);
    contest(ui_.Fecha, ContestFilter::Date);
    contest(ui_.Hora, ContestFilter::Time);
    contest(ui_.Text1, ContestFilter::Digits);
    contest(ui_.RSR, ContestFilter::SerieText);
    FieldFilter::Attach(
        ui_.Corresponsal, [](QChar key) { return EntryRules::FilterKey(key, EntryRules::KeyFilter::Callsign); });
    FieldFilter::Attach(
        ui_.RSE, [this](QChar key) { return FilterContestKey(key, SentSerieFilter(ui_.Label3->text())); });
}

void ContestEntryFields::Reset(const QString &ownCall)
{
    ui_.Text2->setText(ownCall);
    Choice::Show(ui_.Combo1, u"SSB"_qs);
    Choice::Show(ui_.mhz, u"3"_qs);
    ui_.Text1->setText(u"650"_qs);
    ui_.Label6->setText(u"80m"_qs);
    const StartValues start = StartOfContest(ui_.Label3->text());
    ui_.RSE->setText(start.rse);
    ui_.Label4->setText(start.label4);
    ui_.Corresponsal->clear();
    ui_.RSR->clear();
}

ContestFields ContestEntryFields::Read() const
{
    return {ui_.Text2->text(), ui_.Fecha->text(), ui_.Hora->text(), ui_.Corresponsal->text(), ui_.Combo1->currentText(),
        ui_.Combo2->currentText(), ui_.mhz->currentText(), ui_.Text1->text(), ui_.RSE->text(), ui_.RSR->text(),
        ui_.Label2->text(), ui_.Label3->text()};
}

QWidget *ContestEntryFields::FieldOf(ContestFocus focus) const
{
    switch (focus) {
    case ContestFocus::OwnCall:
        return ui_.Text2;
    case ContestFocus::Fecha:
        return ui_.Fecha;
    case ContestFocus::Hora:
        return ui_.Hora;
    case ContestFocus::Rse:
        return ui_.RSE;
    case ContestFocus::Rsr:
        return ui_.RSR;
    default:
        return ui_.Corresponsal;
    }
}

QString ContestEntryFields::CheckLeft(QWidget *field)
{
    if (field == ui_.Text1)
        ui_.Text1->setText(BandPlan::PadKilohertz(ui_.Text1->text()));
    if (field == ui_.Text2)
        return CheckContestOwnCall(ui_.Text2->text());
    if (field != ui_.Fecha && field != ui_.Hora)
        return {};
    auto *line = static_cast<QLineEdit *>(field);
    const EntryRules::FieldCheck check =
        field == ui_.Fecha ? CheckContestFecha(line->text()) : CheckContestHora(line->text());
    line->setText(check.text);
    return check.message;
}
