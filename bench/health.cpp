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
#include "measuringapplication.h"
#include "seriesmodel.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

#include <cstdlib>
#include <memory>

namespace {

const QDate firstDay(2024, 1, 15);
const QTime opening(10, 0);
constexpr int minute = 60;

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
            QStringLiteral("NORD/B%1/S%2").arg(i / seriesOfBoard).arg(i, 6, 10, QLatin1Char('0')));
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

} // namespace

int main(int argc, char** argv)
{
    bench::MeasuringApplication application(argc, argv);
    constexpr int usualSeries = 20'000;
    const QTemporaryDir directory;
    const QDir root(directory.filePath(QStringLiteral("store")));
    if (!makeStore(root, bench::numberAt(1, usualSeries), bench::numberAt(2, 3),
                   bench::numberAt(3, 20)))
        return EXIT_FAILURE;

    tadata::HealthBook book(root);
    std::unique_ptr<HealthWindow> window;
    application.measure("opening", [&] {
        window = std::make_unique<HealthWindow>(
            &book, [](const auto&, const auto& told) { told(HealthWindow::Shown::NoCharts); });
        window->show();
    });
    application.measure(
        "reading", [] {}, [&book] { return book.isKnown(); });

    auto* const view = window->findChild<QTreeView*>(QStringLiteral("series"));
    auto* const filter = window->findChild<QLineEdit*>(QStringLiteral("filter"));
    for (int column = 0; column < SeriesModel::ColumnCount; ++column)
        application.measure("sorting",
                            [view, column] { view->sortByColumn(column, Qt::DescendingOrder); });
    for (const char* const text : {"S", "S0", "S00", "S000", "S0001", ""})
        application.measure("searching", [filter, text] { filter->setText(QLatin1String(text)); });
    application.measure("the last series", [view] {
        view->setCurrentIndex(view->model()->index(view->model()->rowCount() - 1, 0));
    });
    return EXIT_SUCCESS;
}
