// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QDialog>

/// The window "Здоровье данных". User-interface thread.
class HealthWindow final : public QDialog
{
    Q_OBJECT

public:
    explicit HealthWindow(QWidget* parent = nullptr);
    ~HealthWindow() override;
};
