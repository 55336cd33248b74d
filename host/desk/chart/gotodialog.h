// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QTime>
#include <QtWidgets/QDialog>

#include <optional>

class QCalendarWidget;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimeEdit;
class QToolButton;

namespace vexdesk {

/// Asks for the day, and if the user wants it the time, to which a chart shall go. The day is typed
/// as people write it (dayOfText()), or chosen in a calendar. User-interface thread only.
class GoToDialog final : public QDialog
{
    Q_OBJECT

public:
    /// Offers the days from `first` to `last`, and `proposed` to begin with.
    GoToDialog(const QDate& first, const QDate& last, const QDate& proposed,
               QWidget* parent = nullptr);
    ~GoToDialog() override;

    /// One of those days: the nearest one where another was typed, and the one that was proposed
    /// where none was.
    QDate day() const;
    /// Not valid where the whole day is meant.
    QTime time() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeDayRow();
    void makeCalendar();
    std::optional<QDate> typed() const;
    void showDay(const QDate& day);
    void showReach();

    const QDate m_first;
    const QDate m_last;
    const QDate m_proposed;
    QLineEdit* m_day;
    QToolButton* m_calendarButton;
    QCalendarWidget* m_calendar;
    QLabel* m_reach;
    QCheckBox* m_hasTime;
    QTimeEdit* m_time;
    QPushButton* m_go = nullptr;
};

} // namespace vexdesk
