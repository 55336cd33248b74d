// SPDX-License-Identifier: MIT
#include "timeframebox.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMap>
#include <QtWidgets/QComboBox>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(TimeframeBox)
};

} // namespace

void offerTimeframes(QComboBox& box, const QList<int>& timeframes)
{
    const QMap<int, QString> texts{
        {1, Text::tr("1 секунда")},  {60, Text::tr("1 минута")},   {300, Text::tr("5 минут")},
        {600, Text::tr("10 минут")}, {1800, Text::tr("30 минут")}, {3600, Text::tr("1 час")},
        {86400, Text::tr("1 день")},
    };
    for (const int timeframe : timeframes)
        box.addItem(texts.value(timeframe), timeframe);
}

} // namespace tadata
