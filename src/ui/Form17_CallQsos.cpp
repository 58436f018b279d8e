// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form17_CallQsos.h"

#include "core/Conversions.h"
#include "ui/WindowScaler.h"
#include "ui_Form17_CallQsos.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QScreen>

namespace {

constexpr int widths[] = {15, 15, 5, 5, 7, 6};

QString Joined(const QStringList &texts, QChar between)
{
    QStringList padded;
    for (qsizetype i = 0; i < texts.size(); ++i)
        padded << Conversions::PadRight(texts[i], widths[i]);
    return padded.join(between);
}

QString Line(const QsoRow &row)
{
    return Joined({row.MyCall, row.Estacion, row.Banda, row.Modo, Conversions::ShownDate(row.Fecha),
                      Conversions::LongTimeText(Conversions::ParseTime(row.Hora).value_or(QTime()))},
        u'|');
}

} // namespace

Form17::Form17(Dialogs &dialogs, QWidget *owner)
    : Window(u"Form17"_qs, dialogs, owner)
    , ui_(std::make_unique<Ui::Form17>())
{
    ui_->setupUi(this);
    ui_->List1->setModel(&lines_);
    ui_->List1->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    resize(minimumSize());
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form17::~Form17() = default;

void Form17::Show(const QString &call, const QList<QsoRow> &rows)
{
    QStringList lines{Joined({u"MiCall"_qs, u"SuCall"_qs, u"Banda"_qs, u"Modo"_qs, u"Fecha"_qs, u"Hora"_qs}, u' ')};
    lines.reserve(rows.size() + 1);
    for (const QsoRow &row : rows)
        lines << Line(row);
    lines_.setStringList(lines);
    setWindowTitle(call);
    ui_->List1->scrollToTop();
    ShowModal();
}

bool Form17::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    close();
    return true;
}
