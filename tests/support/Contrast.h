// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <algorithm>
#include <cmath>

// How well a text reads on its ground, from 1 (not at all) to 21: the contrast ratio of the Web Content Accessibility
// Guidelines.
inline double Contrast(const QColor &text, const QColor &ground)
{
    const auto part = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    const auto luminance = [&](const QColor &colour) {
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(text), luminance(ground)});
    return (light + 0.05) / (dark + 0.05);
}
