// SPDX-License-Identifier: MIT
// The window of restore points over a store in which one command has changed many files: the
// longest time for which the user-interface thread answers nobody while the point is listed, looked
// at and put back. The store is made below the system's temporary directory and removed again.
//
//   bench_points [FILES] [POINTS]
//
// QT_QPA_PLATFORM=offscreen does without a display.

#include "measuringapplication.h"
#include "pointswindow.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storejob.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>

#include <cstdlib>
#include <memory>

namespace {

// A command that writes days of many series.
bool changeFiles(const QDir& root, int count)
{
    constexpr int daysOfSeries = 50;
    QStringList names;
    QStringList paths;
    for (int i = 0; i < count / daysOfSeries; ++i) {
        names.append(QStringLiteral("NORD/B%1/S%2").arg(i / 500).arg(i, 6, 10, QLatin1Char('0')));
        for (int day = 0; day < daysOfSeries; ++day)
            paths.append(root.filePath(
                names.last() + u'/' +
                vexdesk::dayFileName(QDate(2024, 1, 15).addDays(day), vexdesk::minuteTimeframe)));
    }
    vexdesk::StoreJob job({.by = QStringLiteral("import")});
    if (!job.begin(root, vexdesk::sortedByCodePoint(names)) || !job.keeper()->keep(paths))
        return false;
    for (const QString& path : std::as_const(paths)) {
        QFile file(path);
        if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
            file.write("100100;1.00;1.00;1.00;1.00;1;0.00;0\n") < 0)
            return false;
    }
    return bool(job.end());
}

} // namespace

int main(int argc, char** argv)
{
    bench::MeasuringApplication application(argc, argv);
    constexpr int usualFiles = 20'000;
    const QTemporaryDir directory;
    const QDir root(directory.filePath(QStringLiteral("store")));
    for (int point = bench::numberAt(2, 2); point > 0; --point) {
        if (!changeFiles(root, bench::numberAt(1, usualFiles)))
            return EXIT_FAILURE;
    }
    std::unique_ptr<PointsWindow> window;
    const auto label = [&](const char* name) {
        return window->findChild<QLabel*>(QLatin1String(name))->text();
    };
    const auto isLookedAt = [&] { return label("effect").startsWith(QStringLiteral("Возврат")); };
    application.measure(
        "listing and looking",
        [&] {
            window = std::make_unique<PointsWindow>(root, vexdesk::usualWait);
            window->show();
        },
        isLookedAt);
    auto* const points = window->findChild<QTreeView*>(QStringLiteral("points"));
    application.measure(
        "another point",
        [&] {
            points->setCurrentIndex(points->model()->index(points->model()->rowCount() - 1, 0));
        },
        isLookedAt);
    points->setCurrentIndex(points->model()->index(0, 0));
    auto* const putBack = window->findChild<QPushButton*>(QStringLiteral("putBack"));
    application.measure(
        "putting back", [&] { putBack->click(); }, [&] { return putBack->isEnabled(); });
    std::printf("%s\n", qUtf8Printable(label("status")));
    return EXIT_SUCCESS;
}
