// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartlayout.h"
#include "desk/chart/chartstudy.h"
#include "desk/chart/viewhistory.h"

#include <vexdesk/icharts.h>
#include <vexdesk/outcome.h>

#include <QtWidgets/QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vexdesk {

/// Draws bars as candles, with the volumes in a lower pane of the same times, and lets the user
/// zoom, scroll, mark and point at them with mouse and keys. User-interface thread only.
class ChartView final : public QWidget
{
    Q_OBJECT

public:
    using Place = ChartPlace;

    explicit ChartView(QWidget* parent = nullptr);
    ~ChartView() override;

    /// What is shown, for the chart's heading and for a screen reader.
    void setTitle(const QString& title);
    /// Shows another series, at its end. There is nothing to go back to any more.
    void showSeries(const std::shared_ptr<const BarSeries>& series);
    /// Shows what the series has become, at the same place. Its stored timeframe may be another.
    void updateSeries(const std::shared_ptr<const BarSeries>& series);
    bool isEmpty() const { return m_viewport.isEmpty(); }

    /// The chosen timeframe and the one that is shown: a longer one where the candles of the chosen
    /// one would be too thin to be seen.
    Timeframe timeframe() const { return m_viewport.timeframe(); }
    Timeframe shownTimeframe() const { return m_viewport.shownTimeframe(); }
    /// Shows candles of the chosen one, also when it was chosen already and a longer one is shown.
    void setTimeframe(Timeframe timeframe);
    bool areNightsShown() const { return m_viewport.areNightsShown(); }
    void setNightsShown(bool areShown);

    void setStudies(std::vector<std::shared_ptr<const ChartStudy>> studies);
    /// Those of the days in view; what is marked elsewhere is not seen.
    void setMarks(const QList<ChartMark>& marks);

    Place place() const { return m_viewport.place(); }
    void setPlace(const Place& place);
    /// The slots in view, those between which it can be moved, and another part of them.
    const SlotRange& range() const { return m_viewport.range(); }
    SlotRange reach() const;
    void setRange(const SlotRange& range);
    /// Makes the view longer by this factor, around its middle.
    void zoom(double factor);
    void scroll(double shareOfView);
    void showAll();
    void goToFirst();
    void goToLast();
    /// Brings the bar of this wall time into the middle, and the crosshair onto it.
    void goTo(qint64 wallTime);
    /// The same with the first bar of the day or, where there is none, the next one after it.
    void goTo(const QDate& day);

    /// Back to where the view was before a jump, and forward again. Moving and zooming by steps is
    /// no jump.
    bool canGoBack() const { return m_history.canGoBack(); }
    void goBack();
    bool canGoForward() const { return m_history.canGoForward(); }
    void goForward();

    /// What a feed must have read for what is in view.
    std::pair<QDate, QDate> daysInView() const;
    bool needsBars() const;

    /// What is drawn now, and where.
    const ChartLayout& chart() const { return m_layout; }
    /// Where the mouse or the keyboard points, nothing where it points at no slot.
    const std::optional<Crosshair>& crosshair() const { return m_crosshair; }
    /// The candle at the crosshair, null when there is none.
    const Candle* pointed() const;
    /// What is said of it, with the marks; empty when there is none.
    QString readout() const;
    /// Moves the keyboard's crosshair by so many candles; the view follows. One that is not in view
    /// begins anew: at the first bar in view or, backwards, at the last one.
    void moveCrosshair(int candles);
    /// Takes the crosshair of the keyboard and the marked range away.
    void dropCrosshair();

    /// Marks a range from the crosshair on by so many candles more.
    void markTo(int candles);
    bool hasMark() const { return m_mark.has_value(); }
    void zoomToMark();
    void clearMark();

    /// The wall times between which the candles are that are in view, or that are marked.
    std::pair<double, double> copiedTimes() const;
    /// The chart without crosshair and mark, with so many pixels for each of the screen's.
    QImage picture(double scale) const;
    /// As .png or .svg, which the path's suffix decides.
    Outcome savePicture(const QString& path) const;

    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// What is in view, or how far it can be moved, also for new bars.
    void rangeChanged();
    /// Another candle is pointed at, or none, or it is not the same any more.
    void pointedChanged();
    /// The chosen or the shown timeframe, or whether nights are shown.
    void timeframeChanged();
    /// After a step back or forward, which may have brought back another timeframe, or nights.
    void stepped();
    /// The user has moved or zoomed the view, or chosen another kind of it; neither new bars nor
    /// another size of the window tell this.
    void moved();
    /// Whether there is something to go back or forward to.
    void historyChanged();
    /// There is a marked range, or there is none any more.
    void markChanged();
    void contextMenuWanted(const QPoint& globalPlace);
    /// The user has asked by keys for the bars as text.
    void copyWanted();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    enum class Step {
        None,  ///< other bars or another size, and not the user
        Small, ///< of a walk
        Jump,  ///< from which the user can go back
    };
    // What the mouse does while its button is down.
    enum class Grip { None, Moving, Marking };
    // Positions within the first and the last slot that are marked, in either order.
    struct Mark
    {
        double from = 0;
        double to = 0;
    };

    void change(Step step, const std::function<void()>& how);
    void refresh();
    void layOut();
    QString heading() const;
    void updateCrosshair();
    void announce();
    double slotBelow(const QPointF& place) const;
    SlotRange markedRange() const;
    std::pair<double, double> timesOf(const SlotRange& range) const;
    void markTimes(const std::pair<double, double>& times);
    std::optional<double> fixedTime() const;
    std::optional<qint64> crosshairSlot() const;
    bool isCrosshairInView() const;
    std::optional<qint64> firstSlotInView(bool isForwards) const;
    void putCrosshair(qint64 slot);
    void follow(qint64 slot);
    void findTarget();
    void step(const std::optional<ViewHistory::State>& state);
    bool giveUp();
    bool moveByKey(const QKeyEvent& event);
    bool jumpByKey(const QKeyEvent& event);

    ChartViewport m_viewport;
    ViewHistory m_history;
    QString m_title;
    std::vector<std::shared_ptr<const ChartStudy>> m_studies;
    QList<ChartMark> m_marks;
    ChartLayout m_layout;
    std::optional<QPointF> m_mouse; // while it is over the chart
    Grip m_grip = Grip::None;
    double m_gripAt = 0; // distance from the left, or a slot, where the button went down
    std::optional<double> m_pointed; // the wall time at which the keyboard's crosshair is
    std::optional<QDate> m_target;   // the day whose first bar it is to stand on when it was read
    bool m_isAtFirst = false;        // that the view was moved to the first candle last
    std::optional<Crosshair> m_crosshair;
    std::optional<Mark> m_mark;
};

} // namespace vexdesk
