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
    colors.unread = between(colors.background, colors.text, 0.06);
    colors.band = colors.tag;
    constexpr float seenThrough = 0.22F;
    colors.band.setAlphaF(seenThrough);
    colors.note = isDark ? QColor(0x6c, 0xb6, 0xff) : QColor(0x0a, 0x58, 0xca);
    colors.warning = isDark ? QColor(0xf0, 0xc0, 0x40) : QColor(0x9a, 0x67, 0x00);
    colors.fault = isDark ? QColor(0xff, 0x5c, 0x8a) : QColor(0xa4, 0x0e, 0x4c);
    if (isDark)
        colors.studies = {QColor(0xf2, 0xb1, 0x34), QColor(0x79, 0xb8, 0xff),
                          QColor(0xd2, 0xa8, 0xff), QColor(0x5c, 0xd6, 0xd6)};
    else
        colors.studies = {QColor(0x94, 0x4a, 0x00), QColor(0x1f, 0x5f, 0xbf),
                          QColor(0x7a, 0x3e, 0xb1), QColor(0x00, 0x68, 0x68)};
    return colors;
}

} // namespace vexdesk
