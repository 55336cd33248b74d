// SPDX-License-Identifier: MIT
#include "exportertadata.h"

#include "exportjob.h"
#include "exporttadatawizard.h"
#include "jobrunner.h"

#include <vexdesk/database/irawqueue.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QProgressDialog>

#include <optional>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ExporterTAData)
};

std::optional<ExportDetails> askForDetails()
{
    ExportTADataWizard wizard(nullptr);
    if (wizard.exec() != QDialog::Accepted)
        return std::nullopt;
    return wizard.exportDetails();
}

vexdesk::Outcome exportFromStore(QProgressDialog* progress, const ExportDetails& details)
{
    const auto seriesDir = [&details] {
        return vexdesk::makeSeriesDir(details.stockCode, details.boardCode, details.securityName);
    };
    if (const auto allowed = tadata::mayWriteOutput(details, vexdesk::storePlace()); !allowed)
        return allowed;
    return tadata::exportBars(details, {QDate::currentDate(), progress->value()}, seriesDir,
                              tadata::shownOn(progress))
        .outcome;
}

vexdesk::Outcome runJob(const ExportDetails& details)
{
    // No row of a table changes while the job reads it.
    const IRawQueue::ProcessingBlocker blocker;
    return tadata::runJob(
        Text::tr("Экспорт"), Text::tr("Экспортирую..."),
        [details](QProgressDialog* progress) { return exportFromStore(progress, details); });
}

} // namespace

void ExporterTAData::doExport()
{
    if (const std::optional<ExportDetails> details = askForDetails()) {
        tadata::reportOutcome(runJob(*details),
                              {Text::tr("Ошибка"), Text::tr("Успешное завершение экспорта"),
                               Text::tr("Экспорт данных ТА успешно завершен")});
    }
}

QString exportData(QProgressDialog* progress, const ExportDetails& details)
{
    return exportFromStore(progress, details).message();
}
