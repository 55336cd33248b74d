// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartlayout.h"
#include "desk/chart/chartstudy.h"
#include "desk/chart/timeframe.h"

#include <vexdesk/icharts.h>
#include <vexdesk/outcome.h>

#include <QtWidgets/QWidget>

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
    /// What has to be remembered to show the same again.
    struct Place
    {
        qint64 end = 0;   ///< the wall time at the right edge; 0 is the end, whatever comes there
        double slots = 0; ///< of the chosen timeframe, from edge to edge; 0 for as many as usual

        bool operator==(const Place&) const = default;
    };

    explicit ChartView(QWidget* parent = nullptr);
    ~ChartView() override;

    /// What is shown, for the chart's heading and for a screen reader.
    void setTitle(const QString& title);
    /// Shows another series, at its end. There is nothing to go back to any more.
    void showSeries(const std::shared_ptr<const BarSeries>& series);
    /// Shows what the series has become, at the same place. Its stored timeframe may be another.
    void updateSeries(const std::shared_ptr<const BarSeries>& series);
    bool isEmpty() const;

    /// The chosen timeframe and the one that is shown: a longer one where the candles of the chosen
    /// one would be too thin to be seen.
    Timeframe timeframe() const;
    Timeframe shownTimeframe() const;
    void setTimeframe(Timeframe timeframe);
    bool areNightsShown() const;
    void setNightsShown(bool areShown);

    void setStudies(std::vector<std::shared_ptr<const ChartStudy>> studies);
    /// Those of the days in view; what is marked elsewhere is not seen.
    void setMarks(const QList<ChartMark>& marks);

    Place place() const;
    void setPlace(const Place& place);
    /// The slots in view, those between which it can be moved, and another part of them.
    const SlotRange& range() const;
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
    bool canGoBack() const;
    void goBack();
    bool canGoForward() const;
    void goForward();

    /// What a feed must have read for what is in view.
    std::pair<QDate, QDate> daysInView() const;
    bool needsBars() const;

    /// What is drawn now, and where.
    const ChartLayout& chart() const;
    /// Where the mouse or the keyboard points, nothing where it points at no slot.
    const std::optional<Crosshair>& crosshair() const;
    /// The candle at the crosshair, null when there is none.
    const Candle* pointed() const;
    /// What is said of it, with the marks; empty when there is none.
    QString readout() const;
    /// Moves the keyboard's crosshair by so many candles; the view follows.
    void moveCrosshair(int candles);
    /// Takes the crosshair of the keyboard and the marked range away.
    void dropCrosshair();

    /// Marks a range from the crosshair on by so many candles more.
    void markTo(int candles);
    bool hasMark() const;
    void zoomToMark();
    void clearMark();

    /// The candles in view, or those of the marked range, as lines with tabs and a heading, as a
    /// spreadsheet takes them.
    QString barsAsText() const;
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
    /// Whether there is something to go back or forward to.
    void historyChanged();
    /// There is a marked range, or there is none any more.
    void markChanged();
    void contextMenuWanted(const QPoint& globalPlace);
    /// The user has asked by keys for the bars as text.
    void copyWanted();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::shared_ptr<const BarSeries> m_series;
};

} // namespace vexdesk
