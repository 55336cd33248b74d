// SPDX-License-Identifier: MIT
#include "tour/qualitytour.h"

#include "desk/chart/charttabs.h"
#include "desk/chart/chartview.h"
#include "desk/mainwindow.h"
#include "tour/qualitydemonstration.h"
#include "tour/settingsbefore.h"
#include "tour/tour.h"
#include "tour/toursteps.h"
#include "tour/userinput.h"

#include <vexdesk/icore.h>

#include <QtCore/QFile>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>

#include <memory>

namespace vexdesk {

namespace {

using Files = QMap<QString, QByteArray>;

constexpr auto safeImport = "SafeImportWindow";
constexpr auto health = "HealthWindow";
constexpr auto points = "PointsWindow";

// A widget that is seen in the window of this class; null where there is none.
template <typename Widget>
Widget* inWindow(const char* window, const char* name)
{
    const QWidgetList all = QApplication::topLevelWidgets();
    for (const QWidget* const one : all) {
        auto* const found = one->isVisible() && one->inherits(window)
                                ? one->findChild<Widget*>(QLatin1String(name))
                                : nullptr;
        if (found && found->isVisible())
            return found;
    }
    return nullptr;
}

int rowsOf(const QTreeView* view)
{
    return view ? view->model()->rowCount() : 0;
}

// What is stored of the series that the tour imports.
Files storedFiles()
{
    Files files;
    const QDir board(ICore::getDir(QStringLiteral("tadata"), false).filePath("NORD/MAIN"));
    const QStringList codes = qualityCodes();
    for (const QString& code : codes) {
        const QDir series(board.filePath(code));
        const QStringList names = series.entryList(QDir::Files | QDir::Hidden);
        for (const QString& name : names) {
            QFile file(series.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                files.insert(file.fileName(), file.readAll());
        }
    }
    return files;
}

struct State
{
    Files before = storedFiles();
    SettingsBefore settings{QStringList{
        QStringLiteral("TADataQuality/SafeImport/recent"),
        QStringLiteral("TADataQuality/SafeImport/board"),
        QStringLiteral("TADataQuality/SafeImport/dialog_size"),
        QStringLiteral("TADataQuality/Health/dialog_size"),
        QStringLiteral("TADataQuality/Points/dialog_size"), QStringLiteral("Desk/Charts/recent"),
        QStringLiteral("Desk/Charts/tabs"), QStringLiteral("Desk/Charts/current")}};
};

using SharedState = std::shared_ptr<State>;

void addButton(Tour& tour, const QString& title, const char* window, const char* name,
               const StepCheck& check = {}, const QString& picture = QString())
{
    addClick(
        tour, title, [window, name] { return inWindow<QAbstractButton>(window, name); }, check,
        picture);
}

// Closes the window of this class as soon as the check holds.
void addClosing(Tour& tour, const char* window, const StepCheck& check = {},
                const QString& picture = QString())
{
    const auto shown = [window] {
        const QWidgetList all = QApplication::topLevelWidgets();
        for (QWidget* const one : all) {
            if (one->isVisible() && one->inherits(window))
                return one;
        }
        return static_cast<QWidget*>(nullptr);
    };
    tour.add({Tour::tr("закрыть окно"),
              [check, shown] {
                  if (const Outcome holds = check ? check() : Outcome(); !holds)
                      return holds;
                  return missingUnless(shown(), Tour::tr("окно не открыто"));
              },
              [shown] { pressKey(shown(), Qt::Key_Escape); }, picture});
    tour.add({Tour::tr("окно закрыто"),
              [shown] { return missingUnless(!shown(), Tour::tr("окно ещё открыто")); }});
}

// The first line of the first kind of what is odd in the file.
void showFirstProblem()
{
    auto* const tree = inWindow<QTreeView>(safeImport, "problems");
    click(tree->viewport(), tree->visualRect(tree->model()->index(0, 0)).center());
    pressKey(tree, Qt::Key_Right);
    pressKey(tree, Qt::Key_Down);
}

Outcome isImportReady()
{
    const auto* const button = inWindow<QPushButton>(safeImport, "import");
    return missingUnless(button && button->isEnabled(), Tour::tr("импорт не проверен"));
}

void addImport(Tour& tour, MainWindow& window, const QString& file)
{
    addMenuSteps(tour, window, "TADataQuality.SafeImport");
    addButton(tour, Tour::tr("открыть файл"), safeImport, "open");
    addFileChoice(tour, file);
    const auto box = [](const char* name) { return inWindow<QComboBox>(safeImport, name); };
    addChoice(
        tour, Tour::tr("площадка"), [box] { return box("stock"); },
        entryOfCode(QStringLiteral("NORD")));
    addChoice(
        tour, Tour::tr("режим торгов"), [box] { return box("board"); },
        entryOfCode(QStringLiteral("MAIN")));
    constexpr int ofColumn = 1;
    addChoice(
        tour, Tour::tr("инструмент из столбца"), [box] { return box("source"); },
        entryAt(ofColumn));
    tour.add({Tour::tr("показать ошибочную строку"),
              [] {
                  return missingUnless(rowsOf(inWindow<QTreeView>(safeImport, "problems")) > 0,
                                       Tour::tr("ошибки не найдены"));
              },
              showFirstProblem});
    addButton(
        tour, Tour::tr("пропускать ошибочные строки"), safeImport, "skipBad",
        [] {
            const auto* const tree = inWindow<QTreeView>(safeImport, "problems");
            return missingUnless(tree && tree->currentIndex().parent().isValid(),
                                 Tour::tr("строка не выбрана"));
        },
        QStringLiteral("safe-import-fault"));
    addButton(tour, Tour::tr("импортировать"), safeImport, "import", isImportReady,
              QStringLiteral("safe-import"));
    addClosing(
        tour, safeImport,
        [] {
            if (!inWindow<QPushButton>(safeImport, "undo"))
                return missing(Tour::tr("импорт не закончен"));
            return isImportReady();
        },
        QStringLiteral("safe-import-done"));
}

void addHealth(Tour& tour, MainWindow& window)
{
    addMenuSteps(tour, window, "TADataQuality.Health");
    tour.add({Tour::tr("хранилище прочитано"),
              [] {
                  const auto* const view = inWindow<QTreeView>(health, "series");
                  const bool isRead =
                      rowsOf(view) > 1 && !inWindow<QProgressBar>(health, "progress");
                  return missingUnless(isRead, Tour::tr("серий ещё нет"));
              },
              {},
              QStringLiteral("health-all")});
    addTyping(
        tour, Tour::tr("часть имени серии"),
        [] { return static_cast<QWidget*>(inWindow<QLineEdit>(health, "filter")); },
        qualityCodes().last());
    addButton(
        tour, Tour::tr("показать на графике"), health, "show",
        [] {
            return missingUnless(rowsOf(inWindow<QTreeView>(health, "series")) == 1,
                                 Tour::tr("найдена не одна серия"));
        },
        QStringLiteral("health"));
    addClosing(tour, health, [&window] {
        const auto* const tabs = window.findChild<ChartTabs*>();
        return missingUnless(tabs && tabs->currentWidget(), Tour::tr("график не открылся"));
    });
    tour.add({Tour::tr("график с отметками"),
              [&window] {
                  const QWidget* const page = window.findChild<ChartTabs*>()->currentWidget();
                  const auto* const view = page ? page->findChild<ChartView*>() : nullptr;
                  return missingUnless(view && !view->chart().marks.empty(),
                                       Tour::tr("отметок на графике нет"));
              },
              {},
              QStringLiteral("chart-marks")});
    addMenuSteps(tour, window, "Desk.Chart.Close");
}

void addPoints(Tour& tour, MainWindow& window, const SharedState& state)
{
    addMenuSteps(tour, window, "TADataQuality.Points");
    // The last column says how the files are now; it is short while they are looked at.
    const auto isLookedAt = [] {
        const auto* const files = inWindow<QTreeView>(points, "files");
        const QAbstractItemModel* const model = files ? files->model() : nullptr;
        const bool isDone =
            model && model->index(0, model->columnCount() - 1).data().toString().size() > 1;
        return missingUnless(isDone, Tour::tr("точка ещё не показана"));
    };
    addButton(tour, Tour::tr("вернуть точку"), points, "putBack", isLookedAt,
              QStringLiteral("points"));
    addClosing(
        tour, points,
        [state] {
            const auto* const back = inWindow<QPushButton>(points, "putBack");
            if (!back || !back->isEnabled())
                return missing(Tour::tr("точка ещё возвращается"));
            return missingUnless(storedFiles() == state->before,
                                 Tour::tr("в хранилище не то, что было"));
        },
        QStringLiteral("points-back"));
}

} // namespace

bool addQualityTour(Tour& tour, MainWindow& window, const QDir& directory)
{
    if (!isInMenu("TADataQuality.SafeImport")) {
        tour.add({Tour::tr("качество данных не показано: модуля нет")});
        return true;
    }
    QFile file(directory.absoluteFilePath(QStringLiteral("quality.csv")));
    const QByteArray input = qualityInput();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(input) != input.size() || !file.flush())
        return false;
    const auto state = std::make_shared<State>();
    const auto restore = [state] { state->settings.restore(); };
    QObject::connect(&tour, &Tour::failed, &tour, restore);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &tour, restore);
    addImport(tour, window, file.fileName());
    addHealth(tour, window);
    addPoints(tour, window, state);
    return true;
}

} // namespace vexdesk
