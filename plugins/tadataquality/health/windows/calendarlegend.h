// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QWidget>

/// Says what the colours and marks of the calendar mean. User-interface thread.
class CalendarLegend final : public QWidget
{
    Q_OBJECT

public:
    explicit CalendarLegend(QWidget* parent = nullptr);
    ~CalendarLegend() override;
};
