#include "store/jobrunner.h"

#include "store/jobprogressdialog.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QCoreApplication>
#include <QtCore/QFutureWatcher>
#include <QtWidgets/QMessageBox>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(JobRunner)
};

} // namespace

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

void reportOutcome(const QString& error, const QString& successTitle, const QString& success)
{
    if (error.isEmpty())
        QMessageBox::information(nullptr, successTitle, success, QMessageBox::Ok);
    else
        QMessageBox::warning(nullptr, Text::tr("Ошибка"), error, QMessageBox::Ok);
}

} // namespace tadata
