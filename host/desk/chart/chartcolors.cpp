// SPDX-License-Identifier: MIT
#include "desk/chart/chartcolors.h"

#include <QtGui/QPalette>

namespace vexdesk {

namespace {

QColor between(const QColor& ground, const QColor& ink, double share)
{
    const auto mixed = [share](float from, float to) {
        return static_cast<float>(from + (to - from) * share);
    };
    return QColor::fromRgbF(mixed(ground.redF(), ink.redF()), mixed(ground.greenF(), ink.greenF()),
                            mixed(ground.blueF(), ink.blueF()));
}

} // namespace

ChartColors ChartColors::of(const QPalette& palette)
{
    ChartColors colors;
    colors.background = palette.color(QPalette::Base);
    colors.text = palette.color(QPalette::Text);
    colors.grid = between(colors.background, colors.text, 0.12);
    colors.dayLine = between(colors.background, colors.text, 0.38);
    constexpr double middle = 0.5;
    const bool isDark = colors.background.lightnessF() < middle;
    colors.rising = isDark ? QColor(0x4c, 0xc3, 0x8a) : QColor(0x0b, 0x6e, 0x45);
    colors.falling = isDark ? QColor(0xff, 0x7b, 0x72) : QColor(0xb4, 0x23, 0x18);
    colors.crosshair = between(colors.background, colors.text, 0.6);
    colors.tag = palette.color(QPalette::Highlight);
    colors.tagText = palette.color(QPalette::HighlightedText);
    return colors;
}

} // namespace vexdesk
