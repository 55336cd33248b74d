// SPDX-License-Identifier: MIT
// The chart under mouse, wheel and keys.

#include "desk/chart/chartitems.h"
#include "desk/chart/chartview.h"
#include "desk/chart/wallclock.h"
#include "support/strictlog.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGraphicsTextItem>
#include <QtWidgets/QPushButton>

#include <cmath>
#include <memory>

using vexdesk::Bar;
using vexdesk::BarSeries;
using vexdesk::Candle;
using vexdesk::ChartLayout;
using vexdesk::ChartView;
using vexdesk::DayBars;
using vexdesk::TimeAxisItem;
using vexdesk::TimeRange;
using vexdesk::wallTime;

namespace {

constexpr int minute = 60;
const QDate firstDay(2024, 1, 15);

Bar makeBar(const QDate& day, const QTime& time, int number)
{
    Bar bar;
    bar.time = wallTime(day, time);
    bar.open = 100 + number % 17 / 4.0;
    bar.close = 100 + number % 13 / 4.0;
    bar.high = std::max(bar.open, bar.close) + 0.25;
    bar.low = std::min(bar.open, bar.close) - 0.5;
    bar.volume = 100 + number;
    return bar;
}

// Minute bars that end at 10:01 and later.
std::shared_ptr<const BarSeries> makeSeries(int days, int barsPerDay)
{
    std::vector<BarSeries::Day> parts;
    for (int d = 0; d < days; ++d) {
        std::vector<Bar> bars;
        for (int i = 1; i <= barsPerDay; ++i)
            bars.push_back(makeBar(firstDay.addDays(d), QTime(10, 0).addSecs(i * minute), i));
        parts.push_back(std::make_shared<const DayBars>(std::move(bars), 2));
    }
    return std::make_shared<const BarSeries>(std::move(parts));
}

bool isNear(double left, double right, double off = 1e-3)
{
    return std::abs(left - right) <= off;
}

bool isNear(const TimeRange& left, const TimeRange& right)
{
    return isNear(left.begin, right.begin, 0.1) && isNear(left.end, right.end, 0.1);
}

double brightness(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const double left = brightness(one) + 0.05;
    const double right = brightness(other) + 0.05;
    return std::max(left, right) / std::min(left, right);
}

} // namespace

class TestChartView final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_view.reset(); }

    void showsTheLastDayAtFirst();
    void drawsRisingBarsHollowAndFallingOnesFilled();
    void drawsNothingWhereThereIsNoBar();
    void pricesFollowWhatIsShown();
    void theHighestVolumeLineHasRoomForItsLabel();
    void aDateIsAlwaysShown_data();
    void aDateIsAlwaysShown();
    void volumesStandWithTheirThousandsApart();
    void withoutVolumesThereIsNoAxisOfThem();
    void theFocusIsSeen();
    void bothPanesShareTheTimes();
    void candlesNeverStandCloserThanTheyCanBeSeen();
    void theWheelZoomsAroundTheMouse();
    void theWheelScrollsWithShiftAndToTheSide();
    void theMouseDragsTheTimes();
    void keysScrollAndZoom();
    void theEndsOfALongSeriesShowBars();
    void controlZeroAndADoubleClickShowEverything();
    void zoomingHasLimits();
    void theMouseReadsABar_data();
    void theMouseReadsABar();
    void theCrosshairSnapsToTheNearestBar();
    void theCrosshairGoesWithTheMouse();
    void theCrosshairIsDrawn();
    void aDragHidesTheCrosshair();
    void keepsItsPlaceWhenBarsChange();
    void followsNewBarsAtTheRightEnd();
    void oneBarCanBeShown();
    void anEmptySeriesTakesMouseAndKeys();
    void colorsCanBeReadOnEveryGround_data();
    void colorsCanBeReadOnEveryGround();
    void followsThePalette();

private:
    void wheel(QPoint place, QPoint angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void moveTo(QPoint place, Qt::MouseButtons buttons = Qt::NoButton);
    QPoint middle() const { return m_view->chart().pricePane.center().toPoint(); }
    const Candle& candleAt(const QTime& time) const;
    QImage picture() const { return m_view->grab().toImage(); }
    void showOneBar(qint64 volume);
    QStringList volumeLabels() const;

    std::unique_ptr<ChartView> m_view;
    std::shared_ptr<const BarSeries> m_series;
};

void TestChartView::init()
{
    testsupport::failOnStrayWarnings();
    m_view = std::make_unique<ChartView>();
    m_view->resize(800, 400);
    m_view->show();
    m_view->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    m_series = makeSeries(3, 120);
    m_view->showSeries(m_series, minute);
}

void TestChartView::wheel(QPoint place, QPoint angle, Qt::KeyboardModifiers modifiers)
{
    QWheelEvent event(place, m_view->viewport()->mapToGlobal(QPointF(place)), QPoint(), angle,
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_view->viewport(), &event);
}

void TestChartView::moveTo(QPoint place, Qt::MouseButtons buttons)
{
    QMouseEvent event(QEvent::MouseMove, place, m_view->viewport()->mapToGlobal(QPointF(place)),
                      Qt::NoButton, buttons, Qt::NoModifier);
    QApplication::sendEvent(m_view->viewport(), &event);
}

const Candle& TestChartView::candleAt(const QTime& time) const
{
    for (const Candle& candle : m_view->chart().candles) {
        if (vexdesk::wallClock(candle.end) == time)
            return candle;
    }
    return m_view->chart().candles.front();
}

void TestChartView::showsTheLastDayAtFirst()
{
    const QDate last = firstDay.addDays(2);
    QVERIFY(m_view->range().begin <= double(wallTime(last, QTime(10, 0))));
    QVERIFY(m_view->range().begin > double(wallTime(last, QTime(9, 30))));
    QVERIFY(m_view->range().end >= double(wallTime(last, QTime(12, 0))));
    QVERIFY(m_view->range().end < double(wallTime(last, QTime(12, 30))));
    QCOMPARE(m_view->chart().candles.size(), 120U);
    QCOMPARE(m_view->chart().interval, minute);
}

void TestChartView::drawsRisingBarsHollowAndFallingOnesFilled()
{
    const double begin = double(wallTime(firstDay, QTime(10, 26)));
    m_view->setRange({begin, begin + 24 * minute});
    const QImage image = picture();
    const ChartLayout& chart = m_view->chart();
    const auto colors = vexdesk::ChartColors::of(m_view->palette());
    int rising = 0;
    int falling = 0;
    for (const Candle& candle : chart.candles) {
        const vexdesk::CandleColumn column = vexdesk::candleColumn(chart, candle);
        const double open = ChartLayout::yOf(candle.bar.open, chart.pricePane, chart.prices);
        const double close = ChartLayout::yOf(candle.bar.close, chart.pricePane, chart.prices);
        if (std::abs(open - close) < 8 || column.left < chart.pricePane.left())
            continue;
        const int y = static_cast<int>((open + close) / 2);
        const QColor inside = image.pixelColor(int(column.left + column.width / 4), y);
        const QColor edge = image.pixelColor(int(column.left), y);
        if (candle.bar.close < candle.bar.open) {
            QCOMPARE(inside, colors.falling);
            QCOMPARE(edge, colors.falling);
            ++falling;
        } else {
            QCOMPARE(inside, colors.background);
            QCOMPARE(edge, colors.rising);
            ++rising;
        }
        // The volume below it is drawn in the same way and no higher than it is.
        const double top =
            ChartLayout::yOf(double(candle.bar.volume), chart.volumePane, chart.volumes);
        QCOMPARE(image.pixelColor(int(column.left), int(top + chart.volumePane.bottom()) / 2),
                 candle.bar.close < candle.bar.open ? colors.falling : colors.rising);
    }
    QVERIFY(rising > 1 && falling > 1);
}

void TestChartView::drawsNothingWhereThereIsNoBar()
{
    // A gap of a minute and one of a night.
    std::vector<Bar> bars{makeBar(firstDay, {10, 1}, 1), makeBar(firstDay, {10, 2}, 2),
                          makeBar(firstDay, {10, 4}, 4)};
    std::vector<Bar> next{makeBar(firstDay.addDays(1), {10, 1}, 1)};
    const auto series = std::make_shared<const BarSeries>(std::vector<BarSeries::Day>{
        std::make_shared<const DayBars>(bars, 2), std::make_shared<const DayBars>(next, 2)});
    m_view->showSeries(series, minute);
    const double begin = double(wallTime(firstDay, QTime(9, 58)));
    m_view->setRange({begin, begin + 10 * minute});
    QCOMPARE(m_view->chart().candles.size(), 3U);
    const QImage image = picture();
    const ChartLayout& chart = m_view->chart();
    const auto colors = vexdesk::ChartColors::of(m_view->palette());
    const auto drawn = [&](const QTime& end) {
        const double at = double(wallTime(firstDay, end)) - minute / 2.0;
        const int x = static_cast<int>(chart.xOf(at));
        int count = 0;
        for (int y = int(chart.pricePane.top()); y < int(chart.volumePane.bottom()); ++y) {
            for (int side = -3; side <= 3; ++side) {
                const QColor color = image.pixelColor(x + side, y);
                count += color == colors.rising || color == colors.falling;
            }
        }
        return count > 0;
    };
    QVERIFY(drawn({10, 1}));
    QVERIFY(drawn({10, 2}));
    QVERIFY(!drawn({10, 3}));
    QVERIFY(drawn({10, 4}));
    QVERIFY(!drawn({10, 5}));
    m_view->showAll();
    // Two clusters at the ends and the night between them.
    const auto& candles = m_view->chart().candles;
    QVERIFY(candles.back().middle() - candles.front().middle() > 20 * 3600);
    QCOMPARE(candles.size(), 2U);
}

void TestChartView::pricesFollowWhatIsShown()
{
    std::vector<Bar> bars;
    for (int i = 1; i <= 100; ++i) {
        Bar bar = makeBar(firstDay, QTime(10, 0).addSecs(i * minute), 1);
        bar.open = bar.close = bar.high = bar.low = i;
        bars.push_back(bar);
    }
    m_view->showSeries(std::make_shared<const BarSeries>(
                           std::vector<BarSeries::Day>{std::make_shared<const DayBars>(bars, 0)}),
                       minute);
    const double begin = double(wallTime(firstDay, QTime(10, 20)));
    m_view->setRange({begin, begin + 20 * minute});
    QVERIFY(m_view->chart().prices.low < 21 && m_view->chart().prices.low > 15);
    QVERIFY(m_view->chart().prices.high > 40 && m_view->chart().prices.high < 45);
    m_view->setRange({begin + 40 * minute, begin + 60 * minute});
    QVERIFY(m_view->chart().prices.low < 61 && m_view->chart().prices.low > 55);
    QVERIFY(m_view->chart().prices.high > 80 && m_view->chart().prices.high < 85);
}

void TestChartView::theHighestVolumeLineHasRoomForItsLabel()
{
    for (const int volume : {1, 9, 1700, 1800, 1999, 2000, 2001, 5300}) {
        Bar bar = makeBar(firstDay, {10, 1}, 1);
        bar.volume = volume;
        m_view->showSeries(std::make_shared<const BarSeries>(std::vector<BarSeries::Day>{
                               std::make_shared<const DayBars>(std::vector<Bar>{bar}, 2)}),
                           minute);
        int highest = 0;
        const QList<QGraphicsItem*> items = m_view->scene()->items();
        for (const QGraphicsItem* const item : items) {
            const auto* const label = dynamic_cast<const QGraphicsTextItem*>(item);
            if (label && label->isVisible() &&
                label->scenePos().y() > m_view->chart().pricePane.bottom())
                highest = std::max(highest, label->toPlainText().remove(u' ').toInt());
        }
        QVERIFY2(highest > 0 && highest <= 2 * volume,
                 qPrintable(QStringLiteral("%1: %2").arg(volume).arg(highest)));
    }
}

void TestChartView::aDateIsAlwaysShown_data()
{
    QTest::addColumn<int>("timeframe");
    for (const int timeframe : {1, 15, 60, 300, 900, 3600, 14400, 86400})
        QTest::addRow("%d seconds", timeframe) << timeframe;
}

void TestChartView::aDateIsAlwaysShown()
{
    QFETCH(const int, timeframe);
    const TimeAxisItem* axis = nullptr;
    const QList<QGraphicsItem*> items = m_view->scene()->items();
    for (const QGraphicsItem* const item : items) {
        if (const auto* const found = dynamic_cast<const TimeAxisItem*>(item))
            axis = found;
    }
    QVERIFY(axis);
    // Below the days of a longer range stands their year.
    const QRegularExpression date(QStringLiteral("^(\\d\\d\\.\\d\\d\\.)?\\d{4}$"));
    const auto datesShown = [&] {
        const auto headings = axis->headings();
        return std::count_if(headings.begin(), headings.end(), [&date](const auto& heading) {
            return date.match(heading.text).hasMatch();
        });
    };
    for (const int count : {1, 2, 5, 30, 240}) {
        std::vector<BarSeries::Day> days;
        for (int d = 0; d < count; ++d) {
            const QDate day = firstDay.addDays(d);
            std::vector<Bar> bars{makeBar(day, QTime(10, 0), d)};
            if (timeframe == 86400) // the bar of a day ends with it
                bars.front().time = wallTime(day.addDays(1));
            else
                bars.push_back(makeBar(day, QTime(18, 40), d));
            days.push_back(std::make_shared<const DayBars>(std::move(bars), 2));
        }
        const auto series = std::make_shared<const BarSeries>(std::move(days));
        for (int width = 330; width < 1900; width += 37) {
            m_view->resize(width, 300);
            m_view->showSeries(series, timeframe);
            const auto where = [&] {
                return QStringLiteral("%1 days, %2 wide").arg(count).arg(width).toLocal8Bit();
            };
            QVERIFY2(datesShown() > 0, where().constData());
            QTest::keyClick(m_view.get(), Qt::Key_Home);
            QVERIFY2(datesShown() > 0, where().constData());
        }
    }
}

void TestChartView::showOneBar(qint64 volume)
{
    Bar bar = makeBar(firstDay, {10, 1}, 1);
    bar.volume = volume;
    m_view->showSeries(std::make_shared<const BarSeries>(std::vector<BarSeries::Day>{
                           std::make_shared<const DayBars>(std::vector<Bar>{bar}, 2)}),
                       minute);
}

QStringList TestChartView::volumeLabels() const
{
    QStringList labels;
    const QList<QGraphicsItem*> items = m_view->scene()->items();
    for (const QGraphicsItem* const item : items) {
        const auto* const label = dynamic_cast<const QGraphicsTextItem*>(item);
        if (label && label->isVisible() && !label->toPlainText().isEmpty() &&
            label->scenePos().y() > m_view->chart().pricePane.bottom())
            labels.append(label->toPlainText());
    }
    return labels;
}

void TestChartView::volumesStandWithTheirThousandsApart()
{
    showOneBar(40000000);
    // What is shown as text has plain blanks for those that do not break.
    const QStringList labels = volumeLabels();
    QVERIFY2(labels.contains(QStringLiteral("40 000 000")), qPrintable(labels.join(u'|')));
}

void TestChartView::withoutVolumesThereIsNoAxisOfThem()
{
    showOneBar(0);
    QCOMPARE(volumeLabels(), QStringList());
    showOneBar(7);
    QVERIFY(!volumeLabels().isEmpty());
}

void TestChartView::theFocusIsSeen()
{
    QWidget window;
    auto* const other = new QPushButton(&window);
    m_view->setParent(&window);
    window.resize(700, 400);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    other->setFocus();
    const QImage without = picture();
    m_view->setFocus();
    QVERIFY(m_view->hasFocus());
    QVERIFY(picture() != without);
    other->setFocus();
    QVERIFY(picture() == without);
    m_view->setParent(nullptr);
}

void TestChartView::bothPanesShareTheTimes()
{
    const ChartLayout& chart = m_view->chart();
    QCOMPARE(chart.pricePane.left(), chart.volumePane.left());
    QCOMPARE(chart.pricePane.right(), chart.volumePane.right());
    QVERIFY(chart.pricePane.bottom() < chart.volumePane.top());
    const double ratio = chart.pricePane.height() / chart.volumePane.height();
    QVERIFY2(ratio > 3.8 && ratio < 4.3, qPrintable(QString::number(ratio)));
    // The labels below and beside them fit.
    QVERIFY(chart.labelsTop + 2 * m_view->fontMetrics().height() <= m_view->height());
    QVERIFY(chart.pricePane.right() +
                m_view->fontMetrics().horizontalAdvance(QStringLiteral("100.00")) <
            m_view->width());
}

void TestChartView::candlesNeverStandCloserThanTheyCanBeSeen()
{
    m_view->showSeries(makeSeries(60, 480), minute);
    m_view->showAll();
    const TimeRange all = m_view->range();
    double length = all.length();
    while (length > 20 * minute) {
        m_view->setRange({all.begin, all.begin + length});
        const ChartLayout& chart = m_view->chart();
        QVERIFY(chart.candles.size() <= size_t(chart.pricePane.width() / 3) + 2);
        QVERIFY(chart.xOf(double(chart.interval)) - chart.xOf(0) >= 3);
        length *= 0.7;
    }
    QCOMPARE(m_view->chart().interval, minute);
}

void TestChartView::theWheelZoomsAroundTheMouse()
{
    const QPoint place = middle() + QPoint(150, 10);
    const double time = m_view->chart().timeAt(place.x());
    const double length = m_view->range().length();
    wheel(place, {0, 120});
    QVERIFY(m_view->range().length() < length * 0.9);
    QVERIFY(isNear(m_view->chart().timeAt(place.x()), time, 1));
    wheel(place, {0, -120});
    QVERIFY(isNear(m_view->range().length(), length, 1));
    // A fine wheel turns by parts of a step.
    for (int i = 0; i < 8; ++i)
        wheel(place, {0, 15});
    const double fine = m_view->range().length();
    wheel(place, {0, -120});
    QVERIFY(isNear(m_view->range().length(), length, 1));
    QVERIFY(fine < length * 0.9);
}

void TestChartView::theWheelScrollsWithShiftAndToTheSide()
{
    const TimeRange before = m_view->range();
    wheel(middle(), {0, 120}, Qt::ShiftModifier);
    QVERIFY(m_view->range().begin < before.begin);
    QVERIFY(isNear(m_view->range().length(), before.length()));
    wheel(middle(), {0, -120}, Qt::ShiftModifier);
    QVERIFY(isNear(m_view->range(), before));
    wheel(middle(), {120, 0});
    QVERIFY(m_view->range().begin < before.begin);
    wheel(middle(), {-120, 0});
    QVERIFY(isNear(m_view->range(), before));
}

void TestChartView::theMouseDragsTheTimes()
{
    const TimeRange before = m_view->range();
    QWidget* const viewport = m_view->viewport();
    const double time = m_view->chart().timeAt(middle().x());
    QTest::mousePress(viewport, Qt::LeftButton, {}, middle());
    moveTo(middle() + QPoint(60, 5), Qt::LeftButton);
    moveTo(middle() + QPoint(100, 5), Qt::LeftButton);
    // What was below the mouse still is.
    QVERIFY(isNear(m_view->chart().timeAt(middle().x() + 100), time, 1));
    QVERIFY(isNear(m_view->range().length(), before.length()));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, middle() + QPoint(100, 5));
    const TimeRange dragged = m_view->range();
    moveTo(middle());
    QCOMPARE(m_view->range(), dragged);
}

void TestChartView::keysScrollAndZoom()
{
    m_view->setFocus();
    const TimeRange before = m_view->range();
    const TimeRange ends = m_view->limits().reach(before.length());
    QTest::keyClick(m_view.get(), Qt::Key_Left);
    QVERIFY(m_view->range().begin < before.begin);
    QTest::keyClick(m_view.get(), Qt::Key_Right);
    QVERIFY(isNear(m_view->range(), before));
    QTest::keyClick(m_view.get(), Qt::Key_Plus);
    QVERIFY(m_view->range().length() < before.length());
    QTest::keyClick(m_view.get(), Qt::Key_Minus);
    QVERIFY(isNear(m_view->range(), before));
    QTest::keyClick(m_view.get(), Qt::Key_Home);
    QVERIFY(isNear(m_view->range().begin, ends.begin));
    QTest::keyClick(m_view.get(), Qt::Key_PageDown);
    QVERIFY(m_view->range().begin > ends.begin);
    QTest::keyClick(m_view.get(), Qt::Key_PageUp);
    QVERIFY(isNear(m_view->range().begin, ends.begin));
    QTest::keyClick(m_view.get(), Qt::Key_End);
    QVERIFY(isNear(m_view->range().end, ends.end));
    QVERIFY(isNear(m_view->range().length(), before.length()));
}

void TestChartView::theEndsOfALongSeriesShowBars()
{
    const auto series = makeSeries(500, 120);
    m_view->showSeries(series, minute);
    const size_t whole = m_view->chart().candles.size();
    QTest::keyClick(m_view.get(), Qt::Key_Home);
    QCOMPARE(m_view->chart().candles.size(), whole);
    QVERIFY(m_view->range().begin < double(series->firstTime()));
    QTest::keyClick(m_view.get(), Qt::Key_End);
    QCOMPARE(m_view->chart().candles.size(), whole);
    QVERIFY(m_view->range().end > double(series->lastTime()));
}

void TestChartView::controlZeroAndADoubleClickShowEverything()
{
    QTest::keyClick(m_view.get(), Qt::Key_0);
    QVERIFY(m_view->range() != m_view->limits().all());
    QTest::keyClick(m_view.get(), Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(m_view->range(), m_view->limits().all());
    m_view->zoom(0.1);
    QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, {}, middle());
    QCOMPARE(m_view->range(), m_view->limits().all());
}

void TestChartView::zoomingHasLimits()
{
    for (int i = 0; i < 100; ++i)
        wheel(middle(), {0, 120});
    QVERIFY(m_view->range().length() >= 5 * minute);
    QVERIFY(m_view->range().length() <= 20 * minute);
    for (int i = 0; i < 200; ++i)
        wheel(middle(), {0, -120});
    QVERIFY(isNear(m_view->range(), m_view->limits().all()));
}

void TestChartView::theMouseReadsABar_data()
{
    QTest::addColumn<QTime>("time");
    QTest::newRow("first") << QTime(10, 1);
    QTest::newRow("a rising one") << QTime(10, 20);
    QTest::newRow("last") << QTime(12, 0);
}

void TestChartView::theMouseReadsABar()
{
    QFETCH(const QTime, time);
    QVERIFY(!m_view->pointed());
    QSignalSpy spy(m_view.get(), &ChartView::pointedChanged);
    const Candle candle = candleAt(time);
    moveTo(m_view->placeOf(candle));
    QVERIFY(spy.count() > 0);
    QVERIFY(m_view->pointed());
    const int number = QTime(10, 0).secsTo(time) / minute;
    QVERIFY(m_view->pointed()->bar == makeBar(firstDay.addDays(2), time, number));
}

void TestChartView::theCrosshairSnapsToTheNearestBar()
{
    const double begin = double(wallTime(firstDay, QTime(11, 50)));
    m_view->setRange({begin, begin + 60 * minute});
    // In the empty part after the last bar of the day.
    moveTo({int(m_view->chart().xOf(begin + 50 * minute)), middle().y()});
    QVERIFY(m_view->pointed());
    QCOMPARE(m_view->pointed()->end, wallTime(firstDay, QTime(12, 0)));
    // In the pane of the volumes too.
    const Candle& candle = candleAt(QTime(11, 55));
    moveTo(
        {int(m_view->chart().xOf(candle.middle())), int(m_view->chart().volumePane.center().y())});
    QCOMPARE(m_view->pointed()->end, candle.end);
    // And after the view has moved below the mouse.
    wheel(m_view->placeOf(candle), {0, -120}, Qt::ShiftModifier);
    QVERIFY(m_view->pointed());
}

void TestChartView::theCrosshairGoesWithTheMouse()
{
    moveTo(middle());
    QVERIFY(m_view->pointed());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(m_view->viewport(), &leave);
    QVERIFY(!m_view->pointed());
    moveTo(middle());
    QVERIFY(m_view->pointed());
    moveTo({m_view->width() - 2, middle().y()}); // on the axis
    QVERIFY(!m_view->pointed());
}

void TestChartView::theCrosshairIsDrawn()
{
    const QImage without = picture();
    moveTo(middle());
    const QImage with = picture();
    QVERIFY(with != without);
    // The tags on both axes are filled.
    const QColor tag = vexdesk::ChartColors::of(m_view->palette()).tag;
    const ChartLayout& chart = m_view->chart();
    QCOMPARE(with.pixelColor(chart.timeTag.topLeft().toPoint() + QPoint(1, 1)), tag);
    QCOMPARE(with.pixelColor(int(chart.pricePane.right()) + 3, middle().y()), tag);
    QVERIFY(QRectF(m_view->rect()).contains(chart.timeTag));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(m_view->viewport(), &leave);
    QCOMPARE(picture(), without);
}

void TestChartView::aDragHidesTheCrosshair()
{
    moveTo(middle());
    QTest::mousePress(m_view->viewport(), Qt::LeftButton, {}, middle());
    QVERIFY(!m_view->pointed());
    moveTo(middle() + QPoint(10, 0), Qt::LeftButton);
    QVERIFY(!m_view->pointed());
    QTest::mouseRelease(m_view->viewport(), Qt::LeftButton, {}, middle() + QPoint(10, 0));
    QVERIFY(m_view->pointed());
}

void TestChartView::keepsItsPlaceWhenBarsChange()
{
    const double begin = double(wallTime(firstDay.addDays(1), QTime(10, 30)));
    m_view->setRange({begin, begin + 30 * minute});
    const TimeRange before = m_view->range();
    m_view->updateSeries(makeSeries(4, 120), minute);
    QCOMPARE(m_view->range(), before);
    m_view->showAll();
    m_view->updateSeries(makeSeries(5, 120), minute);
    QCOMPARE(m_view->range(), m_view->limits().all());
}

void TestChartView::followsNewBarsAtTheRightEnd()
{
    const TimeRange before = m_view->range();
    m_view->updateSeries(makeSeries(3, 125), minute);
    QVERIFY(isNear(m_view->range().begin, before.begin + 5 * minute));
    QCOMPARE(m_view->chart().candles.back().end, wallTime(firstDay.addDays(2), QTime(12, 5)));
}

void TestChartView::oneBarCanBeShown()
{
    m_view->showSeries(makeSeries(1, 1), minute);
    QCOMPARE(m_view->chart().candles.size(), 1U);
    const QImage image = picture();
    const QRectF pane = m_view->chart().pricePane;
    const double x = m_view->chart().xOf(m_view->chart().candles.front().middle());
    QVERIFY(pane.left() < x && x < pane.right());
    moveTo(middle());
    QVERIFY(m_view->pointed());
    wheel(middle(), {0, 120});
    m_view->showAll();
    QVERIFY(image.width() > 0);
}

void TestChartView::anEmptySeriesTakesMouseAndKeys()
{
    m_view->showSeries(std::make_shared<const BarSeries>(), minute);
    QVERIFY(m_view->isEmpty());
    wheel(middle(), {0, 120});
    moveTo(middle());
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, {}, middle());
    QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, {}, middle());
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Plus, Qt::Key_Home, Qt::Key_End})
        QTest::keyClick(m_view.get(), key);
    QVERIFY(!m_view->pointed());
    QVERIFY(m_view->chart().candles.empty());
    QVERIFY(!picture().isNull());
    m_view->updateSeries(m_series, minute);
    QCOMPARE(m_view->chart().candles.size(), 120U);
}

void TestChartView::colorsCanBeReadOnEveryGround_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<QColor>("ink");
    QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("paper") << QColor(240, 235, 220) << QColor(40, 40, 40);
    QTest::newRow("dark") << QColor(30, 30, 30) << QColor(230, 230, 230);
    QTest::newRow("black") << QColor(Qt::black) << QColor(Qt::white);
}

void TestChartView::colorsCanBeReadOnEveryGround()
{
    QFETCH(const QColor, ground);
    QFETCH(const QColor, ink);
    QPalette palette;
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Text, ink);
    const auto colors = vexdesk::ChartColors::of(palette);
    constexpr double readable = 4.5;
    QVERIFY(contrast(colors.background, colors.rising) > readable);
    QVERIFY(contrast(colors.background, colors.falling) > readable);
    QVERIFY(contrast(colors.background, colors.text) > readable);
    constexpr double visible = 1.1;
    QVERIFY(contrast(colors.background, colors.grid) > visible);
    QVERIFY(contrast(colors.background, colors.grid) < contrast(colors.background, colors.dayLine));
}

void TestChartView::followsThePalette()
{
    QPalette dark = m_view->palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(230, 230, 230));
    m_view->setPalette(dark);
    const QImage image = picture();
    const QRectF pane = m_view->chart().pricePane;
    QCOMPARE(image.pixelColor(int(pane.left()) + 1, int(pane.top()) + 1), QColor(30, 30, 30));
    QCOMPARE(image.pixelColor(1, 1), QColor(30, 30, 30));
}

QTEST_MAIN(TestChartView)
#include "tst_chartview.moc"
