// SPDX-License-Identifier: MIT
#include "importcolours.h"

#include "textcolours.h"

namespace tadata {

namespace {

QColor chosen(const QPalette& palette, QRgb onLight, QRgb onDark)
{
    return QColor::fromRgba(isDark(palette) ? onDark : onLight);
}

} // namespace

QColor faultBackground(const QPalette& palette)
{
    return chosen(palette, 0xffffdad6, 0xff5c1a1b);
}

QColor noticeBackground(const QPalette& palette)
{
    return chosen(palette, 0xfffff0c2, 0xff4a3b10);
}

QColor goodText(const QPalette& palette)
{
    return chosen(palette, 0xff1b6e2c, 0xff81c995);
}

QColor colourOf(CheckedDay::Outcome outcome, const QPalette& palette)
{
    switch (outcome) {
    case CheckedDay::Outcome::New:
        return chosen(palette, 0xff2e9e4f, 0xff5fbf7a);
    case CheckedDay::Outcome::Same:
        return chosen(palette, 0xff9aa0a6, 0xff80868b);
    case CheckedDay::Outcome::Merged:
        return chosen(palette, 0xff1a73c8, 0xff6aaeff);
    case CheckedDay::Outcome::Replaced:
        break;
    }
    return chosen(palette, 0xffd9770a, 0xffffab40);
}

} // namespace tadata
