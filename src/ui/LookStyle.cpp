// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/LookStyle.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGroupBox>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>
#include <cmath>

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

constexpr int fusionArrow = 19; // width of the button of a combo box
constexpr int fusionSpin = 14;

double FontScale(const QWidget *widget)
{
    const int base = QFontMetrics(QApplication::font()).height();
    return widget ? std::max(1.0, double(QFontMetrics(widget->font()).height()) / base) : 1;
}

// By how many pixels a width that Fusion keeps at any font is too small for this one.
int Growth(int width, const QWidget *widget) { return int(std::lround(width * (FontScale(widget) - 1))); }

// Over the small pale one of Fusion, which it covers.
void DrawArrow(
    QPainter &painter, const QRect &room, Qt::ArrowType type, const QStyleOption &option, QPalette::ColorGroup group)
{
    const double length =
        std::min({option.fontMetrics.height() * 0.55, room.width() - 2.0, std::max(room.height() - 2.0, 4.0) * 2});
    const QPointF tips[] = {{-length / 2, -length / 4}, {length / 2, -length / 4}, {0, length / 4}};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(room).center());
    painter.rotate(type == Qt::UpArrow ? 180 : type == Qt::LeftArrow ? 90 : type == Qt::RightArrow ? -90 : 0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(option.palette.color(group, QPalette::ButtonText));
    painter.drawConvexPolygon(tips, 3);
    painter.restore();
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
    return int(plain * FontScale(widget));
}

QSize LookStyle::sizeFromContents(
    ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const
{
    const QSize plain = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_ComboBox) // the common style has kept the width of a scroll bar
        return plain + QSize(Growth(fusionArrow - 14, widget), 0);
    if (type == CT_SpinBox)
        return plain + QSize(Growth(fusionSpin, widget), 0);
    if (type != CT_PushButton || !option)
        return plain;
    return plain.expandedTo({contents.width() + option->fontMetrics.height() * 5 / 4, 0});
}

int LookStyle::styleHint(
    StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returned) const
{
    return hint == SH_LineEdit_PasswordCharacter ? u'*' : QProxyStyle::styleHint(hint, option, widget, returned);
}

QRect LookStyle::subControlRect(
    ComplexControl control, const QStyleOptionComplex *option, SubControl part, const QWidget *widget) const
{
    QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
    if (control != CC_ComboBox && control != CC_SpinBox)
        return rect;
    const bool combo = control == CC_ComboBox;
    const int more = Growth(combo ? fusionArrow : fusionSpin, widget);
    const bool button = combo ? part == SC_ComboBoxArrow : part == SC_SpinBoxUp || part == SC_SpinBoxDown;
    const bool edit = combo ? part == SC_ComboBoxEditField : part == SC_SpinBoxEditField;
    const bool mirrored = option->direction == Qt::RightToLeft;
    if (button)
        rect.adjust(mirrored ? 0 : -more, 0, mirrored ? more : 0, 0);
    else if (edit)
        rect.adjust(mirrored ? more : 0, 0, mirrored ? 0 : -more, 0);
    return rect;
}

void LookStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex *option, QPainter *painter, const QWidget *widget) const
{
    if (control == CC_ScrollBar && IsDark(*option))
        DrawDarkScrollBar(option, painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    const auto arrow = [&](SubControl part, Qt::ArrowType type, bool enabled = true) {
        if (option->subControls & part)
            DrawArrow(*painter, subControlRect(control, option, part, widget), type, *option,
                enabled && option->state & State_Enabled ? QPalette::Active : QPalette::Disabled);
    };
    if (control == CC_ComboBox) {
        arrow(SC_ComboBoxArrow, Qt::DownArrow);
    } else if (control == CC_ScrollBar) {
        const bool across = option->state & State_Horizontal;
        arrow(SC_ScrollBarSubLine, across ? Qt::LeftArrow : Qt::UpArrow);
        arrow(SC_ScrollBarAddLine, across ? Qt::RightArrow : Qt::DownArrow);
    } else if (const auto *spin = qstyleoption_cast<const QStyleOptionSpinBox *>(option);
               spin && spin->buttonSymbols == QAbstractSpinBox::UpDownArrows) {
        arrow(SC_SpinBoxUp, Qt::UpArrow, spin->stepEnabled & QAbstractSpinBox::StepUpEnabled);
        arrow(SC_SpinBoxDown, Qt::DownArrow, spin->stepEnabled & QAbstractSpinBox::StepDownEnabled);
    }
}

void LookStyle::DrawDarkScrollBar(const QStyleOptionComplex *option, QPainter *painter, const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (!bar)
        return;
    QStyleOptionSlider part = *bar;
    part.subControls &= ~SC_ScrollBarSlider;
    QProxyStyle::drawComplexControl(CC_ScrollBar, &part, painter, widget);
    part.subControls = bar->subControls & SC_ScrollBarSlider;
    part.palette.setColor(QPalette::Button, QColor(0x808080));
    QProxyStyle::drawComplexControl(CC_ScrollBar, &part, painter, widget);
}

// What Fusion leaves above the frame of a group box.
int LookStyle::TitleHeight(const QStyleOption &option, const QWidget *widget) const
{
    const auto *box = qobject_cast<const QGroupBox *>(widget);
    if (!box || (!box->isCheckable() && box->title().isEmpty()))
        return 3;
    return 3 + std::max(pixelMetric(PM_ExclusiveIndicatorHeight, &option, widget), QFontMetrics(box->font()).height());
}

void LookStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
    const bool round = element == PE_IndicatorRadioButton;
    const bool group = element == PE_FrameGroupBox;
    if ((!box && !round && !group && element != PE_FrameLineEdit) || !IsDark(*option))
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QColor(group ? 0x626262 : option->state & State_Enabled ? 0x9A9A9A : 0x6A6A6A));
    painter->setBrush(Qt::NoBrush);
    QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (group)
        edge.setTop(edge.top() + TitleHeight(*option, widget));
    if (round)
        painter->drawEllipse(edge);
    else
        painter->drawRoundedRect(edge, 2, 2);
    painter->restore();
}
