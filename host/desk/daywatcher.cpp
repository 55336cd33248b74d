// SPDX-License-Identifier: MIT
#include "desk/daywatcher.h"

#include <vexdesk/terminal/core.h>

namespace vexdesk {

namespace {

constexpr int lookEvery = 30 * 1000; // ms

} // namespace

DayWatcher::DayWatcher(Notifier* notifier, Clock clock, QObject* parent)
    : QObject(parent)
    , m_notifier(notifier)
    , m_clock(std::move(clock))
    , m_date(m_clock())
    , m_timer(this)
{
    connect(&m_timer, &QTimer::timeout, this, &DayWatcher::check);
    m_timer.start(lookEvery);
}

void DayWatcher::check()
{
    const QDate today = m_clock();
    if (today == m_date)
        return;
    m_date = today;
    Q_EMIT m_notifier->aNewDay();
}

} // namespace vexdesk
