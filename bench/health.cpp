// SPDX-License-Identifier: MIT
// The window of the store's health over a store of many series: how long it takes until all of them
// are known, and the longest time for which the user-interface thread answers nobody, while the
// store is read, and while the table is sorted, searched and walked through. The store is made
// below the system's temporary directory and removed again.
//
//   bench_health [SERIES] [DAYS] [BARS_PER_DAY]
//
// QT_QPA_PLATFORM=offscreen does without a display.

#include "healthbook.h"
#include "healthwindow.h"
#include "seriesmodel.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

const QDate firstDay(2024, 1, 15);
const QTime opening(10, 0);
constexpr int minute = 60;

double milliseconds(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

// Knows how long the longest event took.
class MeasuringApplication final : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        const bool isOutermost = !m_isInside;
        m_isInside = true;
        QElapsedTimer timer;
        timer.start();
        const bool result = QApplication::notify(receiver, event);
        if (isOutermost) {
            m_longest = std::max(m_longest, milliseconds(timer));
            m_isInside = false;
        }
        return result;
    }

    // Since the last call.
    double takeLongest() { return std::exchange(m_longest, 0); }

private:
    bool m_isInside = false;
    double m_longest = 0;
};

QByteArray barsOf(int count)
{
    QByteArray lines;
    for (int bar = 1; bar <= count; ++bar)
        lines += opening.addSecs(bar * minute).toString(QStringLiteral("hhmmss")).toLatin1() +
                 ";120.00;120.15;119.90;120.10;1450;0.00;0\n";
    return lines;
}

bool makeStore(const QDir& root, int series, int days, int bars)
{
    constexpr int seriesOfBoard = 500;
    const QByteArray lines = barsOf(bars);
    for (int i = 0; i < series; ++i) {
        const QString directory = root.filePath(
            QStringLiteral("NORD/B%1/S%2").arg(i / seriesOfBoard).arg(i, 6, 10, u'0'));
        if (!QDir().mkpath(directory))
            return false;
        QDate day = firstDay;
        for (int d = 0; d < days; ++d, day = day.addDays(day.dayOfWeek() == Qt::Friday ? 3 : 1)) {
            QFile file(directory + u'/' + vexdesk::dayFileName(day, minute));
            if (!file.open(QIODevice::WriteOnly) || file.write(lines) != lines.size())
                return false;
        }
    }
    return true;
}

template <typename Act>
void measure(MeasuringApplication& application, const char* what, Act act)
{
    application.takeLongest();
    QElapsedTimer timer;
    timer.start();
    act();
    const double direct = milliseconds(timer);
    QCoreApplication::processEvents();
    std::printf("%-28s longest %7.1f ms\n", what, std::max(direct, application.takeLongest()));
}

int number(const QStringList& arguments, qsizetype index, int usual)
{
    return index < arguments.size() ? std::max(1, arguments.at(index).toInt()) : usual;
}

} // namespace

int main(int argc, char** argv)
{
    MeasuringApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    constexpr int usualSeries = 20'000;
    const QTemporaryDir directory;
    const QDir root(directory.filePath(QStringLiteral("store")));
    if (!makeStore(root, number(arguments, 1, usualSeries), number(arguments, 2, 3),
                   number(arguments, 3, 20)))
        return EXIT_FAILURE;

    tadata::HealthBook book(root);
    QElapsedTimer timer;
    timer.start();
    HealthWindow window(&book, [](const auto&) { return HealthWindow::Shown::NoCharts; });
    window.show();
    std::printf("%-28s longest %7.1f ms\n", "opening", milliseconds(timer));
    application.takeLongest();
    while (!book.isKnown())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    std::printf("%-28s longest %7.1f ms, whole %.1f s\n", "reading", application.takeLongest(),
                milliseconds(timer) / 1000);

    auto* const view = window.findChild<QTreeView*>(QStringLiteral("series"));
    auto* const filter = window.findChild<QLineEdit*>(QStringLiteral("filter"));
    for (int column = 0; column < SeriesModel::ColumnCount; ++column)
        measure(application, "sorting",
                [view, column] { view->sortByColumn(column, Qt::DescendingOrder); });
    for (const char* const text : {"S", "S0", "S00", "S000", "S0001", ""})
        measure(application, "searching", [filter, text] { filter->setText(QLatin1String(text)); });
    measure(application, "the last series", [view] {
        view->setCurrentIndex(view->model()->index(view->model()->rowCount() - 1, 0));
    });
    return EXIT_SUCCESS;
}
