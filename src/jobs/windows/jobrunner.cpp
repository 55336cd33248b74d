// SPDX-License-Identifier: MIT
#include "jobrunner.h"

#include "jobprogressdialog.h"
#include "outcomebox.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QFutureWatcher>
#include <QtCore/QThreadPool>

namespace tadata {

namespace {

// Qt paints large areas with the help of the same pool and waits for it: on a computer with one
// core a job that took the pool's only thread would halt the windows until it ends.
class OneThreadMore final
{
public:
    explicit OneThreadMore(QThreadPool* pool)
        : m_pool(pool)
    {
        m_pool->setMaxThreadCount(m_pool->maxThreadCount() + 1);
    }
    ~OneThreadMore() { m_pool->setMaxThreadCount(m_pool->maxThreadCount() - 1); }
    Q_DISABLE_COPY_MOVE(OneThreadMore)

private:
    QThreadPool* m_pool;
};

} // namespace

vexdesk::Outcome runJob(const QString& title, const QString& text,
                        const std::function<vexdesk::Outcome(QProgressDialog*)>& job)
{
    JobProgressDialog progress(title, text);
    QFutureWatcher<vexdesk::Outcome> watcher;
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &progress, &QWidget::close);
    QThreadPool* const pool = QThreadPool::globalInstance();
    const OneThreadMore forTheJob(pool);
    QFuture<vexdesk::Outcome> future =
        QtConcurrent::run(pool, job, static_cast<QProgressDialog*>(&progress));
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
