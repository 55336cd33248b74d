// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/barscopier.h"
#include "desk/chart/chartstate.h"
#include "desk/chart/pathwatcher.h"
#include "desk/chart/readerthreads.h"
#include "desk/chart/seriesfeed.h"

#include <vexdesk/outcome.h>

#include <QtWidgets/QWidget>

#include <optional>

class QComboBox;
class QLabel;
class QPushButton;
class QScrollBar;
class QStackedWidget;
class QToolButton;

namespace vexdesk {

class ChartView;
class FittedLabel;
class MarkSources;

/// As the user sees it in menus.
QString studyName(Study study);

/// One series as a chart with what belongs to it: the choice of the timeframe, of studies and of
/// nights, the line that reads out the bar at the crosshair, and the scroll bar. Reads and follows
/// the series while it is shown. User-interface thread only.
class ChartPage final : public QWidget
{
    Q_OBJECT

public:
    /// `root` is the store's, `marks` must live as long as the page. The chart stands as `state`
    /// says as soon as its bars are there.
    ChartPage(const QString& root, const ChartState& state, MarkSources& marks,
              QWidget* parent = nullptr);
    ~ChartPage() override;

    const SeriesName& series() const { return m_state.series; }
    ChartView& view() { return *m_view; }
    /// How the chart stands now, to be remembered.
    ChartState state() const;
    /// Whether there are bars to look at.
    bool isEmpty() const;

    /// Those for which bars are stored, and the one that is chosen among them.
    const QList<Timeframe>& timeframes() const { return m_offered; }
    std::optional<Timeframe> timeframe() const { return m_state.timeframe; }
    /// Shows its candles, also when it was chosen already and longer ones have taken their place.
    void chooseTimeframe(Timeframe timeframe);
    bool areNightsShown() const { return m_state.areNightsShown; }
    void showNights(bool areShown);
    bool isShown(Study study) const { return m_state.studies.contains(study); }
    void show(Study study, bool isShown);
    using QWidget::show;

    /// Goes to the moment, without a valid time to the day, now or as soon as the bars are there.
    /// `stored` are the timeframes, in seconds, for which the day has files, where they are known:
    /// another timeframe is chosen if its bars are made of none of them.
    void goTo(const QDate& day, const QTime& time, const QList<int>& stored = {});
    /// The days that have bars, as far as is known, the first one first.
    QList<QDate> storedDays() const;
    /// The bars in view, or those that are marked, go to the clipboard as text: all of them. Those
    /// of days that are not in memory are read first; until then the clipboard stays as it is.
    /// Where it cannot be all of them the user is asked before.
    void copyBars();
    /// Tries once more to read what could not be read.
    void readAgain();
    /// Puts nothing into the clipboard that is not there yet.
    void giveUpCopying();
    /// The chart goes to the clipboard as a picture, or to a .png or .svg file.
    void copyPicture();
    Outcome savePicture(const QString& path);

Q_SIGNALS:
    /// What the commands of the menus show or can do with this chart is not the same any more.
    void changed();
    void contextMenuWanted(const QPoint& globalPlace);
    /// What was done, and what could not be, in words for the user; the chart does not show it.
    void told(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Moment
    {
        QDate day;
        QTime time; // not valid: the day
        QList<int> stored;
    };

    QWidget* makeChoice();
    QWidget* makeProblem();
    void makeNote();
    void keepKeysInChart();
    QToolButton* makeStudies();
    QWidget* makeChart();
    void connectParts();

    /// Looks in a thread of its own for the timeframes that are stored.
    void lookUp();
    void takeStored(const Result<QList<int>>& stored);
    void offerTimeframes();
    std::optional<int> source() const;
    bool isAwaitedIn(Timeframe timeframe) const;
    void chooseForAwaited();
    void chooseSource();

    void showBars(const std::shared_ptr<const BarSeries>& series);
    void showChosenTimeframe();
    void beginToShow();
    void letBarsGo();
    void goToAwaited();
    void want();
    void askForMarksSoon();
    void askForMarks();
    void showProgress(int done, int total);
    void showMessage(const QString& text);
    QString problem() const;
    QString unreadDays() const;
    QString otherLines() const;
    QString pathOf(const QDate& day) const;
    void showProblem();
    void fitProblem();
    void showParts();
    void updateStudies();
    void updateScrollBar();
    void scrollTo(int value);
    void takeChosen();
    void updateNote();
    void showReadout();
    void widenReadout();
    void reserveReadout();

    QString m_directory;
    MarkSources& m_marks;
    ChartState m_state; // its place in time only until the bars are shown
    QList<Timeframe> m_offered;
    QList<int> m_stored; // timeframes in seconds
    std::optional<Moment> m_awaited;
    std::shared_ptr<const BarSeries> m_series; // null until it was read for the first time
    std::pair<QDate, QDate> m_markedDays;      // for which the marks are known

    ChartView* m_view = nullptr;
    QComboBox* m_timeframeBox = nullptr;
    QToolButton* m_nightsButton = nullptr;
    QToolButton* m_studiesButton = nullptr;
    QPushButton* m_showAll = nullptr;
    FittedLabel* m_note = nullptr;
    FittedLabel* m_readout = nullptr;
    QWidget* m_problemRow = nullptr;
    FittedLabel* m_problem = nullptr;
    QPushButton* m_readAgain = nullptr;
    QStackedWidget* m_pages = nullptr;
    QWidget* m_chart = nullptr;
    QScrollBar* m_scrollBar = nullptr;
    QLabel* m_message = nullptr;

    QString m_reading; // what is told of it while it takes long
    Bar m_widest;      // the numbers with most digits that were in view
    Timeframe m_widestAt = Timeframe::Minute;
    BarsCopier m_copier{*this};
    QTimer m_askSoon; // for marks
    SeriesFeed m_feed;
    PathWatcher m_watcher;
    Outcome m_look; // the last one
    Errand<Result<QList<int>>> m_lookUp{this};
    bool m_isOutdated = false; // something has changed since the look began
};

} // namespace vexdesk
