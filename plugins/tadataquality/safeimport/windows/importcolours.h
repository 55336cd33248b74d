// SPDX-License-Identifier: MIT
#pragma once

#include "importcheck.h"

#include <QtGui/QColor>
#include <QtGui/QPalette>

/// The colours of the safe import, which can be told apart and read on a light and on a dark
/// background. User-interface thread.
namespace tadata {

/// Behind what is wrong.
QColor faultBackground(const QPalette& palette);
/// Behind what a check has something to say of.
QColor noticeBackground(const QPalette& palette);
/// Of what is well.
QColor goodText(const QPalette& palette);

/// Of a day in the strip.
QColor colourOf(CheckedDay::Outcome outcome, const QPalette& palette);

} // namespace tadata
