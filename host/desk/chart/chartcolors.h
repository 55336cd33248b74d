// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QColor>

#include <array>

class QPalette;

namespace vexdesk {

/// The colours of the chart, from those of the desktop. Green and red have no place in a palette:
/// they are made light on a dark ground and dark on a light one.
struct ChartColors
{
    QColor background;
    QColor text;
    QColor grid;
    QColor dayLine; ///< where a day begins
    QColor rising;
    QColor falling;
    QColor crosshair;
    QColor tag; ///< of the labels on the crosshair
    QColor tagText;
    QColor unread; ///< the ground of days that were not read yet
    QColor band;   ///< over a marked range; is seen through
    QColor note;
    QColor warning;
    QColor fault;
    std::array<QColor, 4> studies; ///< one after the other

    static ChartColors of(const QPalette& palette);
};

} // namespace vexdesk
