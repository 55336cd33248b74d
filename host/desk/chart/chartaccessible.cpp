// SPDX-License-Identifier: MIT
#include "desk/chart/chartaccessible.h"

#include "desk/chart/chartview.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

namespace vexdesk {

namespace {

class ChartAccessible final : public QAccessibleWidget
{
public:
    explicit ChartAccessible(ChartView* chart)
        : QAccessibleWidget(chart, QAccessible::Chart)
        , m_chart(chart)
    {}

    QString text(QAccessible::Text what) const override
    {
        return what == QAccessible::Value ? m_chart->readout() : QAccessibleWidget::text(what);
    }

private:
    ChartView* m_chart;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object)
{
    auto* const chart = qobject_cast<ChartView*>(object);
    return chart ? new ChartAccessible(chart) : nullptr;
}

} // namespace

void installChartAccessibility()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

void setReadout(QWidget& chart, const QString& text)
{
    if (chart.accessibleDescription() == text)
        return;
    chart.setAccessibleDescription(text); // tells that the description has changed
    QAccessibleValueChangeEvent event(&chart, text);
    QAccessible::updateAccessibility(&event);
}

} // namespace vexdesk
