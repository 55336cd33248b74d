// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>

namespace vexdesk {

class Notifier;

/// Emits aNewDay() of the core's notifier once for every change of the local date.
///
/// The clock is looked at twice a minute rather than waited for until midnight, so that a machine
/// that slept and a clock that was set are noticed too. Every other date is a new day, an earlier
/// one included: what depends on the date has to be looked at again when the clock is set back.
/// Days that were slept through are one change.
class DayWatcher final : public QObject
{
    Q_OBJECT

public:
    using Clock = std::function<QDate()>;

    /// `notifier` must live as long as the watcher. `clock` gives the local date.
    explicit DayWatcher(Notifier* notifier, Clock clock = QDate::currentDate,
                        QObject* parent = nullptr);

    /// Looks at the clock now. The timer calls it; an exception that leaves a slot of aNewDay()
    /// leaves it, and the day still counts as told.
    void check();

    /// Time between two looks, in milliseconds.
    int interval() const { return m_timer.interval(); }

private:
    Notifier* m_notifier;
    Clock m_clock;
    QDate m_date;
    QTimer m_timer;
};

} // namespace vexdesk
