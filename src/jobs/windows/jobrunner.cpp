// SPDX-License-Identifier: MIT
#include "jobrunner.h"

#include "jobprogressdialog.h"
#include "outcomebox.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QFutureWatcher>

namespace tadata {

vexdesk::Outcome runJob(const QString& title, const QString& text,
                        const std::function<vexdesk::Outcome(QProgressDialog*)>& job)
{
    JobProgressDialog progress(title, text);
    QFutureWatcher<vexdesk::Outcome> watcher;
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &progress, &QWidget::close);
    QFuture<vexdesk::Outcome> future = QtConcurrent::run(QThreadPool::globalInstance(), job,
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

void reportOutcome(const vexdesk::Outcome& outcome, const OutcomeTexts& texts)
{
    if (outcome)
        OutcomeBox::tell(QMessageBox::Information, texts.successTitle, texts.success);
    else
        OutcomeBox::tell(QMessageBox::Warning, texts.errorTitle, outcome.message());
}

} // namespace tadata
