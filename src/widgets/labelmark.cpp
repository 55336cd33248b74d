// SPDX-License-Identifier: MIT
#include "labelmark.h"

#include <QtWidgets/QLabel>

namespace tadata {

bool markLabel(QLabel* label, bool isValid)
{
    label->setStyleSheet(isValid ? QString() : QStringLiteral("QLabel {color: red;}"));
    return isValid;
}

} // namespace tadata
