// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtWidgets/QTableView>

class CalendarModel;

/// A calendar of days, as wide as there is room for a year: the arrow keys go by days and weeks,
/// Page Up and Page Down by months, Home and End to the ends, Ctrl with left and right to the next
/// day that is wrong. It is a table, so that screen readers can walk it. User-interface thread.
class CalendarView final : public QTableView
{
    Q_OBJECT

public:
    explicit CalendarView(CalendarModel* model, QWidget* parent = nullptr);
    ~CalendarView() override;

    /// The chosen day; not valid for none.
    QDate day() const;
    void setDay(const QDate& day);

Q_SIGNALS:
    void dayChanged(const QDate& day);
    /// By a double click or Return.
    void dayActivated(const QDate& day);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    QSize sizeHint() const override;

private:
    void fitCells();
    QDate moved(CursorAction action, bool toWrong) const;

    CalendarModel* const m_calendar;
};
