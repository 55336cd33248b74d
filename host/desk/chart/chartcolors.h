// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QColor>

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

    static ChartColors of(const QPalette& palette);
};

} // namespace vexdesk
