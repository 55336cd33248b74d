// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <utility>

namespace bench {

inline double milliseconds(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// What this thread has computed, in milliseconds: other programs of the machine do not count.
inline double computed()
{
    timespec now = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// An application that knows how long the longest event took: so long nobody was answered. Both by
/// the clock and by what the thread computed.
class MeasuringApplication final : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        const bool isOutermost = !std::exchange(m_isInside, true);
        QElapsedTimer timer;
        timer.start();
        const double before = computed();
        const bool result = QApplication::notify(receiver, event);
        if (isOutermost) {
            take(milliseconds(timer), computed() - before);
            m_isInside = false;
        }
        return result;
    }

    /// Prints how long the longest event took while something was done and what came of it, up to
    /// the moment at which it is seen to be done.
    template <typename Act, typename IsDone>
    void measure(const char* what, Act act, IsDone isDone)
    {
        m_longest = m_most = 0;
        QElapsedTimer whole;
        whole.start();
        const double before = computed();
        act();
        take(milliseconds(whole), computed() - before);
        QCoreApplication::processEvents();
        while (!isDone())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::processEvents();
        std::printf("%-28s longest %7.1f ms, computing %7.1f ms, whole %8.2f s\n", what, m_longest,
                    m_most, milliseconds(whole) / 1000);
        std::fflush(stdout);
    }
    template <typename Act>
    void measure(const char* what, Act act)
    {
        measure(what, act, [] { return true; });
    }

private:
    void take(double longest, double most)
    {
        m_longest = std::max(m_longest, longest);
        m_most = std::max(m_most, most);
    }

    bool m_isInside = false;
    double m_longest = 0;
    double m_most = 0;
};

inline int numberAt(qsizetype index, int usual)
{
    const QStringList arguments = QCoreApplication::arguments();
    return index < arguments.size() ? std::max(1, arguments.at(index).toInt()) : usual;
}

} // namespace bench
