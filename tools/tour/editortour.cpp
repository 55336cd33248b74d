// SPDX-License-Identifier: MIT
#include "tour/editortour.h"

#include "tour/demonstration.h"
#include "tour/tour.h"
#include "tour/toursteps.h"
#include "tour/userinput.h"

#include <QtCore/QItemSelectionModel>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>

#include <algorithm>

namespace vexdesk {

namespace {

// Two of the three days are shown; of the first, the bars of 10:20 to 10:29 are deleted.
constexpr int shownRows = 120;
constexpr int firstDeleted = 19;
constexpr int deletedRows = 10;

QTreeView* table()
{
    return inDialog<QTreeView>("dataTable");
}

Outcome hasRows(int wanted)
{
    if (!table())
        return missing(Tour::tr("редактор не открыт"));
    const int rows = table()->model()->rowCount();
    return missingUnless(rows == wanted, Tour::tr("в таблице строк: %1").arg(rows));
}

Outcome isSelected(int first, int count)
{
    if (const Outcome rows = hasRows(shownRows); !rows)
        return rows;
    QModelIndexList selected = table()->selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end());
    return missingUnless(selected.size() == count && selected.first().row() == first &&
                             selected.last().row() == first + count - 1,
                         Tour::tr("выбраны не те строки"));
}

// A line as the editor writes it: money before volume.
QByteArray exchanged(const QByteArray& line)
{
    constexpr int volume = 5;
    QByteArrayList fields = line.split(';');
    fields.swapItemsAt(volume, volume + 1);
    return fields.join(';');
}

QMap<QString, QByteArray> editedDayFiles()
{
    QMap<QString, QByteArray> dayFiles = makeDemonstration().dayFiles;
    const QString firstDay = dayFiles.firstKey();
    const QString lastDay = dayFiles.lastKey();
    for (auto day = dayFiles.begin(); day != dayFiles.end(); ++day) {
        // Beyond the range: as it was imported.
        if (day.key() == lastDay)
            continue;
        QByteArrayList lines = day.value().split('\n');
        if (day.key() == firstDay)
            lines.erase(lines.begin() + firstDeleted, lines.begin() + firstDeleted + deletedRows);
        for (QByteArray& line : lines) {
            if (!line.isEmpty())
                line = exchanged(line);
        }
        day.value() = lines.join('\n');
    }
    return dayFiles;
}

void addTime(Tour& tour, const char* name, const QDate& day, const QTime& time)
{
    addTyping(
        tour, Tour::tr("время"), [name] { return inDialog<QDateTimeEdit>(name); },
        QDateTime(day, time));
}

void addButton(Tour& tour, const char* name, const StepCheck& check, const QString& picture)
{
    addClick(
        tour, Tour::tr("кнопка редактора"), [name] { return inDialog<QPushButton>(name); }, check,
        picture);
}

void addRangeSteps(Tour& tour)
{
    addSeriesChoice(tour, [](const char* name) { return inDialog<QComboBox>(name); });
    addTime(tour, "fromDateTime", QDate(2024, 1, 15), QTime(0, 0));
    addTime(tour, "toDateTime", QDate(2024, 1, 16), QTime(23, 59, 59));
    addButton(tour, "loadDataButton", {}, QStringLiteral("editor"));
}

void addFindSteps(Tour& tour)
{
    addTime(tour, "findDateTime", QDate(2024, 1, 15), QTime(10, 20));
    addButton(
        tour, "findButton", [] { return hasRows(shownRows); }, QStringLiteral("editor-range"));
}

void addDeletionSteps(Tour& tour)
{
    const auto found = [] { return table()->model()->index(firstDeleted, 0); };
    tour.add({Tour::tr("бар найден"), [] { return isSelected(firstDeleted, 1); },
              [found] { click(table()->viewport(), table()->visualRect(found()).center()); },
              QStringLiteral("editor-found")});
    tour.add({Tour::tr("выделить бары"),
              [found] {
                  return missingUnless(table()->currentIndex() == found(),
                                       Tour::tr("строка не текущая"));
              },
              [] {
                  for (int row = 1; row < deletedRows; ++row)
                      pressKey(table(), Qt::Key_Down, QString(), Qt::ShiftModifier);
              }});
    addButton(
        tour, "delButton", [] { return isSelected(firstDeleted, deletedRows); },
        QStringLiteral("editor-selected"));
    addButton(
        tour, "closeButton", [] { return hasRows(shownRows - deletedRows); },
        QStringLiteral("editor-deleted"));
}

} // namespace

void addEditorTour(Tour& tour, MainWindow& window)
{
    addMenuSteps(tour, window, "3_Edit");
    addRangeSteps(tour);
    addFindSteps(tour);
    addDeletionSteps(tour);
    addLook(tour, Tour::tr("файлы записаны"),
            [dayFiles = editedDayFiles()] { return areStored(dayFiles); });
}

} // namespace vexdesk
