// SPDX-License-Identifier: MIT
#include "chartsupport.h"

#include "support/hands.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace testsupport {

QPoint placeOf(const vexdesk::ChartLayout& chart, const vexdesk::PlacedCandle& candle)
{
    return QPointF(chart.xOf(candle.middle()), chart.prices.yOf(candle.candle.bar.close)).toPoint();
}

void moveMouse(QWidget* widget, const QPoint& place, Qt::MouseButtons buttons)
{
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        hands::mouseMove(widget, place);
        return;
    }
    // Qt Test would move the cursor, of which the offscreen platform tells nobody before the next
    // event.
    QMouseEvent event(QEvent::MouseMove, place, widget->mapToGlobal(QPointF(place)), Qt::NoButton,
                      buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

void leaveWidget(QWidget* widget)
{
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(widget, &event);
}

} // namespace testsupport
