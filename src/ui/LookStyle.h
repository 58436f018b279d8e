// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>

// Qt's Fusion style with a few changes: passwords show "*"; marks, arrows, margins and small icons grow with the font
// of their control, so that a window scaled to a large screen keeps its proportions; buttons leave room beside their
// text; and on a dark ground fields, boxes and groups get an edge, scroll bars a handle that is seen.
class LookStyle : public QProxyStyle {
    Q_OBJECT

public:
    LookStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    QSize sizeFromContents(
        ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const override;
    int styleHint(
        StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returned) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
        const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
        const QWidget *widget) const override;
    void drawPrimitive(
        PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const override;

private:
    void DrawDarkScrollBar(const QStyleOptionComplex *option, QPainter *painter, const QWidget *widget) const;
    int TitleHeight(const QStyleOption &option, const QWidget *widget) const;
};
