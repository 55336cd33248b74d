// SPDX-License-Identifier: MIT
#include "pointswindow.h"

PointsWindow::PointsWindow(QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Точки восстановления"));
}

PointsWindow::~PointsWindow() = default;
