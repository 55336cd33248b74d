// SPDX-License-Identifier: MIT
#include "desk/chart/chartcontent.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QLabel>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::NoChart)
};

} // namespace

bool isChartBuilt()
{
    return false;
}

QWidget* makeChartContent()
{
    auto* const label = new QLabel(Text::tr("Этот терминал собран без графика.\n\n"
                                            "Для графика нужен модуль Qt Charts: установите пакеты "
                                            "qt6-charts-dev и libqt6opengl6-dev и соберите "
                                            "терминал заново."));
    label->setObjectName(QStringLiteral("chartMessage"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    constexpr int margin = 16;
    label->setMargin(margin);
    return label;
}

} // namespace vexdesk
