// SPDX-License-Identifier: MIT
#include "tour/importtour.h"

#include "tour/demonstration.h"
#include "tour/tour.h"
#include "tour/toursteps.h"
#include "tour/userinput.h"

#include <QtCore/QFile>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>

namespace vexdesk {

namespace {

constexpr int fileColumns = 7;

QWizard* wizard()
{
    return activeDialog<QWizard>();
}

// A widget of the wizard's current page.
template <typename Widget>
Widget* onPage(const QString& name)
{
    return wizard() && wizard()->currentPage() ? wizard()->currentPage()->findChild<Widget*>(name)
                                               : nullptr;
}

QComboBox* box(const char* name)
{
    return onPage<QComboBox>(QLatin1String(name));
}

// The boxes in the header of the columns page, from left to right.
QList<QComboBox*> columnBoxes()
{
    const auto* const table = onPage<QTableWidget>(QStringLiteral("fileData"));
    return table ? table->horizontalHeader()->findChildren<QComboBox*>() : QList<QComboBox*>();
}

void addSeriesSteps(Tour& tour)
{
    constexpr auto page = "SeriesImportPage";
    tour.add(
        {Tour::tr("страница серии"), [] { return isOnPage(page); }, {}, QStringLiteral("series")});
    addSeriesChoice(tour, box, QStringLiteral("security"));
    addWizardClick(tour, page, QWizard::NextButton, {}, QStringLiteral("series-chosen"));
}

void addFormatSteps(Tour& tour)
{
    constexpr auto page = "FormatImportPage";
    tour.add({Tour::tr("страница формата"),
              [] {
                  if (const Outcome here = isOnPage(page); !here)
                      return here;
                  return missingUnless(!wizard()->button(QWizard::NextButton)->isEnabled(),
                                       Tour::tr("можно продолжать без разделителя"));
              },
              {},
              QStringLiteral("format")});
    addChoice(
        tour, Tour::tr("разделитель"), [] { return box("separator"); },
        entryWith(QStringLiteral(";")), QStringLiteral("separator"));
    addChoice(
        tour, Tour::tr("формат даты"), [] { return box("dateFormat"); },
        entryWith(QStringLiteral("dd.MM.yy")));
    addChoice(
        tour, Tour::tr("формат времени"), [] { return box("timeFormat"); },
        entryWith(QStringLiteral("hh:mm")));
    addWizardClick(
        tour, page, QWizard::NextButton,
        [] {
            const auto* const table = onPage<QTableWidget>(QStringLiteral("fileData"));
            return missingUnless(table && table->columnCount() == fileColumns &&
                                     table->rowCount() == 10,
                                 Tour::tr("файл не показан"));
        },
        QStringLiteral("format-chosen"));
}

void addColumnSteps(Tour& tour)
{
    constexpr auto page = "ColumnsImportPage";
    tour.add({Tour::tr("страница столбцов"),
              [] {
                  if (const Outcome here = isOnPage(page); !here)
                      return here;
                  return missingUnless(columnBoxes().size() == fileColumns,
                                       Tour::tr("нет списков"));
              },
              {},
              QStringLiteral("columns")});
    // The columns of the file stand in the order of the roles, before which there is "none".
    for (int column = 0; column < fileColumns; ++column) {
        addChoice(
            tour, Tour::tr("роль столбца"), [column] { return columnBoxes().value(column); },
            entryAt(column + 1), column == 0 ? QStringLiteral("role") : QString());
    }
    addWizardClick(tour, page, QWizard::FinishButton, {}, QStringLiteral("columns-chosen"));
}

} // namespace

bool addImportTour(Tour& tour, MainWindow& window, const QDir& directory)
{
    const Demonstration demonstration = makeDemonstration();
    QFile file(directory.absoluteFilePath(QStringLiteral("demo.csv")));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(demonstration.input) != demonstration.input.size() || !file.flush())
        return false;
    // What an earlier tour left must not pass for the work of this one.
    for (auto day = demonstration.dayFiles.begin(); day != demonstration.dayFiles.end(); ++day)
        QFile::remove(demonstrationFilePath(day.key()));

    addMenuSteps(tour, window, "1_Import", QStringLiteral("window"), QStringLiteral("menu"));
    addFileChoice(tour, file.fileName(), QStringLiteral("file"));
    addSeriesSteps(tour);
    addFormatSteps(tour);
    addColumnSteps(tour);
    addAnswer(tour, Tour::tr("итог"), QMessageBox::Information, QMessageBox::Ok,
              QStringLiteral("result"));
    addLook(tour, Tour::tr("бары сохранены"),
            [demonstration] { return areStored(demonstration.dayFiles); });
    return true;
}

} // namespace vexdesk
