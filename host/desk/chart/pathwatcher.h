// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QStringList>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <functional>
#include <memory>

namespace vexdesk {

/// Tells when something has changed in directories or files. One that does not exist is waited for
/// in the nearest directory above it that does.
///
/// Many changes in a short time are told as few: an import writes thousands of files. The owner
/// watches anew after each change, since files come and go and a file that was replaced is another
/// one. The paths are looked up in a thread of the watcher's own: they may be thousands.
/// That thread may outlive it, see readerthreads.h. User-interface thread only.
class PathWatcher final : public QObject
{
    Q_OBJECT

public:
    /// Tells a change after so many milliseconds, with all that came in between.
    explicit PathWatcher(int delay = usualDelay, QObject* parent = nullptr);
    ~PathWatcher() override;

    /// Watches these paths and no others, soon. Those that were watched already go on being so;
    /// when others have come to them, a change is told, for what was done to them before is unseen.
    void watch(const QStringList& paths);
    /// The same with paths that are made in the watcher's thread, where they are many.
    void watchMany(std::function<QStringList()> paths);

    /// Tells a change soon, as if something had changed.
    void tellSoon();

    static constexpr int usualDelay = 200; // ms

Q_SIGNALS:
    void changed();

private:
    struct Ear;

    QTimer m_timer;
    QThread* m_thread;             // of its own, and goes when it has ended
    QFileSystemWatcher* m_watcher; // lives in the thread and goes with it
    std::shared_ptr<Ear> m_ear;
};

} // namespace vexdesk
