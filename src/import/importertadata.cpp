#include "import/importertadata.h"

#include "import/importjob.h"
#include "store/dayfile.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressDialog>

void ImporterTAData::doImport()
{
    QMessageBox::information(
        nullptr, QCoreApplication::translate("ImporterTAData", "Импорт"),
        QCoreApplication::translate(
            "ImporterTAData",
            "Мастер импорта появится в следующей версии.\nСейчас файл с барами можно импортировать "
            "командой «tadata import»; подсказку даёт «tadata --help»."),
        QMessageBox::Ok);
}

QString importFromFile(QProgressDialog* progress, QString fileName, ImportDetails details)
{
    const auto seriesDir = [&details] {
        return tadata::makeSeriesDir(details.stockCode, details.boardCode, details.securityName);
    };
    const auto show = [progress](int percent) {
        QMetaObject::invokeMethod(
            progress, [progress, percent] { progress->setValue(percent); }, Qt::QueuedConnection);
    };
    return tadata::importBars(fileName, details, seriesDir, show);
}
