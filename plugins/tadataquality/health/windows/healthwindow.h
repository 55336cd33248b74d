// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundtask.h"
#include "healthbook.h"
#include "seriesday.h"
#include "toolwindow.h"

#include <vexdesk/outcome.h>

#include <QtCore/QTimer>

#include <functional>
#include <optional>

class CalendarModel;
class CalendarView;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTreeView;
class RemarksModel;
class SeriesModel;

/// The window "Здоровье данных": the series of a store with what is wrong with them, a calendar of
/// the chosen one, and what is wrong on the chosen day. User-interface thread; the book, which must
/// outlive it, reads in another.
class HealthWindow final : public tadata::ToolWindow
{
    Q_OBJECT

public:
    /// What came of showing a place in the chart.
    enum class Shown { Yes, NoDay, NoCharts, NothingThere };
    using Told = std::function<void(Shown shown)>;
    /// Tells at once or later, and not at all where something else is to be shown meanwhile.
    using ShowInChart = std::function<void(const tadata::SeriesMoment& moment, const Told& told)>;

    HealthWindow(tadata::HealthBook* book, ShowInChart showInChart, QWidget* parent = nullptr);
    ~HealthWindow() override;

    /// Writes the list for the broker into a file, as the button does once it is chosen. Says so
    /// where not all of the store is known.
    void saveBrokerList(const QString& path);

Q_SIGNALS:
    /// The user wants to fill this series, "VENUE/BOARD/SECURITY", from a file.
    void fillRequested(const QString& series, int timeframe);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* makeSeriesPart();
    QWidget* makeDaysPart();
    QWidget* makeButtons();
    void connectParts();

    void showSeries();
    void showSummary();
    void chooseSeries();
    void chooseDay(const QDate& day);
    void showProgress(int percent);
    void askForListFile();
    void showSaved(const QString& path, const vexdesk::Outcome& outcome, bool isAll);
    void showDay();
    void showPlace(const QTime& time);
    void sayShown(const tadata::SeriesMoment& moment, Shown shown);
    tadata::SharedDigest chosen() const;
    /// A day of the series that is worth a look: the last wrong one, or the last one.
    static QDate worstDayOf(const tadata::SeriesDigest& series);

    tadata::HealthBook* const m_book;
    const ShowInChart m_showInChart;
    SeriesModel* const m_series;
    CalendarModel* const m_calendar;
    RemarksModel* const m_remarks;
    QLineEdit* const m_filter;
    QTreeView* const m_seriesView;
    CalendarView* const m_calendarView;
    QTreeView* const m_remarksView;
    QLabel* const m_summary;
    QLabel* const m_day;
    QProgressBar* const m_progress;
    QPushButton* m_show = nullptr;
    QPushButton* m_fill = nullptr;
    QPushButton* m_list = nullptr;
    tadata::SharedDigest m_shown; ///< in the calendar
    QTimer m_later;
    tadata::BackgroundTask<vexdesk::Outcome> m_saving;
};
