// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QStringList>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <functional>
#include <memory>

namespace vexdesk {

/// Tells when something has changed in directories or files, when one of them comes, goes or is
/// moved away with directories above it, and when it may be read that could not be.
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
    /// Tells a change after some seconds: for what could not be read, where nothing may tell when
    /// it can be, as with a disk of another machine.
    void tellLater();
    /// What tellLater() was called for has come to pass.
    void tellNoMoreLater() { m_later.stop(); }

    static constexpr int usualDelay = 200; // ms

Q_SIGNALS:
    void changed();

private:
    struct Ear;
    class Watch;

    QTimer m_timer;
    QTimer m_later;
    QThread* m_thread; // of its own, and goes when it has ended
    std::shared_ptr<Ear> m_ear;
    Watch* m_watch; // lives in the thread and goes with it
};

} // namespace vexdesk
