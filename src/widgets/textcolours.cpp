// SPDX-License-Identifier: MIT
#include "textcolours.h"

#include <QtWidgets/QLabel>

namespace tadata {

bool isDark(const QPalette& palette)
{
    constexpr int middle = 128;
    return palette.color(QPalette::Base).lightness() < middle;
}

QColor faultText(const QPalette& palette)
{
    return QColor::fromRgba(isDark(palette) ? 0xffff8a80 : 0xffb00020);
}

void tintLabel(QLabel* label, bool isWell)
{
    QPalette own; // all else is the window's
    if (!isWell)
        own.setColor(QPalette::WindowText, faultText(label->palette()));
    label->setPalette(own);
}

} // namespace tadata
