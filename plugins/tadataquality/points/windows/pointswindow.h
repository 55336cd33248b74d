// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QDialog>

/// The window "Точки восстановления". User-interface thread.
class PointsWindow final : public QDialog
{
    Q_OBJECT

public:
    explicit PointsWindow(QWidget* parent = nullptr);
    ~PointsWindow() override;
};
