// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QColor>
#include <QtGui/QPalette>

class QLabel;

/// Colours of texts that can be read on a light and on a dark background. User-interface thread.
namespace tadata {

/// Whether what is written stands upon something dark.
bool isDark(const QPalette& palette);
/// Of a text that says what is wrong.
QColor faultText(const QPalette& palette);
/// Shows the label in that colour when it says what is wrong, and like others otherwise.
void tintLabel(QLabel* label, bool isWell);

} // namespace tadata
