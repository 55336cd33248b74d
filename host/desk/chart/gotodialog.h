// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QList>
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
    /// Offers these days, the first one first and at least one, and `proposed` to begin with.
    GoToDialog(QList<QDate> days, const QDate& proposed, QWidget* parent = nullptr);
    ~GoToDialog() override;

    /// What was typed, which may be none of those days; the proposed one where it is no date.
    QDate asked() const;
    /// One of those days: that one or, where it is none of them, the next one, after all the last.
    QDate day() const;
    /// Not valid where the whole day is meant.
    QTime time() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeDayRow();
    void makeCalendar();
    std::optional<QDate> typed() const;
    QDate offeredFor(const QDate& day) const;
    void step(int days);
    void showDay(const QDate& day);
    void showReach();

    const QList<QDate> m_days;
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
