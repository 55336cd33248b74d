// SPDX-License-Identifier: MIT
#include <vexdesk/headerproxystyle.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleOption>

HeaderProxyStyle* HeaderProxyStyle::instance()
{
    // Tests make more than one application object in the life of a process.
    static QPointer<HeaderProxyStyle> style;
    if (!style) {
        style = new HeaderProxyStyle;
        style->setParent(qApp);
    }
    return style;
}

HeaderProxyStyle::HeaderProxyStyle() = default;
HeaderProxyStyle::~HeaderProxyStyle() = default;

void HeaderProxyStyle::drawControl(ControlElement element, const QStyleOption* option,
                                   QPainter* painter, const QWidget* widget) const
{
    const auto* const header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (!header || element != CE_HeaderLabel) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    QStyleOptionHeader label = *header;
    label.textAlignment = Qt::AlignCenter;
    // "On" is what a section is over selected cells.
    label.state &= ~State_On;
    QProxyStyle::drawControl(element, &label, painter, widget);
}
