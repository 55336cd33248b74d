// SPDX-License-Identifier: MIT
#include "desk/tour/exporttour.h"

#include "desk/tour/demonstration.h"
#include "desk/tour/exportedbars.h"
#include "desk/tour/tour.h"
#include "desk/tour/toursteps.h"
#include "desk/tour/userinput.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDate>
#include <QtCore/QFile>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QWizard>

namespace vexdesk {

namespace {

const QString outputName = QStringLiteral("export");

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::ExportTour)
};

constexpr auto seriesPage = "SeriesExportPage";
constexpr auto formatPage = "FormatExportPage";

QString pageMissing(const char* name)
{
    const auto* const wizard = activeDialog<QWizard>();
    if (!wizard)
        return Text::tr("мастер экспорта не открыт");
    return wizard->currentPage() && wizard->currentPage()->objectName() == QLatin1String(name)
               ? QString()
               : Text::tr("открыта не та страница");
}

void addWizardButton(Tour& tour, const char* page, QWizard::WizardButton button,
                     const QString& picture)
{
    tour.add({Text::tr("продолжить"),
              [page, button] {
                  if (const QString missing = pageMissing(page); !missing.isNull())
                      return missing;
                  return activeDialog<QWizard>()->button(button)->isEnabled()
                             ? QString()
                             : Text::tr("кнопка продолжения недоступна");
              },
              [button] { click(activeDialog<QWizard>()->button(button)); }, picture});
}

void addAnswer(Tour& tour, const QString& title, QMessageBox::Icon kind,
               QMessageBox::StandardButton answer, const QString& picture)
{
    tour.add({title,
              [kind] {
                  const auto* const box = activeDialog<QMessageBox>();
                  if (!box)
                      return Text::tr("нет сообщения");
                  return box->icon() == kind ? QString() : box->text();
              },
              [answer] { click(activeDialog<QMessageBox>()->button(answer)); }, picture});
}

struct Interval
{
    QDate from;
    QDate to;
    int timeframe; // seconds
};

void addSeriesPage(Tour& tour, const QDir& directory, const Interval& interval)
{
    tour.add({Text::tr("мастер экспорта"), [] { return pageMissing(seriesPage); }, {}});
    addSeriesChoice(tour, [](const char* name) { return inDialog<QComboBox>(name); });
    const auto typeDate = [&tour](const char* name, const QDate& date) {
        addTyping(
            tour, Text::tr("дата"), [name] { return inDialog<QDateTimeEdit>(name); },
            date.startOfDay());
    };
    typeDate("dateFrom", interval.from);
    typeDate("dateTo", interval.to);
    addChoice(
        tour, Text::tr("таймфрейм"), [] { return inDialog<QComboBox>("timeFrame"); },
        entryWith(interval.timeframe));
    const auto typeLine = [&tour](const char* name, const QString& text) {
        addTyping(
            tour, Text::tr("выходной файл"), [name] { return inDialog<QLineEdit>(name); }, text);
    };
    typeLine("outputFile", outputName);
    typeLine("outputDir", directory.absolutePath());
}

void addEnd(Tour& tour, const QString& picture)
{
    addWizardButton(tour, formatPage, QWizard::FinishButton, picture);
    addAnswer(tour, Text::tr("экспорт завершён"), QMessageBox::Information, QMessageBox::Ok,
              QString());
}

void addComparison(Tour& tour, const QString& path,
                   const std::function<QString(const QByteArray&)>& missing)
{
    tour.add({Text::tr("файл записан"),
              [path, missing] {
                  if (QApplication::activeModalWidget())
                      return Text::tr("окно не закрыто");
                  QFile file(path);
                  return file.open(QIODevice::ReadOnly) ? missing(file.readAll())
                                                        : Text::tr("нет файла %1").arg(path);
              },
              {}});
}

} // namespace

void addExportTour(Tour& tour, MainWindow& window, const QDir& directory)
{
    const QString path = directory.absoluteFilePath(outputName + QStringLiteral(".txt"));
    // What an earlier tour left would raise the question about it too early.
    QFile::remove(path);
    constexpr auto command = "2_Export";

    addMenuSteps(tour, window, command);
    addSeriesPage(tour, directory, {QDate(2024, 1, 15), QDate(2024, 1, 17), 300});
    addWizardButton(tour, seriesPage, QWizard::NextButton, QStringLiteral("export-series"));
    addEnd(tour, QStringLiteral("export-format"));
    addComparison(tour, path, storedExportMissing);

    const QDate today = QDate::currentDate();
    const QString question = Text::tr("файл уже есть");
    addMenuSteps(tour, window, command);
    addSeriesPage(tour, directory, {today, today, 60});
    addWizardButton(tour, seriesPage, QWizard::NextButton, QString());
    addAnswer(tour, question, QMessageBox::Question, QMessageBox::No,
              QStringLiteral("export-question"));
    addWizardButton(tour, seriesPage, QWizard::NextButton, QString());
    addAnswer(tour, question, QMessageBox::Question, QMessageBox::Yes, QString());
    addEnd(tour, QString());
    addComparison(tour, path, dealsExportMissing);
}

} // namespace vexdesk
