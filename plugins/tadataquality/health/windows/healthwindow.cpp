// SPDX-License-Identifier: MIT
#include "healthwindow.h"

HealthWindow::HealthWindow(QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Здоровье данных"));
}

HealthWindow::~HealthWindow() = default;
