// SPDX-License-Identifier: MIT
// The editor's model beside a plain one, each in a view of its own: times of loading, showing,
// finding and deleting, and memory, for a series of a store. Both must show the same texts.
//
//   bench_editor SERIES_DIR [TIMEFRAME] [ours|plain]
//
// With "files" it measures loading alone beside reading the files and splitting their lines, in
// turn, and prints one line for each of RUNS: processor seconds of the two, and bytes a row.
//
//   bench_editor SERIES_DIR TIMEFRAME files [RUNS]
//
// With "rewrite" it writes every day file of the series anew, which exchanges two fields of each
// line, and prints how long that takes.
//
//   bench_editor SERIES_DIR TIMEFRAME rewrite

#include "plaineditormodel.h"
#include "splitfiles.h"

#include "columnwidths.h"
#include "editortadatamodel.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/itemdelegate.h>

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeView>

#include <cstdio>
#include <ctime>
#include <malloc.h>
#include <memory>
#include <type_traits>

namespace {

constexpr int deletedRows = 10000;

qsizetype heap()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qsizetype>(info.uordblks) + static_cast<qsizetype>(info.hblkhd);
}

void print(const char* model, const char* what, double value, const char* unit)
{
    std::printf("%-6s %-42s %12.3f %s\n", model, what, value, unit);
    std::fflush(stdout);
}

double milliseconds(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double processorSeconds(std::clock_t since)
{
    return static_cast<double>(std::clock() - since) / CLOCKS_PER_SEC;
}

std::unique_ptr<QTreeView> makeView(QAbstractItemModel* model, bool uniformRows)
{
    auto view = std::make_unique<QTreeView>();
    view->setRootIsDecorated(false);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setUniformRowHeights(uniformRows);
    view->setItemDelegate(new ItemDelegate(view.get()));
    view->resize(640, 480);
    view->show();
    view->setModel(model);
    // The fonts are there when the user looks at the window.
    view->grab();
    return view;
}

void selectRows(QTreeView& view, int first, int count)
{
    view.setCurrentIndex(view.model()->index(first, 0));
    view.selectionModel()->select(
        {view.model()->index(first, 0), view.model()->index(first + count - 1, 0)},
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

QList<int> selectedRows(const QTreeView& view)
{
    QList<int> rows;
    const QModelIndexList selected = view.selectionModel()->selectedRows(0);
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    return rows;
}

// Every text of some rows: enough to tell the models apart where they differ.
quint64 textsOf(const QAbstractItemModel& model)
{
    quint64 hash = static_cast<quint64>(model.rowCount());
    for (int row = 0; row < model.rowCount(); row += 1 + row % 7) {
        for (int column = 0; column < model.columnCount(); ++column)
            hash = hash * 31 + qHash(model.index(row, column).data().toString());
    }
    return hash;
}

struct Range
{
    QDir dir;
    QDateTime from;
    QDateTime to;
    int timeframe = 1;
};

template <typename Model>
void measureShowing(const char* name, Model& model, QTreeView& view)
{
    const std::clock_t start = std::clock();
    if constexpr (std::is_same_v<Model, EditorTADataModel>) {
        tadata::fitColumns(view, model);
    } else {
        for (int column = 0; column < model.columnCount(); ++column)
            view.resizeColumnToContents(column);
    }
    print(name, "columns sized", processorSeconds(start) * 1000, "ms of the processor");
    QElapsedTimer timer;
    timer.start();
    QCoreApplication::processEvents();
    view.viewport()->repaint();
    print(name, "first rows shown", milliseconds(timer), "ms");
}

// The sum of the rows that were found.
template <typename Model>
qint64 measureFinding(const char* name, const Model& model, const Range& range)
{
    constexpr int searches = 10000;
    QStringList keys;
    for (int i = 0; i < searches; ++i) {
        const QDateTime time = range.from.addSecs(range.from.secsTo(range.to) * i / searches);
        keys.append(time.toString(QStringLiteral("yyyyMMdd hhmmss")));
    }
    qint64 found = 0;
    QElapsedTimer timer;
    timer.start();
    for (const QString& key : keys)
        found += model.find(key);
    print(name, "find", milliseconds(timer) * 1000 / searches, "us");
    return found;
}

// Loads, shows, finds and deletes.
template <typename Model>
quint64 measure(const char* name, const Range& range, bool isOurs)
{
    Model model(nullptr);
    const auto view = makeView(&model, isOurs);
    const qsizetype before = heap();
    QElapsedTimer timer;
    timer.start();
    const std::clock_t loading = std::clock();
    model.load(range.dir, range.from, range.to, range.timeframe);
    print(name, "load", milliseconds(timer), "ms");
    print(name, "load", processorSeconds(loading) * 1000, "ms of the processor");
    const int rows = model.rowCount();
    print(name, "memory", static_cast<double>(heap() - before) / rows, "bytes a row");

    measureShowing(name, model, *view);
    const qint64 found = measureFinding(name, model, range);
    const quint64 texts = textsOf(model);

    selectRows(*view, rows / 2, deletedRows);
    QCoreApplication::processEvents();
    timer.restart();
    const QList<int> doomed = selectedRows(*view);
    if (isOurs) {
        view->selectionModel()->clearSelection();
        view->selectionModel()->setCurrentIndex(model.index(rows / 2 + deletedRows, 0),
                                                QItemSelectionModel::NoUpdate);
    }
    model.delRows(doomed);
    QCoreApplication::processEvents();
    print(name, "delete 10000 rows in the middle", milliseconds(timer), "ms");
    if (model.rowCount() != rows - deletedRows) {
        std::fprintf(stderr, "%s: %d rows are left of %d\n", name, model.rowCount(), rows);
        std::exit(EXIT_FAILURE);
    }
    return texts + static_cast<quint64>(found) + textsOf(model);
}

// False when the two do not see the same lines.
bool measureLoading(const Range& range, int runs)
{
    for (int run = 0; run < runs; ++run) {
        EditorTADataModel model(nullptr);
        const qsizetype before = heap();
        std::clock_t start = std::clock();
        model.load(range.dir, range.from, range.to, range.timeframe);
        const double ours = processorSeconds(start);
        const int rows = model.rowCount();
        const double bytes = static_cast<double>(heap() - before) / rows;

        start = std::clock();
        const SplitFiles split = SplitFiles::read(range.dir, range.timeframe);
        const double theirs = processorSeconds(start);
        if (split.lines != rows || split.fields != qint64(rows) * model.columnCount()) {
            std::fprintf(stderr, "%d rows are shown of %lld lines\n", rows,
                         static_cast<long long>(split.lines));
            return false;
        }
        std::printf("%.4f %.4f %.1f\n", ours, theirs, bytes);
    }
    return true;
}

// False when a file could not be written.
bool measureRewriting(const Range& range)
{
    EditorTADataModel model(nullptr);
    QElapsedTimer timer;
    timer.start();
    model.load(range.dir, range.from, range.to, range.timeframe);
    print("ours", "load", milliseconds(timer), "ms");
    timer.restart();
    model.delRowsFromFiles();
    print("ours", "rewrite", milliseconds(timer), "ms");
    const QStringList problems = model.takeProblems();
    for (const QString& problem : problems)
        std::fprintf(stderr, "%s\n", qUtf8Printable(problem));
    return problems.isEmpty();
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        std::fprintf(stderr,
                     "bench_editor SERIES_DIR [TIMEFRAME] [ours|plain|files|rewrite] [RUNS]\n");
        return EXIT_FAILURE;
    }
    Range range;
    range.dir = QDir(arguments.at(1));
    range.timeframe = arguments.value(2, QStringLiteral("1")).toInt();
    const QList<QDate> days =
        *vexdesk::storedDays(range.dir, range.timeframe, QDate(1900, 1, 1), QDate(9999, 12, 31));
    if (days.isEmpty()) {
        std::fprintf(stderr, "%s: no day file of %d seconds\n", qUtf8Printable(arguments.at(1)),
                     range.timeframe);
        return EXIT_FAILURE;
    }
    range.from = days.first().startOfDay();
    range.to = days.last().endOfDay();

    const QString which = arguments.value(3);
    if (which == QLatin1String("files")) {
        const int runs = arguments.value(4, QStringLiteral("5")).toInt();
        return measureLoading(range, runs) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (which == QLatin1String("rewrite"))
        return measureRewriting(range) ? EXIT_SUCCESS : EXIT_FAILURE;
    quint64 ours = 0;
    quint64 plain = 0;
    if (which != QLatin1String("plain"))
        ours = measure<EditorTADataModel>("ours", range, true);
    if (which != QLatin1String("ours"))
        plain = measure<PlainEditorModel>("plain", range, false);
    if (which.isEmpty() && ours != plain) {
        std::fprintf(stderr, "The two models do not show the same.\n");
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
