// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QTime>
#include <QtWidgets/QDialog>

class QCheckBox;
class QDateEdit;
class QLabel;
class QTimeEdit;

namespace vexdesk {

/// Asks for the day, and if the user wants it the time, to which a chart shall go. User-interface
/// thread only.
class GoToDialog final : public QDialog
{
    Q_OBJECT

public:
    /// Offers the days from `first` to `last`, and `proposed` to begin with.
    GoToDialog(const QDate& first, const QDate& last, const QDate& proposed,
               QWidget* parent = nullptr);
    ~GoToDialog() override;

    /// One of those days: the nearest one where another was typed.
    QDate day() const;
    /// Not valid where the whole day is meant.
    QTime time() const;

private:
    void showReach();

    const QDate m_first;
    const QDate m_last;
    QDateEdit* m_day;
    QLabel* m_reach;
    QCheckBox* m_hasTime;
    QTimeEdit* m_time;
};

} // namespace vexdesk
