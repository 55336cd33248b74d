// SPDX-License-Identifier: MIT
#include "desk/chart/chartpanel.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/chartview.h"
#include "desk/chart/readout.h"
#include "desk/chart/seriesbox.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QSignalBlocker>
#include <QtGui/QFocusEvent>
#include <QtGui/QShowEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStackedWidget>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

const QString settingsGroup = QStringLiteral("Desk/Chart");
const QString stockKey = QStringLiteral("stock");
const QString boardKey = QStringLiteral("board");
const QString securityKey = QStringLiteral("security");
const QString timeframeKey = QStringLiteral("timeframe");

constexpr int spacing = 4;

SeriesKey rememberedSeries()
{
    const AppSettings settings(settingsGroup);
    return {settings.value(stockKey).toString(), settings.value(boardKey).toString(),
            settings.value(securityKey).toString(), settings.value(timeframeKey).toInt()};
}

// The directories without bars too: a series is new when its first day file comes.
StoreListing listingOf(const QString& root)
{
    const StoreDirectories below = storeDirectories(QDir(root));
    return {listStore(QDir(root)), QStringList{root} + below.stocks + below.boards + below.series};
}

} // namespace

ChartPanel::ChartPanel(const QString& root, QWidget* parent)
    : QWidget(parent)
    , m_root(root)
    , m_wanted(rememberedSeries())
    , m_feed(root)
{
    setObjectName(QStringLiteral("chartPanel"));
    m_readout = new QLabel;
    m_readout->setObjectName(QStringLiteral("chartReadout"));
    m_readout->setTextFormat(Qt::PlainText);
    m_readout->setWordWrap(true);
    m_readout->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_message = new QLabel;
    m_message->setObjectName(QStringLiteral("chartMessage"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setMargin(4 * spacing);
    m_pages = new QStackedWidget;
    m_chartPage = makeChart();
    m_pages->addWidget(m_chartPage);
    m_pages->addWidget(m_message);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing, spacing, spacing, spacing);
    layout->setSpacing(spacing);
    layout->addWidget(makeChoice());
    layout->addWidget(m_readout);
    layout->addWidget(m_pages, 1);
    // As they stand, and not as they were made.
    setTabOrder(m_seriesBox, m_timeframeBox);
    setTabOrder(m_timeframeBox, m_showAll);
    setTabOrder(m_showAll, m_view);

    connect(&m_feed, &SeriesFeed::loaded, this, &ChartPanel::showBars);
    connect(&m_feed, &SeriesFeed::progressed, this, &ChartPanel::showProgress);
    connect(&m_storeWatcher, &PathWatcher::changed, this, &ChartPanel::listStoredSoon);
    connect(&m_listing, &QFutureWatcherBase::finished, this, &ChartPanel::setStored);
}

ChartPanel::~ChartPanel() = default;

// Whoever goes to the chart means its picture. Not by a proxy: Tab would take the panel for it, and
// pass over the boxes.
void ChartPanel::focusInEvent(QFocusEvent* event)
{
    m_view->setFocus(event->reason());
}

QSize ChartPanel::sizeHint() const
{
    constexpr QSize usual(640, 380);
    return usual;
}

QWidget* ChartPanel::makeChoice()
{
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2 * spacing);
    m_seriesBox = new SeriesBox;
    m_seriesBox->setObjectName(QStringLiteral("chartSeries"));
    m_seriesBox->setAccessibleName(tr("Серия"));
    m_timeframeBox = new QComboBox;
    m_timeframeBox->setObjectName(QStringLiteral("chartTimeframe"));
    m_timeframeBox->setAccessibleName(tr("Таймфрейм"));
    m_timeframeBox->setToolTip(tr("Таймфрейм сохранённых баров"));
    m_timeframeBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_showAll = new QPushButton(tr("Показать всё"));
    m_showAll->setObjectName(QStringLiteral("chartShowAll"));
    m_showAll->setToolTip(tr("Показать все бары серии (Ctrl+0 или двойной щелчок по графику)"));
    layout->addWidget(m_seriesBox, 1);
    layout->addWidget(m_timeframeBox);
    layout->addWidget(m_showAll);

    connect(m_seriesBox, &SeriesBox::aboutToOpen, this, &ChartPanel::listStoredSoon);
    connect(m_seriesBox, &QComboBox::currentIndexChanged, this, &ChartPanel::chooseSeries);
    connect(m_timeframeBox, &QComboBox::currentIndexChanged, this, &ChartPanel::chooseTimeframe);
    connect(m_showAll, &QPushButton::clicked, m_view, &ChartView::showAll);
    return row;
}

QWidget* ChartPanel::makeChart()
{
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_view = new ChartView;
    m_scrollBar = new QScrollBar(Qt::Horizontal);
    m_scrollBar->setObjectName(QStringLiteral("chartScrollBar"));
    layout->addWidget(m_view, 1);
    layout->addWidget(m_scrollBar);
    connect(m_view, &ChartView::rangeChanged, this, &ChartPanel::updateScrollBar);
    connect(m_view, &ChartView::pointedChanged, this, &ChartPanel::updateReadout);
    connect(m_scrollBar, &QScrollBar::valueChanged, this, &ChartPanel::scrollTo);
    return page;
}

void ChartPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return; // the window was only out of sight
    reserveReadout();
    listStoredSoon();
}

void ChartPanel::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (event->spontaneous())
        return;
    // A chart that nobody sees reads nothing while an import runs.
    m_feed.stop();
    m_storeWatcher.watch({});
}

void ChartPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    reserveReadout();
}

void ChartPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        reserveReadout();
}

void ChartPanel::listStoredSoon()
{
    m_isListOutdated = m_listing.isRunning();
    if (isVisible() && !m_isListOutdated)
        m_listing.setFuture(QtConcurrent::run(&m_pool, listingOf, m_root));
}

void ChartPanel::setStored()
{
    if (m_isListOutdated)
        m_storeWatcher.tellSoon();
    if (!isVisible())
        return;
    const StoreListing stored = m_listing.result();
    m_storeWatcher.watch(stored.directories);
    m_seriesBox->setStored(stored.series);
    if (!m_seriesBox->setSeries(m_wanted) && m_seriesBox->currentIndex() < 0 &&
        m_seriesBox->count() > 0)
        m_seriesBox->setSeries(m_seriesBox->itemData(0).value<SeriesKey>());
    const std::optional<SeriesKey> series = m_seriesBox->series();
    if (!series) {
        showNothing();
        return;
    }
    offerTimeframes(*series);
    SeriesKey key = *series;
    key.timeframe = m_timeframeBox->currentData().toInt();
    m_feed.choose(key);
}

void ChartPanel::offerTimeframes(const SeriesKey& key)
{
    const QList<int> timeframes = m_seriesBox->timeframesOf(key);
    // Where the user has not chosen any, the longest.
    const int wanted = key.isSameSeriesAs(m_wanted) ? m_wanted.timeframe : 0;
    const QSignalBlocker quiet(m_timeframeBox);
    QList<int> offered;
    for (int i = 0; i < m_timeframeBox->count(); ++i)
        offered.append(m_timeframeBox->itemData(i).toInt());
    if (offered != timeframes) {
        m_timeframeBox->clear();
        for (const int timeframe : timeframes) {
            QString text = tr("Бары: %1").arg(intervalText(timeframe));
            if (timeframe == secondTimeframe)
                text = tr("1 секунда");
            else if (timeframe == minuteTimeframe)
                text = tr("1 минута");
            m_timeframeBox->addItem(text, timeframe);
        }
    }
    m_timeframeBox->setCurrentIndex(std::max(0, m_timeframeBox->findData(wanted)));
}

void ChartPanel::chooseSeries()
{
    const std::optional<SeriesKey> series = m_seriesBox->series();
    if (!series)
        return;
    // A timeframe that both series have is kept.
    SeriesKey key = *series;
    key.timeframe = m_timeframeBox->currentData().toInt();
    m_wanted = key;
    offerTimeframes(key);
    m_seriesBox->setSeries(key);
    chooseTimeframe();
}

void ChartPanel::chooseTimeframe()
{
    const std::optional<SeriesKey> series = m_seriesBox->series();
    if (!series || m_timeframeBox->currentIndex() < 0)
        return;
    SeriesKey key = *series;
    key.timeframe = m_timeframeBox->currentData().toInt();
    remember(key);
    m_feed.choose(key);
}

void ChartPanel::remember(const SeriesKey& key)
{
    m_wanted = key;
    AppSettings settings(settingsGroup);
    settings.setValue(stockKey, key.stockCode);
    settings.setValue(boardKey, key.boardCode);
    settings.setValue(securityKey, key.securityName);
    settings.setValue(timeframeKey, key.timeframe);
}

void ChartPanel::showNothing()
{
    m_feed.stop();
    m_shown.reset();
    m_series.reset();
    const QSignalBlocker quiet(m_timeframeBox);
    m_timeframeBox->clear();
    showMessage(tr("Сохранённых баров пока нет.\n\n"
                   "Чтобы импортировать их из файла, выберите в меню терминала команду импорта "
                   "загруженного модуля."));
}

void ChartPanel::showBars(const std::shared_ptr<const BarSeries>& series)
{
    const SeriesKey& key = m_feed.key();
    m_series = series;
    if (m_shown && m_shown->isSameSeriesAs(key))
        m_view->updateSeries(series);
    else
        m_view->showSeries(series);
    m_shown = key;
    if (series->isEmpty()) {
        showMessage(tr("В этой серии нет баров, которые можно показать."));
        return;
    }
    m_pages->setCurrentWidget(m_chartPage);
    for (QWidget* const widget :
         {static_cast<QWidget*>(m_timeframeBox), static_cast<QWidget*>(m_showAll)})
        widget->setEnabled(true);
    reserveReadout();
}

void ChartPanel::showProgress(int done, int total)
{
    // Bars that are shown stay until they can be shown anew.
    if (!m_shown || !m_shown->isSameSeriesAs(m_feed.key()))
        showMessage(tr("Чтение баров: день %1 из %2").arg(done).arg(total));
}

void ChartPanel::showMessage(const QString& text)
{
    m_message->setText(text);
    m_pages->setCurrentWidget(m_message);
    m_readout->clear();
    m_timeframeBox->setEnabled(m_timeframeBox->count() > 0);
    m_showAll->setEnabled(false);
}

void ChartPanel::updateScrollBar()
{
    const SlotRange& range = m_view->range();
    const SlotRange reach = m_view->reach();
    const QSignalBlocker quiet(m_scrollBar);
    const int page = static_cast<int>(range.length());
    m_scrollBar->setRange(0, std::max(0, static_cast<int>(reach.length() - range.length())));
    m_scrollBar->setPageStep(std::max(1, page));
    constexpr int lines = 10; // to a page
    m_scrollBar->setSingleStep(std::max(1, page / lines));
    m_scrollBar->setValue(static_cast<int>(range.begin - reach.begin));
}

void ChartPanel::scrollTo(int value)
{
    const double length = m_view->range().length();
    const double begin = m_view->reach().begin + value;
    m_view->setRange({begin, begin + length});
}

void ChartPanel::updateReadout()
{
    m_readout->setText(m_view->readout());
}

void ChartPanel::reserveReadout()
{
    const QString text = m_view->readout();
    const QFontMetrics metrics(m_readout->font());
    const int width = std::max(1, contentsRect().width() - 2 * spacing);
    m_readout->setMinimumHeight(
        metrics.boundingRect(QRect(0, 0, width, 0), Qt::TextWordWrap, text).height());
}

} // namespace vexdesk
