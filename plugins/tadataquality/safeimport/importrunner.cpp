// SPDX-License-Identifier: MIT
#include "importrunner.h"

#include <QtConcurrent/QtConcurrentRun>

namespace tadata {

ImportRunner::ImportRunner(QObject* parent)
    : QObject(parent)
{
    connect(&m_import, &QFutureWatcherBase::finished, this, &ImportRunner::takeResult);
    connect(&m_undoing, &QFutureWatcherBase::finished, this, &ImportRunner::takeUndone);
}

ImportRunner::~ImportRunner()
{
    cancel();
    m_import.waitForFinished();
    m_undoing.waitForFinished();
}

void ImportRunner::start(const SafeImportOrder& order)
{
    Q_ASSERT(!m_isRunning);
    m_isRunning = true;
    m_order = order;
    m_stop = std::make_shared<std::atomic<bool>>(false);
    const auto tell = [this](int percent) {
        QMetaObject::invokeMethod(
            this, [this, percent] { Q_EMIT progressed(percent); }, Qt::QueuedConnection);
    };
    m_import.setFuture(
        QtConcurrent::run(m_pool.get(), [order, tell, stop = m_stop, waits = tellingWaits()] {
            return runSafeImport(order, tellingChanges(tell), *stop, waits);
        }));
}

WaitSink ImportRunner::tellingWaits()
{
    return [this](const QString& sentence) {
        QMetaObject::invokeMethod(
            this, [this, sentence] { Q_EMIT waiting(sentence); }, Qt::QueuedConnection);
    };
}

void ImportRunner::cancel()
{
    *m_stop = true;
}

void ImportRunner::undo()
{
    Q_ASSERT(canUndo());
    m_isRunning = true;
    m_stop = std::make_shared<std::atomic<bool>>(false);
    m_undoing.setFuture(
        QtConcurrent::run(m_pool.get(), [root = m_order.root, limits = m_order.limits,
                                         point = m_point, stop = m_stop, waits = tellingWaits()] {
            return undoSafeImport(root, point, limits, *stop, waits);
        }));
}

void ImportRunner::takeResult()
{
    m_isRunning = false;
    const SafeImportResult result = m_import.result();
    // After one that had nothing to change the one before it can still be undone.
    const bool isIdle = result.end == SafeImportResult::End::Done && result.days == 0;
    if (!isIdle || !result.point.isEmpty())
        m_point = result.point;
    Q_EMIT finished(result);
}

void ImportRunner::takeUndone()
{
    m_isRunning = false;
    const vexdesk::Outcome outcome = m_undoing.result();
    if (outcome)
        m_point.clear();
    Q_EMIT undone(outcome);
}

} // namespace tadata
