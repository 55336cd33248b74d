// SPDX-License-Identifier: MIT
#pragma once

#include "ownpool.h"
#include "safeimport.h"

#include <QtCore/QFutureWatcher>
#include <QtCore/QObject>

#include <memory>

namespace tadata {

/// Runs one import after the other, or the undoing of the last, in a thread of its own.
/// User-interface thread; the end of the object cancels what runs and waits until all of it is
/// taken back.
class ImportRunner final : public QObject
{
    Q_OBJECT

public:
    explicit ImportRunner(QObject* parent = nullptr);
    ~ImportRunner() override;

    bool isRunning() const { return m_isRunning; }
    void start(const SafeImportOrder& order);
    /// What the import has changed is taken back; finished() tells when that is done.
    void cancel();
    /// Undoes the import that was done last.
    void undo();
    bool canUndo() const { return !isRunning() && !m_point.isEmpty(); }

Q_SIGNALS:
    void progressed(int percent);
    /// Another program has a series; the sentence says which, and who.
    void waiting(const QString& sentence);
    void finished(const tadata::SafeImportResult& result);
    void undone(const vexdesk::Outcome& outcome);

private:
    WaitSink tellingWaits();
    void takeResult();
    void takeUndone();

    std::shared_ptr<std::atomic<bool>> m_stop = std::make_shared<std::atomic<bool>>(false);
    SafeImportOrder m_order; ///< of the last import
    QString m_point;         ///< of the same, while it can be undone
    bool m_isRunning = false;
    OwnPool m_pool;
    QFutureWatcher<SafeImportResult> m_import;
    QFutureWatcher<vexdesk::Outcome> m_undoing;
};

} // namespace tadata
