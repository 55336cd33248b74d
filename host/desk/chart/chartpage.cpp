// SPDX-License-Identifier: MIT
#include "desk/chart/chartpage.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/chartview.h"
#include "desk/chart/directorynames.h"
#include "desk/chart/fittedlabel.h"
#include "desk/chart/marksources.h"
#include "desk/chart/movingaverage.h"
#include "desk/chart/readout.h"
#include "desk/chart/seriesname.h"
#include "desk/chart/volumebyprice.h"
#include "desk/chart/wallclock.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSignalBlocker>
#include <QtGui/QClipboard>
#include <QtGui/QFocusEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QShowEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QToolButton>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

constexpr int spacing = 4;
constexpr int averagePeriod = 20; // candles
constexpr int priceRows = 24;

// What is shown of a series before anything was chosen.
Timeframe usualAmong(const QList<Timeframe>& offered)
{
    return offered.contains(Timeframe::Minute) ? Timeframe::Minute : offered.constFirst();
}

// The longest first.
Result<QList<int>> timeframesIn(const QString& directory)
{
    const Result<QStringList> names = namesInDirectory(directory);
    if (!names)
        return names.failure();
    QList<int> timeframes;
    for (const QString& name : *names) {
        const std::optional<DayFileKey> key = parseDayFileName(name);
        if (key && !timeframes.contains(key->timeframe))
            timeframes.append(key->timeframe);
    }
    std::sort(timeframes.begin(), timeframes.end(), std::greater<>());
    return timeframes;
}

// A slot of the chart is a step of the scroll bar, or more where they are too many for it.
double slotsPerStep(const SlotRange& reach)
{
    constexpr double mostSteps = 1e9;
    constexpr double finest = 0.1;
    return std::max(finest, reach.length() / mostSteps);
}

// Makes each number the one that has most digits.
void widen(Bar& bar, const Bar& other)
{
    bar.high = std::max({bar.high, std::abs(other.high), std::abs(other.low)});
    bar.open = bar.low = bar.close = bar.high;
    bar.volume = std::max(bar.volume, other.volume);
    bar.value = std::max(bar.value, other.value);
    bar.openInterest = std::max(bar.openInterest, other.openInterest);
}

std::shared_ptr<const ChartStudy> makeStudy(Study study)
{
    switch (study) {
    case Study::MovingAverage:
        return std::make_shared<MovingAverage>(averagePeriod);
    case Study::VolumeByPrice:
        return std::make_shared<VolumeByPrice>(priceRows);
    }
    return nullptr;
}

} // namespace

QString studyName(Study study)
{
    return makeStudy(study)->name();
}

ChartPage::ChartPage(const QString& root, const ChartState& state, MarkSources& marks,
                     QWidget* parent)
    : QWidget(parent)
    , m_directory(seriesPath(QDir(root), state.series.stockCode, state.series.boardCode,
                             state.series.securityName))
    , m_marks(marks)
    , m_state(state)
    , m_feed(root)
{
    setObjectName(QStringLiteral("chartPage"));
    m_readout = new FittedLabel;
    m_readout->setObjectName(QStringLiteral("chartReadout"));
    m_message = new QLabel;
    m_message->setObjectName(QStringLiteral("chartMessage"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setMargin(4 * spacing);
    m_pages = new QStackedWidget;
    m_chart = makeChart();
    m_pages->addWidget(m_message);
    m_pages->addWidget(m_chart);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing, spacing, spacing, spacing);
    layout->setSpacing(spacing);
    layout->addWidget(makeChoice());
    layout->addWidget(m_readout);
    layout->addWidget(makeProblem());
    layout->addWidget(m_pages, 1);
    keepKeysInChart();
    // As they stand, and not as they were made.
    const QList<QWidget*> order{m_timeframeBox, m_nightsButton, m_studiesButton,
                                m_showAll,      m_readAgain,    m_view};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
    m_view->setTitle(seriesText(series()));
    m_view->setNightsShown(m_state.areNightsShown);
    updateStudies();
    showParts();
    constexpr int askingTime = 100; // ms, also where a source tells changes without end
    m_askSoon.setSingleShot(true);
    m_askSoon.setInterval(askingTime);
    connectParts();
}

ChartPage::~ChartPage() = default;

void ChartPage::connectParts()
{
    connect(&m_feed, &SeriesFeed::loaded, this, &ChartPage::showBars);
    connect(&m_feed, &SeriesFeed::progressed, this, &ChartPage::showProgress);
    connect(&m_watcher, &PathWatcher::changed, this, &ChartPage::lookUp);
    connect(m_view, &ChartView::rangeChanged, this, &ChartPage::updateScrollBar);
    connect(m_view, &ChartView::rangeChanged, this, &ChartPage::want);
    connect(m_view, &ChartView::rangeChanged, this, &ChartPage::widenReadout);
    connect(m_view, &ChartView::pointedChanged, this, &ChartPage::showReadout);
    connect(m_view, &ChartView::timeframeChanged, this, &ChartPage::updateNote);
    connect(m_view, &ChartView::timeframeChanged, this, &ChartPage::changed);
    connect(m_view, &ChartView::stepped, this, &ChartPage::takeChosen);
    connect(m_view, &ChartView::historyChanged, this, &ChartPage::changed);
    connect(m_view, &ChartView::markChanged, this, &ChartPage::changed);
    connect(m_view, &ChartView::contextMenuWanted, this, &ChartPage::contextMenuWanted);
    connect(m_view, &ChartView::copyWanted, this, &ChartPage::copyBars);
    // Also where there is room for it in a narrow window, and when another chart is in front.
    connect(&m_copier, &BarsCopier::progressed, this, [this] {
        updateNote();
        if (m_copier.isAtWork())
            Q_EMIT told(m_copier.progress());
    });
    connect(&m_copier, &BarsCopier::told, this, &ChartPage::told);
    connect(m_scrollBar, &QScrollBar::valueChanged, this, &ChartPage::scrollTo);
    connect(&m_askSoon, &QTimer::timeout, this, &ChartPage::askForMarks);
    const auto askAnew = [this] {
        m_markedDays = {};
        askForMarksSoon();
    };
    connect(&m_marks, &MarkSources::allChanged, this, askAnew);
    connect(&m_marks, &MarkSources::changed, this, [this, askAnew](const SeriesName& series) {
        if (series == this->series())
            askAnew();
    });
}

QWidget* ChartPage::makeChoice()
{
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2 * spacing);
    m_timeframeBox = new QComboBox;
    m_timeframeBox->setObjectName(QStringLiteral("chartTimeframe"));
    m_timeframeBox->setAccessibleName(tr("Таймфрейм"));
    m_timeframeBox->setToolTip(tr("Таймфрейм свечей"));
    m_timeframeBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_nightsButton = new QToolButton;
    m_nightsButton->setObjectName(QStringLiteral("chartNights"));
    m_nightsButton->setText(tr("Ночи"));
    m_nightsButton->setToolTip(tr("Показать ночи, выходные и праздники: время идёт равномерно"));
    m_nightsButton->setCheckable(true);
    m_nightsButton->setChecked(m_state.areNightsShown);
    m_studiesButton = makeStudies();
    m_showAll = new QPushButton(tr("Показать всё"));
    m_showAll->setObjectName(QStringLiteral("chartShowAll"));
    m_showAll->setToolTip(tr("Показать все бары серии (Ctrl+0 или двойной щелчок по графику)"));
    makeNote();
    layout->addWidget(m_timeframeBox);
    layout->addWidget(m_nightsButton);
    layout->addWidget(m_studiesButton);
    layout->addWidget(m_showAll);
    layout->addWidget(m_note, 1);

    connect(m_timeframeBox, &QComboBox::activated, this, [this](int index) {
        chooseTimeframe(static_cast<Timeframe>(m_timeframeBox->itemData(index).toInt()));
    });
    connect(m_nightsButton, &QToolButton::clicked, this, &ChartPage::showNights);
    connect(m_showAll, &QPushButton::clicked, m_view, &ChartView::showAll);
    return row;
}

// What could not be read, above the chart that lacks it, for as long as that is so.
QWidget* ChartPage::makeProblem()
{
    m_problemRow = new QWidget;
    m_problemRow->setBackgroundRole(QPalette::ToolTipBase);
    m_problemRow->setAutoFillBackground(true);
    m_problemRow->hide();
    auto* const layout = new QHBoxLayout(m_problemRow);
    layout->setContentsMargins(2 * spacing, spacing, spacing, spacing);
    layout->setSpacing(2 * spacing);
    m_problem = new FittedLabel;
    m_problem->setObjectName(QStringLiteral("chartProblem"));
    m_problem->setForegroundRole(QPalette::ToolTipText);
    m_readAgain = new QPushButton(tr("Прочитать снова"));
    m_readAgain->setObjectName(QStringLiteral("chartReadAgain"));
    m_readAgain->setToolTip(tr("Прочитать снова то, что не удалось прочитать (F5)"));
    layout->addWidget(m_problem, 1);
    layout->addWidget(m_readAgain, 0, Qt::AlignTop);
    connect(m_readAgain, &QPushButton::clicked, this, &ChartPage::readAgain);
    return m_problemRow;
}

void ChartPage::makeNote()
{
    m_note = new FittedLabel;
    m_note->setObjectName(QStringLiteral("chartNote"));
}

// The row is reached by Tab; after a click into it the keys are the chart's.
void ChartPage::keepKeysInChart()
{
    for (QWidget* const widget :
         {static_cast<QWidget*>(m_timeframeBox), static_cast<QWidget*>(m_nightsButton),
          static_cast<QWidget*>(m_studiesButton), static_cast<QWidget*>(m_showAll),
          static_cast<QWidget*>(m_readAgain)}) {
        widget->setFocusPolicy(Qt::TabFocus);
        widget->installEventFilter(this);
    }
}

bool ChartPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        m_view->setFocus(Qt::MouseFocusReason);
    } else if (event->type() == QEvent::Wheel && watched == m_timeframeBox) {
        // Whoever turns the wheel over it on the way to the chart wants no other timeframe.
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

QToolButton* ChartPage::makeStudies()
{
    auto* const button = new QToolButton;
    button->setObjectName(QStringLiteral("chartStudies"));
    button->setText(tr("Индикаторы"));
    button->setToolTip(tr("Что рассчитать по свечам и нарисовать вместе с ними"));
    button->setPopupMode(QToolButton::InstantPopup);
    auto* const menu = new QMenu(button);
    for (const Study study : allStudies) {
        QAction* const item = menu->addAction(studyName(study));
        item->setCheckable(true);
        connect(item, &QAction::triggered, this,
                [this, study](bool isShown) { show(study, isShown); });
    }
    button->setMenu(menu);
    return button;
}

QWidget* ChartPage::makeChart()
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
    return page;
}

ChartState ChartPage::state() const
{
    ChartState state = m_state;
    if (!isEmpty()) {
        const ChartView::Place place = m_view->place();
        state.end = place.end;
        state.slotsInView = place.slots;
        state.isAll = place.isAll;
    }
    return state;
}

bool ChartPage::isEmpty() const
{
    return !m_series || m_series->isEmpty();
}

// Whoever goes to the chart means its picture. Not by a proxy: Tab would take the page for it, and
// pass over the boxes.
void ChartPage::focusInEvent(QFocusEvent* event)
{
    m_view->setFocus(event->reason());
}

void ChartPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return; // the window was only out of sight
    reserveReadout();
    lookUp();
}

void ChartPage::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (event->spontaneous())
        return;
    // A chart that nobody sees reads nothing while an import runs, and keeps no bars in memory.
    m_feed.stop();
    m_watcher.watch({});
    m_watcher.tellNoMoreLater();
    m_markedDays = {};
    letBarsGo();
}

// The view keeps its place among what is known of the days.
void ChartPage::letBarsGo()
{
    if (isEmpty())
        return;
    std::vector<SeriesDay> days = m_series->days();
    for (SeriesDay& day : days)
        day.bars.reset();
    m_series = std::make_shared<const BarSeries>(m_series->timeframe(), std::move(days));
    m_view->updateSeries(m_series);
}

void ChartPage::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    reserveReadout();
    fitProblem();
}

void ChartPage::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        reserveReadout();
}

void ChartPage::lookUp()
{
    if (!isVisible())
        return;
    m_isOutdated = m_lookUp.isRunning();
    if (m_isOutdated)
        return;
    m_watcher.watch({m_directory});
    m_lookUp.run([directory = m_directory] { return timeframesIn(directory); },
                 [this](const auto& stored) { takeStored(stored); });
}

void ChartPage::readAgain()
{
    lookUp();
    m_feed.readAgain();
}

// What is shown stays while the directory cannot be read.
void ChartPage::takeStored(const Result<QList<int>>& stored)
{
    if (m_isOutdated)
        m_watcher.tellSoon();
    m_watcher.tellNoMoreLater();
    if (!isVisible())
        return;
    m_look = stored ? Outcome() : Outcome(stored.failure());
    showProblem();
    if (!stored) {
        m_watcher.tellLater();
        if (!m_series)
            showMessage(stored.message());
        return;
    }
    m_stored = *stored;
    if (m_stored.isEmpty()) // a series that comes back while it is looked for may not be told of
        m_watcher.tellLater();
    offerTimeframes();
    chooseForAwaited();
    chooseSource();
}

void ChartPage::offerTimeframes()
{
    QList<Timeframe> offered;
    std::copy_if(allTimeframes.begin(), allTimeframes.end(), std::back_inserter(offered),
                 [this](Timeframe one) { return sourceOf(one, m_stored).has_value(); });
    const bool isChosenThere = m_state.timeframe && offered.contains(*m_state.timeframe);
    if (!isChosenThere && !offered.isEmpty())
        m_state.timeframe = usualAmong(offered);
    if (offered == m_offered && isChosenThere)
        return;
    m_offered = offered;
    const QSignalBlocker quiet(m_timeframeBox);
    m_timeframeBox->clear();
    for (const Timeframe timeframe : std::as_const(m_offered))
        m_timeframeBox->addItem(timeframeText(timeframe), static_cast<int>(timeframe));
    showParts();
}

// The timeframe of the files that the chosen candles are made of.
std::optional<int> ChartPage::source() const
{
    return m_state.timeframe ? sourceOf(*m_state.timeframe, m_stored) : std::nullopt;
}

bool ChartPage::isAwaitedIn(Timeframe timeframe) const
{
    const std::optional<int> made = sourceOf(timeframe, m_stored);
    return made && m_awaited->stored.contains(*made);
}

void ChartPage::chooseForAwaited()
{
    if (!m_awaited || !m_state.timeframe || isAwaitedIn(*m_state.timeframe))
        return;
    QList<Timeframe> having;
    std::copy_if(m_offered.begin(), m_offered.end(), std::back_inserter(having),
                 [this](Timeframe one) { return isAwaitedIn(one); });
    if (having.isEmpty())
        return;
    m_state.timeframe = usualAmong(having);
    showParts();
}

void ChartPage::chooseTimeframe(Timeframe timeframe)
{
    if (!m_offered.contains(timeframe))
        return;
    const bool isChosenAgain = m_state.timeframe == timeframe;
    m_state.timeframe = timeframe;
    chooseSource();
    if (isChosenAgain)
        m_view->setTimeframe(timeframe);
    showParts();
}

// As it was told last, a longer one may be shown in its place: that is not undone here.
void ChartPage::showChosenTimeframe()
{
    if (m_state.timeframe && *m_state.timeframe != m_view->timeframe())
        m_view->setTimeframe(*m_state.timeframe);
}

// What is shown stays until the bars of another source are there.
void ChartPage::chooseSource()
{
    const std::optional<int> made = source();
    if (!made) {
        m_feed.stop();
        m_state = state(); // for the case that it comes back
        m_series.reset();
        m_view->showSeries(std::make_shared<const BarSeries>());
        showProblem();
        showMessage(tr("Этой серии больше нет в хранилище."));
        return;
    }
    const SeriesKey key{series().stockCode, series().boardCode, series().securityName, *made};
    if (m_series && m_feed.key() == key)
        showChosenTimeframe();
    m_feed.choose(key);
}

// What the view has gone back or forward to.
void ChartPage::takeChosen()
{
    m_state.timeframe = m_view->timeframe();
    m_state.areNightsShown = m_view->areNightsShown();
    chooseSource();
    showParts();
}

void ChartPage::showNights(bool areShown)
{
    m_state.areNightsShown = areShown;
    m_view->setNightsShown(areShown);
    showParts();
}

void ChartPage::show(Study study, bool isShown)
{
    m_state.studies.removeAll(study);
    if (isShown)
        m_state.studies.append(study);
    updateStudies();
    showParts();
    Q_EMIT changed();
}

void ChartPage::updateStudies()
{
    std::vector<std::shared_ptr<const ChartStudy>> studies;
    for (const Study study : allStudies) {
        if (isShown(study))
            studies.push_back(makeStudy(study));
    }
    m_view->setStudies(std::move(studies));
}

// The row says what is chosen, by whichever way it was.
void ChartPage::showParts()
{
    if (m_state.timeframe)
        m_timeframeBox->setCurrentIndex(
            m_timeframeBox->findData(static_cast<int>(*m_state.timeframe)));
    m_timeframeBox->setEnabled(!m_offered.isEmpty());
    m_nightsButton->setChecked(m_state.areNightsShown);
    const QList<QAction*> items = m_studiesButton->menu()->actions();
    for (qsizetype i = 0; i < items.size(); ++i)
        items.at(i)->setChecked(isShown(allStudies[static_cast<size_t>(i)]));
    const bool canBeUsed = m_pages->currentWidget() == m_chart;
    for (QWidget* const widget :
         {static_cast<QWidget*>(m_nightsButton), static_cast<QWidget*>(m_studiesButton),
          static_cast<QWidget*>(m_showAll)})
        widget->setEnabled(canBeUsed);
    updateNote();
    Q_EMIT changed();
}

// What goes on is more urgent than what is so.
void ChartPage::updateNote()
{
    QString text;
    QString explained;
    if (m_copier.isAtWork()) {
        text = m_copier.progress();
    } else if (!m_reading.isEmpty()) {
        text = m_reading;
    } else if (!isEmpty() && m_view->shownTimeframe() != m_view->timeframe()) {
        text = tr("показаны свечи: %1").arg(timeframeText(m_view->shownTimeframe()));
        explained = tr("Для выбранного таймфрейма не хватает места: приблизьте график");
    }
    m_note->setText(text);
    m_note->setToolTip(explained);
}

void ChartPage::showBars(const std::shared_ptr<const BarSeries>& series)
{
    const bool isFirst = isEmpty();
    if (series->isEmpty())
        m_state = state(); // for the case that its bars come back
    m_series = series;
    if (isFirst)
        beginToShow();
    else
        m_view->updateSeries(series);
    showChosenTimeframe();
    showProblem();
    if (series->isEmpty()) {
        showMessage(tr("В этой серии нет баров, которые можно показать."));
        return;
    }
    m_pages->setCurrentWidget(m_chart);
    goToAwaited();
    want();
    showParts();
}

void ChartPage::beginToShow()
{
    showChosenTimeframe();
    m_view->showSeries(m_series);
    m_view->setPlace({m_state.end, m_state.slotsInView, m_state.isAll});
}

void ChartPage::goTo(const QDate& day, const QTime& time, const QList<int>& stored)
{
    m_awaited = Moment{day, time, stored};
    if (!isVisible() || m_offered.isEmpty())
        return; // until it is known what is stored
    // They may have come while the chart was not in front.
    std::copy_if(stored.begin(), stored.end(), std::back_inserter(m_stored),
                 [this](int timeframe) { return !m_stored.contains(timeframe); });
    offerTimeframes();
    chooseForAwaited();
    chooseSource();
    if (!isEmpty())
        goToAwaited();
}

void ChartPage::goToAwaited()
{
    if (!m_awaited || source() != m_series->timeframe())
        return; // until the bars of the timeframe that was chosen for it are there
    const Moment moment = *m_awaited;
    m_awaited.reset();
    if (moment.time.isValid())
        m_view->goTo(wallTime(moment.day, moment.time));
    else
        m_view->goTo(moment.day);
}

QList<QDate> ChartPage::storedDays() const
{
    QList<QDate> stored;
    for (const SeriesDay& day : m_series ? m_series->days() : std::vector<SeriesDay>()) {
        if (!day.summary || day.summary->count > 0) // one that was not read may have some
            stored.append(day.day);
    }
    return stored;
}

void ChartPage::want()
{
    if (!m_series || !isVisible())
        return;
    const auto [first, last] = m_view->daysInView();
    m_feed.want({first, last, m_view->needsBars()});
    if (first < m_markedDays.first || last > m_markedDays.second || !m_markedDays.first.isValid())
        askForMarksSoon();
}

void ChartPage::askForMarksSoon()
{
    if (!m_askSoon.isActive())
        m_askSoon.start();
}

// With as many days on both sides: not with every step of the view.
void ChartPage::askForMarks()
{
    if (isEmpty() || !isVisible())
        return;
    const auto [first, last] = m_view->daysInView();
    if (!first.isValid())
        return; // a stretch of nights
    const qint64 margin = first.daysTo(last) + 1;
    m_markedDays = {first.addDays(-margin), last.addDays(margin)};
    m_view->setMarks(m_marks.marks(series(), m_markedDays.first, m_markedDays.second));
}

void ChartPage::copyBars()
{
    if (isEmpty())
        return;
    const auto [from, to] = m_view->copiedTimes();
    m_copier.copy({m_series, m_directory, m_view->shownTimeframe(), from, to});
}

void ChartPage::giveUpCopying()
{
    m_copier.giveUp();
}

void ChartPage::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_copier.isAtWork())
        giveUpCopying();
    else if (event->key() == Qt::Key_F5)
        readAgain();
    else
        QWidget::keyPressEvent(event);
}

void ChartPage::copyPicture()
{
    QGuiApplication::clipboard()->setImage(m_view->picture(devicePixelRatioF()));
    Q_EMIT told(tr("Картинка скопирована в буфер обмена"));
}

Outcome ChartPage::savePicture(const QString& path)
{
    const Outcome saved = m_view->savePicture(path);
    const QFileInfo file(path);
    if (saved)
        Q_EMIT told(tr("Картинка %1 сохранена в каталоге %2")
                        .arg(file.fileName(), QDir::toNativeSeparators(file.absolutePath())));
    return saved;
}

void ChartPage::showProgress(int done, int total)
{
    m_reading = done == total ? QString() : tr("Чтение баров: день %1 из %2").arg(done).arg(total);
    // Bars that are shown stay until they can be shown anew.
    if (isEmpty() && !m_reading.isEmpty())
        showMessage(m_reading);
    else
        updateNote();
}

void ChartPage::showMessage(const QString& text)
{
    m_message->setText(text);
    m_pages->setCurrentWidget(m_message);
    m_readout->clear();
    showParts();
}

// The directory, or what is wrong with the days, each as a whole sentence with the path in it.
QString ChartPage::problem() const
{
    for (const Outcome& directory : {m_look, m_feed.listing()}) {
        if (!directory)
            return directory.message();
    }
    if (!m_series)
        return QString();
    QStringList problems{unreadDays(), otherLines()};
    problems.removeAll(QString());
    return problems.join(QStringLiteral("   "));
}

QString ChartPage::unreadDays() const
{
    const std::vector<SeriesDay>& days = m_series->days();
    const auto isUnread = [](const SeriesDay& day) { return !day.reading; };
    const auto first = std::find_if(days.begin(), days.end(), isUnread);
    if (first == days.end())
        return QString();
    const auto count = std::count_if(first, days.end(), isUnread);
    const QString path = pathOf(first->day);
    if (count == 1)
        return tr("1 день не прочитан: %1: %2").arg(path, first->reading.message());
    return tr("Не прочитано дней: %1. Первый из них: %2: %3")
        .arg(QString::number(count), path, first->reading.message());
}

// Of the days that were read and have bars too: without them a file counts as not read.
QString ChartPage::otherLines() const
{
    const SeriesDay* first = nullptr;
    qsizetype lines = 0;
    qsizetype days = 0;
    for (const SeriesDay& day : m_series->days()) {
        if (!day.reading || !day.summary || day.summary->otherLines == 0)
            continue;
        first = first ? first : &day;
        lines += day.summary->otherLines;
        ++days;
    }
    if (!first)
        return QString();
    const QString count = QString::number(lines);
    if (days == 1)
        return tr("Строк, которые не бары и не показаны: %1, файл: %2")
            .arg(count, pathOf(first->day));
    return tr("Строк, которые не бары и не показаны: %1, дней с ними: %2. Первый из них: %3")
        .arg(count, QString::number(days), pathOf(first->day));
}

QString ChartPage::pathOf(const QDate& day) const
{
    return QDir::toNativeSeparators(m_directory + u'/' + dayFileName(day, m_series->timeframe()));
}

void ChartPage::showProblem()
{
    const QString text = problem();
    m_problem->setText(text);
    m_problemRow->setVisible(!text.isEmpty());
    fitProblem();
}

void ChartPage::fitProblem()
{
    constexpr int mostLines = 3;
    const int width = contentsRect().width() - m_readAgain->sizeHint().width() - 8 * spacing;
    m_problem->setLines(
        std::clamp(m_problem->linesFor(m_problem->text(), std::max(1, width)), 1, mostLines));
}

// As many lines as the longest text of the bars that were in view has, so that the chart does not
// jump when the crosshair comes and goes; more only for what a mark has to say.
void ChartPage::reserveReadout()
{
    const CandleKind& kind = m_view->chart().kind;
    Candle longest;
    longest.day = wallDate(0);
    longest.bar = m_widest;
    const auto& candles = m_view->chart().candles;
    if (!candles.empty()) {
        const Candle& last = candles.back().candle;
        longest.begin = last.begin;
        longest.end = last.end;
        longest.day = last.day;
        longest.bar.time = last.bar.time;
        longest.count = last.count;
    }
    const int width = std::max(1, contentsRect().width() - 2 * spacing);
    const auto linesFor = [this, width](const QString& text) {
        return m_readout->linesFor(text, width);
    };
    const int decimals = m_view->chart().prices.decimals;
    constexpr int mostLines = 5;
    m_readout->setLines(std::min(mostLines, std::max(linesFor(readoutText(longest, kind, decimals)),
                                                     linesFor(m_readout->text()))));
}

// What was wide once is reckoned with again, at the same timeframe.
void ChartPage::widenReadout()
{
    const ChartLayout& chart = m_view->chart();
    if (chart.kind.shown != m_widestAt)
        m_widest = Bar();
    m_widestAt = chart.kind.shown;
    const Bar before = m_widest;
    for (const PlacedCandle& placed : chart.candles)
        widen(m_widest, placed.candle.bar);
    if (m_widest != before)
        reserveReadout();
}

void ChartPage::showReadout()
{
    m_readout->setText(m_view->readout());
    reserveReadout();
}

void ChartPage::updateScrollBar()
{
    const SlotRange& range = m_view->range();
    const SlotRange reach = m_view->reach();
    const double step = slotsPerStep(reach);
    const auto steps = [step](double length) { return static_cast<int>(length / step); };
    const QSignalBlocker quiet(m_scrollBar);
    const int page = steps(range.length());
    m_scrollBar->setRange(0, isEmpty() ? 0 : std::max(0, steps(reach.length() - range.length())));
    m_scrollBar->setPageStep(std::max(1, page));
    constexpr int lines = 10; // to a page
    m_scrollBar->setSingleStep(std::max(1, page / lines));
    m_scrollBar->setValue(steps(range.begin - reach.begin));
}

void ChartPage::scrollTo(int value)
{
    const SlotRange reach = m_view->reach();
    const double begin = reach.begin + value * slotsPerStep(reach);
    m_view->setRange({begin, begin + m_view->range().length()});
}

} // namespace vexdesk
