// SPDX-License-Identifier: MIT
#include "jobrunner.h"

#include "jobprogressdialog.h"
#include "outcomebox.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QFutureWatcher>

namespace tadata {

QString runJob(const QString& title, const QString& text,
               const std::function<QString(QProgressDialog*)>& job)
{
    JobProgressDialog progress(title, text);
    QFutureWatcher<QString> watcher;
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &progress, &QWidget::close);
    QFuture<QString> future = QtConcurrent::run(QThreadPool::globalInstance(), job,
                                                static_cast<QProgressDialog*>(&progress));
    watcher.setFuture(future);
    // A job that has ended by now has nothing to show.
    if (!future.isFinished())
        progress.exec();
    return future.result();
}

ProgressSink shownOn(QProgressDialog* dialog)
{
    return [dialog](int percent) {
        QMetaObject::invokeMethod(
            dialog, [dialog, percent] { dialog->setValue(percent); }, Qt::QueuedConnection);
    };
}

void reportOutcome(const QString& error, const OutcomeTexts& texts)
{
    if (error.isEmpty())
        OutcomeBox::tell(QMessageBox::Information, texts.successTitle, texts.success);
    else
        OutcomeBox::tell(QMessageBox::Warning, texts.errorTitle, error);
}

} // namespace tadata
