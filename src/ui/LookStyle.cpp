// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/LookStyle.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>

namespace {

bool FollowsFont(QStyle::PixelMetric metric)
{
    switch (metric) {
    case QStyle::PM_IndicatorWidth:
    case QStyle::PM_IndicatorHeight:
    case QStyle::PM_ExclusiveIndicatorWidth:
    case QStyle::PM_ExclusiveIndicatorHeight:
    case QStyle::PM_CheckBoxLabelSpacing:
    case QStyle::PM_RadioButtonLabelSpacing:
    case QStyle::PM_ButtonMargin:
    case QStyle::PM_ButtonIconSize:
    case QStyle::PM_SmallIconSize:
    case QStyle::PM_ScrollBarExtent:
    case QStyle::PM_HeaderMargin:
        return true;
    default:
        return false;
    }
}

bool IsDark(const QStyleOption &option) { return option.palette.color(QPalette::Window).lightness() < 128; }

} // namespace

LookStyle::LookStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const int plain = QProxyStyle::pixelMetric(metric, option, widget);
    if (!widget || !FollowsFont(metric))
        return plain;
    const int base = QFontMetrics(QApplication::font()).height();
    return plain * std::max(base, QFontMetrics(widget->font()).height()) / base;
}

QSize LookStyle::sizeFromContents(
    ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const
{
    const QSize plain = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type != CT_PushButton || !option)
        return plain;
    return plain.expandedTo({contents.width() + option->fontMetrics.height() * 5 / 4, 0});
}

int LookStyle::styleHint(
    StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returned) const
{
    return hint == SH_LineEdit_PasswordCharacter ? u'*' : QProxyStyle::styleHint(hint, option, widget, returned);
}

void LookStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex *option, QPainter *painter, const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar || !IsDark(*option)) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    QStyleOptionSlider part = *bar;
    part.subControls &= ~SC_ScrollBarSlider;
    QProxyStyle::drawComplexControl(control, &part, painter, widget);
    part.subControls = bar->subControls & SC_ScrollBarSlider;
    part.palette.setColor(QPalette::Button, QColor(0x808080));
    QProxyStyle::drawComplexControl(control, &part, painter, widget);
}

void LookStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
    const bool round = element == PE_IndicatorRadioButton;
    if ((!box && !round && element != PE_FrameLineEdit) || !IsDark(*option))
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QColor(option->state & State_Enabled ? 0x9A9A9A : 0x6A6A6A));
    painter->setBrush(Qt::NoBrush);
    const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (round)
        painter->drawEllipse(edge);
    else
        painter->drawRoundedRect(edge, 2, 2);
    painter->restore();
}
