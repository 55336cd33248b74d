// SPDX-License-Identifier: MIT
#include "calendarcolors.h"

#include <QtGui/QPalette>

#include <algorithm>

namespace {

constexpr double middle = 0.5;

QColor between(const QColor& one, const QColor& other, double share)
{
    const auto mixed = [share](float from, float to) {
        return static_cast<float>(from + (to - from) * share);
    };
    return QColor::fromRgbF(mixed(one.redF(), other.redF()), mixed(one.greenF(), other.greenF()),
                            mixed(one.blueF(), other.blueF()));
}

} // namespace

CalendarColors CalendarColors::of(const QPalette& palette)
{
    CalendarColors colors;
    colors.ground = palette.color(QPalette::Base);
    colors.text = palette.color(QPalette::Text);
    const bool isDark = colors.ground.lightnessF() < middle;
    colors.full = isDark ? QColor(0x2f, 0x6f, 0xb0) : QColor(0x6b, 0xa7, 0xdb);
    colors.almost = isDark ? QColor(0xd8, 0xc3, 0x5a) : QColor(0xff, 0xe6, 0x86);
    colors.empty = isDark ? QColor(0xb8, 0x48, 0x10) : QColor(0xd9, 0x62, 0x14);
    constexpr double faint = 0.25;
    constexpr double clear = 0.55;
    colors.unusual = between(colors.ground, colors.text, faint);
    colors.quiet = between(colors.ground, colors.text, clear);
    colors.missing = isDark ? QColor(0xff, 0x7b, 0x72) : QColor(0xb4, 0x23, 0x18);
    colors.fault = isDark ? QColor(0xff, 0xff, 0xff) : QColor(0x20, 0x20, 0x20);
    return colors;
}

QColor CalendarColors::ofShare(double share) const
{
    return share >= 1 ? full : between(empty, almost, std::max(share, 0.0));
}
