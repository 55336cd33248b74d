// SPDX-License-Identifier: MIT
#include "importertadata.h"

#include "importjob.h"
#include "importtadatawizard.h"
#include "jobrunner.h"
#include "outcomebox.h"
#include "restoresettings.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/storejob.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/history/utf8.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QFileDialog>

#include <optional>

namespace {

constexpr int previewLines = 10;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImporterTAData)
};

void warn(const QString& title, const QString& text)
{
    OutcomeBox::tell(QMessageBox::Warning, title, text);
}

// The steps of the command. One that ends it has told the user why, or the user has cancelled.

QString askForFile()
{
    return QFileDialog::getOpenFileName(nullptr, Text::tr("Выбор файла для импорта"), QString(),
                                        Text::tr("Текстовые файлы (*.txt *.csv)"));
}

std::optional<QList<QString>> readPreview(const QString& fileName)
{
    vexdesk::DayFileLines lines(fileName, vexdesk::DayFileLines::unlimited);
    if (!lines.open()) {
        warn(Text::tr("Ошибка открытия файла"),
             Text::tr("Невозможно открыть файл %1").arg(fileName));
        return std::nullopt;
    }
    QList<QString> preview;
    QByteArrayView line;
    while (preview.size() < previewLines && lines.nextBytes(&line))
        preview.append(vexdesk::textFromUtf8(line));
    if (const auto read = lines.outcome(); !read) {
        warn(Text::tr("Ошибка открытия файла"),
             Text::tr("Невозможно прочитать файл %1: %2").arg(fileName, read.message()));
        return std::nullopt;
    }
    if (preview.isEmpty()) {
        warn(Text::tr("Пустой файл"), Text::tr("Файл %1 пуст").arg(fileName));
        return std::nullopt;
    }
    return preview;
}

std::optional<ImportDetails> askForDetails(const QList<QString>& lines)
{
    ImportTADataWizard wizard(lines, nullptr);
    if (wizard.exec() != QDialog::Accepted)
        return std::nullopt;
    return wizard.importDetails();
}

QDir makeSeriesDirOf(const ImportDetails& details)
{
    return vexdesk::makeSeriesDir(details.stockCode, details.boardCode, details.securityName);
}

// With the lock of the series, and so that it can be taken back.
vexdesk::Outcome importKeeping(QProgressDialog* progress, const QString& fileName,
                               const ImportDetails& details)
{
    vexdesk::StoreJob job(
        {.by = QStringLiteral("import"), .source = {fileName}, .limits = tadata::restoreLimits()});
    const auto seriesDir = [&]() -> vexdesk::Result<QDir> {
        const QString series = QStringLiteral("%1/%2/%3")
                                   .arg(details.stockCode, details.boardCode, details.securityName);
        if (const auto begun = job.begin(vexdesk::storePlace(), {series}); !begun)
            return begun.failure();
        return makeSeriesDirOf(details);
    };
    const auto result = tadata::importBars(fileName, details, seriesDir, tadata::shownOn(progress),
                                           {.keeper = job.keeper()});
    QStringList messages{result.outcome.message(), job.end().message()};
    messages.removeAll(QString());
    if (messages.isEmpty())
        return {};
    return vexdesk::Failure{messages.join(QStringLiteral("\n\n"))};
}

vexdesk::Outcome runJob(const QString& fileName, const ImportDetails& details)
{
    return tadata::runJob(Text::tr("Импорт"), Text::tr("Импортирую..."),
                          [fileName, details](QProgressDialog* progress) {
                              return importKeeping(progress, fileName, details);
                          });
}

void report(const vexdesk::Outcome& outcome)
{
    tadata::reportOutcome(outcome, {Text::tr("Ошибка"), Text::tr("Успешное завершение импорта"),
                                    Text::tr("Импорт данных ТА успешно завершен")});
}

} // namespace

void ImporterTAData::doImport()
{
    const QString fileName = askForFile();
    if (fileName.isEmpty())
        return;
    const std::optional<QList<QString>> lines = readPreview(fileName);
    if (!lines)
        return;
    const std::optional<ImportDetails> details = askForDetails(*lines);
    if (!details)
        return;
    report(runJob(fileName, *details));
}

QString importFromFile(QProgressDialog* progress, QString fileName, ImportDetails details)
{
    const auto seriesDir = [&details] { return makeSeriesDirOf(details); };
    return tadata::importBars(fileName, details, seriesDir, tadata::shownOn(progress))
        .outcome.message();
}
