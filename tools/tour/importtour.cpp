// SPDX-License-Identifier: MIT
#include "desk/tour/importtour.h"

#include "desk/tour/demonstration.h"
#include "desk/tour/tour.h"
#include "desk/tour/toursteps.h"
#include "desk/tour/userinput.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QWizard>

namespace vexdesk {

namespace {

constexpr int fileColumns = 7;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::ImportTour)
};

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

QString pageMissing(const char* name)
{
    if (!wizard())
        return Text::tr("мастер импорта не открыт");
    const QWizardPage* const page = wizard()->currentPage();
    return page && page->objectName() == QLatin1String(name) ? QString()
                                                             : Text::tr("открыта не та страница");
}

QString buttonMissing(QWizard::WizardButton button)
{
    if (!wizard())
        return Text::tr("мастер импорта не открыт");
    return wizard()->button(button)->isEnabled() ? QString()
                                                 : Text::tr("кнопка продолжения недоступна");
}

void addFileSteps(Tour& tour, const QString& file)
{
    const auto nameEdit = [] {
        auto* const dialog = activeDialog<QFileDialog>();
        return dialog ? dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")) : nullptr;
    };
    addTyping(tour, Text::tr("имя файла"), nameEdit, file);
    tour.add({Text::tr("выбор файла"),
              [nameEdit, file] {
                  return nameEdit() && nameEdit()->text() == file
                             ? QString()
                             : Text::tr("имя файла не введено");
              },
              [] {
                  auto* const buttons = activeDialog<QFileDialog>()->findChild<QDialogButtonBox*>();
                  click(buttons->button(QDialogButtonBox::Open));
              },
              QStringLiteral("file")});
}

void addSeriesSteps(Tour& tour)
{
    constexpr auto page = "SeriesImportPage";
    tour.add({Text::tr("страница серии"),
              [page] { return pageMissing(page); },
              {},
              QStringLiteral("series")});
    addSeriesChoice(tour, box, QStringLiteral("security"));
    tour.add({Text::tr("серия выбрана"), [] { return buttonMissing(QWizard::NextButton); },
              [] { click(wizard()->button(QWizard::NextButton)); },
              QStringLiteral("series-chosen")});
}

void addFormatSteps(Tour& tour)
{
    constexpr auto page = "FormatImportPage";
    tour.add({Text::tr("страница формата"),
              [page] {
                  if (const QString missing = pageMissing(page); !missing.isNull())
                      return missing;
                  return wizard()->button(QWizard::NextButton)->isEnabled()
                             ? Text::tr("можно продолжать без разделителя")
                             : QString();
              },
              {},
              QStringLiteral("format")});
    addChoice(
        tour, Text::tr("разделитель"), [] { return box("separator"); },
        entryWith(QStringLiteral(";")), QStringLiteral("separator"));
    addChoice(
        tour, Text::tr("формат даты"), [] { return box("dateFormat"); },
        entryWith(QStringLiteral("dd.MM.yy")));
    addChoice(
        tour, Text::tr("формат времени"), [] { return box("timeFormat"); },
        entryWith(QStringLiteral("hh:mm")));
    tour.add({Text::tr("формат выбран"),
              [] {
                  const auto* const table = onPage<QTableWidget>(QStringLiteral("fileData"));
                  if (!table || table->columnCount() != fileColumns || table->rowCount() != 10)
                      return Text::tr("файл не показан");
                  return buttonMissing(QWizard::NextButton);
              },
              [] { click(wizard()->button(QWizard::NextButton)); },
              QStringLiteral("format-chosen")});
}

void addColumnSteps(Tour& tour)
{
    constexpr auto page = "ColumnsImportPage";
    tour.add({Text::tr("страница столбцов"),
              [page] {
                  if (const QString missing = pageMissing(page); !missing.isNull())
                      return missing;
                  return columnBoxes().size() == fileColumns ? QString() : Text::tr("нет списков");
              },
              {},
              QStringLiteral("columns")});
    // The columns of the file stand in the order of the roles, before which there is "none".
    for (int column = 0; column < fileColumns; ++column) {
        addChoice(
            tour, Text::tr("роль столбца"), [column] { return columnBoxes().value(column); },
            entryAt(column + 1), column == 0 ? QStringLiteral("role") : QString());
    }
    tour.add({Text::tr("столбцы выбраны"), [] { return buttonMissing(QWizard::FinishButton); },
              [] { click(wizard()->button(QWizard::FinishButton)); },
              QStringLiteral("columns-chosen")});
}

void addEndSteps(Tour& tour, const Demonstration& demonstration)
{
    tour.add({Text::tr("итог"),
              [] {
                  const auto* const message = activeDialog<QMessageBox>();
                  if (!message)
                      return Text::tr("нет сообщения об итоге");
                  return message->icon() == QMessageBox::Information ? QString() : message->text();
              },
              [] { click(activeDialog<QMessageBox>()->button(QMessageBox::Ok)); },
              QStringLiteral("result")});
    tour.add({Text::tr("бары сохранены"),
              [demonstration] {
                  return QApplication::activeModalWidget() ? Text::tr("окно не закрыто")
                                                           : storedMissing(demonstration.dayFiles);
              },
              {}});
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
    addFileSteps(tour, file.fileName());
    addSeriesSteps(tour);
    addFormatSteps(tour);
    addColumnSteps(tour);
    addEndSteps(tour, demonstration);
    return true;
}

} // namespace vexdesk
