// SPDX-License-Identifier: MIT
// The window of the safe import over a file of many bars, in a terminal that knows many securities:
// the longest time for which the user-interface thread answers nobody, while the file is looked at,
// scrolled through, imported, and the import is cancelled and undone. File and store are made below
// the system's temporary directory and removed again.
//
//   bench_safeimport [BARS] [SECURITIES]
//
// QT_QPA_PLATFORM=offscreen does without a display.

#include "measuringapplication.h"
#include "previewview.h"
#include "safeimportwindow.h"

#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <cstdlib>

namespace {

constexpr int barsOfDay = 1000;
const QString series = QStringLiteral("NORD/MAIN/S000000");

void knowSecurities(int count)
{
    auto data = vexdesk::ReferenceData::demonstration();
    for (int i = 0; i < count; ++i)
        data.setSeries(QStringLiteral("NORD"), QStringLiteral("MAIN"),
                       QStringLiteral("S%1").arg(i, 6, 10, QLatin1Char('0')), 2);
    vexdesk::ReferenceData::install(data);
}

QByteArray barsOf(const QDate& day, int count)
{
    QByteArray lines;
    const QByteArray date = day.toString(QStringLiteral("yyyyMMdd")).toLatin1();
    for (int bar = 1; bar <= count; ++bar)
        lines += date + ',' +
                 QTime(0, 0).addSecs(bar * 60).toString(QStringLiteral("hhmmss")).toLatin1() +
                 ",120.00,120.15,119.90,120.10,1450\n";
    return lines;
}

bool writeBars(const QString& path, int bars)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write("<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>\n");
    QDate day(1996, 1, 1);
    for (int left = bars; left > 0; left -= barsOfDay, day = day.addDays(1)) {
        const QByteArray lines = barsOf(day, std::min(left, barsOfDay));
        if (file.write(lines) != lines.size())
            return false;
    }
    return file.flush();
}

void press(QWidget* widget, int key)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier);
    QCoreApplication::sendEvent(widget, &event);
}

// What the user would do one after the other.
void measureAll(bench::MeasuringApplication& application, SafeImportWindow& window,
                const QString& file)
{
    auto* const import = window.findChild<QPushButton*>(QStringLiteral("import"));
    auto* const undo = window.findChild<QPushButton*>(QStringLiteral("undo"));
    auto* const close = window.findChild<QPushButton*>(QStringLiteral("close"));
    auto* const skipBad = window.findChild<QCheckBox*>(QStringLiteral("skipBad"));
    auto* const table = window.findChild<QTableView*>(QStringLiteral("preview"));
    const tadata::PreviewModel& model = window.findChild<PreviewView*>()->model();
    const auto isReady = [import] { return import->isEnabled(); };
    application.measure("choosing the series", [&] { window.take({.series = series}); });
    application.measure(
        "looking at the file", [&] { window.take({.files = {file}}); }, isReady);
    application.measure(
        "going to its end", [&] { press(table, Qt::Key_End); },
        [&] { return model.isWhole() && model.index(model.rowCount() - 1, 0).data().isValid(); });
    application.measure(
        "looking once more", [&] { skipBad->click(); }, isReady);
    const auto* const progress = window.findChild<QProgressBar*>();
    application.measure(
        "importing up to the half", [&] { import->click(); },
        [&] { return progress->value() >= 50 || undo->isVisible(); });
    // A small file may be imported by now.
    application.measure(
        "taking that back", [&] { (undo->isVisible() ? undo : close)->click(); },
        [&] { return isReady() && !undo->isVisible(); });
    application.measure(
        "importing", [&] { import->click(); },
        [&] { return undo->isVisible() && import->isEnabled(); });
    application.measure(
        "undoing it", [&] { undo->click(); },
        [&] { return !undo->isVisible() && import->isEnabled(); });
}

} // namespace

int main(int argc, char** argv)
{
    bench::MeasuringApplication application(argc, argv);
    constexpr int usualBars = 10'000'000;
    constexpr int usualSecurities = 20'000;
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("bars.csv"));
    if (!writeBars(file, bench::numberAt(1, usualBars)))
        return EXIT_FAILURE;
    knowSecurities(bench::numberAt(2, usualSecurities));
    std::unique_ptr<SafeImportWindow> window;
    application.measure("opening", [&] {
        window =
            std::make_unique<SafeImportWindow>(QDir(directory.filePath(QStringLiteral("store"))));
        window->show();
    });
    measureAll(application, *window, file);
    return EXIT_SUCCESS;
}
