// SPDX-License-Identifier: MIT
#pragma once

#include "calendarmodel.h"

#include <QtWidgets/QStyledItemDelegate>

struct CalendarColors;

/// Paints the cells of the calendar. User-interface thread.
class CalendarDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CalendarDelegate(QObject* parent);
    ~CalendarDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// A day of this state in a cell.
    static void paintDay(QPainter& painter, const QRectF& cell, const CalendarColors& colors,
                         CalendarModel::State state, double share, bool isWrong);
};
