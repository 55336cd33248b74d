// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundtask.h"
#include "choicescheck.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <memory>
#include <vector>

namespace tadata {

/// Tells when files, or the series that they would go to, are no longer what they were when
/// somebody looked at them: also where a file is written anew in its place, or a right to read
/// comes back. It looks at them again and again, seldom where that takes long. User-interface
/// thread; all looking is done in another.
class ImportWatch final : public QObject
{
    Q_OBJECT

public:
    explicit ImportWatch(QObject* parent = nullptr);
    ~ImportWatch() override;

    /// Follows these in place of any others, until it has told of a change.
    void follow(const std::vector<LaidOutFile>& files, const DayStamps& series = {});
    /// Follows nothing.
    void stop();

Q_SIGNALS:
    void filesChanged();
    void storeChanged();

private:
    enum class Found { Nothing, Files, Store };
    struct Look
    {
        Found found = Found::Nothing;
        qint64 milliseconds = 0; ///< that it took
    };
    struct Seen
    {
        std::vector<LaidOutFile> files;
        DayStamps series;
    };

    void look();
    void take(const Look& look);
    static Found compare(const Seen& seen, const std::atomic<bool>& stop);

    std::shared_ptr<const Seen> m_seen;
    QTimer m_next;
    BackgroundTask<Look> m_looking; // last: it ends before the rest goes
};

} // namespace tadata
