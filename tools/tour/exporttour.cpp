// SPDX-License-Identifier: MIT
#include "tour/exporttour.h"

#include "tour/demonstration.h"
#include "tour/exportedbars.h"
#include "tour/tour.h"
#include "tour/toursteps.h"
#include "tour/userinput.h"

#include <QtCore/QDate>
#include <QtCore/QFile>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QLineEdit>

namespace vexdesk {

namespace {

const QString outputName = QStringLiteral("export");

constexpr auto seriesPage = "SeriesExportPage";
constexpr auto formatPage = "FormatExportPage";

struct Interval
{
    QDate from;
    QDate to;
    int timeframe; // seconds
};

void addSeriesPage(Tour& tour, const QDir& directory, const Interval& interval)
{
    tour.add({Tour::tr("мастер экспорта"), [] { return isOnPage(seriesPage); }});
    addSeriesChoice(tour, [](const char* name) { return inDialog<QComboBox>(name); });
    const auto typeDate = [&tour](const char* name, const QDate& date) {
        addTyping(
            tour, Tour::tr("дата"), [name] { return inDialog<QDateTimeEdit>(name); },
            date.startOfDay());
    };
    typeDate("dateFrom", interval.from);
    typeDate("dateTo", interval.to);
    addChoice(
        tour, Tour::tr("таймфрейм"), [] { return inDialog<QComboBox>("timeFrame"); },
        entryWith(interval.timeframe));
    const auto typeLine = [&tour](const char* name, const QString& text) {
        addTyping(
            tour, Tour::tr("выходной файл"), [name] { return inDialog<QLineEdit>(name); }, text);
    };
    typeLine("outputFile", outputName);
    typeLine("outputDir", directory.absolutePath());
}

void addEnd(Tour& tour, const QString& picture)
{
    addWizardClick(tour, formatPage, QWizard::FinishButton, {}, picture);
    addAnswer(tour, Tour::tr("экспорт завершён"), QMessageBox::Information, QMessageBox::Ok);
}

void addComparison(Tour& tour, const QString& path,
                   const std::function<Outcome(const QByteArray&)>& check)
{
    addLook(tour, Tour::tr("файл записан"), [path, check] {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? check(file.readAll())
                                              : missing(Tour::tr("нет файла %1").arg(path));
    });
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
    addWizardClick(tour, seriesPage, QWizard::NextButton, {}, QStringLiteral("export-series"));
    addEnd(tour, QStringLiteral("export-format"));
    addComparison(tour, path, hasStoredBars);

    const QDate today = QDate::currentDate();
    const QString question = Tour::tr("файл уже есть");
    addMenuSteps(tour, window, command);
    addSeriesPage(tour, directory, {today, today, 60});
    addWizardClick(tour, seriesPage, QWizard::NextButton);
    addAnswer(tour, question, QMessageBox::Question, QMessageBox::No,
              QStringLiteral("export-question"));
    addWizardClick(tour, seriesPage, QWizard::NextButton);
    addAnswer(tour, question, QMessageBox::Question, QMessageBox::Yes);
    addEnd(tour, QString());
    addComparison(tour, path, hasDealsOfToday);
}

} // namespace vexdesk
