// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/seriesfeed.h"

#include <vexdesk/history/storecatalog.h>

#include <QtCore/QFutureWatcher>
#include <QtCore/QThreadPool>
#include <QtWidgets/QWidget>

#include <optional>

class QComboBox;
class QLabel;
class QPushButton;
class QScrollBar;
class QStackedWidget;

namespace vexdesk {

class ChartView;
class SeriesBox;

/// What is stored, and the directories that tell when that changes.
struct StoreListing
{
    QList<StoredSeries> series;
    QStringList directories;
};

/// The chart with what belongs to it: the choice of the series and of the timeframe, the line that
/// reads out the bar at the mouse, and the scroll bar. Follows the store while it is shown, and
/// remembers the user's choice in the settings. User-interface thread only.
class ChartPanel final : public QWidget
{
    Q_OBJECT

public:
    /// `root` is the store's.
    explicit ChartPanel(const QString& root, QWidget* parent = nullptr);
    ~ChartPanel() override;

    QSize sizeHint() const override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // To list a store takes longer than to look at one series: not as often while an import runs.
    static constexpr int listDelay = 500; // ms

    QWidget* makeChoice();
    QWidget* makeChart();

    /// Looks in a thread of its own for what is stored, and again when the store changes.
    void listStoredSoon();
    void setStored();

    void chooseSeries();
    void chooseTimeframe();
    void remember(const SeriesKey& key);
    void showNothing();
    void offerTimeframes(const SeriesKey& key);

    void showBars(const std::shared_ptr<const BarSeries>& series);
    void showProgress(int done, int total);
    void showMessage(const QString& text);
    void updateScrollBar();
    void scrollTo(int value);
    void updateReadout();
    void reserveReadout();

    QString m_root;
    SeriesKey m_wanted; // what the user has chosen last, whether it is stored now or not
    std::optional<SeriesKey> m_shown;
    SeriesFeed m_feed;
    PathWatcher m_storeWatcher{listDelay};
    QFutureWatcher<StoreListing> m_listing;
    bool m_isListOutdated = false; // something has changed since the listing began
    std::shared_ptr<const BarSeries> m_series;

    SeriesBox* m_seriesBox = nullptr;
    QComboBox* m_timeframeBox = nullptr;
    QPushButton* m_showAll = nullptr;
    QLabel* m_readout = nullptr;
    QStackedWidget* m_pages = nullptr;
    QWidget* m_chartPage = nullptr;
    ChartView* m_view = nullptr;
    QScrollBar* m_scrollBar = nullptr;
    QLabel* m_message = nullptr;
    QThreadPool m_pool; // an import that fills the global one does not keep the chart waiting
};

} // namespace vexdesk
