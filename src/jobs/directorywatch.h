// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QFileInfo>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QStringList>
#include <QtCore/QThread>

#include <functional>
#include <utility>

namespace tadata {

/// Tells when something has changed in directories. They are looked up in a thread of its own: a
/// disk that does not answer keeps no window waiting. The owner's thread only.
class DirectoryWatch final
{
public:
    /// A change is told in the thread of the owner, as long as that is there.
    DirectoryWatch(QObject* owner, std::function<void()> changed)
        : m_owner(owner)
        , m_changed(std::move(changed))
    {
        m_worker->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
        m_thread.start();
    }
    ~DirectoryWatch()
    {
        m_thread.quit();
        m_thread.wait();
    }
    Q_DISABLE_COPY_MOVE(DirectoryWatch)

    /// From now on these too, soon, where they are there. When one has come to the others a change
    /// is told: what was done to it before is unseen.
    void watch(const QStringList& directories)
    {
        QMetaObject::invokeMethod(m_worker, [this, directories] { add(directories); });
    }

private:
    // In the thread.
    void add(const QStringList& directories)
    {
        if (!m_watcher) {
            m_watcher = new QFileSystemWatcher(m_worker);
            QObject::connect(m_watcher, &QFileSystemWatcher::directoryChanged, m_owner, m_changed);
        }
        QStringList added;
        for (const QString& path : directories) {
            if (!m_watcher->directories().contains(path) && QFileInfo(path).isDir())
                added.append(path);
        }
        if (added.isEmpty())
            return;
        m_watcher->addPaths(added);
        QMetaObject::invokeMethod(m_owner, m_changed, Qt::QueuedConnection);
    }

    QObject* const m_owner;
    const std::function<void()> m_changed;
    QThread m_thread;
    QObject* const m_worker = new QObject;   // lives in the thread and goes with it
    QFileSystemWatcher* m_watcher = nullptr; // likewise
};

} // namespace tadata
