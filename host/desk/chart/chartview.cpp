// SPDX-License-Identifier: MIT
#include "desk/chart/chartview.h"

#include "desk/chart/chartcolors.h"

#include <QtGui/QPainter>

namespace vexdesk {

ChartView::ChartView(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("chartView"));
    setAccessibleName(tr("График цен и объёмов"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

ChartView::~ChartView() = default;

QSize ChartView::minimumSizeHint() const
{
    constexpr QSize smallest(320, 180);
    return smallest;
}

void ChartView::setTitle(const QString&)
{}
void ChartView::showSeries(const std::shared_ptr<const BarSeries>& series)
{
    m_series = series;
    Q_EMIT rangeChanged();
}
void ChartView::updateSeries(const std::shared_ptr<const BarSeries>& series)
{
    showSeries(series);
}
bool ChartView::isEmpty() const
{
    return !m_series || m_series->isEmpty();
}
Timeframe ChartView::timeframe() const
{
    return Timeframe::Minute;
}
Timeframe ChartView::shownTimeframe() const
{
    return Timeframe::Minute;
}
void ChartView::setTimeframe(Timeframe)
{}
bool ChartView::areNightsShown() const
{
    return false;
}
void ChartView::setNightsShown(bool)
{}
void ChartView::setStudies(std::vector<std::shared_ptr<const ChartStudy>>)
{}
void ChartView::setMarks(const QList<ChartMark>&)
{}
ChartView::Place ChartView::place() const
{
    return {};
}
void ChartView::setPlace(const Place&)
{}
const SlotRange& ChartView::range() const
{
    static const SlotRange range;
    return range;
}
SlotRange ChartView::reach() const
{
    return {};
}
void ChartView::setRange(const SlotRange&)
{}
void ChartView::zoom(double)
{}
void ChartView::scroll(double)
{}
void ChartView::showAll()
{}
void ChartView::goToFirst()
{}
void ChartView::goToLast()
{}
void ChartView::goTo(qint64)
{}
void ChartView::goTo(const QDate&)
{}
bool ChartView::canGoBack() const
{
    return false;
}
void ChartView::goBack()
{}
bool ChartView::canGoForward() const
{
    return false;
}
void ChartView::goForward()
{}
std::pair<QDate, QDate> ChartView::daysInView() const
{
    return {};
}
bool ChartView::needsBars() const
{
    return false;
}
const ChartLayout& ChartView::chart() const
{
    static const ChartLayout chart;
    return chart;
}
const std::optional<Crosshair>& ChartView::crosshair() const
{
    static const std::optional<Crosshair> none;
    return none;
}
const Candle* ChartView::pointed() const
{
    return nullptr;
}
QString ChartView::readout() const
{
    return {};
}
void ChartView::moveCrosshair(int)
{}
void ChartView::dropCrosshair()
{}
void ChartView::markTo(int)
{}
bool ChartView::hasMark() const
{
    return false;
}
void ChartView::zoomToMark()
{}
void ChartView::clearMark()
{}
QString ChartView::barsAsText() const
{
    return {};
}
QImage ChartView::picture(double) const
{
    return {};
}
Outcome ChartView::savePicture(const QString&) const
{
    return {};
}

void ChartView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter(this).fillRect(rect(), ChartColors::of(palette()).background);
}

} // namespace vexdesk
