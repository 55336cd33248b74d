// SPDX-License-Identifier: MIT
#include "chartstore.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/recordline.h>

#include <QtCore/QFile>

#include <algorithm>

namespace {

constexpr int cents = 2; // digits after the point

class Walk final
{
public:
    vexdesk::StoredBar next(bool hasMoney)
    {
        const int close = std::max(100, m_price + random(21) - 10);
        vexdesk::StoredBar bar;
        bar.open = decimal(m_price, cents);
        bar.high = decimal(std::max(m_price, close) + random(5), cents);
        bar.low = decimal(std::min(m_price, close) - random(5), cents);
        bar.close = decimal(close, cents);
        bar.volume = 1 + random(500);
        bar.value = decimal(hasMoney ? close * bar.volume : 0, cents);
        bar.openInterest = hasMoney ? 1000 + random(500) : 0;
        m_price = close;
        return bar;
    }

private:
    int random(int count)
    {
        m_state = m_state * 1664525U + 1013904223U;
        return static_cast<int>((m_state >> 8) % static_cast<quint32>(count));
    }

    quint32 m_state = 1;
    int m_price = 12000;
};

} // namespace

QDate firstChartDay()
{
    return {2014, 1, 13}; // a Monday
}

bool makeChartStore(const QString& directory, const ChartStore& store)
{
    const QTime opening(10, 0);
    Walk walk;
    QDate day = firstChartDay();
    for (int d = 0; d < store.days; ++d, day = day.addDays(day.dayOfWeek() == Qt::Friday ? 3 : 1)) {
        QByteArray content(store.barsPerDay * vexdesk::maxRecordLine, Qt::Uninitialized);
        char* end = content.data();
        for (int i = 1; i <= store.barsPerDay; ++i) {
            vexdesk::StoredBar bar = walk.next(store.hasMoney);
            bar.time = opening.addSecs(i * store.timeframe);
            end = vexdesk::writeRecordLine(end, bar);
        }
        content.truncate(end - content.constData());
        QFile file(directory + u'/' + vexdesk::dayFileName(day, store.timeframe));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            return false;
    }
    return true;
}
