// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Theme.h"

#include "ui/LookStyle.h"

#include <QApplication>
#include <QFont>
#include <QToolTip>
#include <utility>

namespace {

constexpr char darkTheme[] = "darkTheme";
constexpr char accentMark[] = "accentMark";

using Colour = std::pair<QPalette::ColorRole, QRgb>;

constexpr Colour lightColours[] = {
    {QPalette::Window, 0xF0F0F0},
    {QPalette::WindowText, 0x000000},
    {QPalette::Base, 0xFFFFFF},
    {QPalette::AlternateBase, 0xEAF0F6},
    {QPalette::Text, 0x000000},
    {QPalette::PlaceholderText, 0x606060},
    {QPalette::Button, 0xE8E8E8},
    {QPalette::ButtonText, 0x000000},
    {QPalette::BrightText, 0xB00000},
    {QPalette::Highlight, 0x1F5FA8},
    {QPalette::HighlightedText, 0xFFFFFF},
    {QPalette::ToolTipBase, 0xFFFFDC},
    {QPalette::ToolTipText, 0x000000},
    {QPalette::Link, 0x0000C8},
    {QPalette::LinkVisited, 0x6A1B9A},
    {QPalette::Light, 0xFFFFFF},
    {QPalette::Midlight, 0xF8F8F8},
    {QPalette::Mid, 0xB0B0B0},
    {QPalette::Dark, 0x909090},
    {QPalette::Shadow, 0x505050},
};

constexpr Colour darkColours[] = {
    {QPalette::Window, 0x404040},
    {QPalette::WindowText, 0xC0C0C0},
    {QPalette::Base, 0x2B2B2B},
    {QPalette::AlternateBase, 0x343434},
    {QPalette::Text, 0xE4E4E4},
    {QPalette::PlaceholderText, 0xA8A8A8},
    {QPalette::Button, 0x4A4A4A},
    {QPalette::ButtonText, 0xE4E4E4},
    {QPalette::BrightText, 0xFFB0B0},
    {QPalette::Highlight, 0x2A6FB5},
    {QPalette::HighlightedText, 0xFFFFFF},
    {QPalette::ToolTipBase, 0x202020},
    {QPalette::ToolTipText, 0xE4E4E4},
    {QPalette::Link, 0x90C8FF},
    {QPalette::LinkVisited, 0xD8B8FF},
    {QPalette::Light, 0x606060},
    {QPalette::Midlight, 0x545454},
    {QPalette::Mid, 0x343434},
    {QPalette::Dark, 0x282828},
    {QPalette::Shadow, 0x101010},
};

constexpr QRgb listText = 0x004000;
constexpr QRgb focusGround = 0xC0C0FF;

void Repaint(QWidget *widget)
{
    if (!widget->property(accentMark).toBool())
        return;
    QPalette palette;
    palette.setColor(QPalette::WindowText, QColor(CurrentTheme() == Theme::Dark ? 0x80FFFF : 0x0000FF));
    widget->setPalette(palette);
}

} // namespace

void SetUpLook(QApplication &application)
{
    QApplication::setStyle(new LookStyle);
    QFont font;
    font.setFamilies({u"Inter"_qs, u"Noto Sans"_qs, u"Segoe UI"_qs, u"DejaVu Sans"_qs});
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(10);
    application.setFont(font);
    ApplyWindowTheme(Theme::Light);
}

void ApplyWindowTheme(Theme theme)
{
    qApp->setProperty(darkTheme, theme == Theme::Dark);
    const QPalette palette = ThemePalette(theme);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    for (QWidget *widget : QApplication::allWidgets())
        Repaint(widget);
}

Theme CurrentTheme() { return qApp->property(darkTheme).toBool() ? Theme::Dark : Theme::Light; }

QPalette ThemePalette(Theme theme)
{
    const bool dark = theme == Theme::Dark;
    QPalette palette;
    for (const auto &[role, colour] : dark ? darkColours : lightColours)
        palette.setColor(role, QColor(colour));
    const QColor disabledText(dark ? 0xA4A4A4 : 0x787878);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, disabledText);
    palette.setColor(QPalette::Disabled, QPalette::Base, palette.color(QPalette::Window));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(dark ? 0x505050 : 0xD8D8D8));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, QColor(dark ? 0xC0C0C0 : 0x606060));
    return palette;
}

QPalette ListRowPalette(Theme theme)
{
    const bool dark = theme == Theme::Dark;
    QPalette palette = ThemePalette(theme);
    palette.setColor(QPalette::Base, QColor(dark ? 0x98AC95 : 0xFFFFFF));
    palette.setColor(QPalette::AlternateBase, QColor(dark ? 0x8FA68C : 0xEEF4EE));
    palette.setColor(QPalette::Text, QColor(listText));
    return palette;
}

void MarkAccent(QWidget *label)
{
    label->setProperty(accentMark, true);
    Repaint(label);
}

void SetFieldFocused(QWidget *field, bool focused)
{
    QPalette palette;
    if (focused) {
        // A combo box that cannot be edited is painted as a button.
        for (const auto role : {QPalette::Base, QPalette::AlternateBase, QPalette::Button})
            palette.setColor(role, QColor(focusGround));
        for (const auto role : {QPalette::Text, QPalette::ButtonText})
            palette.setColor(role, Qt::black);
        // What the dark theme has in light colours, for a ground that is light in both.
        palette.setColor(QPalette::PlaceholderText, QColor(0x404040));
        palette.setColor(QPalette::BrightText, QColor(0x900000));
        palette.setColor(QPalette::Link, QColor(0x0000A0));
        palette.setColor(QPalette::LinkVisited, QColor(0x501080));
    }
    field->setPalette(palette);
}
